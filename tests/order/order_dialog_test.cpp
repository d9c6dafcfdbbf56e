#include "order/order_window.h"

#include "res/dialog_creation.h"
#include "support/leak_count.h"

namespace {

TEST_F(OrderDialog, EveryModeHasItsTitleButtonAndFocus) {
    struct {
        OrderMode mode;
        const char* title;
        const char* confirm;
        int focus;
    } const rows[] = {
        {OrderMode::Carry, "Carry", "Borrow", IDC_ACCOUNT},
        {OrderMode::Move, "Move Order - [OrderNo:77  Original account:100]", "Move", IDC_ACCOUNT},
        {OrderMode::Exercise, "Input Exercise", "Input", IDC_UPPER},
        {static_cast<OrderMode>(9), "Input Order", "Input", IDC_ACCOUNT},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.title);
        Open(row.mode, CorrectsOrder(row.mode) ? &ServerOrder() : nullptr);
        EXPECT_EQ(TextOf(window), row.title);
        EXPECT_EQ(Text(IDC_CONFIRM), row.confirm);
        EXPECT_EQ(FocusId(), row.focus);
        loop.Click(Item(IDC_CANCEL));
        EXPECT_FALSE(IsWindow(window));
        EXPECT_EQ(g_pOrderDialog, nullptr);
    }
}

TEST_F(OrderDialog, AnOrderGoesOutAsItWasTyped) {
    Open(OrderMode::Input);
    EnterOrder();
    MessageBoxScript boxes({{ResString(IDS_ASK_NEXT_ORDER), ResString(IDS_TIPS), IDNO}});
    PressConfirm();
    EXPECT_EQ(Sent(), "SIG 100 U7 CM 1509 B240E 5 at 97.5 of 0");
    EXPECT_EQ(service.orders[0].systemNo.Str().substr(0, 2), "S_");
    EXPECT_TRUE(service.fills.empty());
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(OrderDialog, AFilledOrderGoesOutWithItsFillAndTheNextOneStarts) {
    Open(OrderMode::Input);
    EnterOrder();
    Choose(IDC_ORDER_STATE, "Filled");
    EXPECT_EQ(Texts({IDC_FILL_QTY, IDC_FILL_PRICE_WHOLE}), "5|97.5");
    EXPECT_FALSE(Enabled(IDC_FILL_QTY));
    EXPECT_TRUE(Enabled(IDC_FILL_PRICE_WHOLE));
    EXPECT_TRUE(Shown(IDC_CURRENCY));
    const std::string firstNo = Text(IDC_SYSTEM_NO);
    MessageBoxScript boxes({{ResString(IDS_ASK_NEXT_ORDER), ResString(IDS_TIPS), IDYES}});
    loop.Click(Item(IDC_CONFIRM));
    ASSERT_EQ(service.fills.size(), 1u);
    EXPECT_EQ(service.fills[0].fillQty, 5u);
    EXPECT_EQ(service.fills[0].fillPrice, 97.5);
    EXPECT_EQ(service.fills[0].currencyNo.Str(), "USD");
    ASSERT_TRUE(IsWindow(window));
    EXPECT_EQ(Texts({IDC_ACCOUNT, IDC_ORDER_QTY, IDC_ORDER_PRICE_WHOLE}), "100|0|97.5");
    EXPECT_NE(Text(IDC_SYSTEM_NO), firstNo);
    EXPECT_EQ(FocusId(), IDC_ACCOUNT);
}

TEST_F(OrderDialog, AnOriginalOrderIsShownAndReadBack) {
    api.priceText = "97+3/8";
    Open(OrderMode::Modify, &ServerOrder("EXA FR 1509"));
    EXPECT_EQ(Texts({IDC_CONTRACT, IDC_SYSTEM_NO, IDC_ORDER_PRICE_WHOLE, IDC_ORDER_PRICE_NUMERATOR,
                     IDC_ORDER_PRICE_DENOMINATOR}),
              "EXA FR 1509|S_OLD|97|3|8");
    EXPECT_TRUE(Enabled(IDC_ORDER_PRICE_NUMERATOR));
    for (const int id :
         {IDC_UPPER, IDC_ACCOUNT, IDC_CONTRACT, IDC_CONTRACT_PICK, IDC_DIRECTION, IDC_SYSTEM_NO}) {
        EXPECT_FALSE(Enabled(id)) << id;
    }
    PressConfirm();
    EXPECT_EQ(Sent(), "SIG 100 U7 FR 1509 S240E 5 at 97.375 of 77");
    EXPECT_EQ(service.orders[0].systemNo.Str(), "S_OLD");
    EXPECT_FALSE(IsWindow(window));
}

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
    g_pOrderDialog->DestroyWindow();

    Open(OrderMode::Input);
    EnterOrder();
    Typed(IDC_ORDER_QTY, "0");
    Typed(IDC_ACCOUNT, "999");
    MessageBoxScript boxes({{ResString(IDS_ORDER_QTY_ZERO), ResString(IDS_OPERATION_FAILED)}});
    PressConfirm();
    Focus(IDC_ACCOUNT);
    EXPECT_TRUE(Enabled(IDC_ACCOUNT)) << "an account that nobody knows is not taken over";
    EXPECT_EQ(Text(IDC_ACCOUNT), "999");
}

TEST_F(OrderDialog, WhatCanNoLongerBeEnteredDoesNotCount) {
    Open(OrderMode::Input);
    EnterOrder();
    Typed(IDC_CONTRACT, "EXA FR 1509");
    Focus(IDC_ORDER_QTY);
    EXPECT_EQ(Typed(IDC_ORDER_PRICE_NUMERATOR, "3"), "3");
    Typed(IDC_CONTRACT, "EXA CM 1509");
    MessageBoxScript boxes({{ResString(IDS_ASK_NEXT_ORDER), ResString(IDS_TIPS), IDNO}});
    PressConfirm();
    EXPECT_EQ(Sent(), "SIG 100 U7 CM 1509 B240E 5 at 97.5 of 0");

    ServerOrder().orderType = '1';  // without an order price
    original.orderState = '6';
    original.fillQty = 5;
    Open(OrderMode::Modify, &original);
    EXPECT_EQ(Texts({IDC_ORDER_PRICE_WHOLE, IDC_FILL_PRICE_WHOLE}), "0|0");
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

TEST_F(OrderDialog, RemovalAndMoveLeaveOnlyWhatTheyNeed) {
    Open(OrderMode::RemoveFilled, &ServerOrder());
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const int id = GetDlgCtrlID(child);
        EXPECT_EQ(IsWindowEnabled(child) != FALSE, id == IDC_CONFIRM || id == IDC_CANCEL) << id;
    }
    EXPECT_FALSE(Shown(IDC_CURRENCY));
    service.results = {0, 1};
    {
        MessageBoxScript boxes({{ResString(IDS_SEND_REMOVE_FAILED), ResString(IDS_TIPS)}});
        PressConfirm();
    }
    EXPECT_TRUE(IsWindow(window));
    PressConfirm();
    EXPECT_EQ(service.deletedOrders, (std::vector<std::uint32_t>{77, 77}));
    EXPECT_FALSE(IsWindow(window));

    Open(OrderMode::Move, &original);
    EXPECT_FALSE(Enabled(IDC_ORDER_QTY));
    Choose(IDC_ACCOUNT, "200");
    PressConfirm();
    EXPECT_EQ(Sent(), "SIG 200 U7 CM 1509 S240E 5 at 97.5 of 77");
}

TEST_F(OrderDialog, TheColouredQuestionGuardsAnElectronicOrder) {
    ServerOrder().backOffice = 'N';
    Open(OrderMode::RemoveFilled, &original);
    const std::string text = ResString(IDS_CONFIRM_NOT_INPUT), caption = ResString(IDS_CONFIRM_CAPTION);
    MessageBoxScript boxes({{text, caption, IDCANCEL}, {text, caption, 0, [&](HWND) { host.Destroy(); }}});
    PressConfirm();
    EXPECT_TRUE(IsWindow(window));
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
        Command(IDC_CONFIRM);
    };
    PressConfirm();
    EXPECT_EQ(service.orders.size(), 1u);
    EXPECT_EQ(service.fills.size(), 1u);  // the operator confirmed both
    EXPECT_EQ(g_pOrderDialog, nullptr);
}

TEST_F(OrderDialog, CarrySendsBothLegsAndFollowsItsLists) {
    api.threeMonthContractNo = "240613";
    api.exchanges[0]->forwardMarket = 1;
    api.priceText = "2010.5";
    Open(OrderMode::Carry);
    for (const int id : {IDC_SOURCE, IDC_ORDER_TYPE, IDC_ORDER_STATE, IDC_ORDER_QTY, IDC_FORCE_CLOSE}) {
        EXPECT_FALSE(Shown(id)) << id;
    }
    EXPECT_EQ(Texts({IDC_DIRECTION, IDC_FORWARD_DIRECTION, IDC_CONFIRM, IDC_FORWARD_FILL_QTY}),
              "Buy|Sell|Borrow|0");
    Choose(IDC_DIRECTION, "Sell");
    EXPECT_EQ(Texts({IDC_DIRECTION, IDC_FORWARD_DIRECTION, IDC_CONFIRM}), "Sell|Buy|Lending");
    Choose(IDC_DIRECTION, "Buy");

    Choose(IDC_ACCOUNT, "100");
    Choose(IDC_UPPER, "U7");
    Typed(IDC_CONTRACT, "EXA CA 240315");
    Typed(IDC_FORWARD_CONTRACT, "3M");
    Typed(IDC_FILL_PRICE_WHOLE, "2010.5");
    Typed(IDC_FILL_PRICE2_WHOLE, "2000");
    Typed(IDC_FILL_QTY, "4");
    EXPECT_EQ(Texts({IDC_FORWARD_FILL_QTY, IDC_CARRY_FEE_TEXT}), "4|10.50  forward discount");
    auto& [near, forward] = lists.lists;
    EXPECT_EQ(near.filter.contractNo.Str() + near.filter.direction, "240315S");
    EXPECT_EQ(forward.filter.contractNo.Str() + forward.filter.direction, "240613B");

    // A picked position counts only while the leg's box is ticked.
    PositionRecord picked{};
    near.notify->OnSelectData(&near, 0, &picked);
    EXPECT_EQ(Text(IDC_NEAR_POSITION_PRICE_WHOLE), "");
    loop.Click(Item(IDC_NEAR_CHOSEN_POSITION));
    EXPECT_TRUE(Enabled(IDC_NEAR_POSITION_PRICE_WHOLE));
    for (const auto& [price, shown] : {std::pair{"2010+1/2", "2010|1"}, {"2010.5", "2010.5|0"}}) {
        api.priceText = price;
        near.notify->OnSelectData(&near, 0, &picked);
        EXPECT_EQ(Texts({IDC_NEAR_POSITION_PRICE_WHOLE, IDC_NEAR_POSITION_PRICE_NUMERATOR}), shown);
    }

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

TEST_F(OrderDialog, ExerciseAsksForTheUnderlying) {
    api.longQty = 9;
    Open(OrderMode::Exercise);
    Choose(IDC_ACCOUNT, "100");
    Choose(IDC_UPPER, "U7");
    Typed(IDC_CONTRACT, "EXA CO 240315 C3000");
    Focus(IDC_FORWARD_CONTRACT);
    loop.PumpUntilIdle();
    EXPECT_EQ(Count(IDC_FORWARD_CONTRACT), 5);
    Choose(IDC_FORWARD_CONTRACT, "240329");
    Choose(IDC_DIRECTION, "Buy");
    Typed(IDC_ORDER_QTY, "2");
    PressConfirm();
    ASSERT_EQ(service.exercises.size(), 1u);
    EXPECT_EQ(service.exercises[0].orderType, '5');
    EXPECT_EQ(service.exercises[0].key.strikePrice.Str(), "3000");
    EXPECT_FALSE(IsWindow(window));
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

TEST_F(OrderDialog, TheContractIsPickedByKeyboard) {
    for (const OrderMode mode : {OrderMode::Input, OrderMode::Carry, OrderMode::Exercise}) {
        for (const bool forwards : {true, false}) {
            SCOPED_TRACE(testing::Message() << static_cast<int>(mode) << forwards);
            Open(mode);
            if (!forwards) {
                loop = HostLoop();
            }
            // A carry's picker has forward markets only, and so nothing of this book.
            const bool listed = mode != OrderMode::Carry;
            Typed(IDC_CONTRACT, "EXA CA 240315");
            loop.Key(VK_F4);
            EXPECT_EQ(static_cast<UINT>(GetDlgCtrlID(GetFocus())),
                      listed ? kSeleCodeListId : kSeleCodeTreeId);
            for (const unsigned key : {VK_DOWN, listed ? VK_RETURN : VK_ESCAPE}) {
                loop.Key(key);
            }
            EXPECT_EQ(Text(IDC_CONTRACT), listed ? "EXA CA 240329" : "EXA CA 240315");
            EXPECT_EQ(FocusId(), IDC_CONTRACT);
            loop.Type(GetFocus(), "EXA FR 1");
            EXPECT_EQ(Text(IDC_CONTRACT), "EXA FR 1") << "the text is marked";
            SendMessageA(GetFocus(), WM_SYSKEYDOWN, VK_DOWN, 1 << 29);
            loop.Key(VK_ESCAPE);
            EXPECT_EQ(Text(IDC_CONTRACT), "EXA FR 1");
            EXPECT_EQ(FocusId(), IDC_CONTRACT);
            if (forwards) {
                loop.Key(VK_TAB);
                EXPECT_NE(FocusId(), IDC_CONTRACT_PICK) << "Tab passes the button by";
            }
            g_pOrderDialog->DestroyWindow();
        }
    }
}

TEST_F(OrderDialog, AHostWithoutAnythingLeavesEmptyLists) {
    FakeTradeApi nothing;
    lists.fails = true;
    g_hostServices.sysConfig = nullptr;
    g_pTradeService = nullptr;
    for (ITradeApi* known : {static_cast<ITradeApi*>(&nothing), static_cast<ITradeApi*>(nullptr)}) {
        g_pTradeApi = known;
        for (int mode = 0; mode <= 5; ++mode) {
            SCOPED_TRACE(mode);
            Open(static_cast<OrderMode>(mode), &ServerOrder());
            EXPECT_EQ(Count(IDC_ACCOUNT), 0);
            Focus(IDC_ACCOUNT);
            loop.PumpUntilIdle();
            Focus(IDC_CANCEL);
            loop.Key(VK_RETURN);
            EXPECT_EQ(g_pOrderDialog, nullptr);
        }
    }
}

// The first rounds fill the system's own caches, and the system keeps some memory for every dialog of the
// templates.
TEST_F(OrderDialog, OpeningAndClosingLeavesNothingBehind) {
    constexpr int kModes = 6;
    const auto inEveryMode = [&](const std::function<void(OrderMode)>& life) {
        return [&, life] {
            for (int mode = 0; mode < kModes; ++mode) {
                life(static_cast<OrderMode>(mode));
                loop.PumpUntilIdle();
            }
        };
    };
    const auto bare = inEveryMode([&](OrderMode mode) {
        CDialog dialog;
        CreateFromResources(dialog, static_cast<unsigned>(TraitsOf(mode).templateId), host.Get());
        dialog.DestroyWindow();
    });
    const auto life = inEveryMode([&](OrderMode mode) {
        Open(mode, &ServerOrder());
        g_pOrderDialog->DestroyWindow();
    });
    const long long ofTheSystem = KeptByEach(bare, 3);
    EXPECT_LT(KeptByEach(life, 3) - ofTheSystem, kModes * 16);
}

}  // namespace
