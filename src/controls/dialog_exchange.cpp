#include "controls/dialog_exchange.h"

#include "framework/trim_blanks.h"

namespace {

void ShowWithoutLine(CxComboBox& combo, const std::string& text) {
    combo.SetCurSel(-1);
    combo.SetWindowText(text);
}

}  // namespace

void DDX_Code(CDataExchange* exchange, CxComboBox& combo, const CodeList& list, char& code) {
    const int selected = combo.GetSelectedIndex();
    const std::string text = list.toText(code);
    if (!exchange->m_bSaveAndValidate) {
        const std::size_t line = code ? list.codes.find(code) : std::string_view::npos;
        if (line < static_cast<std::size_t>(combo.GetCount())) {
            combo.SetCurSel(static_cast<int>(line));
        } else {
            ShowWithoutLine(combo, text);
        }
    } else if (selected >= 0 && static_cast<std::size_t>(selected) < list.codes.size()) {
        code = list.codes[static_cast<std::size_t>(selected)];
    } else if (!combo.Shows(text)) {
        code = list.fromText(TrimBlanks(combo.GetText()));
    }
}

void DDX_CodedText(CDataExchange* exchange, CxComboBox& combo, std::string& code) {
    const int selected = combo.GetSelectedIndex();
    if (!exchange->m_bSaveAndValidate) {
        const bool shown = selected >= 0 && combo.GetItemCode(selected) == code;
        const int line = shown ? selected : combo.FindCode(code);
        if (line >= 0 && combo.GetItemCode(line) == code) {
            combo.SetCurSel(line);
        } else {
            ShowWithoutLine(combo, code);
        }
    } else if (selected >= 0) {
        code = combo.GetItemCode(selected);
    } else if (!combo.Shows(code)) {
        code = combo.GetCurrentCode();
    }
}

void DDX_Flag(CDataExchange* exchange, int id, bool& flag) {
    int value = flag;
    DDX_Check(exchange, id, value);
    flag = value != 0;
}

void DDX_Number(CDataExchange* exchange, int id, std::int32_t& number) {
    int value = number;
    DDX_Text(exchange, id, value);
    number = value;
}
