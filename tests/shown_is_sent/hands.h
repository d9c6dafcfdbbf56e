#pragma once

#include "scenario/window_text.h"
#include "shown_is_sent/world.h"
#include "support/window_kit.h"

#include <functional>
#include <map>

// What the windows of a dialog show. Texts are in UTF-8. Each window is looked up once: that is a call of the
// system's server, of which a confirm has thousands.
class View {
public:
    explicit View(HWND ofDialog) : dialog(ofDialog) {}
    const HWND dialog;

    HWND Item(int id) const;
    bool Usable(int id) const { return IsWindowVisible(Item(id)) && IsWindowEnabled(Item(id)); }
    bool Checked(int id) const { return SendMessageA(Item(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }
    // The whole text in sight, of a combo box that in its edit.
    std::string Text(int id) const;
    // The chosen line of a list, -1 for none.
    int Line(int id) const { return static_cast<int>(SendMessageA(Item(id), CB_GETCURSEL, 0, 0)); }
    // The control with the keyboard, a combo box for its edit; 0 for none of the dialog's.
    int FocusId() const;
    // Every field in sight, "#1037 '10001' line 2", those that are shut in brackets.
    std::string Everything() const;

private:
    HWND Edit(int id) const;  // of a combo box that within, null for what is none

    mutable std::map<int, HWND> m_items, m_edits;
};

// A dialog on a record of the host.
struct Opening {
    bool fillDialog = false;
    int mode = 0;
    int recordKind = -1;  // kRecordKindOrder, kRecordKindFill, or none

    // Null when it does not open.
    IEmendixOper* Open(IEmendix* api, World& world, HWND parent) const;
};

// One thing that an operator or the host does. Number and text say what exactly.
struct Step {
    enum Act {
        Choose,
        Type,
        Keys,
        Wheel,
        Spin,
        Click,
        Pick,
        Date,
        Account,
        Position,
        Changed,
        Confirm,
        Press,
        Point,
        Burst,
        Vanish,
        Lose
    };
    Act act;
    int id = 0;
    int number = 0;
    std::string text = {};

    std::string Words() const;
};

// An operator's hands on an open dialog, and what the host does meanwhile. What cannot be done as the windows
// are is left undone, so that any part of a sequence can be played.
class Hands {
public:
    Hands(World& world, ListMaker& lists, IEmendixOper* dialog)
        : view{dialog->GetSafeHwnd()}, m_world(world), m_lists(lists), m_loop(dialog) {}

    // Everything but a confirm.
    void Do(const Step& step);
    // The keyboard goes to the control as with Tab. False when it cannot, or does not stay there.
    bool Focus(int id);
    // Presses the button that has the keyboard.
    void Press(int id, bool mouse);
    void Pump() { m_loop.PumpUntilIdle(); }
    bool Open() const { return IsWindow(view.dialog) != FALSE; }

    const View view;

private:
    void Choose(int id, int how, int line);
    void Type(const Step& step);
    void Key(unsigned virtualKey);
    void ClickAt(HWND window, POINT point);
    void PickByPopup(int number);
    void Report(int times);

    World& m_world;
    ListMaker& m_lists;
    HostLoop m_loop;
};
