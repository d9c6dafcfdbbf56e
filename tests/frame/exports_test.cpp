// What the file of the module shows to the system: its exports, its imports, its resources.

#include "app/file_version.h"
#include "app/host_app.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::Contains;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;

class ModuleFile : public testing::Test {
protected:
    // What stands at an offset of the loaded file.
    template <typename Part>
    const Part* At(DWORD offset) {
        return reinterpret_cast<const Part*>(reinterpret_cast<const char*>(library) + offset);
    }
    const IMAGE_NT_HEADERS32& Headers() {
        return *At<IMAGE_NT_HEADERS32>(static_cast<DWORD>(At<IMAGE_DOS_HEADER>(0)->e_lfanew));
    }
    template <typename Part>
    const Part* Directory(int index) {
        return At<Part>(Headers().OptionalHeader.DataDirectory[index].VirtualAddress);
    }

    const ModuleHandle module{"EmendoOrd.dll"};
    const HMODULE library = module.Library();
};

TEST_F(ModuleFile, ExportsFiveUndecoratedNamesAndNothingElse) {
    EXPECT_EQ(Headers().FileHeader.Machine, IMAGE_FILE_MACHINE_I386);
    const auto* exports = Directory<IMAGE_EXPORT_DIRECTORY>(0);
    const auto* names = At<DWORD>(exports->AddressOfNames);
    std::vector<std::string> found;
    for (DWORD index = 0; index < exports->NumberOfNames; ++index) {
        found.emplace_back(At<char>(names[index]));
    }
    EXPECT_THAT(found, UnorderedElementsAre("OnPluginLoad", "OnPluginInit", "CreatePluginApi",
                                            "FreePluginApi", "OnPluginFree"));
    EXPECT_EQ(exports->NumberOfFunctions, 5U);
}

TEST_F(ModuleFile, ImportsSystemLibrariesOnly) {
    const std::vector<std::string> allowed = {"advapi32.dll", "comctl32.dll", "gdi32.dll",  "kernel32.dll",
                                              "msvcrt.dll",   "user32.dll",   "uxtheme.dll"};
    for (const auto* import = Directory<IMAGE_IMPORT_DESCRIPTOR>(1); import->Name; ++import) {
        std::string name = At<char>(import->Name);
        EXPECT_THAT(allowed, Contains(CharLowerA(name.data())));
    }
}

BOOL CALLBACK CollectLanguage(HMODULE, LPCSTR, LPCSTR, WORD language, LONG_PTR found) {
    reinterpret_cast<std::vector<int>*>(found)->push_back(language);
    return TRUE;
}

TEST_F(ModuleFile, CarriesItsResourcesInTheirLanguages) {
    const LPCSTR dialogInit = MAKEINTRESOURCEA(240);
    const std::vector<int> three = {1028, 1033, 2052};
    const std::tuple<LPCSTR, int, std::vector<int>> rows[] = {
        {RT_DIALOG, 278, three},
        {RT_DIALOG, 279, three},
        {RT_DIALOG, 280, three},
        {RT_DIALOG, 4490, three},
        {RT_STRING, 626, three},
        {RT_STRING, 633, three},
        {dialogInit, 280, {1028, 2052}},
        {RT_MANIFEST, 2, {1033}},
        {RT_MANIFEST, 1, {}},
        {RT_VERSION, 1, {0}},
    };
    for (const auto& [type, id, languages] : rows) {
        std::vector<int> found;
        EnumResourceLanguagesA(library, type, MAKEINTRESOURCEA(id), &CollectLanguage,
                               reinterpret_cast<LONG_PTR>(&found));
        EXPECT_THAT(found, UnorderedElementsAreArray(languages)) << id;
    }
}

TEST_F(ModuleFile, SaysWhatItIsInThreeLanguagesAndWhichBuild) {
    const std::string path = ProgramFolder() + "EmendoOrd.dll";
    std::vector<char> block(GetFileVersionInfoSizeA(path.c_str(), nullptr));
    ASSERT_TRUE(GetFileVersionInfoA(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
    const auto read = [&](const std::wstring& language, const wchar_t* name) -> std::wstring {
        void* text = nullptr;
        UINT length = 0;
        const std::wstring place = L"\\StringFileInfo\\" + language + L"04B0\\" + name;
        const bool found = VerQueryValueW(block.data(), place.c_str(), &text, &length);
        return found ? static_cast<const wchar_t*>(text) : L"";
    };
    EXPECT_EQ(read(L"0409", L"FileDescription"), L"Emendo order and fill dialogs");
    EXPECT_EQ(read(L"0804", L"FileDescription"), L"Emendo 定单与成交录入窗口");
    EXPECT_EQ(read(L"0404", L"FileDescription"), L"Emendo 定單與成交錄入窗口");
    EXPECT_THAT(FileVersion(path), testing::MatchesRegex(R"(\d+\.\d+\.\d+ \(build .+\))"));
}

}  // namespace
