#include "desk/desk_list.h"
#include "desk/pane_layout.h"
#include "host/sample.h"
#include "services/service_set.h"
#include "services/wording.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <tuple>

namespace {

TEST(DeskListTest, SortsNumbersAsNumbersAndKeepsTheBooksOrderAmongEquals) {
    const int rows[] = {30, 4, 100, 31};
    const auto tens = [](const void* row) { return *static_cast<const int*>(row) / 10; };
    const auto text = [](const void* row) { return std::to_string(*static_cast<const int*>(row)); };
    DeskList list("Numbers", {{"tens", 1, text, tens}, {"text", 1, text, nullptr}}, [&] {
        return std::vector<const void*>{&rows[0], &rows[1], &rows[2], &rows[3]};
    });
    const std::tuple<int, bool, const char*> orders[] = {
        {0, false, "4 30 31 100 "},  {0, true, "100 30 31 4 "},  {1, false, "100 30 31 4 "},
        {-1, false, "30 4 100 31 "}, {7, false, "30 4 100 31 "},
    };
    for (const auto& [column, descending, order] : orders) {
        list.SortBy(column, descending);
        std::string shown;
        for (std::size_t i = 0; i < list.Count(); ++i) {
            shown += list.Text(i, 1) + ' ';
        }
        EXPECT_EQ(shown, order) << column << descending;
    }
    EXPECT_EQ(list.Find(&rows[2]), 2);
    EXPECT_EQ(list.Find(&list), -1);
    EXPECT_EQ(list.Text(4, 0) + list.Text(0, 2), "") << "beyond the end";
}

// Every word of the desk is said in both Chinese languages, and arguments stand where the language has them.
TEST(WordingTest, SpeaksChinese) {
    const std::unique_ptr<Book> book = Sample();
    ServiceSet services(*book, {});
    const std::vector<DeskList> lists = MakeDeskLists(*book, services.journal);
    for (const std::uint16_t language : {2052, 1028}) {
        SpeakLanguage(language);
        for (const DeskList& list : lists) {
            EXPECT_NE(Say(list.Name()), list.Name());
            for (const DeskColumn& column : list.Columns()) {
                EXPECT_NE(Say(column.title), column.title);
            }
        }
    }
    EXPECT_EQ(lists[kOrderList].Text(1, 4), "賣出");
    EXPECT_EQ(SayMenu("Save &as..."), "另存新檔(&A)...");
    EXPECT_EQ(Say("numerator %1 of the %2 is not below its denominator %3", {"9", "%3", "8"}),
              "%3的分子 9 不小於分母 8");
    SpeakLanguage(1033);
    EXPECT_EQ(SayMenu("Save &as..."), "Save &as...");
    EXPECT_EQ(lists[kOrderList].Text(1, 4), "sell");
}

TEST(DeskSettingsTest, ComeBackAsTheyWereAndADamagedFileCostsNothing) {
    const std::string path = "desk_settings_test.json";
    DeskSettings settings;
    settings.panes.at = {0.75, 0.9, 0.3, 0.2};
    settings.placed = true;
    settings.window = {-20, 10, 900, 700};
    settings.dpi = 144;
    settings.lists[kFillList] = {{10, 20}, 1, true};
    ASSERT_TRUE(WriteDeskSettings(settings, path));
    const DeskSettings back = ReadDeskSettings(path);
    EXPECT_EQ(back.panes.at, settings.panes.at);
    const PaneBox box = AtDpi(back.window, back.dpi, 96);
    EXPECT_EQ(std::make_tuple(box.left, box.top, box.right, box.bottom), std::make_tuple(-20, 10, 593, 470))
        << "as large to the eye on a plain screen";
    EXPECT_EQ(back.lists[kFillList].widths, settings.lists[kFillList].widths);
    EXPECT_TRUE(back.lists[kFillList].descending);
    for (const char* text : {"", "[]", "{\"format\":\"emendo-desk-1\",\"dividers\":[1]}"}) {
        std::ofstream(path) << text;
        EXPECT_FALSE(ReadDeskSettings(path).placed) << text;
    }
    std::remove(path.c_str());
}

}  // namespace
