#include "res/resource_loader.h"

#include "res/language.h"

namespace {

constexpr unsigned kStringsPerBlock = 16;

// Only the user-interface thread loads texts.
char g_conversionBuffer[4096];
constexpr int kMaxBytes = sizeof g_conversionBuffer - 1;

HRSRC LocateIn(HMODULE module, LPCSTR type, unsigned id, WORD language) {
    if (type == RT_STRING) {
        const unsigned block = id / kStringsPerBlock + 1;
        const auto wideType = MAKEINTRESOURCEW(LOWORD(RT_STRING));
        return FindResourceExW(module, wideType, MAKEINTRESOURCEW(block), language);
    }
    return FindResourceExA(module, type, MAKEINTRESOURCEA(LOWORD(id)), language);
}

HRSRC Locate(HMODULE module, LPCSTR type, unsigned id, WORD language) {
    HRSRC found = LocateIn(module, type, id, language);
    if (!found && language != 0) found = LocateIn(module, type, id, 0);
    return found;
}

// How many of the characters fit into the buffer when they are converted one by one.
int CountThatFits(const wchar_t* text, int length) {
    int bytes = 0;
    for (int i = 0; i < length; ++i) {
        bytes += WideCharToMultiByte(CP_ACP, 0, text + i, 1, nullptr, 0, nullptr, nullptr);
        if (bytes > kMaxBytes) return i;
    }
    return length;
}

// Converts into the buffer, terminated.
void ConvertToAnsi(const wchar_t* text, int length) {
    int bytes = WideCharToMultiByte(CP_ACP, 0, text, length, g_conversionBuffer, kMaxBytes, nullptr, nullptr);
    if (bytes == 0) {
        length = CountThatFits(text, length);
        bytes = WideCharToMultiByte(CP_ACP, 0, text, length, g_conversionBuffer, kMaxBytes, nullptr, nullptr);
    }
    g_conversionBuffer[bytes] = '\0';
}

}  // namespace

HMODULE GetOwnModuleHandle() {
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCSTR>(&GetOwnModuleHandle), &module);
    return module;
}

HGLOBAL FindResourceInLanguage(HMODULE module, LPCSTR type, unsigned id, std::uint16_t language) {
    const HRSRC found = Locate(module, type, id, language);
    return found ? LoadResource(module, found) : nullptr;
}

std::string& LoadResString(std::string& out, unsigned id) {
    out.clear();
    const HMODULE module = GetOwnModuleHandle();
    const HRSRC found = Locate(module, RT_STRING, id, g_wResLanguage);
    const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    auto entry = static_cast<const wchar_t*>(loaded ? LockResource(loaded) : nullptr);
    if (!entry) return out;

    // A block is a row of entries, each a length and as many characters.
    const wchar_t* const end = entry + SizeofResource(module, found) / sizeof(wchar_t);
    for (unsigned skip = id % kStringsPerBlock; skip > 0 && entry < end; --skip) entry += 1 + *entry;
    if (entry >= end || *entry == 0 || *entry > end - entry - 1) return out;
    ConvertToAnsi(entry + 1, *entry);
    return out = g_conversionBuffer;
}

HGLOBAL LoadResDialog(unsigned id, HMODULE module) {
    return FindResourceInLanguage(module ? module : GetOwnModuleHandle(), RT_DIALOG, id, g_wResLanguage);
}
