// The compiled templates: the same controls in every language, each where the dialogs' code expects it, and
// every text readable in its place.
#include "framework/owned_handle.h"
#include "framework/window_helpers.h"
#include "res/resource_loader.h"
#include "tests/res/dialog_template.h"
#include "tests/res/texts.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <set>
#include <tuple>

namespace {

constexpr unsigned kDialogs[] = {IDD_ORDER, IDD_CARRY, IDD_FILL, IDD_EXERCISE};
constexpr std::uint16_t kLanguages[] = {kEnglish, kSimplifiedChinese, kTraditionalChinese};

const void* LoadIn(std::uint16_t language, unsigned dialog) {
    g_wResLanguage = language;
    return LockResource(LoadResDialog(dialog));
}

DialogTemplate TemplateIn(std::uint16_t language, unsigned dialog) {
    return DialogTemplateReader(LoadIn(language, dialog)).Read();
}

std::map<unsigned, std::wstring> TypesById(const DialogTemplate& dialog) {
    std::map<unsigned, std::wstring> types;
    for (const auto& control : dialog.controls) {
        EXPECT_TRUE(types.emplace(control.id, control.type).second) << "twice: " << control.id;
    }
    return types;
}

TEST(DialogResource, LanguagesDifferInTextsAndTheWidthOfThreeLabelsOnly) {
    const std::set<unsigned> wider = {IDC_EX_SYSTEM_NO_LABEL, IDC_NEAR_CHOSEN_POSITION,
                                      IDC_FORWARD_CHOSEN_POSITION};
    for (unsigned id : kDialogs) {
        const DialogTemplate english = TemplateIn(kEnglish, id);
        for (std::uint16_t language : {kSimplifiedChinese, kTraditionalChinese}) {
            const DialogTemplate chinese = TemplateIn(language, id);
            EXPECT_EQ(std::tie(chinese.style, chinese.width, chinese.height),
                      std::tie(english.style, english.width, english.height));
            ASSERT_EQ(chinese.controls.size(), english.controls.size());
            for (std::size_t i = 0; i < english.controls.size(); ++i) {
                const auto &a = english.controls[i], &b = chinese.controls[i];
                EXPECT_EQ(std::tie(a.id, a.type, a.style, a.x, a.y, a.height),
                          std::tie(b.id, b.type, b.style, b.x, b.y, b.height));
                EXPECT_TRUE(a.width == b.width || wider.count(a.id)) << a.id;
                EXPECT_EQ(a.text.empty(), b.text.empty()) << a.id;
            }
        }
    }
}

TEST(DialogResource, OrderTemplatesHoldTheSame96Controls) {
    for (unsigned id : {IDD_ORDER, IDD_CARRY, IDD_EXERCISE}) {
        const DialogTemplate dialog = TemplateIn(kEnglish, id);
        EXPECT_EQ(dialog.controls.size(), 96u) << id;
        EXPECT_EQ(TypesById(dialog), TypesById(TemplateIn(kEnglish, IDD_ORDER))) << id;
    }
}

// A control's place as the operators know it; -1 for a size that is no one's concern. Unless said otherwise
// it is enabled.
struct Place {
    unsigned id;
    const wchar_t* type;
    int x, y, width, height;
    DWORD style = 0, mask = WS_DISABLED;
};
constexpr wchar_t kButton[] = L"#128", kEdit[] = L"#129", kStatic[] = L"#130", kCombo[] = L"#133";
constexpr wchar_t kSpin[] = L"MSCTLS_UPDOWN32", kDate[] = L"SYSDATETIMEPICK32";
constexpr DWORD kOff = WS_DISABLED;
constexpr DWORD kList = CBS_DROPDOWN, kUpper = CBS_DROPDOWN | CBS_UPPERCASE,
                kScroll = CBS_DROPDOWN | CBS_AUTOHSCROLL;
constexpr DWORD kComboMask = CBS_UPPERCASE | CBS_AUTOHSCROLL | 3;

const struct {
    unsigned dialog;
    int width, height;
    std::vector<Place> places;
} kPlaces[] = {
    // clang-format off
    {IDD_ORDER, 307, 288, {
        {1037, kCombo, 44, 6, 90, 30, kScroll, kComboMask}, {1126, kCombo, 209, 6, 90, 30},
        {1054, kEdit, 44, 22, 90, 12, kOff}, {1039, kCombo, 209, 22, 90, 30}, {10001, kEdit, 44, 39, 81, 12},
        {10000, kButton, 125, 39, 9, -1}, {1052, kCombo, 209, 39, 90, 30}, {1053, kCombo, 44, 55, 90, 30},
        {1040, kCombo, 209, 55, 90, 30}, {1114, kCombo, 44, 71, 90, 30},
        {1012, kDate, 209, 71, 90, -1, kOff}, {1125, kEdit, 44, 87, 80, 12},
        {1127, kSpin, 124, 87, 10, -1, 0, UDS_SETBUDDYINT | UDS_AUTOBUDDY | UDS_ARROWKEYS},
        {1123, kButton, 209, 87, -1, -1, BS_AUTOCHECKBOX, BS_TYPEMASK}, {1129, kEdit, 44, 103, -1, 12},
        {1153, kEdit, 209, 103, 90, 12}, {1132, kEdit, 44, 119, 90, 12}, {1133, kSpin, 134, 119, 10, -1},
        {1136, kEdit, 161, 119, 72, 12}, {1138, kStatic, 2, 135, -1, 11}, {1139, kEdit, 44, 135, 90, 12},
        {1145, kEdit, 44, 151, 90, 12}, {1160, kEdit, 44, 167, 90, 12}, {1164, kCombo, 44, 184, 90, 30},
        {1186, kButton, 165, 184, -1, -1, BS_AUTOCHECKBOX, BS_TYPEMASK}, {1167, kEdit, 209, 184, 90, 12},
        {1239, kStatic, 7, 201, 42, 14}, {1240, kEdit, 54, 201, 80, 14}, {1015, kStatic, 135, 201, 55, 14},
        {1061, kButton, 193, 201, 50, 14}, {1067, kButton, 249, 201, 50, 14}}},
    {IDD_CARRY, 307, 439, {
        {1037, kCombo, 44, 7, 90, 30}, {1039, kCombo, 209, 7, 90, 30}, {1054, kEdit, 44, 24, 90, 12, kOff},
        {1153, kEdit, 209, 24, 90, 12}, {1052, kCombo, 44, 40, 90, 30}, {10001, kEdit, 209, 40, 81, 12},
        {10000, kButton, 290, 40, -1, -1}, {1145, kEdit, 44, 57, 37, 12}, {1146, kSpin, 81, 57, 10, -1},
        {1148, kEdit, 101, 57, 26, 12}, {1129, kEdit, 209, 57, 80, 12},
        {1243, kButton, 2, 73, 71, 10, BS_AUTOCHECKBOX, BS_TYPEMASK}, {1154, kEdit, 44, 85, 37, 12, kOff},
        {1165, kEdit, 101, 85, 26, 12, kOff}, {1213, kEdit, 209, 85, 90, 12, kOff},
        {1212, kStatic, 2, 171, -1, -1, SS_ETCHEDHORZ, SS_TYPEMASK}, {1188, kCombo, 44, 174, 90, 30, kOff},
        {1192, kCombo, 209, 174, 90, 30}, {1160, kEdit, 44, 191, 37, 12},
        {1216, kEdit, 209, 191, 90, 12, kOff}, {1244, kButton, 2, 207, 71, 10, BS_AUTOCHECKBOX, BS_TYPEMASK},
        {1172, kEdit, 44, 219, 37, 12, kOff}, {1214, kEdit, 209, 219, 90, 12, kOff},
        {1217, kStatic, 2, 305, -1, -1, SS_ETCHEDHORZ, SS_TYPEMASK}, {1164, kCombo, 44, 308, 90, 30},
        {1186, kButton, 165, 308, -1, -1}, {1167, kEdit, 209, 308, 90, 12},
        {1015, kStatic, 73, 325, 119, 14}, {1061, kButton, 193, 325, 50, 14},
        {1067, kButton, 249, 325, 50, 14}}},
    {IDD_EXERCISE, 307, 317, {
        {1037, kCombo, 44, 6, 90, 30}, {1044, kStatic, 171, 6, -1, 12}, {1039, kCombo, 209, 6, 90, 30},
        {10001, kEdit, 44, 25, 81, 12}, {10000, kButton, 125, 25, 9, -1}, {1192, kCombo, 209, 25, 90, 30},
        {1052, kCombo, 44, 44, 90, 30}, {1125, kEdit, 209, 44, 80, 12}, {1127, kSpin, 289, 44, 10, -1},
        {1061, kButton, 194, 62, 50, 14}, {1067, kButton, 250, 62, 50, 14}}},
    {IDD_FILL, 309, 190, {
        {1152, kStatic, 7, 6, -1, -1}, {1153, kEdit, 59, 6, 85, -1, kOff}, {1047, kStatic, 174, 6, -1, -1},
        {1054, kEdit, 215, 6, 85, -1, kOff}, {1039, kCombo, 59, 24, 85, -1, kList, kComboMask},
        {1037, kCombo, 215, 24, 85, -1, kScroll, kComboMask},
        {1158, kCombo, 59, 42, 85, -1, kList, kComboMask}, {1129, kEdit, 215, 42, -1, -1},
        {1122, kCombo, 59, 60, 85, -1, kUpper, kComboMask},
        {1051, kCombo, 215, 60, 85, -1, kUpper, kComboMask}, {1056, kEdit, 59, 79, 85, -1},
        {1052, kCombo, 215, 79, 85, -1, kList, kComboMask}, {1145, kEdit, 59, 97, 85, -1},
        {1058, kEdit, 59, 115, 85, -1}, {1053, kCombo, 215, 115, 85, -1, kList, kComboMask},
        {1160, kEdit, 59, 133, 85, -1}, {1164, kCombo, 59, 151, 85, -1, kUpper, kComboMask},
        {1165, kButton, 174, 151, -1, -1, BS_AUTOCHECKBOX, BS_TYPEMASK}, {1167, kEdit, 215, 151, 85, -1},
        {1061, kButton, 194, 170, 50, 14, BS_DEFPUSHBUTTON, BS_TYPEMASK},
        {1067, kButton, 250, 170, 50, 14, BS_PUSHBUTTON, BS_TYPEMASK}}},
    // clang-format on
};

TEST(DialogResource, ControlsStandInTheirPlaces) {
    for (const auto& row : kPlaces) {
        const DialogTemplate dialog = TemplateIn(kEnglish, row.dialog);
        EXPECT_EQ(std::tie(dialog.width, dialog.height), std::tie(row.width, row.height));
        EXPECT_EQ(dialog.style & (WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE),
                  WS_POPUP | WS_CAPTION | WS_SYSMENU);
        for (const Place& place : row.places) {
            const auto* control = dialog.Find(place.id);
            ASSERT_NE(control, nullptr) << place.id;
            EXPECT_EQ(control->type, place.type) << place.id;
            EXPECT_EQ(std::tie(control->x, control->y), std::tie(place.x, place.y)) << place.id;
            EXPECT_EQ(place.width >= 0 ? control->width : -1, place.width) << place.id;
            EXPECT_EQ(place.height >= 0 ? control->height : -1, place.height) << place.id;
            EXPECT_EQ(control->style & place.mask, place.style) << place.id;
        }
    }
    EXPECT_EQ(TemplateIn(kEnglish, IDD_FILL).controls.size(), 45u);
}

TEST(DialogResource, TraditionalLabelsAreTheSimplifiedOnesInTraditionalForms) {
    for (unsigned id : kDialogs) {
        const auto simplified = TemplateIn(kSimplifiedChinese, id);
        const auto traditional = TemplateIn(kTraditionalChinese, id);
        EXPECT_EQ(traditional.caption, InTraditionalForms(simplified.caption));
        for (const auto& control : simplified.controls) {
            EXPECT_EQ(traditional.Find(control.id)->text, InTraditionalForms(control.text))
                << id << ' ' << control.id;
        }
    }
}

// What a button or label needs for its text, in pixels; 0 for other controls.
int TextWidth(HWND control) {
    const bool isButton = HasClass(control, "Button");
    if (!isButton && !HasClass(control, "Static")) {
        return 0;
    }
    const WindowDc dc(control);
    const SelectedObject font(dc.Get(), reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
    wchar_t text[64];
    RECT needed = {};
    DrawTextW(dc.Get(), text, GetWindowTextW(control, text, std::size(text)), &needed,
              DT_CALCRECT | DT_SINGLELINE);
    const bool isBox = isButton && (GetWindowLongW(control, GWL_STYLE) & BS_TYPEMASK) == BS_AUTOCHECKBOX;
    return needed.right + (isBox ? GetSystemMetrics(SM_CYHSCROLL) : 0);
}

// Of all controls that can be seen.
void ExpectWholeTextsAndFreePlaces(HWND dialog, const std::string& where) {
    std::map<int, RECT> places;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (!(GetWindowLongW(child, GWL_STYLE) & WS_VISIBLE)) {
            continue;
        }
        const int id = GetDlgCtrlID(child);
        RECT place, common;
        GetWindowRect(child, &place);
        // The last pixel of a text is the blank side of its last character. The chosen positions draw their
        // labels themselves, narrower where the place is.
        if (id != IDC_NEAR_CHOSEN_POSITION && id != IDC_FORWARD_CHOSEN_POSITION) {
            EXPECT_LE(TextWidth(child) - 1, place.right - place.left) << where << id;
        }
        // Dialog units are rounded, so neighbours may share a pixel.
        --place.right;
        --place.bottom;
        for (const auto& [other, covered] : places) {
            EXPECT_FALSE(IntersectRect(&common, &place, &covered)) << where << id << ' ' << other;
        }
        places[id] = place;
    }
}

// Runs at each resolution that screens of operators have.
TEST(DialogResource, NoTextIsClippedAndNoControlCoversAnother) {
    SetProcessDPIAware();
    if (const char* dpi = std::getenv("EMENDO_EXPECTED_DPI")) {
        ASSERT_EQ(GetDeviceCaps(WindowDc(nullptr).Get(), LOGPIXELSX), std::atoi(dpi));
    }
    INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_DATE_CLASSES | ICC_UPDOWN_CLASS};
    InitCommonControlsEx(&classes);
    for (std::uint16_t language : kLanguages) {
        for (unsigned id : kDialogs) {
            const auto shown = static_cast<LPCDLGTEMPLATEW>(LoadIn(language, id));
            const HWND dialog = CreateDialogIndirectParamW(nullptr, shown, nullptr, nullptr, 0);
            ASSERT_NE(dialog, nullptr);
            ExpectWholeTextsAndFreePlaces(dialog, std::to_string(language) + ' ' + std::to_string(id) + ' ');
            DestroyWindow(dialog);
        }
    }
}

TEST(DialogResource, FillSourcesAreTheInitialItemsOfTheChineseFillDialogs) {
    const std::pair<WORD, UINT> rows[] = {{kSimplifiedChinese, 936}, {kTraditionalChinese, 950}};
    constexpr unsigned sources[] = {IDS_SOURCE_E_TRADE, IDS_SOURCE_J_TRADE, IDS_SOURCE_PROXY,
                                    IDS_SOURCE_MANUAL,  IDS_SOURCE_PROGRAM, IDS_SOURCE_DELIVERY_EXERCISE,
                                    IDS_SOURCE_RTS};
    for (const auto& [language, codePage] : rows) {
        std::string expected;
        for (unsigned source : sources) {
            char text[32];
            const int size = WideCharToMultiByte(codePage, 0, WrittenText(language, source).c_str(), -1, text,
                                                 sizeof text, nullptr, nullptr);
            const WORD head[] = {IDC_FILL_SOURCE, 0x403, static_cast<WORD>(size), 0};
            expected.append(reinterpret_cast<const char*>(head), sizeof head).append(text, text + size);
        }
        expected.append(2, '\0');
        const HRSRC found =
            FindResourceExW(nullptr, MAKEINTRESOURCEW(240), MAKEINTRESOURCEW(IDD_FILL), language);
        ASSERT_NE(found, nullptr);
        const auto data = static_cast<const char*>(LockResource(LoadResource(nullptr, found)));
        EXPECT_EQ(std::string(data, SizeofResource(nullptr, found)), expected) << language;
    }
}

}  // namespace
