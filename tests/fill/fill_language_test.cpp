#include "fill/fill_window.h"
#include "res/string_table.h"

namespace {

using FillLanguages = FillWindow;

// Run where the code page holds the words of all three languages.
TEST_F(FillLanguages, WordsDifferAndBytesDoNot) {
    ASSERT_EQ(GetACP(), 936u);
    std::vector<std::string> english;
    for (const auto& [language, source, direction] :
         {std::tuple{kEnglish, "Manual Order", "Buy"},
          {kSimplifiedChinese, "\xC8\xCB\xB9\xA4\xB5\xA5", "\xC2\xF2\xC8\xEB"},
          {kTraditionalChinese, "\xC8\xCB\xB9\xA4\x86\xCE", "\xD9\x49\xC8\xEB"}}) {
        g_wResLanguage = language;
        service.fills.clear();
        OpenOn(0, order);
        EXPECT_EQ(Texts({IDC_FILL_SOURCE, IDC_DIRECTION}), std::string(source) + "|" + direction);
        EXPECT_EQ(SendMessageA(Item(IDC_DIRECTION), CB_GETCURSEL, 0, 0), 0) << "of the list";
        Press(IDC_CONFIRM);
        FillRecord carry = book.FillOf("EXF CA 150320", 'C');
        OpenOn(0, carry);
        EXPECT_TRUE(Shown(IDC_OPEN_CONTRACT));
        SetText(IDC_OPEN_CONTRACT, "150618");
        SetText(IDC_FILL_PRICE2_WHOLE, "99");
        MessageBoxScript boxes(Box(ResString(IDS_ASK_FILL_ABOVE_REMAINING), ResString(IDS_TIPS), IDYES));
        Press(IDC_CONFIRM);
        std::vector<std::string> sent;
        for (FillRecord& fill : service.fills) {
            fill.fillTime.Set("");
            fill.exchangeFillNo.Set("");
            sent.emplace_back(reinterpret_cast<const char*>(&fill), sizeof fill);
        }
        ASSERT_EQ(sent.size(), 3u);
        EXPECT_EQ(sent[0].substr(109, 2) + sent[1].substr(109, 2) + sent[2].substr(109, 2), "MBCSCB");
        if (english.empty()) {
            english = sent;
        }
        EXPECT_EQ(sent, english);
    }
}

}  // namespace
