#include "order/order_window.h"

namespace {

TEST_F(OrderDialog, CodesThatAreNotListedStayAsTheyAre) {
    ServerOrder().accountNo.Set("20");  // 200 is listed
    original.upperNo.Set("U");
    Open(OrderMode::Modify, &original);
    PressConfirm();
    EXPECT_EQ(Sent(), "SIG 20 U CM 1509 S240E 5 at 97.5 of 77");
}

TEST_F(OrderDialog, AnAccountStaysOpenToChangeUnderItsOwnSign) {
    GroupRecord other = group;
    other.sign.Set("SIG2");
    api.users[1]->group = &other;
    api.users[1]->sign = other.sign;
    api.AddUser("300").group = nullptr;  // never listed: each focus lists the accounts again
    ServerOrder().accountNo.Set("200");
    original.key.sign = other.sign;
    Open(OrderMode::Move, &original);
    for (int i = 0; i < 2; ++i) {
        Focus(IDC_CONFIRM);
        Focus(IDC_ACCOUNT);
        EXPECT_TRUE(Enabled(IDC_ACCOUNT));
        EXPECT_EQ(Count(IDC_ACCOUNT), 2);
    }
}

TEST_F(OrderDialog, APriceThatTheDialogWritesStands) {
    AddSpread('m', "EXA SP 1509/1512");
    Open(OrderMode::Input);
    Typed(IDC_CONTRACT, "EXA SP 1509/1512");
    EXPECT_EQ(Typed(IDC_ORDER_PRICE_WHOLE, "-5"), "-5");
    Typed(IDC_ORDER_QTY, "3");
    Choose(IDC_ORDER_STATE, "Filled");
    EXPECT_EQ(Text(IDC_FILL_PRICE_WHOLE), "-5");
}

TEST_F(OrderDialog, RemovalLeavesOnlyTheButtons) {
    Open(OrderMode::RemoveFilled, &ServerOrder());
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const int id = GetDlgCtrlID(child);
        EXPECT_EQ(IsWindowEnabled(child) != FALSE, id == IDC_CONFIRM || id == IDC_CANCEL) << id;
    }
    EXPECT_FALSE(Shown(IDC_CURRENCY));
}

TEST_F(OrderDialog, AHostThatGoesDuringASendGetsTheFillAllTheSame) {
    Open(OrderMode::Input);
    EnterOrder();
    Choose(IDC_ORDER_STATE, "Filled");
    service.whileSending = [&] {
        service.whileSending = nullptr;
        PostMessageA(host.Get(), WM_CLOSE, 0, 0);  // handled in the pause
        Command(IDC_CONFIRM);  // a second press while the first is on its way does nothing
    };
    PressConfirm();
    EXPECT_EQ(service.orders.size(), 1u);
    EXPECT_EQ(service.fills.size(), 1u);  // the operator confirmed both
    EXPECT_EQ(g_pOrderDialog, nullptr);
}

TEST_F(OrderDialog, ACarryShowsWhatItsLegsCloseAndTakesOverAPickedPosition) {
    api.threeMonthContractNo = "240613";
    api.exchanges[0]->forwardMarket = 1;
    Open(OrderMode::Carry);
    for (const auto& [direction, shown] :
         {std::pair{"Sell", "Sell|Buy|Lending"}, {"Buy", "Buy|Sell|Borrow"}}) {
        Choose(IDC_DIRECTION, direction);
        EXPECT_EQ(Texts({IDC_DIRECTION, IDC_FORWARD_DIRECTION, IDC_CONFIRM}), shown);
    }
    Typed(IDC_CONTRACT, "EXA CA 240315");
    Typed(IDC_FORWARD_CONTRACT, "3M");
    Typed(IDC_FILL_PRICE_WHOLE, "2010.5");
    Typed(IDC_FILL_PRICE2_WHOLE, "2000");
    Typed(IDC_FILL_QTY, "4");
    EXPECT_EQ(Texts({IDC_FORWARD_FILL_QTY, IDC_CARRY_FEE_TEXT}), "4|10.50  forward discount");
    auto& [near, forward] = lists.lists;
    EXPECT_EQ(near.filter.contractNo.Str() + near.filter.direction, "240315S");
    EXPECT_EQ(forward.filter.contractNo.Str() + forward.filter.direction, "240613B");

    PositionRecord picked{};
    near.notify->OnSelectData(&near, 0, &picked);
    EXPECT_EQ(Text(IDC_NEAR_POSITION_PRICE_WHOLE), "") << "its box is not ticked";
    loop.Click(Item(IDC_NEAR_CHOSEN_POSITION));
    for (const auto& [price, shown] : {std::pair{"2010+1/2", "2010|1"}, {"2010.5", "2010.5|0"}}) {
        api.priceText = price;
        near.notify->OnSelectData(&near, 0, &picked);
        EXPECT_EQ(Texts({IDC_NEAR_POSITION_PRICE_WHOLE, IDC_NEAR_POSITION_PRICE_NUMERATOR}), shown);
    }
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
    Typed(IDC_CONTRACT, "EXA CA 240315");
    Focus(IDC_UPPER);
    loop.PumpUntilIdle();
    position.openQty = 9;
    HWND listener = nullptr;
    ASSERT_EQ(api.listeners.size(), 1u);
    ASSERT_TRUE(api.listeners[0]->GetNotifyWnd(&listener));
    PostMessageA(listener, kWmTradeSpi, reinterpret_cast<WPARAM>(&position), kPositionChangedEvent << 24);
    loop.PumpUntilIdle();
    EXPECT_EQ(Text(IDC_NEAR_POSITION_QTY), "9");
}

TEST_F(OrderDialog, KeysStepAndWalk) {
    Open(OrderMode::Input);
    EnterOrder();
    Focus(IDC_ORDER_QTY);
    loop.Key(VK_UP);
    EXPECT_EQ(Text(IDC_ORDER_QTY), "6");
    loop.Key(VK_RETURN);
    EXPECT_NE(FocusId(), IDC_ORDER_QTY);
    EXPECT_TRUE(IsWindow(window));
    loop.Key(VK_ESCAPE);
    EXPECT_TRUE(IsWindow(window));
    // A fraction is refused in a quantity, and the last good text comes back.
    Focus(IDC_ORDER_QTY);
    loop.Type(Item(IDC_ORDER_QTY), ".");
    EXPECT_EQ(Text(IDC_ORDER_QTY), "6");
    // The keyboard leaves an edit that is shut under it.
    Focus(IDC_ORDER_PRICE_WHOLE);
    Choose(IDC_ORDER_TYPE, "Market");
    loop.PumpUntilIdle();
    EXPECT_EQ(FocusId(), IDC_EX_SYSTEM_NO);
}

// By a host that leaves the keys to the system.
TEST_F(OrderDialog, TheContractIsPickedByKeyboardWithoutTheHostsHelp) {
    Open(OrderMode::Input);
    loop = HostLoop();
    Typed(IDC_CONTRACT, "EXA CA 240315");
    for (const unsigned key : {VK_F4, VK_DOWN, VK_RETURN}) {
        loop.Key(key);
    }
    EXPECT_EQ(Text(IDC_CONTRACT), "EXA CA 240329");
    EXPECT_EQ(FocusId(), IDC_CONTRACT);
    loop.Type(GetFocus(), "EXA FR 1");
    EXPECT_EQ(Text(IDC_CONTRACT), "EXA FR 1") << "the text is marked";
    SendMessageA(GetFocus(), WM_SYSKEYDOWN, VK_DOWN, 1 << 29);
    loop.Key(VK_ESCAPE);
    EXPECT_EQ(Text(IDC_CONTRACT), "EXA FR 1");
    EXPECT_EQ(FocusId(), IDC_CONTRACT);
}

}  // namespace
