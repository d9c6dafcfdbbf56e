#include "framework/data_exchange.h"

#include "framework/format_text.h"
#include "framework/trim_blanks.h"
#include "framework/window_helpers.h"

#include <charconv>
#include <cmath>

namespace {

template <typename Number>
Number ParseNumber(std::string_view text) {
    text = TrimBlanks(text);
    const char* begin = text.data();
    const char* end = begin + text.size();
    if (text.starts_with('+') && !text.starts_with("+-")) {
        ++begin;
    }
    Number value = 0;
    const auto [stopped, error] = std::from_chars(begin, end, value);
    const bool whole = error == std::errc() && stopped == end;
    return whole && std::isfinite(static_cast<double>(value)) ? value : 0;
}

template <typename Number>
void ExchangeNumber(const CDataExchange& exchange, int id, const char* format, Number& value) {
    const HWND control = exchange.PrepareCtrl(id);
    if (!control) {
        return;
    }
    if (exchange.m_bSaveAndValidate) {
        value = ParseNumber<Number>(TextOf(control));
    } else {
        SetTextIfChanged(control, FormatText(format, value));
    }
}

}  // namespace

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
    ExchangeNumber(*exchange, id, "%d", value);
}

void DDX_Text(CDataExchange* exchange, int id, double& value) {
    ExchangeNumber(*exchange, id, "%.15g", value);
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
