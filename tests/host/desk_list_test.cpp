#include "desk/desk_list.h"
#include "desk/pane_layout.h"

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

TEST(PaneLayoutTest, PanesCoverTheDeskAndNoneVanishes) {
    PaneLayout layout;
    layout.Move(kBelowOrders, 2);
    layout.Move(kBesideFills, -1);
    int area = 0;
    for (const PaneBox& box : layout.Panes(1000, 600, 0)) {
        EXPECT_GE(box.right - box.left, 100);
        EXPECT_GE(box.bottom - box.top, 60);
        area += (box.right - box.left) * (box.bottom - box.top);
    }
    EXPECT_EQ(area, 1000 * 600);
}

TEST(DeskSettingsTest, ComeBackAsTheyWereAndADamagedFileCostsNothing) {
    const std::string path = "desk_settings_test.json";
    DeskSettings settings;
    settings.panes.at = {0.75, 0.9, 0.3, 0.2};
    settings.placed = true;
    settings.window = {-20, 10, 900, 700};
    settings.lists[kFillList] = {{10, 20}, 1, true};
    ASSERT_TRUE(WriteDeskSettings(settings, path));
    const DeskSettings back = ReadDeskSettings(path);
    EXPECT_EQ(back.panes.at, settings.panes.at);
    EXPECT_EQ(back.window.left, -20);
    EXPECT_EQ(back.lists[kFillList].widths, settings.lists[kFillList].widths);
    EXPECT_TRUE(back.lists[kFillList].descending);
    for (const char* text : {"", "[]", "{\"format\":\"emendo-desk-1\",\"dividers\":[1]}"}) {
        std::ofstream(path) << text;
        EXPECT_FALSE(ReadDeskSettings(path).placed) << text;
    }
    std::remove(path.c_str());
}

}  // namespace
