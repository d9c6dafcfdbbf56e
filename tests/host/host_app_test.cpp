#include "app/host_app.h"
#include "host/sample.h"
#include "scenario/window_text.h"
#include "support/window_kit.h"

#include <commctrl.h>
#include <gtest/gtest.h>

namespace {

void DoubleClick(HWND list, int row) {
    RECT place{LVIR_BOUNDS, 0, 0, 0};
    SendMessageA(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    const LPARAM point = MAKELPARAM(place.left + 5, (place.top + place.bottom) / 2);
    SendMessageA(list, WM_LBUTTONDBLCLK, MK_LBUTTON, point);
}

// Takes the row that the operator picked, and lets go of the list on the spot.
class Picker final : public ISelectDataNotify {
public:
    explicit Picker(HostTradeList& lists) : m_lists(lists) {}
    void OnSelectData(ITradeListWindow* window, int /*unused*/, PositionRecord* record) override {
        picked = record;
        m_lists.ReleaseListWindow(window);
    }
    PositionRecord* picked = nullptr;

private:
    HostTradeList& m_lists;
};

class HostAppTest : public testing::Test {
protected:
    // Sends an order of the fund for 2 lots, and its fill.
    void Trade(const char* contract, char direction) {
        OrderRecord order = MakeOrder("800120", contract, direction, 9100, 2, "S_trade", "UP003");
        FillRecord fill = MakeFill(order);
        ASSERT_EQ(host.Services().trade.SendOrder(&order), 0);
        ASSERT_EQ(host.Services().trade.SendFill(&fill), 0);
    }

    std::unique_ptr<Book> book = Sample();
    HostApp host{*book};
    HostTradeList& lists = host.Lists();
    HostWindow owner;
};

TEST_F(HostAppTest, ThePositionListShowsTheFilteredRowsAndReportsTheOnePicked) {
    ITradeListWindow* window = lists.CreateListWindow(0, 4, owner.Get(), 1);
    ASSERT_TRUE(window);
    const PositionListWindow& pane = *lists.Windows().front();
    const HWND list = pane.List();
    window->Place(10, 20, 300, 150, 1);
    EXPECT_EQ(ListView_GetItemCount(list), 0) << "nothing before a filter";

    PositionFilterRecord filter{};
    filter.accountNo.Set("800120");
    filter.commodityNo.Set("CU");
    filter.direction = 'S';
    window->SetFilter(&filter);
    ASSERT_EQ(ListView_GetItemCount(list), 2);
    EXPECT_EQ(CellText(list, 1, 1), "HMX F CU 241218");
    EXPECT_EQ(CellText(list, 1, 4), "9032.0");
    Trade("HMX F CU 250416", 'S');
    EXPECT_EQ(ListView_GetItemCount(list), 3) << "a new position shows up by itself";

    Picker picker(lists);
    window->SetNotify(&picker);
    DoubleClick(list, 1);
    host.PumpUntilIdle();
    ASSERT_TRUE(picker.picked);
    EXPECT_EQ(+picker.picked->price, 9032);
    EXPECT_FALSE(GetWindow(owner.Get(), GW_CHILD)) << "released with its window";

    window = lists.CreateListWindow(0, 4, owner.Get(), 1);
    owner.Destroy();
    window->SetFilter(&filter);
    EXPECT_FALSE(lists.Windows().front()->Window()) << "the list outlives its owner until it is released";
    lists.ReleaseListWindow(window);
    EXPECT_TRUE(lists.Windows().empty());
}

TEST_F(HostAppTest, DrivesTheModuleThroughItsLife) {
    EXPECT_THROW(host.Load(ProgramFolder() + "NoSuch.dll", 1033), std::runtime_error);
    EXPECT_THROW(host.Load("kernel32.dll", 1033), std::runtime_error) << "a library without the exports";
    host.Load(ProgramFolder() + "EmendoOrd.dll", 1033);
    IEmendixOper* carry = host.OpenOrderDialog(1, nullptr, owner.Get());
    ASSERT_TRUE(carry);
    EXPECT_EQ(host.OpenOrderDialog(1, nullptr, owner.Get()), carry) << "brought forward, not opened again";
    EXPECT_EQ(host.Dialogs().size(), 1u);
    EXPECT_EQ(lists.Windows().size(), 2u) << "a carry has two position lists";
    EXPECT_EQ(host.Services().listeners.Count(), 1u);
    Trade("HMX F CU 241218", 'B');
    EventPump& events = host.Services().events;
    events.Flush();
    EXPECT_TRUE(host.PumpUntil([&] { return events.Count().kept == 0; }, 5000));
    EXPECT_GT(events.Count().posted, 0u);
    owner.Destroy();
    EXPECT_TRUE(host.PumpUntilIdle());
    EXPECT_TRUE(host.Dialogs().empty());
    EXPECT_TRUE(lists.Windows().empty());
    EXPECT_EQ(host.Services().listeners.Count(), 0u) << "the listener went with the dialog";
    EXPECT_EQ(host.Services().config.Table().Outstanding(), 0u) << "every answer was released";
    EXPECT_EQ(host.Services().api.StrayCalls() + host.Services().trade.StrayCalls(), 0u);
}

}  // namespace
