#include "scenario/window_text.h"

#include "book/code_page.h"
#include "book/host_text.h"

#include <windows.h>

#include <commctrl.h>

std::string Utf8(std::wstring_view wide) {
    return ToCodePage(wide, CP_UTF8);
}

std::string TextOf(HWND window) {
    // Asked by message: the module's lists answer with the code of the line that they show.
    std::wstring text(1024, L'\0');
    const LRESULT length =
        SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length > 0 ? length : 0));
    return Utf8(text);
}

std::string ClassOf(HWND window) {
    wchar_t name[64];
    return Utf8({name, static_cast<std::size_t>(GetClassNameW(window, name, 64))});
}

std::string ListTextOf(HWND comboBox, int index) {
    const LRESULT length = SendMessageW(comboBox, CB_GETLBTEXTLEN, static_cast<WPARAM>(index), 0);
    if (length < 0) {
        return {};
    }
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    const LRESULT copied = SendMessageW(comboBox, CB_GETLBTEXT, static_cast<WPARAM>(index),
                                        reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(copied > 0 ? copied : 0));
    return Utf8(text);
}

std::string CellText(HWND list, int row, int column) {
    wchar_t text[256] = L"";
    LVITEMW query{};
    query.iSubItem = column;
    query.pszText = text;
    query.cchTextMax = 256;
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&query));
    return Utf8(text);
}

std::string ModuleString(HMODULE module, unsigned id, WORD language) {
    // A block of the table holds sixteen texts, each with its length before it.
    constexpr unsigned kBlock = 16;
    const HRSRC found = FindResourceExW(module, reinterpret_cast<LPCWSTR>(RT_STRING),
                                        MAKEINTRESOURCEW(id / kBlock + 1), language);
    const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    const auto* text = static_cast<const wchar_t*>(loaded ? LockResource(loaded) : nullptr);
    if (!text) {
        return {};
    }
    for (unsigned skipped = 0; skipped < id % kBlock; ++skipped) {
        text += 1 + *text;
    }
    return Utf8FromAnsi(ToCodePage({text + 1, static_cast<std::size_t>(*text)}, CP_ACP));
}
