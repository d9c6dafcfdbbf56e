#pragma once

#include "entry/numeric_rules.h"
#include "framework/scoped_value.h"
#include "framework/wnd.h"

#include <list>
#include <map>
#include <string>

// An edit that reports a new text (EN_UPDATE) behind the message that brought it. What may be typed in it is
// a question to the host, which may take the dialog away; the system's edit goes on with its own memory after
// the report.
class CAskingEdit : public CWnd {
protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnUpdate();
    DECLARE_MESSAGE_MAP()

private:
    bool m_handling = false;  // a message
    bool m_updated = false;   // meanwhile
};

// The numeric edits of a dialog on their real controls: what may be typed, and stepping by arrow keys, wheel
// and spin buttons. The dialog describes its rows in a table and its contract in a context; both have to
// outlive this object.
class NumericEntry {
public:
    NumericEntry(const NumericTable& table, const INumericContext& context)
        : m_table(table), m_context(context) {}

    // Once the controls exist: limits the length of what can be typed.
    void Attach(HWND dialog);

    // For EN_SETFOCUS of every edit of the table: what stands in the edit is its last good text.
    void OnFocus(int controlId);

    // For EN_UPDATE of every edit of the table: puts the edit's last good text back when the new one is no
    // number.
    void OnTextUpdate(int controlId);

    // While it lives, what the dialog itself writes into the edits stands, even where it could not be typed,
    // and is the last good text of its edit.
    [[nodiscard]] ScopedValue<bool> OwnTexts() { return {m_ownTexts, true}; }

    // For UDN_DELTAPOS of every spin button of the table: focuses and steps its edit. The spin button's own
    // position has to stay, so the notification's result is 1, which this function returns.
    LRESULT OnSpin(const NMHDR* notification);

    // For messages of the dialog's loop: steps the focused edit for an arrow key or the wheel. True when a
    // step was made, the message is consumed then.
    bool OnMessage(const MSG& message);

    // Steps one control; false when it has no steps, or none to a text that could be typed there.
    bool Step(int controlId, bool up);

private:
    int FocusedControl() const;
    HWND Item(int id) const { return DialogItem(m_dialog, id); }

    const NumericTable& m_table;
    const INumericContext& m_context;
    HWND m_dialog = nullptr;
    std::list<CAskingEdit> m_askingEdits;
    std::map<int, std::string> m_lastGood;  // by edit
    int m_focused = 0;                      // the edit that is known to have the keyboard
    bool m_restoring = false;
    bool m_ownTexts = false;
};
