// Codes and names in two-byte characters. Runs in a Chinese locale; the texts come from Unicode, so that both
// code pages are served.

#include "tests/controls/combo_box_fixture.h"

namespace {

std::string Ansi(const wchar_t* text) {
    char ansi[64] = "";
    ::WideCharToMultiByte(CP_ACP, 0, text, -1, ansi, sizeof ansi, nullptr, nullptr);
    return ansi;
}

class DoubleByteTest : public ComboBoxFixture {
protected:
    void SetUp() override { ASSERT_TRUE(::GetACP() == 936 || ::GetACP() == 950) << "not a Chinese locale"; }
    void Type(wchar_t character) {
        ToEdit(WM_CHAR, character, 1);
        dialog.Pump();
    }
};

TEST_F(DoubleByteTest, CompletesWholeCharacters) {
    Add({Ansi(L"\u91D1\u9053 \u671F\u8CA8"), Ansi(L"\u91D1A second")});
    combo.AlignColumns(true);
    EXPECT_EQ(combo.GetLBText(1), Ansi(L"\u91D1A  second")) << "one column in bytes";
    Type(L'\u91D1');
    EXPECT_EQ(Shown(), Ansi(L"\u91D1\u9053"));
    EXPECT_EQ(Marked(), std::make_pair(1, 2)) << "the second character alone";
    Type(L'A');
    EXPECT_EQ(Shown(), Ansi(L"\u91D1A"));
    combo.SetCurSel(0);
    EXPECT_EQ(Shown(), Ansi(L"\u91D1\u9053"));
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
    EXPECT_EQ(Shown(), code);
    combo.AlignColumns(false);
    EXPECT_EQ(combo.GetLBText(0), code + "|name");
}

}  // namespace
