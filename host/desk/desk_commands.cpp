#include "desk/desk_commands.h"

#include "services/wide_text.h"
#include "services/wording.h"

#include <iterator>
#include <vector>

namespace {

constexpr DialogCommand kDialogCommands[] = {
    {kInputOrder, "Input &order", "Ctrl+N", Subject::kNone, false, 0},
    {kCarry, "&Carry", "Ctrl+K", Subject::kNone, false, 1},
    {kInputExercise, "Input &exercise", "Ctrl+E", Subject::kNone, false, 5},
    {kModifyOrder, "&Modify order", "Ctrl+M", Subject::kOrder, false, 2},
    {kMoveOrder, "Mo&ve order", "Ctrl+T", Subject::kOrder, false, 4},
    {kRemoveFilled, "&Remove filled", "Ctrl+R", Subject::kOrder, false, 3},
    {kInputFill, "Input &fill", "Ctrl+F", Subject::kOrder, true, 0},
    {kModifyFill, "Mod&ify fill", "Ctrl+I", Subject::kFill, true, 2},
    {kRemoveFill, "Remove fi&ll", "Ctrl+D", Subject::kFill, true, 3},
};

constexpr LanguageChoice kLanguages[] = {
    {2052, "&Simplified Chinese"}, {1028, "&Traditional Chinese"}, {1033, "&English"}, {0, "As the s&ystem"}};

struct Item {
    unsigned id;  // 0: a line
    const char* text;
    const char* key;
};
constexpr Item kViewItems[] = {
    {kFirstList, "&Orders", "Ctrl+1"},
    {kFirstList + 1, "&Fills", "Ctrl+2"},
    {kFirstList + 2, "&Positions", "Ctrl+3"},
    {kFirstList + 3, "&Accounts", "Ctrl+4"},
    {kFirstList + 4, "&Journal", "Ctrl+5"},
    {kNextList, "&Next list", "Tab"},
    {kPreviousList, "Pre&vious list", "Shift+Tab"},
    {0, nullptr, nullptr},
    {kTaller, "&Taller", "Ctrl+Shift+Down"},
    {kShorter, "&Shorter", "Ctrl+Shift+Up"},
    {kWider, "&Wider", "Ctrl+Shift+Right"},
    {kNarrower, "Na&rrower", "Ctrl+Shift+Left"},
    {0, nullptr, nullptr},
    {kExplainEntry, "&Explain journal line", ""},
    {kRefresh, "Refres&h", "F5"},
};
constexpr Item kBookItems[] = {{kSaveBook, "&Save", "Ctrl+S"},
                               {kSaveBookAs, "Save &as...", "Ctrl+Shift+S"},
                               {0, nullptr, nullptr},
                               {kCloseDesk, "&Close", "Alt+F4"}};

constexpr BYTE kControl = FVIRTKEY | FCONTROL;
constexpr ACCEL kKeys[] = {
    {kControl, 'N', kInputOrder},          {kControl, 'K', kCarry},
    {kControl, 'E', kInputExercise},       {kControl, 'M', kModifyOrder},
    {kControl, 'T', kMoveOrder},           {kControl, 'R', kRemoveFilled},
    {kControl, 'F', kInputFill},           {kControl, 'I', kModifyFill},
    {kControl, 'D', kRemoveFill},          {kControl, 'S', kSaveBook},
    {kControl | FSHIFT, 'S', kSaveBookAs}, {FVIRTKEY, VK_F5, kRefresh},
    {FVIRTKEY, VK_TAB, kNextList},         {FVIRTKEY | FSHIFT, VK_TAB, kPreviousList},
    {FVIRTKEY, VK_F6, kNextList},          {FVIRTKEY, VK_RETURN, kDefaultAction},
    {kControl | FSHIFT, VK_DOWN, kTaller}, {kControl | FSHIFT, VK_UP, kShorter},
    {kControl | FSHIFT, VK_RIGHT, kWider}, {kControl | FSHIFT, VK_LEFT, kNarrower},
    {kControl, '1', kFirstList},           {kControl, '2', kFirstList + 1},
    {kControl, '3', kFirstList + 2},       {kControl, '4', kFirstList + 3},
    {kControl, '5', kFirstList + 4},
};

void AppendLine(HMENU menu) {
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
}

void Append(HMENU menu, unsigned id, const char* text, const char* key) {
    if (id == 0) {
        AppendLine(menu);
        return;
    }
    std::wstring shown = Wide(SayMenu(text));
    if (*key) {
        shown += L'\t' + Wide(key);
    }
    AppendMenuW(menu, MF_STRING, id, shown.c_str());
}

void Append(HMENU menu, std::span<const Item> items) {
    for (const Item& item : items) {
        Append(menu, item.id, item.text, item.key);
    }
}

void AppendDialogs(HMENU menu, Subject subject) {
    for (const DialogCommand& command : kDialogCommands) {
        if (command.subject == subject) {
            Append(menu, command.id, command.text, command.key);
        }
    }
}

void AppendPopup(HMENU bar, HMENU menu, const char* text) {
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), Wide(SayMenu(text)).c_str());
}

constexpr int kViewPlace = 2;

}  // namespace

std::span<const DialogCommand> DialogCommands() {
    return kDialogCommands;
}

std::span<const LanguageChoice> Languages() {
    return kLanguages;
}

HMENU MakeDeskMenu() {
    HMENU book = CreatePopupMenu();
    Append(book, kBookItems);
    HMENU dialogs = CreatePopupMenu();
    for (const Subject subject : {Subject::kNone, Subject::kOrder, Subject::kFill}) {
        if (subject != Subject::kNone) {
            AppendLine(dialogs);
        }
        AppendDialogs(dialogs, subject);
    }
    HMENU view = CreatePopupMenu();
    Append(view, kViewItems);
    AppendPopup(view, CreatePopupMenu(), "Sort &by");
    HMENU language = CreatePopupMenu();
    unsigned id = kFirstLanguage;
    for (const LanguageChoice& choice : kLanguages) {
        Append(language, id++, choice.text, "");
    }
    HMENU bar = CreateMenu();
    AppendPopup(bar, book, "&Book");
    AppendPopup(bar, dialogs, "&Dialogs");
    AppendPopup(bar, view, "&View");
    AppendPopup(bar, language, "&Language");
    return bar;
}

HMENU SortMenuOf(HMENU bar) {
    return GetSubMenu(GetSubMenu(bar, kViewPlace), static_cast<int>(std::size(kViewItems)));
}

HACCEL MakeDeskKeys() {
    std::vector<ACCEL> keys(std::begin(kKeys), std::end(kKeys));
    return CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
}

HMENU MakeContextMenu(Subject shown, bool journal) {
    HMENU menu = CreatePopupMenu();
    if (journal) {
        Append(menu, kExplainEntry, "E&xplain", "Enter");
        AppendLine(menu);
    }
    if (shown == Subject::kFill) {
        AppendDialogs(menu, Subject::kFill);
        AppendLine(menu);
    }
    if (shown != Subject::kNone) {
        AppendDialogs(menu, Subject::kOrder);
        AppendLine(menu);
    }
    AppendDialogs(menu, Subject::kNone);
    SetMenuDefaultItem(menu, DefaultCommand(shown, journal), FALSE);
    return menu;
}

unsigned DefaultCommand(Subject shown, bool journal) {
    if (journal) {
        return kExplainEntry;
    }
    switch (shown) {
        case Subject::kOrder:
            return kModifyOrder;
        case Subject::kFill:
            return kRemoveFill;
        default:
            return kInputOrder;
    }
}
