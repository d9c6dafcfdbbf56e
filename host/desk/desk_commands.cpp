#include "desk/desk_commands.h"

#include <iterator>
#include <vector>

namespace {

constexpr DialogCommand kDialogCommands[] = {
    {kInputOrder, L"Input &order\tCtrl+N", Subject::kNone, false, 0},
    {kCarry, L"&Carry\tCtrl+K", Subject::kNone, false, 1},
    {kInputExercise, L"Input &exercise\tCtrl+E", Subject::kNone, false, 5},
    {kModifyOrder, L"&Modify order\tCtrl+M", Subject::kOrder, false, 2},
    {kMoveOrder, L"Mo&ve order\tCtrl+T", Subject::kOrder, false, 4},
    {kRemoveFilled, L"&Remove filled\tCtrl+R", Subject::kOrder, false, 3},
    {kInputFill, L"Input &fill\tCtrl+F", Subject::kOrder, true, 0},
    {kModifyFill, L"Mod&ify fill\tCtrl+I", Subject::kFill, true, 2},
    {kRemoveFill, L"Remove fi&ll\tCtrl+D", Subject::kFill, true, 3},
};

constexpr LanguageChoice kLanguages[] = {{2052, L"&Simplified Chinese"},
                                         {1028, L"&Traditional Chinese"},
                                         {1033, L"&English"},
                                         {0, L"As the s&ystem"}};

struct Item {
    unsigned id;  // 0: a line
    const wchar_t* text;
};
constexpr Item kViewItems[] = {
    {kFirstList, L"&Orders\tCtrl+1"},
    {kFirstList + 1, L"&Fills\tCtrl+2"},
    {kFirstList + 2, L"&Positions\tCtrl+3"},
    {kFirstList + 3, L"&Accounts\tCtrl+4"},
    {kFirstList + 4, L"&Journal\tCtrl+5"},
    {kNextList, L"&Next list\tTab"},
    {kPreviousList, L"Pre&vious list\tShift+Tab"},
    {0, nullptr},
    {kTaller, L"&Taller\tCtrl+Shift+Down"},
    {kShorter, L"&Shorter\tCtrl+Shift+Up"},
    {kWider, L"&Wider\tCtrl+Shift+Right"},
    {kNarrower, L"Na&rrower\tCtrl+Shift+Left"},
    {0, nullptr},
    {kExplainEntry, L"&Explain journal line"},
    {kRefresh, L"Refres&h\tF5"},
};
constexpr Item kBookItems[] = {{kSaveBook, L"&Save\tCtrl+S"}, {0, nullptr}, {kCloseDesk, L"&Close\tAlt+F4"}};

constexpr BYTE kControl = FVIRTKEY | FCONTROL;
constexpr ACCEL kKeys[] = {
    {kControl, 'N', kInputOrder},
    {kControl, 'K', kCarry},
    {kControl, 'E', kInputExercise},
    {kControl, 'M', kModifyOrder},
    {kControl, 'T', kMoveOrder},
    {kControl, 'R', kRemoveFilled},
    {kControl, 'F', kInputFill},
    {kControl, 'I', kModifyFill},
    {kControl, 'D', kRemoveFill},
    {kControl, 'S', kSaveBook},
    {FVIRTKEY, VK_F5, kRefresh},
    {FVIRTKEY, VK_TAB, kNextList},
    {FVIRTKEY | FSHIFT, VK_TAB, kPreviousList},
    {FVIRTKEY, VK_F6, kNextList},
    {FVIRTKEY, VK_RETURN, kDefaultAction},
    {kControl | FSHIFT, VK_DOWN, kTaller},
    {kControl | FSHIFT, VK_UP, kShorter},
    {kControl | FSHIFT, VK_RIGHT, kWider},
    {kControl | FSHIFT, VK_LEFT, kNarrower},
    {kControl, '1', kFirstList},
    {kControl, '2', kFirstList + 1},
    {kControl, '3', kFirstList + 2},
    {kControl, '4', kFirstList + 3},
    {kControl, '5', kFirstList + 4},
};

void Append(HMENU menu, std::span<const Item> items) {
    for (const Item& item : items) {
        AppendMenuW(menu, item.id ? MF_STRING : MF_SEPARATOR, item.id, item.text);
    }
}

void AppendDialogs(HMENU menu, Subject subject) {
    for (const DialogCommand& command : kDialogCommands) {
        if (command.subject == subject) {
            AppendMenuW(menu, MF_STRING, command.id, command.text);
        }
    }
}

void AppendLine(HMENU menu) {
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
}

void AppendPopup(HMENU bar, HMENU menu, const wchar_t* text) {
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), text);
}

constexpr int kViewPlace = 2;

}  // namespace

std::span<const DialogCommand> DialogCommands() {
    return kDialogCommands;
}

std::span<const LanguageChoice> Languages() {
    return kLanguages;
}

WORD LanguageOf(WORD choice) {
    if (choice) {
        return choice;
    }
    const LANGID system = GetUserDefaultUILanguage();
    if (PRIMARYLANGID(system) != LANG_CHINESE) {
        return 1033;
    }
    const bool simplified =
        SUBLANGID(system) == SUBLANG_CHINESE_SIMPLIFIED || SUBLANGID(system) == SUBLANG_CHINESE_SINGAPORE;
    return simplified ? 2052 : 1028;
}

bool CanShow(WORD choice) {
    const WORD language = LanguageOf(choice);
    constexpr UINT kSimplifiedPage = 936;  // has the traditional characters too
    constexpr UINT kTraditionalPage = 950;
    const UINT page = GetACP();
    return language == 1028   ? page == kTraditionalPage || page == kSimplifiedPage
           : language == 2052 ? page == kSimplifiedPage
                              : true;
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
    AppendPopup(view, CreatePopupMenu(), L"Sort &by");
    HMENU language = CreatePopupMenu();
    unsigned id = kFirstLanguage;
    for (const LanguageChoice& choice : kLanguages) {
        AppendMenuW(language, MF_STRING, id++, choice.text);
    }
    HMENU bar = CreateMenu();
    AppendPopup(bar, book, L"&Book");
    AppendPopup(bar, dialogs, L"&Dialogs");
    AppendPopup(bar, view, L"&View");
    AppendPopup(bar, language, L"&Language");
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
        AppendMenuW(menu, MF_STRING, kExplainEntry, L"E&xplain\tEnter");
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
