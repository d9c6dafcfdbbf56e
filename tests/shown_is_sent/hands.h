#pragma once

#include "shown_is_sent/world.h"
#include "support/window_kit.h"

#include <functional>
#include <string>
#include <vector>

// What the windows of a dialog show.
struct View {
    HWND dialog = nullptr;

    HWND Item(int id) const { return GetDlgItem(dialog, id); }
    bool Usable(int id) const { return IsWindowVisible(Item(id)) && IsWindowEnabled(Item(id)); }
    bool Checked(int id) const { return SendMessageA(Item(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }
    // The whole text in sight, of a combo box that in its edit.
    std::string Text(int id) const;
    // The chosen line of a list, -1 for none, and the lines.
    int Line(int id) const { return static_cast<int>(SendMessageA(Item(id), CB_GETCURSEL, 0, 0)); }
    int Lines(int id) const { return static_cast<int>(SendMessageA(Item(id), CB_GETCOUNT, 0, 0)); }
    std::string LineText(int id, int line) const;
    // Every field in sight, "#1037 '10001' line 2", those that are shut in brackets.
    std::string Everything() const;
};

// One thing that an operator or the host does. The number and the text say what exactly.
struct Step {
    enum Act { Choose, Type, Keys, Wheel, Spin, Click, Pick, Date, Account, Position, Changed, Confirm };
    Act act;
    int id = 0;
    int number = 0;
    std::string text = {};

    std::string Words() const;
};

// Answers the message boxes of this thread as the sequel says and keeps them there. A box that comes without
// a sequel is counted as unasked and dismissed.
class BoxHook {
public:
    BoxHook();
    ~BoxHook();
    Sequel* sequel = nullptr;
    int unasked = 0;

private:
    static LRESULT CALLBACK Procedure(int code, WPARAM wParam, LPARAM lParam);
    void Answer(HWND box, HWND message);
    HHOOK m_hook;
    HWND m_box = nullptr;
    static BoxHook* s_current;
};

// An operator's hands on an open dialog, and what the host does meanwhile. What cannot be done as the windows
// are is left undone, so that any part of a sequence can be played.
class Hands {
public:
    Hands(World& world, ListMaker& lists, IEmendixOper* dialog)
        : view{dialog->GetSafeHwnd()}, m_world(world), m_lists(lists), m_loop(dialog) {}

    // Everything but a confirm.
    void Do(const Step& step);
    // The keyboard goes to the control as with Tab. False when it cannot.
    bool Focus(int id);
    // Presses the button that has the keyboard, by key or with the mouse.
    void Press(int id, bool mouse);
    void Pump() { m_loop.PumpUntilIdle(); }
    bool Open() const { return IsWindow(view.dialog) != FALSE; }
    // The control with the keyboard, 0 for none of the dialog's.
    int FocusId() const;

    View view;

private:
    void Choose(const Step& step);
    void Type(const Step& step);
    void Key(unsigned virtualKey);
    void ClickAt(HWND window, POINT point);
    void PickByPopup(int number);

    World& m_world;
    ListMaker& m_lists;
    HostLoop m_loop;
};
