// Codes and names in two-byte characters. Runs in a Chinese locale; the texts come from Unicode, so that both
// code pages are served.

#include "controls/x_combo_box.h"
#include "tests/controls/control_dialog.h"

#include <gtest/gtest.h>

namespace {

std::string Ansi(const std::wstring& text) {
    std::string ansi(text.size() * 2, '\0');
    ansi.resize(static_cast<std::size_t>(
        ::WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), ansi.data(),
                              static_cast<int>(ansi.size()), nullptr, nullptr)));
    return ansi;
}

class DoubleByteTest : public testing::Test {
protected:
    ControlDialog dialog;
    CxComboBox combo;

    void SetUp() override {
        ASSERT_TRUE(::GetACP() == 936 || ::GetACP() == 950) << "not a Chinese locale";
        dialog.Add("COMBOBOX", CBS_DROPDOWN | CBS_AUTOHSCROLL | WS_VSCROLL, 5);
        ASSERT_TRUE(combo.SubclassDlgItem(5, dialog.m_hWnd));
        ::SetFocus(combo.EditWindow());
    }
    void TearDown() override { dialog.DestroyWindow(); }

    std::wstring Shown() const {
        wchar_t text[64] = L"";
        ::GetWindowTextW(combo.EditWindow(), text, 64);
        return text;
    }
    void Type(wchar_t character) {
        ::SendMessageW(combo.EditWindow(), WM_CHAR, character, 1);
        dialog.Pump();
    }
};

TEST_F(DoubleByteTest, CompletesWholeCharacters) {
    combo.AddString(Ansi(L"\u91D1\u9053 \u671F\u8CA8"));
    combo.AddString(Ansi(L"\u91D1A second"));
    combo.AlignColumns(true);
    EXPECT_EQ(combo.GetLBText(1), Ansi(L"\u91D1A  second")) << "one column in bytes";
    Type(L'\u91D1');
    EXPECT_EQ(Shown(), L"\u91D1\u9053");
    const DWORD marked = static_cast<DWORD>(::SendMessageW(combo.EditWindow(), EM_GETSEL, 0, 0));
    EXPECT_EQ(marked, static_cast<DWORD>(MAKELONG(1, 2))) << "the second character alone";
    Type(L'A');
    EXPECT_EQ(Shown(), L"\u91D1A");
    combo.SetCurSel(0);
    EXPECT_EQ(Shown(), L"\u91D1\u9053");
    EXPECT_EQ(combo.FindItemByCode(Ansi(L"\u91D1\u9053")), 0);
    combo.SetShowFullText(true);
    EXPECT_EQ(combo.GetText(), Ansi(L"\u91D1\u9053"));
}

TEST_F(DoubleByteTest, ATrailByteIsNoSeparator) {
    // The second byte of this character is '|' in its code page.
    const std::string code = ::GetACP() == 936 ? "\x84\x7C" : "\xA5\x7C";
    combo.SetSeparator('|');
    combo.AddString(code + "|name");
    EXPECT_EQ(combo.GetItemCode(0), code);
    combo.SetCurSel(0);
    EXPECT_EQ(TextOf(combo.EditWindow()), code);
    combo.AlignColumns(false);
    EXPECT_EQ(combo.GetLBText(0), code + "|name");
}

}  // namespace
