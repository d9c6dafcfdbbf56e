// What the file of the module shows to the system: its exports, its imports, its resources.

#include "frame/loaded_module.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

// What stands at an offset of a loaded module.
template <typename Part>
const Part* At(HMODULE module, DWORD offset) {
    return reinterpret_cast<const Part*>(reinterpret_cast<const char*>(module) + offset);
}

const IMAGE_NT_HEADERS32& Headers(HMODULE module) {
    return *At<IMAGE_NT_HEADERS32>(module, static_cast<DWORD>(At<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
}

DWORD Directory(HMODULE module, int index) {
    return Headers(module).OptionalHeader.DataDirectory[index].VirtualAddress;
}

using testing::UnorderedElementsAre;

TEST(ModuleFile, ExportsFiveUndecoratedNamesAndNothingElse) {
    const LoadedModule module;
    ASSERT_NE(module.Handle(), nullptr);
    EXPECT_EQ(Headers(module.Handle()).FileHeader.Machine, IMAGE_FILE_MACHINE_I386);
    const auto* exports = At<IMAGE_EXPORT_DIRECTORY>(module.Handle(), Directory(module.Handle(), 0));
    const auto* names = At<DWORD>(module.Handle(), exports->AddressOfNames);
    std::vector<std::string> found;
    for (DWORD index = 0; index < exports->NumberOfNames; ++index) {
        found.emplace_back(At<char>(module.Handle(), names[index]));
    }
    EXPECT_THAT(found, UnorderedElementsAre("OnPluginLoad", "OnPluginInit", "CreatePluginApi",
                                            "FreePluginApi", "OnPluginFree"));
    EXPECT_EQ(exports->NumberOfFunctions, 5U);
}

TEST(ModuleFile, ImportsSystemLibrariesOnly) {
    const LoadedModule module;
    const std::set<std::string> allowed = {"advapi32.dll", "comctl32.dll", "gdi32.dll",  "kernel32.dll",
                                           "msvcrt.dll",   "user32.dll",   "uxtheme.dll"};
    const auto* import = At<IMAGE_IMPORT_DESCRIPTOR>(module.Handle(), Directory(module.Handle(), 1));
    for (; import->Name; ++import) {
        std::string name = At<char>(module.Handle(), import->Name);
        std::transform(name.begin(), name.end(), name.begin(),
                       [](unsigned char c) { return std::tolower(c); });
        EXPECT_TRUE(allowed.count(name)) << name;
    }
}

BOOL CALLBACK CollectLanguage(HMODULE, LPCSTR, LPCSTR, WORD language, LONG_PTR found) {
    reinterpret_cast<std::vector<int>*>(found)->push_back(language);
    return TRUE;
}

TEST(ModuleFile, CarriesItsResourcesInTheirLanguages) {
    const LoadedModule module;
    const LPCSTR dialogInit = MAKEINTRESOURCEA(240);
    const struct {
        LPCSTR type;
        int id;
        std::vector<int> languages;
    } rows[] = {
        {RT_DIALOG, 278, {1028, 1033, 2052}},
        {RT_DIALOG, 279, {1028, 1033, 2052}},
        {RT_DIALOG, 280, {1028, 1033, 2052}},
        {RT_DIALOG, 4490, {1028, 1033, 2052}},
        {RT_STRING, 626, {1028, 1033, 2052}},
        {RT_STRING, 633, {1028, 1033, 2052}},
        {dialogInit, 280, {1028, 2052}},
        {RT_MANIFEST, 2, {1033}},
        {RT_MANIFEST, 1, {}},
    };
    for (const auto& row : rows) {
        std::vector<int> found;
        EnumResourceLanguagesA(module.Handle(), row.type, MAKEINTRESOURCEA(row.id), &CollectLanguage,
                               reinterpret_cast<LONG_PTR>(&found));
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found, row.languages) << row.id;
    }
}

}  // namespace
