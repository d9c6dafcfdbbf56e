#include "controls/numeric_entry.h"

#include "entry/number_text.h"
#include "framework/message_map.h"
#include "framework/scoped_value.h"
#include "framework/window_helpers.h"

#include <utility>

BEGIN_MESSAGE_MAP(CAskingEdit, CWnd)
ON_CONTROL_REFLECT(EN_UPDATE, &CAskingEdit::OnUpdate)
END_MESSAGE_MAP()

LRESULT CAskingEdit::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const WindowWatch watch(this);
    const bool outermost = !m_handling;
    const auto handle = [&] {
        const ScopedValue handling(m_handling, true);
        return CWnd::WindowProc(message, wParam, lParam);
    };
    const LRESULT result = handle();
    if (outermost && watch.WindowAlive() && std::exchange(m_updated, false)) {
        ::SendMessageA(GetParent(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), EN_UPDATE),
                       reinterpret_cast<LPARAM>(m_hWnd));
    }
    return result;
}

bool CAskingEdit::OnUpdate() {
    m_updated = m_handling;
    return m_updated;  // the dialog is told later
}

void NumericEntry::Attach(HWND dialog) {
    m_dialog = dialog;
    const auto limit = [this](int id) {
        if (id != 0) {
            SendDlgItemMessageA(m_dialog, id, EM_LIMITTEXT, kMaxNumberText, 0);
        }
    };
    limit(m_table.feeEdit);
    m_askingEdits.emplace_back().SubclassDlgItem(m_table.feeEdit, dialog);
    for (const NumericRow& row : m_table.rows) {
        limit(row.edit);
        limit(row.numerator);
        if (row.numerator != 0) {
            m_askingEdits.emplace_back().SubclassDlgItem(row.edit, dialog);
        }
    }
}

int NumericEntry::FocusedControl() const {
    HWND focus = GetFocus();
    return m_dialog && focus && GetParent(focus) == m_dialog ? GetDlgCtrlID(focus) : 0;
}

void NumericEntry::OnFocus(int controlId) {
    m_focused = controlId;
    if (FindNumeric(m_table, controlId).kind != NumericKind::None) {
        m_lastGood[controlId] = TextOf(Item(controlId));
    }
}

void NumericEntry::OnTextUpdate(int controlId) {
    // A text that is put back may be refused again.
    if (m_restoring) {
        return;
    }
    const bool focusedOnly = m_table.scope == TextRuleScope::FocusedEdit && !m_ownTexts;
    const int judged = focusedOnly ? FocusedControl() : controlId;
    const NumericTarget target = FindNumeric(m_table, judged);
    HWND edit = Item(judged);
    if (target.kind == NumericKind::None || !edit) {
        return;
    }
    std::string& lastGood = m_lastGood[judged];
    const std::string text = TextOf(edit);
    if (m_ownTexts || MayBeTyped(target, text, m_context)) {
        lastGood = text;
        return;
    }
    const ScopedValue restoring(m_restoring, true);
    ::SetWindowTextA(edit, lastGood.c_str());
    MoveCaretToEnd(edit);
}

LRESULT NumericEntry::OnSpin(const NMHDR* notification) {
    const auto& upDown = *reinterpret_cast<const NMUPDOWN*>(notification);
    const NumericRow* row = FindRowOfSpin(m_table, static_cast<int>(notification->idFrom));
    if (row) {
        const bool numerator = row->numerator != 0 && FocusedControl() == row->numerator;
        const int target = numerator ? row->numerator : row->edit;
        ::SetFocus(Item(target));
        Step(target, upDown.iDelta < 1);
    }
    return 1;
}

bool NumericEntry::OnMessage(const MSG& message) {
    if (const int focused = FocusedControl(); focused != m_focused) {
        OnFocus(focused);
    }
    const bool wheel = message.message == WM_MOUSEWHEEL;
    const bool arrow =
        message.message == WM_KEYDOWN && (message.wParam == VK_UP || message.wParam == VK_DOWN);
    if (!wheel && !arrow) {
        return false;
    }
    const int focused = FocusedControl();
    const NumericTarget target = FindNumeric(m_table, focused);
    if (!target.row || (wheel && !target.row->wheelSteps)) {
        return false;
    }
    const bool up = wheel ? GET_WHEEL_DELTA_WPARAM(message.wParam) >= 1 : message.wParam == VK_UP;
    return Step(focused, up);
}

bool NumericEntry::Step(int controlId, bool up) {
    const NumericTarget target = FindNumeric(m_table, controlId);
    if (!target.row) {
        return false;
    }
    const HWND edit = Item(target.row->edit);
    const HWND numerator = target.row->numerator != 0 ? Item(target.row->numerator) : nullptr;
    const auto step = StepNumeric(target, TextOf(edit), TextOf(numerator), up, m_context);
    if (!step) {
        return false;
    }
    const auto ownTexts = OwnTexts();
    SetTextIfChanged(edit, step->edit);
    if (step->numerator && numerator) {
        SetTextIfChanged(numerator, *step->numerator);
    }
    MoveCaretToEnd(Item(controlId));
    return true;
}
