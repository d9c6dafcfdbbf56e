#include "app/file_version.h"

#include <vector>

#include <windows.h>

std::string FileVersion(const std::string& path) {
    const DWORD size = GetFileVersionInfoSizeA(path.c_str(), nullptr);
    std::vector<char> block(size);
    if (size == 0 || !GetFileVersionInfoA(path.c_str(), 0, size, block.data())) {
        return {};
    }
    void* text = nullptr;
    UINT length = 0;
    if (!VerQueryValueA(block.data(), "\\StringFileInfo\\040904B0\\ProductVersion", &text, &length)) {
        return {};
    }
    return static_cast<const char*>(text);
}

std::string OwnVersion() {
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
    return FileVersion(std::string(path, length));
}
