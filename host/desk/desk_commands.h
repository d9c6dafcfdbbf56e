#pragma once

#include <span>

#include <windows.h>

// What a command works on.
enum class Subject { kNone, kOrder, kFill };

// A dialog of the module in one of its modes.
struct DialogCommand {
    unsigned id;
    const wchar_t* text;
    Subject subject;
    bool fillDialog;
    int mode;
};
std::span<const DialogCommand> DialogCommands();

// The other commands of the desk.
enum DeskCommandId : unsigned {
    kInputOrder = 100,
    kCarry,
    kModifyOrder,
    kRemoveFilled,
    kMoveOrder,
    kInputExercise,
    kInputFill,
    kModifyFill,
    kRemoveFill,
    kSaveBook = 200,
    kCloseDesk,
    kRefresh,
    kNextList,
    kPreviousList,
    kDefaultAction,
    kExplainEntry,
    kTaller,
    kShorter,
    kWider,
    kNarrower,
    kFirstList = 300,      // and one for each list
    kFirstLanguage = 400,  // and one for each of Languages()
    kFirstSort = 500,      // and one for each column of the list that has the focus
};

struct LanguageChoice {
    WORD id;
    const wchar_t* text;
};
std::span<const LanguageChoice> Languages();
// Of the three languages of the module the one that it takes for this choice; 0 leaves it to the system.
WORD LanguageOf(WORD choice);
// The module's texts are in the ANSI code page: only some systems have the characters of a language. Where
// they are missing "Buy" and "Sell" look alike, so such a language is not offered.
bool CanShow(WORD choice);

HMENU MakeDeskMenu();
// The menu "Sort by" of that bar, which is filled when it opens.
HMENU SortMenuOf(HMENU bar);
HACCEL MakeDeskKeys();
// The commands for a record of a list that shows orders, fills or neither.
HMENU MakeContextMenu(Subject shown, bool journal);
// What Enter and a double click do in such a list.
unsigned DefaultCommand(Subject shown, bool journal);
