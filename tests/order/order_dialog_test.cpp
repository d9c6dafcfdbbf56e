#include "order/order_dialog.h"

#include "framework/window_helpers.h"
#include "order/order_fixture.h"
#include "res/dialog_creation.h"
#include "res/string_table.h"
#include "support/leak_count.h"
#include "support/message_box_script.h"
#include "support/window_kit.h"
#include "trade/fake_config.h"
#include "trade/host_services.h"

#include <cstdlib>
#include <functional>

namespace {

// A position list that remembers what it was told.
class FakeList : public ITradeListWindow {
public:
    PositionFilterRecord filter{};
    RECT place{};
    ISelectDataNotify* notify = nullptr;
    void Place(int left, int top, int width, int height, int) override {
        place = {left, top, left + width, top + height};
    }
    void SetFilter(const PositionFilterRecord* record) override { filter = *record; }
    void SetNotify(ISelectDataNotify* listener) override { notify = listener; }
    // clang-format off
    void Reserved0() override {} void Reserved1() override {} void Reserved2() override {}
    void Reserved3() override {} void Reserved4() override {}
    // clang-format on
};

class FakeLists : public ITradeList {
public:
    FakeList lists[2];
    int created = 0;
    int released = 0;
    bool fails = false;
    ITradeListWindow* CreateListWindow(int, int, HWND, int) override {
        return fails ? nullptr : &lists[created++ % 2];
    }
    void ReleaseListWindow(ITradeListWindow*) override { ++released; }
};

class OrderDialog : public OrderTest {
protected:
    OrderDialog() {
        ServerConfigRecord& entry = config.configs.emplace_back();
        entry.name.Set("Main");
        config.count = 1;
        second = user;
        second.accountNo.Set("200");
        api.users.push_back(&second);
        upper.upperNo.Set("U7");
        upper.upperName.Set("Clearing");
        api.uppers = {&upper};
        currency.currencyNo.Set("USD");
        currency.currencyName.Set("Dollar");
        api.currencies = {&currency};
        exchange.exchangeNo.Set("EXA");
        exchange.sign.Set("SIG");
        api.exchanges = {&exchange};
        api.priceText = "97.5";
        g_pTradeApi = &api;
        g_pTradeService = &service;
        g_pTradeList = &lists;
        g_hostServices.sysConfig = &config;
    }
    ~OrderDialog() override {
        if (g_pOrderDialog) {
            g_pOrderDialog->DestroyWindow();
        }
        EXPECT_EQ(g_pOrderDialog, nullptr);
        EXPECT_TRUE(api.listeners.empty());
        EXPECT_EQ(lists.created, lists.released);
        g_pTradeApi = nullptr;
        g_pTradeService = nullptr;
        g_pTradeList = nullptr;
        g_hostServices.sysConfig = nullptr;
    }

    void Open(OrderMode mode, OrderRecord* record = nullptr) {
        g_pOrderDialog = new CEmendoOrder(static_cast<unsigned>(TraitsOf(mode).templateId),
                                          static_cast<int>(mode), record, host.Get());
        ASSERT_TRUE(g_pOrderDialog->Create());
        window = g_pOrderDialog->m_hWnd;
        ShowWindow(window, SW_SHOW);
        loop = HostLoop(g_pOrderDialog);
        ASSERT_TRUE(loop.PumpUntil([&] { return GetWindowTextLengthA(window) > 0; }));
        loop.PumpUntilIdle();
    }
    OrderRecord& ServerOrder(std::string_view contract = "EXA CM 1509") {
        ContractKey key{};
        EXPECT_TRUE(ParseContractText(contract, key));
        original.key = key;
        original.key.sign.Set("SIG");
        original.orderNo = 77;
        original.accountNo.Set("100");
        original.upperNo.Set("U7");
        original.systemNo.Set("S_OLD");
        original.orderType = '2';
        original.orderState = '4';
        original.orderSource = 'E';
        original.validType = '0';
        original.direction = 'S';
        original.orderPrice = 97.5;
        original.orderQty = 5;
        original.backOffice = 'Y';
        return original;
    }

    HWND Item(int id) const { return GetDlgItem(window, id); }
    std::string Text(int id) const { return TextOf(Item(id)); }
    bool Shown(int id) const { return (GetWindowLongA(Item(id), GWL_STYLE) & WS_VISIBLE) != 0; }
    bool Enabled(int id) const { return IsWindowEnabled(Item(id)) != FALSE; }
    void Choose(int id, const std::string& text) {
        SendMessageA(Item(id), CB_SELECTSTRING, static_cast<WPARAM>(-1),
                     reinterpret_cast<LPARAM>(text.c_str()));
    }
    void Enter(int id, const std::string& text) {
        ::SetFocus(Item(id));
        SetWindowTextA(Item(id), "");
        loop.Type(Item(id), text);
    }
    // Everything of a limit order but state and fill, through the keyboard where there is an edit.
    void EnterOrder() {
        Choose(IDC_ACCOUNT, "100");
        Choose(IDC_UPPER, "U7");
        Enter(IDC_CONTRACT, "EXA CM 1509");
        Choose(IDC_DIRECTION, "Buy");
        Enter(IDC_ORDER_QTY, "5");
        Enter(IDC_ORDER_PRICE_WHOLE, "97.5");
    }
    void PressConfirm() {
        ::SetFocus(Item(IDC_CONFIRM));
        loop.Key(VK_RETURN);
    }
    static std::string Words(unsigned id) { return ResString(id); }

    MessageBoxScript noOtherBoxes;
    HostWindow host;
    HostLoop loop;
    HWND window = nullptr;
    FakeLists lists;
    FakeConfig config;
    UserRecord second{};
    UpperRecord upper{};
    CurrencyRecord currency{};
    ExchangeRecord exchange{};
};

TEST_F(OrderDialog, EveryModeHasItsTitleButtonAndFocus) {
    struct Row {
        OrderMode mode;
        const char* title;
        const char* confirm;
        int focus;
    };
    for (const Row& row : {Row{OrderMode::Input, "Input Order", "Input", IDC_ACCOUNT},
                           Row{OrderMode::Carry, "Carry", "Borrow", IDC_ACCOUNT},
                           Row{OrderMode::Modify, "Modify Order - [OrderNo:77]", "Modify", 0},
                           Row{OrderMode::RemoveFilled, "Remove Filled - [OrderNo:77]", "Remove", 0},
                           Row{OrderMode::Move, "Move Order - [OrderNo:77  Original account:100]", "Move", 0},
                           Row{OrderMode::Exercise, "Input Exercise", "Input", IDC_UPPER},
                           Row{static_cast<OrderMode>(9), "Input Order", "Input", IDC_ACCOUNT}}) {
        SCOPED_TRACE(static_cast<int>(row.mode));
        Open(row.mode, CorrectsOrder(row.mode) ? &ServerOrder() : nullptr);
        EXPECT_EQ(TextOf(window), row.title);
        EXPECT_EQ(Text(IDC_CONFIRM), row.confirm);
        if (row.focus) {
            const HWND focus = GetFocus();
            EXPECT_TRUE(focus == Item(row.focus) || ::GetParent(focus) == Item(row.focus));
        }
        loop.Click(Item(IDC_CANCEL));
        EXPECT_FALSE(IsWindow(window));
        EXPECT_EQ(g_pOrderDialog, nullptr);
    }
}

TEST_F(OrderDialog, AnOrderGoesOutAsItWasTyped) {
    Open(OrderMode::Input);
    EnterOrder();
    MessageBoxScript boxes({{Words(IDS_ASK_NEXT_ORDER), Words(IDS_TIPS), IDNO}});
    PressConfirm();
    ASSERT_EQ(service.orders.size(), 1u);
    const OrderRecord& sent = service.orders[0];
    EXPECT_EQ(sent.accountNo.Str(), "100");
    EXPECT_EQ(sent.upperNo.Str(), "U7");
    EXPECT_EQ(sent.key.contractNo.Str(), "1509");
    EXPECT_EQ(sent.key.sign.Str(), "SIG");
    EXPECT_EQ(
        std::string({sent.direction, sent.orderType, sent.orderState, sent.validType, sent.orderSource}),
        "B240E");
    EXPECT_EQ(sent.orderQty, 5u);
    EXPECT_EQ(sent.orderPrice, 97.5);
    EXPECT_EQ(sent.systemNo.Str().substr(0, 2), "S_");
    EXPECT_TRUE(service.fills.empty());
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(OrderDialog, AFilledOrderGoesOutWithItsFillAndTheNextOneStarts) {
    Open(OrderMode::Input);
    EnterOrder();
    Choose(IDC_ORDER_STATE, "Filled");
    EXPECT_EQ(Text(IDC_FILL_QTY), "5");
    EXPECT_FALSE(Enabled(IDC_FILL_QTY));
    EXPECT_EQ(Text(IDC_FILL_PRICE_WHOLE), "97.5");
    EXPECT_TRUE(Enabled(IDC_FILL_PRICE_WHOLE));
    EXPECT_TRUE(Shown(IDC_CURRENCY));
    const std::string firstNo = Text(IDC_SYSTEM_NO);
    MessageBoxScript boxes({{Words(IDS_ASK_NEXT_ORDER), Words(IDS_TIPS), IDYES}});
    loop.Click(Item(IDC_CONFIRM));
    ASSERT_EQ(service.fills.size(), 1u);
    EXPECT_EQ(service.fills[0].fillQty, 5u);
    EXPECT_EQ(service.fills[0].fillPrice, 97.5);
    EXPECT_EQ(service.fills[0].currencyNo.Str(), "USD");
    ASSERT_TRUE(IsWindow(window));
    EXPECT_EQ(Text(IDC_ORDER_QTY), "0");
    EXPECT_NE(Text(IDC_SYSTEM_NO), firstNo);
    EXPECT_EQ(Text(IDC_ORDER_PRICE_WHOLE), "97.5");
    EXPECT_EQ(Text(IDC_ACCOUNT), "100");
    EXPECT_TRUE(GetFocus() == Item(IDC_ACCOUNT) || ::GetParent(GetFocus()) == Item(IDC_ACCOUNT));
}

TEST_F(OrderDialog, AnOriginalOrderIsShownAndReadBack) {
    api.priceText = "97+3/8";
    Open(OrderMode::Modify, &ServerOrder("EXA FR 1509"));
    EXPECT_EQ(Text(IDC_CONTRACT), "EXA FR 1509");
    EXPECT_EQ(Text(IDC_ORDER_PRICE_WHOLE), "97");
    EXPECT_EQ(Text(IDC_ORDER_PRICE_NUMERATOR), "3");
    EXPECT_EQ(Text(IDC_ORDER_PRICE_DENOMINATOR), "8");
    EXPECT_TRUE(Enabled(IDC_ORDER_PRICE_NUMERATOR));
    EXPECT_EQ(Text(IDC_SYSTEM_NO), "S_OLD");
    for (const int id :
         {IDC_UPPER, IDC_ACCOUNT, IDC_CONTRACT, IDC_CONTRACT_PICK, IDC_DIRECTION, IDC_SYSTEM_NO}) {
        EXPECT_FALSE(Enabled(id)) << id;
    }
    PressConfirm();
    ASSERT_EQ(service.orders.size(), 1u);
    EXPECT_EQ(service.orders[0].orderNo, 77u);
    EXPECT_EQ(service.orders[0].orderPrice, 97.375);
    EXPECT_EQ(service.orders[0].direction, 'S');
    EXPECT_EQ(service.orders[0].systemNo.Str(), "S_OLD");
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(OrderDialog, CodesThatAreNotListedStayAsTheyAre) {
    ServerOrder().accountNo.Set("20");  // 200 is listed
    original.upperNo.Set("U");
    Open(OrderMode::Modify, &original);
    PressConfirm();
    ASSERT_EQ(service.orders.size(), 1u);
    EXPECT_EQ(service.orders[0].accountNo.Str(), "20");
    EXPECT_EQ(service.orders[0].upperNo.Str(), "U");
}

TEST_F(OrderDialog, RemovalAndMoveLeaveOnlyWhatTheyNeed) {
    Open(OrderMode::RemoveFilled, &ServerOrder());
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const int id = GetDlgCtrlID(child);
        EXPECT_EQ(IsWindowEnabled(child) != FALSE, id == IDC_CONFIRM || id == IDC_CANCEL) << id;
    }
    EXPECT_FALSE(Shown(IDC_CURRENCY));
    service.results = {0, 1};
    {
        MessageBoxScript boxes({{Words(IDS_SEND_REMOVE_FAILED), Words(IDS_TIPS)}});
        PressConfirm();
    }
    EXPECT_TRUE(IsWindow(window));
    PressConfirm();
    EXPECT_EQ(service.deletedOrders, (std::vector<std::uint32_t>{77, 77}));
    EXPECT_FALSE(IsWindow(window));

    Open(OrderMode::Move, &original);
    EXPECT_TRUE(Enabled(IDC_ACCOUNT));
    EXPECT_FALSE(Enabled(IDC_ORDER_QTY));
    Choose(IDC_ACCOUNT, "200");
    PressConfirm();
    ASSERT_EQ(service.orders.size(), 1u);
    EXPECT_EQ(service.orders[0].accountNo.Str(), "200");
}

TEST_F(OrderDialog, TheColouredQuestionGuardsAnElectronicOrder) {
    ServerOrder().backOffice = 'N';
    Open(OrderMode::RemoveFilled, &original);
    {
        MessageBoxScript boxes({{Words(IDS_CONFIRM_NOT_INPUT), Words(IDS_CONFIRM_CAPTION), IDCANCEL}});
        PressConfirm();
    }
    EXPECT_TRUE(service.deletedOrders.empty());
    MessageBoxScript boxes(
        {{Words(IDS_CONFIRM_NOT_INPUT), Words(IDS_CONFIRM_CAPTION), 0, [&](HWND) { host.Destroy(); }}});
    PressConfirm();
    EXPECT_TRUE(service.deletedOrders.empty());
    EXPECT_EQ(g_pOrderDialog, nullptr);
}

TEST_F(OrderDialog, AHostThatGoesDuringThePauseOrASendIsSurvived) {
    Open(OrderMode::Input);
    EnterOrder();
    Choose(IDC_ORDER_STATE, "Filled");
    service.whileSending = [&] {
        service.whileSending = nullptr;
        PostMessageA(host.Get(), WM_CLOSE, 0, 0);  // handled in the pause
        EXPECT_TRUE(IsWindow(window));
        // A second press while the first is on its way does nothing.
        SendMessageA(window, WM_COMMAND, IDC_CONFIRM, reinterpret_cast<LPARAM>(Item(IDC_CONFIRM)));
    };
    PressConfirm();
    EXPECT_EQ(service.orders.size(), 1u);
    EXPECT_EQ(service.fills.size(), 1u);  // the operator confirmed both
    EXPECT_EQ(g_pOrderDialog, nullptr);
}

TEST_F(OrderDialog, CarrySendsBothLegsAndFollowsItsLists) {
    api.threeMonthContractNo = "240613";
    exchange.forwardMarket = 1;
    api.priceText = "2010.5";
    Open(OrderMode::Carry);
    for (const int id : {IDC_SOURCE, IDC_ORDER_TYPE, IDC_ORDER_STATE, IDC_ORDER_QTY, IDC_FORCE_CLOSE}) {
        EXPECT_FALSE(Shown(id)) << id;
    }
    EXPECT_EQ(Text(IDC_DIRECTION), "Buy");
    EXPECT_EQ(Text(IDC_FORWARD_DIRECTION), "Sell");
    Choose(IDC_DIRECTION, "Sell");
    EXPECT_EQ(Text(IDC_CONFIRM), "Lending");
    Choose(IDC_DIRECTION, "Buy");
    EXPECT_EQ(Text(IDC_CONFIRM), "Borrow");

    Choose(IDC_ACCOUNT, "100");
    Choose(IDC_UPPER, "U7");
    Enter(IDC_CONTRACT, "EXA CA 240315");
    Enter(IDC_FORWARD_CONTRACT, "3M");
    Enter(IDC_FILL_PRICE_WHOLE, "2010.5");
    Enter(IDC_FILL_PRICE2_WHOLE, "2000");
    Enter(IDC_FILL_QTY, "4");
    EXPECT_EQ(Text(IDC_FORWARD_FILL_QTY), "4");
    EXPECT_EQ(Text(IDC_CARRY_FEE_TEXT), "10.50  forward discount");
    EXPECT_EQ(lists.lists[0].filter.contractNo.Str(), "240315");
    EXPECT_EQ(lists.lists[0].filter.direction, 'S');
    EXPECT_EQ(lists.lists[1].filter.contractNo.Str(), "240613");
    EXPECT_EQ(lists.lists[1].filter.direction, 'B');

    // A picked position counts only while the leg's box is ticked.
    PositionRecord picked{};
    lists.lists[0].notify->OnSelectData(&lists.lists[0], 0, &picked);
    EXPECT_EQ(Text(IDC_NEAR_POSITION_PRICE_WHOLE), "");
    loop.Click(Item(IDC_NEAR_CHOSEN_POSITION));
    EXPECT_TRUE(Enabled(IDC_NEAR_POSITION_PRICE_WHOLE));
    lists.lists[0].notify->OnSelectData(&lists.lists[0], 0, &picked);
    EXPECT_EQ(Text(IDC_NEAR_POSITION_PRICE_WHOLE), "2010.5");

    PressConfirm();
    ASSERT_EQ(service.orders.size(), 2u);
    ASSERT_EQ(service.fills.size(), 2u);
    EXPECT_EQ(service.orders[0].key.contractNo.Str(), "240315");
    EXPECT_EQ(service.orders[1].key.contractNo.Str(), "3M");
    EXPECT_EQ(service.orders[1].direction, 'S');
    EXPECT_EQ(service.fills[0].closePrice, 2010.5);
    EXPECT_EQ(service.fills[1].fillPrice, 2000);
    EXPECT_EQ(service.fills[0].carryPair, 1);
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(OrderDialog, PositionEventsUpdateTheCarryOnly) {
    PositionRecord position{};
    position.key = FirstLegOf(api.contracts[3]->key);
    position.accountNo.Set("100");
    position.direction = 'S';
    position.openQty = 7;
    api.positions = {&position};
    Open(OrderMode::Carry);
    Choose(IDC_ACCOUNT, "100");
    Enter(IDC_CONTRACT, "EXA CA 240315");
    ::SetFocus(Item(IDC_UPPER));
    loop.PumpUntilIdle();
    position.openQty = 9;
    HWND listener = nullptr;
    ASSERT_EQ(api.listeners.size(), 1u);
    ASSERT_TRUE(api.listeners[0]->GetNotifyWnd(&listener));
    PostMessageA(listener, kWmTradeSpi, reinterpret_cast<WPARAM>(&position), kPositionChangedEvent << 24);
    loop.PumpUntilIdle();
    EXPECT_EQ(Text(IDC_NEAR_POSITION_QTY), "9");
}

TEST_F(OrderDialog, ExerciseAsksForTheUnderlying) {
    api.longQty = 9;
    Open(OrderMode::Exercise);
    Choose(IDC_ACCOUNT, "100");
    Choose(IDC_UPPER, "U7");
    Enter(IDC_CONTRACT, "EXA CO 240315 C3000");
    ::SetFocus(Item(IDC_FORWARD_CONTRACT));
    loop.PumpUntilIdle();
    EXPECT_EQ(SendMessageA(Item(IDC_FORWARD_CONTRACT), CB_GETCOUNT, 0, 0), 5);
    Choose(IDC_FORWARD_CONTRACT, "240329");
    Choose(IDC_DIRECTION, "Buy");
    Enter(IDC_ORDER_QTY, "2");
    PressConfirm();
    ASSERT_EQ(service.exercises.size(), 1u);
    EXPECT_EQ(service.exercises[0].orderType, '5');
    EXPECT_EQ(service.exercises[0].key.strikePrice.Str(), "3000");
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(OrderDialog, KeysStepAndWalk) {
    Open(OrderMode::Input);
    EnterOrder();
    ::SetFocus(Item(IDC_ORDER_QTY));
    loop.Key(VK_UP);
    EXPECT_EQ(Text(IDC_ORDER_QTY), "6");
    loop.Key(VK_RETURN);
    EXPECT_NE(GetFocus(), Item(IDC_ORDER_QTY));
    EXPECT_TRUE(IsWindow(window));
    loop.Key(VK_ESCAPE);
    EXPECT_TRUE(IsWindow(window));
    // A fraction is refused in a quantity, and the last good text comes back.
    ::SetFocus(Item(IDC_ORDER_QTY));
    loop.Type(Item(IDC_ORDER_QTY), ".");
    EXPECT_EQ(Text(IDC_ORDER_QTY), "6");
}

TEST_F(OrderDialog, AChosenContractIsTakenOverFromThePopup) {
    Open(OrderMode::Input);
    loop.Click(Item(IDC_CONTRACT_PICK));
    SendMessageA(window, WM_SELECTCODE, reinterpret_cast<WPARAM>("EXA FR 1509"),
                 reinterpret_cast<LPARAM>(""));
    EXPECT_EQ(Text(IDC_CONTRACT), "EXA FR 1509");
    EXPECT_EQ(Text(IDC_ORDER_PRICE_DENOMINATOR), "8");
    EXPECT_TRUE(Enabled(IDC_ORDER_PRICE_NUMERATOR));
    SendMessageA(window, WM_SELECTCODE, reinterpret_cast<WPARAM>("EXA"), 0);
    SendMessageA(window, WM_SELECTCODE, 0, 0);
    EXPECT_EQ(Text(IDC_CONTRACT), "EXA FR 1509");
}

TEST_F(OrderDialog, AHostWithoutAnythingLeavesEmptyLists) {
    api = FakeTradeApi();
    lists.fails = true;
    g_hostServices.sysConfig = nullptr;
    for (const bool withApi : {true, false}) {
        g_pTradeApi = withApi ? &api : nullptr;
        g_pTradeService = nullptr;
        for (int mode = 0; mode <= 5; ++mode) {
            SCOPED_TRACE(mode);
            Open(static_cast<OrderMode>(mode), &ServerOrder());
            EXPECT_EQ(SendMessageA(Item(IDC_ACCOUNT), CB_GETCOUNT, 0, 0), 0);
            ::SetFocus(Item(IDC_ACCOUNT));
            loop.PumpUntilIdle();
            ::SetFocus(Item(IDC_CANCEL));
            loop.Key(VK_RETURN);
            EXPECT_EQ(g_pOrderDialog, nullptr);
        }
    }
}

// The window may go in any operation that the host is asked for, in start-up, reactions and confirmation.
TEST_F(OrderDialog, AHostThatTakesTheDialogAwayDuringALookUpIsSurvived) {
    for (const OrderMode mode : {OrderMode::Modify, OrderMode::Carry}) {
        for (int fatal = 0;; ++fatal) {
            HostWindow parent;
            int asked = 0;
            api.whileAsked = [&] {
                if (asked++ == fatal) {
                    parent.Destroy();
                }
            };
            g_pOrderDialog = new CEmendoOrder(static_cast<unsigned>(TraitsOf(mode).templateId),
                                              static_cast<int>(mode), &ServerOrder(), parent.Get());
            if (g_pOrderDialog->Create()) {
                window = g_pOrderDialog->m_hWnd;
                Choose(IDC_ACCOUNT, "100");
                SendMessageA(window, WM_SELECTCODE, reinterpret_cast<WPARAM>("EXA CM 1509"), 0);
                Choose(IDC_ORDER_TYPE, "Limit");
                const int button = mode == OrderMode::Modify ? IDC_CONFIRM : IDC_CANCEL;
                SendMessageA(window, WM_COMMAND, static_cast<WPARAM>(button), 0);
            }
            api.whileAsked = nullptr;
            EXPECT_EQ(g_pOrderDialog, nullptr) << fatal;
            if (asked <= fatal) {
                EXPECT_GT(fatal, 10);
                break;
            }
        }
    }
    EXPECT_EQ(service.orders.size(), 1u);
}

// EMENDO_CYCLES sets the number of rounds; the first rounds fill the system's own caches. What the system keeps
// for every dialog of the templates is measured beside it.
TEST_F(OrderDialog, OpeningAndClosingLeavesNothingBehind) {
    const char* wanted = std::getenv("EMENDO_CYCLES");
    const int cycles = wanted ? std::atoi(wanted) : 3;
    const auto growthOf = [&](const std::function<void(OrderMode)>& life) {
        ResourceCount before;
        for (int i = -2; i < cycles; ++i) {
            if (i == 0) {
                before = CountResources();
            }
            for (int mode = 0; mode <= 5; ++mode) {
                life(static_cast<OrderMode>(mode));
                loop.PumpUntilIdle();
            }
        }
        const ResourceCount after = CountResources();
        EXPECT_EQ(after, before);
        return after.heapBytes - before.heapBytes;
    };
    const long long systemGrowth = growthOf([&](OrderMode mode) {
        CDialog bare;
        CreateFromResources(bare, static_cast<unsigned>(TraitsOf(mode).templateId), host.Get());
        bare.DestroyWindow();
    });
    const long long growth = growthOf([&](OrderMode mode) {
        Open(mode, &ServerOrder());
        g_pOrderDialog->DestroyWindow();
    });
    EXPECT_LT(growth - systemGrowth, cycles * 6 * 16);
}

}  // namespace
