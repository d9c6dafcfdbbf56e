#include "app/host_app.h"
#include "host/sample.h"

#include <commctrl.h>
#include <gtest/gtest.h>

namespace {

class Window {
public:
    Window() {
        m_window = CreateWindowExA(0, "STATIC", "", WS_OVERLAPPEDWINDOW, 0, 0, 600, 400, nullptr, nullptr,
                                   GetModuleHandleA(nullptr), nullptr);
        EXPECT_TRUE(m_window);
    }
    ~Window() { Destroy(); }
    void Destroy() {
        if (IsWindow(m_window)) {
            DestroyWindow(m_window);
        }
    }
    HWND Get() const { return m_window; }

private:
    HWND m_window;
};

std::string CellText(HWND list, int row, int column) {
    char text[100] = "";
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    SendMessageA(list, LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return text;
}

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

TEST(PositionListTest, ShowsTheFilteredRowsAndReportsTheOnePicked) {
    const std::unique_ptr<Book> book = Sample();
    HostApp host(*book);
    Window owner;
    HostTradeList& lists = host.Lists();
    EXPECT_FALSE(lists.CreateListWindow(0, 4, nullptr, 1));
    ITradeListWindow* window = lists.CreateListWindow(0, 4, owner.Get(), 1);
    ASSERT_TRUE(window);
    const PositionListWindow& list = *lists.Windows().front();
    window->Place(10, 20, 300, 150, 1);
    RECT place;
    GetWindowRect(list.Window(), &place);
    MapWindowPoints(nullptr, owner.Get(), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_EQ(place.left, 10);
    EXPECT_EQ(place.top, 20);
    EXPECT_EQ(place.right - place.left, 300);
    EXPECT_EQ(SendMessageA(list.List(), LVM_GETITEMCOUNT, 0, 0), 0) << "nothing before a filter";

    PositionFilterRecord filter{};
    filter.accountNo.Set("800120");
    filter.commodityNo.Set("CU");
    filter.direction = 'S';
    window->SetFilter(&filter);
    ASSERT_EQ(SendMessageA(list.List(), LVM_GETITEMCOUNT, 0, 0), 2);
    EXPECT_EQ(CellText(list.List(), 1, 1), "HMX F CU 241218");
    EXPECT_EQ(CellText(list.List(), 1, 4), "9032.0");

    // A new short position shows up by itself.
    OrderRecord order = MakeOrder("800120", "HMX F CU 250416", 'S', 9100, 2, "S_list", "UP003");
    ASSERT_EQ(host.Services().trade.SendOrder(&order), 0);
    FillRecord fill = MakeFill(order, FirstLegOf(order.key), 'S', 9100, 2);
    ASSERT_EQ(host.Services().trade.SendFill(&fill), 0);
    EXPECT_EQ(SendMessageA(list.List(), LVM_GETITEMCOUNT, 0, 0), 3);

    Picker picker(lists);
    window->SetNotify(&picker);
    DoubleClick(list.List(), 1);
    host.PumpUntilIdle();
    ASSERT_TRUE(picker.picked);
    EXPECT_EQ(picker.picked->price + 0, 9032);
    EXPECT_TRUE(lists.Windows().empty());
    EXPECT_FALSE(GetWindow(owner.Get(), GW_CHILD)) << "released with its window";
}

TEST(PositionListTest, OutlivesItsOwnerUntilItIsReleased) {
    const std::unique_ptr<Book> book = Sample();
    HostApp host(*book);
    Window owner;
    ITradeListWindow* window = host.Lists().CreateListWindow(0, 4, owner.Get(), 1);
    ASSERT_TRUE(window);
    owner.Destroy();
    const PositionFilterRecord filter{};
    window->Place(0, 0, 10, 10, 1);
    window->SetFilter(&filter);
    EXPECT_FALSE(host.Lists().Windows().front()->Window());
    host.Lists().ReleaseListWindow(window);
    host.Lists().ReleaseListWindow(window);
    EXPECT_TRUE(host.Lists().Windows().empty());
}

TEST(HostAppTest, DrivesTheModuleThroughItsLife) {
    const std::unique_ptr<Book> book = Sample();
    HostApp host(*book);
    EXPECT_THROW(host.Load(ProgramFolder() + "NoSuch.dll", 1033), std::runtime_error);
    EXPECT_THROW(host.Load("kernel32.dll", 1033), std::runtime_error) << "a library without the exports";
    EXPECT_FALSE(host.Loaded());
    EXPECT_FALSE(host.OpenOrderDialog(0, nullptr, nullptr)) << "nothing is loaded";

    for (const WORD language : {1033, 2052}) {
        host.Load(ProgramFolder() + "EmendoOrd.dll", language);
        Window parent;
        IEmendixOper* order = host.OpenOrderDialog(0, nullptr, parent.Get());
        ASSERT_TRUE(order);
        EXPECT_EQ(host.OpenOrderDialog(0, nullptr, parent.Get()), order)
            << "brought forward, not opened again";
        EXPECT_EQ(host.Dialogs().size(), 1u);
        EXPECT_TRUE(host.PumpUntilIdle());
        EXPECT_EQ(host.Services().listeners.Count(), 1u);
        parent.Destroy();
        host.PumpUntilIdle();
        EXPECT_TRUE(host.Dialogs().empty());
        EXPECT_EQ(host.Services().listeners.Count(), 0u) << "the listener went with the dialog";
    }
    Window parent;
    ASSERT_TRUE(host.OpenOrderDialog(1, nullptr, parent.Get()));
    EXPECT_EQ(host.Lists().Windows().size(), 2u) << "a carry has two position lists";
    OrderRecord order = MakeOrder("800120", "HMX F CU 241218", 'B', 9040, 2, "S_event", "UP003");
    ASSERT_EQ(host.Services().trade.SendOrder(&order), 0);
    FillRecord fill = MakeFill(order, FirstLegOf(order.key), 'B', 9040, 2);
    ASSERT_EQ(host.Services().trade.SendFill(&fill), 0);
    host.Services().events.Flush();
    EXPECT_TRUE(host.PumpUntil([&] { return host.Services().events.Count().kept == 0; }, 5000));
    EXPECT_GT(host.Services().events.Count().posted, 0u);
    host.Reload(1028);
    EXPECT_TRUE(host.Lists().Windows().empty()) << "the end closes dialogs";
    EXPECT_EQ(host.Services().config.Table().Outstanding(), 0u) << "every answer was released";
    EXPECT_EQ(host.Services().api.StrayCalls() + host.Services().trade.StrayCalls(), 0u);
}

}  // namespace
