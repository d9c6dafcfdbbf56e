#include "framework/data_exchange.h"

#include "framework/number_conversion.h"
#include "framework/window_helpers.h"

void DDX_Control(CDataExchange* exchange, int id, CWnd& control) {
    if (!control.m_hWnd) {
        control.SubclassDlgItem(id, exchange->m_pDlgWnd->m_hWnd);
    }
}

void DDX_Text(CDataExchange* exchange, int id, std::string& value) {
    const HWND control = exchange->PrepareCtrl(id);
    if (!control) {
        return;
    }
    if (exchange->m_bSaveAndValidate) {
        value = TextOf(control);
    } else {
        SetTextIfChanged(control, value);
    }
}

void DDX_Text(CDataExchange* exchange, int id, int& value) {
    std::string text = std::to_string(value);
    DDX_Text(exchange, id, text);
    if (exchange->m_bSaveAndValidate && exchange->PrepareCtrl(id)) {
        value = ReadInteger(text);
    }
}

void DDX_Text(CDataExchange* exchange, int id, double& value) {
    std::string text = WriteShort(value);
    DDX_Text(exchange, id, text);
    if (exchange->m_bSaveAndValidate && exchange->PrepareCtrl(id)) {
        value = ReadWholeDecimal(text);
    }
}

void DDX_CBString(CDataExchange* exchange, int id, std::string& value) {
    const HWND control = exchange->PrepareCtrl(id);
    if (!control) {
        return;
    }
    if (exchange->m_bSaveAndValidate) {
        value = TextOf(control);
        return;
    }
    // Every text begins with the empty one, but it names no item.
    if (value.empty()) {
        ::SendMessageA(control, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
        SetTextIfChanged(control, value);
        return;
    }
    // Copied: a handler of the selection may assign to the value.
    const std::string wanted = value;
    const LRESULT selected = ::SendMessageA(control, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                                            reinterpret_cast<LPARAM>(wanted.c_str()));
    if (selected == CB_ERR) {
        SetTextIfChanged(control, wanted);
    }
}

void DDX_Check(CDataExchange* exchange, int id, int& value) {
    const HWND control = exchange->PrepareCtrl(id);
    if (!control) {
        return;
    }
    if (exchange->m_bSaveAndValidate) {
        value = static_cast<int>(::SendMessageA(control, BM_GETCHECK, 0, 0));
    } else {
        ::SendMessageA(control, BM_SETCHECK, static_cast<WPARAM>(value), 0);
    }
}

void DDX_DateTimeCtrl(CDataExchange* exchange, int id, SYSTEMTIME& value) {
    const HWND control = exchange->PrepareCtrl(id);
    if (!control) {
        return;
    }
    if (!exchange->m_bSaveAndValidate) {
        DateTime_SetSystemtime(control, GDT_VALID, &value);
        return;
    }
    SYSTEMTIME shown{};
    if (DateTime_GetSystemtime(control, &shown) == GDT_VALID) {
        value = shown;
    }
}
