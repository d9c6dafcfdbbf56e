#pragma once

#include <span>

#include <windows.h>

// Menus and keys of the desk, in the language that is spoken.

// What a command works on.
enum class Subject { kNone, kOrder, kFill };

// A dialog of the module in one of its modes.
struct DialogCommand {
    unsigned id;
    const char* text;  // for SayMenu
    const char* key;
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
    kSaveBookAs,
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
    const char* text;  // for SayMenu
};
std::span<const LanguageChoice> Languages();

HMENU MakeDeskMenu();
// The menu "Sort by" of that bar, which is filled when it opens.
HMENU SortMenuOf(HMENU bar);
HACCEL MakeDeskKeys();
// The commands for a record of a list that shows orders, fills or neither.
HMENU MakeContextMenu(Subject shown, bool journal);
// What Enter and a double click do in such a list.
unsigned DefaultCommand(Subject shown, bool journal);
