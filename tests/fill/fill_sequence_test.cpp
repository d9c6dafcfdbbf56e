#include "fill/fill_window.h"

// What is sent is what the windows show, also after the operator has changed his mind.

namespace {

class FillSequence : public FillWindow {
protected:
    // Types over what stands in the edit, or in the edit part of a list.
    void TypeOver(int id, const std::string& text) {
        Focus(id);
        SendMessageA(GetFocus(), EM_SETSEL, 0, -1);
        loop.Type(GetFocus(), text);
    }
    // Enters a purchase of 3 lots at 97 by Proxy, of whatever contract.
    void EnterRest(const std::string& contract) {
        Choose(IDC_FILL_SOURCE, "Proxy");
        Choose(IDC_DIRECTION, "Buy");
        SetText(IDC_FILL_CONTRACT, contract);
        SetText(IDC_FILL_PRICE_WHOLE, "97");
        SetText(IDC_FILL_QTY, "3");
        TypeOver(IDC_ACCOUNT, " 10001 ");
    }
    static std::string ContractOf(const FillRecord& fill) {
        const SingleContractKey& key = fill.key;
        return key.exchangeNo.Str() + " " + key.commodityType + " " + key.commodityNo.Str() + " " +
               key.contractNo.Str() + " " + key.optionType + key.strikePrice.Str();
    }
    // Confirms, the keyboard being where it is, and tells what went out: contract and price of each record.
    std::string Sent() {
        service.fills.clear();
        // Only an order says how much is left of it.
        MessageBoxScript boxes(g_pFillDialog->Order() ? std::deque<ExpectedBox>()
                                                      : Box(kAboveRemaining, "Tips", IDYES));
        Command(IDC_CONFIRM);
        std::string sent;
        for (const FillRecord& fill : service.fills) {
            sent += (sent.empty() ? "" : ", ") + ContractOf(fill) + " at " + FormatText("%g", fill.fillPrice);
        }
        return sent;
    }
    void Refused(const std::string& text) {
        MessageBoxScript boxes(Box(text, "operation failed"));
        Command(IDC_CONFIRM);
        EXPECT_TRUE(service.fills.empty());
    }
    void ExpectKeyboardAlive() {
        loop.PumpUntilIdle();
        EXPECT_TRUE(FocusId() != 0 && Shown(FocusId()) && Enabled(FocusId())) << FocusId();
    }
};

TEST_F(FillSequence, ALineChosenAndThenTypedOverIsNoLongerChosen) {
    for (const bool left : {true, false}) {
        Open(0);
        Choose(IDC_EXCHANGE, "EXA");
        Choose(IDC_COMMODITY, "TR");
        EnterRest("1509");
        SetText(IDC_FILL_PRICE_NUMERATOR, "3");
        TypeOver(IDC_COMMODITY, "dn");
        EXPECT_EQ(Text(IDC_COMMODITY), "DN");
        if (left) {
            loop.Key(VK_TAB);
            EXPECT_EQ(Texts({IDC_FILL_PRICE_NUMERATOR, IDC_FILL_PRICE_DENOMINATOR}), "0|1");
            EXPECT_FALSE(Enabled(IDC_FILL_PRICE_NUMERATOR));
        }
        EXPECT_EQ(Sent(), "EXA F DN 1509 N at 97");
    }
}

TEST_F(FillSequence, AnExchangeTypedOverTakesItsCommodityAway) {
    book.AddCommodity('F', "TR", 1, 8).exchangeNo.Set("EXF");
    book.AddContract("EXF TR 150320");
    Open(1);
    Choose(IDC_EXCHANGE, "EXA");
    Choose(IDC_COMMODITY, "TR");
    EnterRest("150320");
    TypeOver(IDC_EXCHANGE, "exf");
    Refused("Commodity does not exist!\n");
    EXPECT_EQ(Texts({IDC_EXCHANGE, IDC_COMMODITY}), "EXF|");
    TypeOver(IDC_COMMODITY, "ca");
    EXPECT_EQ(Sent(), "EXF F CA 150320 N at 97");
}

TEST_F(FillSequence, ExchangesAndCommoditiesComeAndGo) {
    book.AddCommodity('F', "QU", 1, 4).exchangeNo.Set("EXA");
    for (ExchangeRecord* exchange : book.exchanges) {
        exchange->forwardMarket = false;  // nothing is chosen at first
    }
    Open(1);
    SetText(IDC_FILL_PRICE_NUMERATOR, "3");
    Choose(IDC_EXCHANGE, "EXA");
    Choose(IDC_COMMODITY, "DN");
    EXPECT_EQ(Text(IDC_FILL_PRICE_NUMERATOR), "0");
    Choose(IDC_COMMODITY, "TR");
    EnterRest("1509");
    SetText(IDC_FILL_PRICE_NUMERATOR, "3");
    // The same exchange again, by the list and in passing, changes nothing.
    Choose(IDC_EXCHANGE, "EXA");
    Focus(IDC_EXCHANGE);
    loop.Key(VK_TAB);
    EXPECT_EQ(Texts({IDC_COMMODITY, IDC_FILL_PRICE_NUMERATOR, IDC_FILL_PRICE_DENOMINATOR}), "TR|3|8");
    Choose(IDC_COMMODITY, "QU");
    EXPECT_EQ(Texts({IDC_FILL_PRICE_NUMERATOR, IDC_FILL_PRICE2_NUMERATOR}), "0|0");
    Choose(IDC_EXCHANGE, "EXF");
    Choose(IDC_EXCHANGE, "EXA");
    EXPECT_EQ(Text(IDC_COMMODITY), "");
    Choose(IDC_COMMODITY, "TR");
    SetText(IDC_FILL_PRICE_NUMERATOR, "5");
    EXPECT_EQ(Sent(), "EXA F TR 1509 N at 97.625");
}

TEST_F(FillSequence, OfEqualCodesTheChosenLineCounts) {
    book.AddCommodity('F', "cm", 1, 4).exchangeNo.Set("EXA");
    book.AddContract("EXA cm 1509");
    for (const auto& [line, contract, sent] :
         {std::tuple{0, "1509", "EXA F CM 1509 N at 97"},
          {3, "1509/1512", "EXA F CM 1509 N at 97, EXA F CM 1512 N at 0"},
          {6, "1509", "EXA F cm 1509 N at 97"}}) {
        Open(0);
        Choose(IDC_EXCHANGE, "EXA");
        EnterRest(contract);
        for (const int passed : {0, 3, 6, line}) {
            SendMessageA(Item(IDC_COMMODITY), CB_SETCURSEL, static_cast<WPARAM>(passed), 0);
        }
        Focus(IDC_EXCHANGE);
        loop.Key(VK_TAB);
        EXPECT_EQ(Text(IDC_COMMODITY), "CM");
        EXPECT_EQ(Shown(IDC_FILL_PRICE2_WHOLE), line == 3);
        EXPECT_EQ(Sent(), sent);
    }
}

TEST_F(FillSequence, CodesGoOutInTheHostsLetters) {
    book.AddExchange("exl");
    book.AddCommodity('F', "cu", 1, 4);
    book.AddContract("exl cu 1509");
    OrderRecord lower = FillBook::OrderOf("exl cu 1509");
    OpenOn(0, lower);
    EXPECT_EQ(Texts({IDC_EXCHANGE, IDC_COMMODITY, IDC_FILL_PRICE_DENOMINATOR}), "EXL|CU|4");
    EXPECT_EQ(Sent(), "exl F cu 1509 N at 97");
    Open(1);
    TypeOver(IDC_EXCHANGE, "exl");
    TypeOver(IDC_COMMODITY, "CU");
    EnterRest("1509");
    EXPECT_EQ(Text(IDC_FILL_PRICE_DENOMINATOR), "4");
    EXPECT_EQ(Sent(), "exl F cu 1509 N at 97");
    // Elsewhere the same letters are another commodity.
    book.AddExchange("EXU");
    book.AddCommodity('F', "CU", 1, 4);
    book.AddContract("EXU CU 1509");
    FillRecord fill = book.FillOf("exl cu 1509");
    OpenOn(1, fill);
    Choose(IDC_EXCHANGE, "EXU");
    TypeOver(IDC_COMMODITY, "cu");
    EXPECT_EQ(Sent(), "EXU F CU 1509 N at 97");
    // Also when nothing is listed.
    book.group.tradable = 'N';
    OpenOn(0, lower);
    EXPECT_EQ(Sent(), "exl F cu 1509 N at 97");
}

TEST_F(FillSequence, AnOptionThatWasLoadedKeepsItsStrike) {
    book.AddCommodity('O', "OC", 1, 1).exchangeNo.Set("EXA");
    book.AddContract("EXA OC 1509 C3000");
    book.AddContract("EXA OC 1509 P2900");
    FillRecord fill = book.FillOf("EXA OC 1509 C3000");
    OpenOn(3, fill);
    EXPECT_EQ(Text(IDC_FILL_CONTRACT), "1509");
    Press(IDC_CONFIRM);
    ASSERT_EQ(service.removedFills.size(), 1u);
    EXPECT_EQ(ContractOf(service.removedFills[0]), "EXA O OC 1509 C3000");
    OpenOn(0, fill);
    Choose(IDC_COMMODITY, "DN");
    EXPECT_EQ(Text(IDC_FILL_PRICE_DENOMINATOR), "1");
    Choose(IDC_COMMODITY, "OC");
    EXPECT_EQ(Sent(), "EXA O OC 1509 C3000 at 97");
    OpenOn(0, fill);
    TypeOver(IDC_FILL_CONTRACT, " 1509 P2900 ");
    EXPECT_EQ(Sent(), "EXA O OC 1509 P2900 at 97");
    OpenOn(0, fill);
    Choose(IDC_COMMODITY, "DN");
    EXPECT_EQ(Sent(), "EXA F DN 1509 N at 97");
}

TEST_F(FillSequence, EntriesAreCheckedAndSentWithoutBlanks) {
    book.threeMonthContractNo = "150618";
    Open(0);
    EnterRest(" 150618 ");
    Refused("Can't input 3M Expiry date!\n");
    SetText(IDC_FILL_CONTRACT, " 150320 ");
    EXPECT_EQ(Sent(), "EXF F CA 150320 N at 97");
    EXPECT_EQ(service.fills.at(0).accountNo.Str(), "10001");
    FillRecord carry = book.FillOf("EXF CA 150320", 'C');
    OpenOn(0, carry);
    SetText(IDC_OPEN_CONTRACT, " 150618 ");
    SetText(IDC_FILL_PRICE2_WHOLE, "98");
    EXPECT_EQ(Sent(), "EXF F CA 150320 N at 97, EXF F CA 150618 N at 98");
}

TEST_F(FillSequence, ANewListOfAccountsLeavesTheEntryAndTheSign) {
    FillRecord fill = book.FillOf("EXA CM 1509");
    UserRecord& other = book.AddUser("10001");
    other.sign.Set("S2");
    OpenOn(0, fill);
    TypeOver(IDC_ACCOUNT, "10002");
    Focus(IDC_FILL_QTY);
    for (const char* account : {"10003", "10004"}) {
        book.AddUser(account);
        Focus(IDC_ACCOUNT);
        SendMessageA(Item(IDC_ACCOUNT), CB_SETEDITSEL, 0, MAKELPARAM(1, 3));
        SendMessageA(window, WM_COMMAND, MAKEWPARAM(IDC_ACCOUNT, CBN_SETFOCUS), 0);
        EXPECT_EQ(Text(IDC_ACCOUNT), "10002");
        EXPECT_EQ(SendMessageA(Item(IDC_ACCOUNT), CB_GETEDITSEL, 0, 0), MAKELONG(1, 3));
    }
    EXPECT_EQ(Count(IDC_ACCOUNT), 6);
    SendMessageA(Item(IDC_ACCOUNT), CB_SETCURSEL, 3, 0);
    Focus(IDC_FILL_QTY);
    Focus(IDC_ACCOUNT);
    EXPECT_EQ(SendMessageA(Item(IDC_ACCOUNT), CB_GETCURSEL, 0, 0), 3);
    Sent();
    EXPECT_EQ(service.fills.at(0).key.sign.Str() + service.fills.at(0).accountNo.Str(), "SG10001");
}

TEST_F(FillSequence, WhatWasConfirmedIsSentWhateverComesDuringAQuestion) {
    book.AddPair('m', "TR", 1, 'F', "TR", "TR").exchangeNo.Set("EXA");
    book.commodities.back()->tickDenominator = 8;
    book.AddContract("EXA TR 1509/1512");
    OrderRecord spread = FillBook::OrderOf("EXA TR 1509/1512");
    OpenOn(0, spread);
    SetText(IDC_FILL_QTY, "5");
    SetText(IDC_FILL_PRICE2_NUMERATOR, "4");
    MessageBoxScript boxes(Box(kAboveRemaining, "Tips", IDYES, [&](HWND box) {
        Choose(IDC_COMMODITY, "DN");
        PostMessageA(box, WM_COMMAND, IDYES, 0);
    }));
    Command(IDC_CONFIRM);
    ASSERT_EQ(service.fills.size(), 2u);
    EXPECT_EQ(service.fills[1].fillPrice, 97.5);
}

TEST_F(FillSequence, DirectionAndSourceAreTheirLinesWhateverTheWords) {
    g_wResLanguage = kSimplifiedChinese;  // all question marks in this code page
    OrderRecord sale = FillBook::OrderOf("EXA CM 1509");
    sale.direction = 'S';
    OpenOn(0, sale);
    EXPECT_EQ(Text(IDC_DIRECTION), "??");
    Press(IDC_CONFIRM);
    FillRecord fill = book.FillOf("EXA CM 1509", 'X');
    OpenOn(0, fill);
    SendMessageA(Item(IDC_DIRECTION), CB_SETCURSEL, 0, 0);
    MessageBoxScript boxes(Box(ResString(IDS_ASK_FILL_ABOVE_REMAINING), ResString(IDS_TIPS), IDYES));
    Press(IDC_CONFIRM);
    ASSERT_EQ(service.fills.size(), 2u);
    EXPECT_EQ(std::string({service.fills[0].fillSource, service.fills[0].direction,
                           service.fills[1].fillSource, service.fills[1].direction}),
              "MSXB");
}

TEST_F(FillSequence, TheKeyboardStaysOnAControlThatTakesIt) {
    book.AddPair('m', "PAIR", 1, 'F', "CA", "CA").exchangeNo.Set("EXF");
    Open(0);
    for (const int clicked : {IDC_FILL_PRICE2_WHOLE, IDC_FILL_PRICE_NUMERATOR}) {
        Choose(IDC_COMMODITY, "PAIR");
        TypeOver(IDC_COMMODITY, "ca");
        EnableWindow(Item(clicked), TRUE);  // as for the commodity before
        Focus(clicked);
        ExpectKeyboardAlive();
    }
}

TEST_F(FillSequence, ADoubtedPriceGetsTheKeyboardByKeyAsByMouse) {
    OpenOn(0, order);
    for (const bool byKey : {true, false}) {
        SetText(IDC_FILL_PRICE_WHOLE, "0");
        Focus(IDC_CONFIRM);
        MessageBoxScript boxes(Box("Fill Price is zero;\n\n\t\tAre you sure to down to this order?",
                                   "Operational quaification", IDCANCEL));
        byKey ? loop.Key(VK_RETURN) : loop.Click(Item(IDC_CONFIRM));
        EXPECT_EQ(FocusId(), IDC_FILL_PRICE_WHOLE);
    }
    SetText(IDC_FILL_PRICE_WHOLE, "98");
    EXPECT_EQ(Sent(), "EXA F CM 1509 N at 98");
}

}  // namespace
