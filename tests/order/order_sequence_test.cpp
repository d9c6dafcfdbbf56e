// The second and the third interaction: what the windows show after each is what goes out, and nothing of a
// former choice is left.

#include "order/order_window.h"

namespace {

class OrderSequence : public OrderDialog {
protected:
    // A second group of accounts, under a sign of its own, that has the numbers of the first.
    void AddSecondSign() {
        second = group;
        second.sign.Set("SIG2");
        second.operatorNo.Set("OP2");
        UserRecord& twin = api.AddUser("100", "Twin");
        twin.group = &second;
        twin.sign.Set("SIG2");
        api.AddCommodity('F', "CM", 0.25, 1).sign = twin.sign;
        api.AddContract("EXA CM 1509").key.sign = twin.sign;
        api.AddCommodity('F', "FR", 1, 4).sign = twin.sign;
    }
    void PickLine(int id, int index) { SendMessageA(Item(id), CB_SETCURSEL, static_cast<WPARAM>(index), 0); }
    void VisitAccount() {
        Focus(IDC_ACCOUNT);
        loop.PumpUntilIdle();
        loop.Key(VK_TAB);
    }
    void TypeContract(const char* text) {
        Typed(IDC_CONTRACT, text);
        Focus(IDC_ORDER_QTY);
    }
    void PickContract(const char* text) {
        SendMessageA(window, WM_SELECTCODE, reinterpret_cast<WPARAM>(text), reinterpret_cast<LPARAM>(""));
    }
    // The second contract without the name behind it.
    std::string Forward() const { return ContractNoOfLine(Text(IDC_FORWARD_CONTRACT)); }
    // The answer is to whether another order follows.
    void ConfirmAndAnswer(int button) {
        MessageBoxScript boxes({{ResString(IDS_ASK_NEXT_ORDER), ResString(IDS_TIPS), button}});
        PressConfirm();
    }

    GroupRecord second{};
};

// This system has no Chinese: every word of the lists is the same row of question marks.
TEST_F(OrderSequence, LoadedCodesGoOutWhateverTheListsCanShow) {
    for (const std::uint16_t language : {kEnglish, kSimplifiedChinese}) {
        g_wResLanguage = language;
        for (const char* codes : {"S2460E", "B14C3C", "S4912M", "A37ZX2"}) {
            SCOPED_TRACE(codes);
            service.orders.clear();
            ServerOrder();
            original.direction = codes[0];
            original.orderType = codes[1];
            original.orderState = codes[2];
            original.validType = codes[4];
            original.orderSource = codes[5];
            Open(OrderMode::Move, &original);
            Choose(IDC_ACCOUNT, "200");
            PressConfirm();
            ASSERT_EQ(service.orders.size(), 1u);
            const OrderRecord& sent = service.orders[0];
            EXPECT_EQ((std::string{sent.direction, sent.orderType, sent.orderState, sent.validType,
                                   sent.orderSource}),
                      (std::string{codes[0], codes[1], codes[2], codes[4], codes[5]}));
        }
        service.orders.clear();
        Open(OrderMode::Exercise);
        EnterOrder();
        Typed(IDC_CONTRACT, "EXA CO 240315 C3000");
        Focus(IDC_FORWARD_CONTRACT);
        PickLine(IDC_FORWARD_CONTRACT, 1);
        PickLine(IDC_DIRECTION, 1);
        api.shortQty = 5;
        PressConfirm();
        ASSERT_EQ(service.exercises.size(), 1u);
        EXPECT_EQ((std::string{service.exercises[0].orderType, service.exercises[0].direction}), "5S");
        service.exercises.clear();
        loop.PumpUntilIdle();
    }
}

TEST_F(OrderSequence, AnAccountKeepsTheSignItWasChosenOrLoadedWith) {
    AddSecondSign();
    api.AddUser("300").group = nullptr;  // never listed: each visit fills the list again
    Open(OrderMode::Input);
    EnterOrder();
    PickLine(IDC_ACCOUNT, 1);
    VisitAccount();
    ConfirmAndAnswer(IDYES);
    Typed(IDC_ORDER_QTY, "2");
    VisitAccount();
    ConfirmAndAnswer(IDNO);
    ASSERT_EQ(service.orders.size(), 2u);
    for (const OrderRecord& order : service.orders) {
        EXPECT_EQ(order.key.sign.Str() + order.inputOperator.Str(), "SIG2OP2");
    }

    for (const OrderMode mode : {OrderMode::Modify, OrderMode::Move}) {
        service.orders.clear();
        ServerOrder().key.sign.Set("SIG2");
        Open(mode, &original);
        VisitAccount();
        if (mode == OrderMode::Move) {
            Typed(IDC_ACCOUNT, "200");
        }
        PressConfirm();
        ASSERT_EQ(service.orders.size(), 1u);
        EXPECT_EQ(service.orders[0].key.sign.Str(), mode == OrderMode::Modify ? "SIG2" : "SIG");
        EXPECT_FALSE(IsWindow(window));
    }
}

TEST_F(OrderSequence, AnEmptiedAccountIsOpenToEveryOther) {
    Open(OrderMode::Input);
    EnterOrder();
    Typed(IDC_ACCOUNT, "");
    loop.Key(VK_TAB);
    group.accountLock = 'c';
    api.AddUser("400");
    Focus(IDC_ACCOUNT);
    loop.PumpUntilIdle();
    EXPECT_TRUE(Enabled(IDC_ACCOUNT)) << "whatever the former account allows";
    EXPECT_EQ(Count(IDC_ACCOUNT), 3);
    EXPECT_EQ(Typed(IDC_ACCOUNT, "200"), "200");
}

TEST_F(OrderSequence, NumeratorsBelongToOneDenominator) {
    AddSecondSign();
    api.AddCommodity('F', "QU", 1, 4);
    api.AddContract("EXA QU 1509");
    api.AddContract("EXA FR 1512");
    Open(OrderMode::Input);
    EnterOrder();
    Choose(IDC_ORDER_STATE, "Filled");
    TypeContract("EXA FR 1509");
    Typed(IDC_ORDER_PRICE_WHOLE, "97");
    Typed(IDC_ORDER_PRICE_NUMERATOR, "3");
    Typed(IDC_FILL_PRICE_NUMERATOR, "5");
    TypeContract("EXA FR 1512");
    EXPECT_EQ(Texts({IDC_ORDER_PRICE_NUMERATOR, IDC_FILL_PRICE_NUMERATOR}), "3|5") << "the same commodity";
    TypeContract("EXA QU 1509");
    EXPECT_EQ(Texts({IDC_ORDER_PRICE_NUMERATOR, IDC_FILL_PRICE_NUMERATOR, IDC_FILL_PRICE_DENOMINATOR}),
              "0|0|4");

    // So do those of a commodity that another sign quotes in other fractions.
    TypeContract("EXA FR 1509");
    Typed(IDC_ORDER_PRICE_NUMERATOR, "3");
    PickLine(IDC_ACCOUNT, 1);
    EXPECT_EQ(Texts({IDC_ORDER_PRICE_NUMERATOR, IDC_ORDER_PRICE_DENOMINATOR}), "0|4");

    // A host that writes 6/8 as 3/4 means the same price.
    g_pOrderDialog->DestroyWindow();
    api.priceText = "97+3/4";
    Open(OrderMode::Modify, &ServerOrder("EXA FR 1509"));
    EXPECT_EQ(Texts({IDC_ORDER_PRICE_WHOLE, IDC_ORDER_PRICE_NUMERATOR, IDC_ORDER_PRICE_DENOMINATOR}),
              "97|6|8");
}

TEST_F(OrderSequence, ATypedSpreadHasItsSecondFillPrice) {
    AddSpread('m', "EXA SP 1509/1512");
    Open(OrderMode::Input);
    EnterOrder();
    Choose(IDC_ORDER_STATE, "Filled");
    Typed(IDC_FILL_PRICE_WHOLE, "98");
    for (const bool spread : {true, false, true}) {
        TypeContract(spread ? "EXA SP 1509/1512" : "EXA CM 1509");
        for (const int id : {IDC_FILL_PRICE2_LABEL, IDC_FILL_PRICE2_WHOLE, IDC_FILL_PRICE2_SPIN}) {
            EXPECT_EQ(Enabled(id), spread) << id;
        }
        EXPECT_EQ(Text(IDC_FILL_PRICE_WHOLE), "98") << "what was entered stays";
    }
}

TEST_F(OrderSequence, TheKeyboardStaysWhereItIsOfUse) {
    Open(OrderMode::Input);
    EnterOrder();
    ConfirmAndAnswer(IDYES);
    EXPECT_EQ(FocusId(), IDC_ACCOUNT) << "for the next order, by key as by mouse";
    EXPECT_EQ(Texts({IDC_ACCOUNT, IDC_ORDER_QTY, IDC_ORDER_PRICE_WHOLE}), "100|0|97.5");
    Typed(IDC_ORDER_QTY, "5");
    Choose(IDC_ORDER_STATE, "Filled");
    Typed(IDC_FILL_PRICE_WHOLE, "0");
    {
        MessageBoxScript boxes({{ResString(IDS_FILL_PRICE_ZERO) + ResString(IDS_CONFIRM_WARNINGS),
                                 ResString(IDS_CONFIRM_CAPTION), IDCANCEL}});
        PressConfirm();
        EXPECT_EQ(FocusId(), IDC_FILL_PRICE_WHOLE);
    }
    SetText(IDC_CONTRACT, "");
    {
        MessageBoxScript boxes({{ResString(IDS_CONTRACT_EMPTY) + ResString(IDS_NO_CONTRACT),
                                 ResString(IDS_OPERATION_FAILED), IDOK}});
        PressConfirm();
        EXPECT_EQ(FocusId(), IDC_CANCEL);
    }

    // A click from the contract into a numerator that the contract shuts, and a choice that shuts an edit.
    TypeContract("EXA FR 1509");
    Typed(IDC_CONTRACT, "EXA CM 1509");
    loop.Click(Item(IDC_ORDER_PRICE_NUMERATOR));
    EXPECT_FALSE(Enabled(IDC_ORDER_PRICE_NUMERATOR));
    EXPECT_TRUE(IsWindowEnabled(GetFocus()));
    EXPECT_NE(FocusId(), 0);
    g_pOrderDialog->DestroyWindow();

    group.accountLock = 'c';
    api.AddUser("300").group = nullptr;
    Open(OrderMode::Move, &ServerOrder());
    EXPECT_TRUE(IsWindowEnabled(GetFocus()));
    EXPECT_NE(FocusId(), 0) << "the account shuts itself";
}

TEST_F(OrderSequence, AForwardChoiceStaysWhileItsCommodityDoes) {
    Open(OrderMode::Carry);
    Choose(IDC_ACCOUNT, "100");
    PickContract("EXA CA 240315");
    EXPECT_EQ(Forward(), "240315") << "the dialog's own contract is offered";
    PickContract("EXA CA 240329");
    EXPECT_EQ(Forward(), "240329");
    Choose(IDC_FORWARD_CONTRACT, "3M");
    for (const char* nearContract : {"EXA CA 240330", "EXA CA 240330", "EXA CA 240315"}) {
        Typed(IDC_CONTRACT, nearContract);
        Focus(IDC_UPPER);
        EXPECT_EQ(Forward(), "3M") << nearContract;
    }
    Typed(IDC_FORWARD_CONTRACT, "");
    Focus(IDC_CONTRACT);
    Focus(IDC_UPPER);
    EXPECT_EQ(Forward(), "") << "nothing was typed into the contract";
    // Nobody lists this one; the lists and quantities follow it all the same.
    PositionRecord position{};
    ContractKey key{};
    ParseContractText("EXA CA 250101", key);
    position.key = FirstLegOf(key);
    position.accountNo.Set("100");
    position.direction = 'S';
    position.openQty = 7;
    position.price = 90;
    api.positions = {&position};
    Typed(IDC_CONTRACT, "EXA CA 250101");
    Focus(IDC_UPPER);
    EXPECT_EQ(Text(IDC_NEAR_POSITION_QTY), "7");
    EXPECT_EQ(lists.lists[0].filter.contractNo.Str(), "250101");

    // A picked position counts at once.
    PositionRecord atItsPrice = position;
    atItsPrice.openQty = 3;
    api.position = &atItsPrice;
    loop.Click(Item(IDC_NEAR_CHOSEN_POSITION));
    EXPECT_EQ(Text(IDC_NEAR_POSITION_QTY), "7") << "at any price";
    lists.lists[0].notify->OnSelectData(&lists.lists[0], 0, &position);
    EXPECT_EQ(Text(IDC_NEAR_POSITION_QTY), "3");

    PickContract("EXA CM 1509");
    EXPECT_EQ(Forward(), "1509");
}

TEST_F(OrderSequence, AnEmptyCellOfThePopupIsNoChoice) {
    Open(OrderMode::Carry);
    PickContract("EXA CA 240315");
    for (const char* nothing : {"EXA FR ", "EXA", static_cast<const char*>(nullptr)}) {
        PickContract(nothing);
    }
    EXPECT_EQ(Texts({IDC_CONTRACT, IDC_NEAR_POSITION_PRICE_DENOMINATOR}), "EXA CA 240315|1");
    PickContract("EXA FR");
    EXPECT_EQ(Text(IDC_CONTRACT), "EXA FR ") << "a commodity by itself is one";
}

// Whoever writes a text without going through the keyboard confirms what stands there.
TEST_F(OrderSequence, WhatStandsThereIsConfirmed) {
    AddSecondSign();
    UserRecord& other = api.AddUser("300");
    other.group = &second;
    other.sign = second.sign;
    Open(OrderMode::Input);
    EnterOrder();
    Typed(IDC_CONTRACT, "EXA CA 240315");
    Focus(IDC_CONFIRM);
    SetText(IDC_CONTRACT, "EXA CM 1509");
    SetText(IDC_ACCOUNT, "300");
    MessageBoxScript boxes({{ResString(IDS_ASK_NEXT_ORDER), ResString(IDS_TIPS), IDNO}});
    Command(IDC_CONFIRM);
    EXPECT_EQ(Sent(), "SIG2 300 U7 CM 1509 B240E 5 at 97.5 of 0");
}

}  // namespace
