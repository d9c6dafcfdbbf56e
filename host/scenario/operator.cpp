#include "scenario/operator.h"

#include "scenario/window_text.h"
#include "services/wide_text.h"

#include <cstring>

namespace {

struct KeyName {
    std::string_view name;
    unsigned virtualKey;
};
constexpr KeyName kKeys[] = {
    {"Enter", VK_RETURN},  {"Tab", VK_TAB},        {"Esc", VK_ESCAPE},   {"Space", VK_SPACE},
    {"Up", VK_UP},         {"Down", VK_DOWN},      {"Left", VK_LEFT},    {"Right", VK_RIGHT},
    {"Home", VK_HOME},     {"End", VK_END},        {"PageUp", VK_PRIOR}, {"PageDown", VK_NEXT},
    {"Delete", VK_DELETE}, {"Backspace", VK_BACK}, {"F4", VK_F4},
};

// Where typed characters go: the edit part of a combo box, otherwise the control itself.
HWND EditOf(HWND control) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    return ClassOf(control) == "ComboBox" && GetComboBoxInfo(control, &info) && info.hwndItem ? info.hwndItem
                                                                                              : control;
}

int FindLine(HWND comboBox, const std::string& text) {
    int first = -1;
    const int count = static_cast<int>(SendMessageW(comboBox, CB_GETCOUNT, 0, 0));
    for (int index = 0; index < count; ++index) {
        const std::string line = ListTextOf(comboBox, index);
        if (line == text || line.starts_with(text + ' ')) {
            return index;
        }
        if (first < 0 && line.starts_with(text)) {
            first = index;
        }
    }
    return first;
}

std::string NodeText(HWND tree, HTREEITEM item) {
    wchar_t text[256] = L"";
    TVITEMW query{};
    query.mask = TVIF_TEXT | TVIF_HANDLE;
    query.hItem = item;
    query.pszText = text;
    query.cchTextMax = 256;
    SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&query));
    return Utf8(text);
}

HTREEITEM NextItem(HWND tree, UINT relation, HTREEITEM item) {
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(tree, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

POINT Middle(const RECT& rect) {
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

// The keyboard's state is the thread's own, as messages of real keys would leave it.
void Hold(unsigned modifier, bool down) {
    BYTE state[256];
    if (modifier && GetKeyboardState(state)) {
        state[modifier] = down ? 0x80 : 0;
        SetKeyboardState(state);
    }
}

}  // namespace

std::optional<unsigned> Operator::KeyNamed(std::string_view name) {
    for (const KeyName& key : kKeys) {
        if (key.name == name) {
            return key.virtualKey;
        }
    }
    return std::nullopt;
}

std::optional<KeyPress> Operator::KeyPressNamed(std::string_view name) {
    constexpr KeyName kModifiers[] = {{"Shift+", VK_SHIFT}, {"Ctrl+", VK_CONTROL}, {"Alt+", VK_MENU}};
    for (const KeyName& modifier : kModifiers) {
        if (!name.starts_with(modifier.name)) {
            continue;
        }
        const std::string_view rest = name.substr(modifier.name.size());
        const std::optional<unsigned> key =
            rest.size() == 1 ? std::optional<unsigned>(static_cast<unsigned char>(rest[0])) : KeyNamed(rest);
        return key ? std::optional<KeyPress>({*key, modifier.virtualKey}) : std::nullopt;
    }
    const std::optional<unsigned> key = KeyNamed(name);
    return key ? std::optional<KeyPress>({*key, 0}) : std::nullopt;
}

std::string UnusableBecause(HWND control) {
    if (!IsWindowVisible(control)) {
        return "is hidden";
    }
    return IsWindowEnabled(control) ? "" : "is disabled";
}

void Operator::Rest(unsigned milliseconds) {
    m_host.PumpUntil([] { return false; }, milliseconds);
}

void Operator::Focus(HWND control) {
    SetFocus(EditOf(control));
    m_host.PumpUntilIdle();
}

void Operator::Key(KeyPress key) {
    Hold(key.modifier, true);
    const bool alt = key.modifier == VK_MENU;
    const LPARAM down =
        static_cast<LPARAM>(1 | (MapVirtualKeyW(key.virtualKey, 0) << 16) | (alt ? 1u << 29 : 0));
    PostMessageW(GetFocus(), alt ? WM_SYSKEYDOWN : WM_KEYDOWN, key.virtualKey, down);
    m_host.PumpUntilIdle();
    // The key may have closed the window that had the focus.
    if (HWND focus = GetFocus()) {
        PostMessageW(focus, alt ? WM_SYSKEYUP : WM_KEYUP, key.virtualKey,
                     down | static_cast<LPARAM>(0xC0000000));
        m_host.PumpUntilIdle();
    }
    Hold(key.modifier, false);
}

void Operator::TypeCharacters(const std::string& text) {
    for (const wchar_t character : Wide(text)) {
        PostMessageW(GetFocus(), WM_CHAR, character, 1);
        m_host.PumpUntilIdle();
        if (m_pause) {
            Rest(m_pause / 8);
        }
    }
}

void Operator::Type(HWND control, const std::string& text) {
    Focus(control);
    SendMessageW(EditOf(control), EM_SETSEL, 0, -1);
    if (text.empty()) {
        Key({VK_DELETE, 0});
    }
    TypeCharacters(text);
}

void Operator::PointAt(HWND window, POINT point) {
    // Controls that ask where the pointer is are to hear the same as those that read the message.
    ClientToScreen(window, &point);
    SetCursorPos(point.x, point.y);
}

void Operator::ClickAt(HWND window, POINT point) {
    const LPARAM where = MAKELPARAM(point.x, point.y);
    PointAt(window, point);
    PostMessageW(window, WM_MOUSEMOVE, 0, where);
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, where);
    PostMessageW(window, WM_LBUTTONUP, 0, where);
    m_host.PumpUntilIdle();
}

void Operator::Click(HWND window) {
    RECT client;
    GetClientRect(window, &client);
    ClickAt(window, Middle(client));
}

std::string Operator::Choose(HWND comboBox, const std::string& text) {
    const int index = FindLine(comboBox, text);
    if (index < 0) {
        const LRESULT count = SendMessageW(comboBox, CB_GETCOUNT, 0, 0);
        return "has no line '" + text + "' among its " + std::to_string(count);
    }
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(comboBox, &info);
    Focus(comboBox);
    ClickAt(comboBox, Middle(info.rcButton));
    if (!SendMessageW(comboBox, CB_GETDROPPEDSTATE, 0, 0)) {
        return "does not open its list";
    }
    if (m_pause) {
        Rest(m_pause);
    }
    RECT line{};
    SendMessageW(info.hwndList, LB_SETTOPINDEX, static_cast<WPARAM>(index), 0);
    SendMessageW(info.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&line));
    ClickAt(info.hwndList, Middle(line));
    const auto chosen = static_cast<int>(SendMessageW(comboBox, CB_GETCURSEL, 0, 0));
    return chosen == index ? ""
                           : "shows line " + std::to_string(chosen) + " after line " + std::to_string(index) +
                                 " was clicked";
}

std::string Operator::ClickNode(HWND tree, HTREEITEM& parent, const std::string& text) {
    HTREEITEM item = parent ? NextItem(tree, TVGN_CHILD, parent) : NextItem(tree, TVGN_ROOT, nullptr);
    while (item && !NodeText(tree, item).starts_with(text)) {
        item = NextItem(tree, TVGN_NEXT, item);
    }
    if (!item) {
        return "has no node '" + text + "' here";
    }
    parent = item;
    SendMessageW(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
    RECT place{};
    std::memcpy(&place, &item, sizeof item);  // the message takes the item where it puts its place
    if (!SendMessageW(tree, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&place))) {
        return "does not show its node '" + text + "'";
    }
    ClickAt(tree, Middle(place));
    return {};
}

std::string Operator::ClickCell(HWND list, const std::string& text) {
    constexpr int kColumns = 2;
    const int count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    for (int row = 0; row < count; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            if (CellText(list, row, column) != text) {
                continue;
            }
            SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
            RECT place{LVIR_LABEL, column, 0, 0};
            SendMessageW(list, LVM_GETSUBITEMRECT, static_cast<WPARAM>(row),
                         reinterpret_cast<LPARAM>(&place));
            ClickAt(list, Middle(place));
            return {};
        }
    }
    return "has no cell '" + text + "'";
}
