#include "controls/dialog_exchange.h"
#include "tests/controls/combo_box_fixture.h"

namespace {

// What a system shows of words whose characters it does not have: two of the three codes look alike.
std::string WordOf(char code) {
    switch (code) {
        case 'B':
        case 'S':
            return "??";
        case 'A':
            return "Double";
        default:
            return code ? std::string(1, code) : std::string();
    }
}

char CodeOfWord(std::string_view word) {
    return word == "Double" ? 'A' : '\0';
}

constexpr CodeList kDirections{"BSA", &WordOf, &CodeOfWord};

class DialogExchangeTest : public ComboBoxFixture {
protected:
    CDataExchange in{dialog, false};
    CDataExchange out{dialog, true};

    char Exchanged(char code) {
        DDX_Code(&out, combo, kDirections, code);
        return code;
    }
    // In place of all that stands there.
    static void Type(const CxComboBox& box, const char* text) {
        const HWND edit = box.EditWindow();
        ::SendMessageA(edit, EM_SETSEL, 0, -1);
        ::SendMessageA(edit, WM_CLEAR, 0, 0);
        for (; *text; ++text) {
            ::SendMessageA(edit, WM_CHAR, static_cast<WPARAM>(*text), 1);
        }
    }
    std::string Exchanged(std::string code) {
        DDX_CodedText(&out, combo, code);
        return code;
    }
};

TEST_F(DialogExchangeTest, ACodeIsItsLineAndStaysUntilItIsTouched) {
    combo.SetSeparator(0);
    combo.SetLines({"??", "??", "Double"});
    for (const char loaded : {'B', 'S', 'A', 'C', '\0'}) {
        char code = loaded;
        DDX_Code(&in, combo, kDirections, code);
        EXPECT_EQ(Shown(), WordOf(loaded));
        EXPECT_EQ(Exchanged(loaded), loaded) << "not touched";
    }
    char sell = 'S';
    DDX_Code(&in, combo, kDirections, sell);
    combo.SetCurSel(0);
    EXPECT_EQ(Exchanged('S'), 'B') << "another line of the same word";
    combo.SetWindowText("Double");
    EXPECT_EQ(Exchanged('S'), 'A');
    combo.SetWindowText("Doub");
    EXPECT_EQ(Exchanged('S'), 0);
    combo.SetWindowText("");
    EXPECT_EQ(Exchanged('S'), 0);
}

TEST_F(DialogExchangeTest, ACodedTextIsTheCodeOfTheShownLine) {
    combo.SetLines({"100010 Longer", "10001 Name", "10001 Other sign", "cu Copper", "X Only"});
    const struct {
        const char *loaded, *typed, *result;  // typed null: not touched
    } rows[] = {
        {"10001", nullptr, "10001"},  {"1000", nullptr, "1000"},
        {"1000 ", nullptr, "1000 "},  {"", nullptr, ""},
        {"CU", nullptr, "CU"},        {"10001", "100010", "100010"},
        {"100010", "10001", "10001"}, {"10001", " cu ", "cu"},
        {"10001", "CU", "cu"},        {"10001", "", ""},
        {"10001", " new", "new"},
    };
    for (const auto& row : rows) {
        std::string code = row.loaded;
        DDX_CodedText(&in, combo, code);
        if (row.typed) {
            Type(combo, row.typed);
        }
        EXPECT_EQ(Exchanged(code), row.result) << row.loaded;
    }
    combo.SetCurSel(2);
    std::string code = "10001";
    DDX_CodedText(&in, combo, code);
    EXPECT_EQ(combo.GetSelectedIndex(), 2) << "of equal codes the one that is shown already";
}

TEST_F(DialogExchangeTest, AnUpperCaseBoxGivesTheHostsOwnLetters) {
    CxComboBox upper;
    dialog.Add("COMBOBOX", CBS_DROPDOWN | CBS_UPPERCASE, 9);
    ASSERT_TRUE(upper.SubclassDlgItem(9, dialog.m_hWnd));
    upper.SetLines({"CU Upper", "cu Copper", "al Aluminium"});
    for (const char* const loaded : {"cu", "CU", "zn"}) {
        std::string code = loaded;
        DDX_CodedText(&in, upper, code);
        DDX_CodedText(&out, upper, code);
        EXPECT_EQ(code, loaded) << "shown as " << TextOf(upper.EditWindow());
    }
    ::SetFocus(upper.EditWindow());
    Type(upper, "al");
    std::string code = "cu";
    DDX_CodedText(&out, upper, code);
    EXPECT_EQ(TextOf(upper.EditWindow()) + " is " + code, "AL is al");
}

TEST_F(DialogExchangeTest, FlagsAndNumbers) {
    dialog.Add("BUTTON", BS_AUTOCHECKBOX, 7);
    dialog.Add("EDIT", 0, 8);
    bool flag = true;
    std::int32_t number = -12;
    DDX_Flag(&in, 7, flag);
    DDX_Number(&in, 8, number);
    flag = false;
    number = 0;
    DDX_Flag(&out, 7, flag);
    DDX_Number(&out, 8, number);
    EXPECT_TRUE(flag);
    EXPECT_EQ(number, -12);
}

}  // namespace
