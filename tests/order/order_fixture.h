#pragma once

#include "order/input_submission.h"
#include "res/language.h"
#include "support/fake_requests.h"
#include "support/fixed_clock.h"
#include "support/scripted_prompt.h"
#include "trade/code_tables.h"
#include "trade/sample_book.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

struct CountingPause : IPause {
    std::vector<int> waits;
    std::function<void()> whileWaiting;
    void Wait(int milliseconds) override {
        waits.push_back(milliseconds);
        if (whileWaiting) {
            whileWaiting();
        }
    }
};

// A book of one account and one exchange, and the services of a submission over it.
class OrderTest : public testing::Test {
protected:
    OrderTest() {
        g_wResLanguage = kEnglish;
        group.operatorNo.Set("OP9");
        api.AddExchange("EXA");
        api.AddCommodity('F', "CM", 0.25, 1);
        api.AddCommodity('F', "FR", 1, 8);
        api.AddCommodity('F', "CA", 0.25, 1).rollingCode = 'U';
        api.AddPair('O', "CO", 0.25, 'F', "CA", "").rollingCode = 'U';
        for (const char* text : {"EXA CM 1509", "EXA FR 1509", "EXA CA 3M", "EXA CA 240315", "EXA CA 240329",
                                 "EXA CA 240330", "EXA CA 240613", "EXA CO 240315 C3000"}) {
            api.AddContract(text);
        }
    }

    // A two-leg contract and its commodity, whose legs are the futures of LEG1 and LEG2.
    void AddSpread(char type, const std::string& text) {
        const std::string commodityNo = text.substr(4, text.find(' ', 4) - 4);
        api.AddPair(type, commodityNo, 0.25, 'F', "LEG1", "LEG2").secondExchangeNo.Set("EXB");
        EXPECT_EQ(api.AddContract(text).key.commodityType, type) << text;
    }

    // A complete entry: 5 at 97.5, limit, working, good for the day, of E-TRADE.
    OrderForm Entry(OrderMode mode = OrderMode::Input, const std::string& contract = "EXA CM 1509") {
        OrderForm form;
        form.mode = mode;
        form.account = "100";
        form.sign = "SIG";
        form.upper = "U7";
        form.source = 'E';
        form.orderType = '2';
        form.orderState = '4';
        form.validType = '0';
        form.direction = 'B';
        form.currency = "USD";
        form.systemNo = "S_1";
        form.exchangeSystemNo = "X_2";
        form.exchangeFillNo = "M_3";
        form.orderQty = 5;
        form.orderPrice.whole = "97.5";
        ContractKey key{};
        EXPECT_TRUE(ParseContractText(contract, key));
        form.contractText = contract;
        form.exchangeNo = key.exchangeNo.Str();
        form.commodityNo = key.commodityNo.Str();
        form.commodityType = key.commodityType;
        FormatContractText(key, form.contractNo, true, false, trade);
        return form;
    }
    OrderForm FilledEntry(OrderMode mode = OrderMode::Input, const std::string& contract = "EXA CM 1509") {
        OrderForm form = Entry(mode, contract);
        form.orderState = '6';
        form.fillQty = 5;
        form.fillPrice.whole = "97.25";
        form.fillPrice2.whole = "96.5";
        return form;
    }
    OrderForm CarryEntry(const std::string& near, const std::string& forward) {
        OrderForm form = FilledEntry(OrderMode::Carry, "EXA CA " + near);
        form.forwardContract = forward;
        form.orderQty = 0;
        form.orderPrice = {};
        return form;
    }
    // An order that the server has: a sale of 5 at 97.5.
    OrderRecord& ServerOrder(const std::string& contract = "EXA CM 1509") {
        original = {};
        EXPECT_TRUE(ParseContractText(contract, original.key));
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
        original.flag614 = 'Q';
        original.text279.Set("kept text");
        original.inputOperator.Set("OP1");
        original.inputTime.Set("2026-01-02 03:04:05");
        return original;
    }
    OrderForm Correction(OrderMode mode) {
        OrderForm form = Entry(mode);
        form.original = &ServerOrder();
        return form;
    }

    SampleBook api{"SIG"};
    GroupRecord& group = api.group;
    UserRecord& user = api.AddUser("100");
    OrderRecord original{};
    FakeTradeService service;
    ScriptedPrompt prompt;
    CountingPause pause;
    FixedClock clock;
    TradeData trade{&api};
    TradeRequests requests{&service};
    OrderServices services{trade, requests, prompt, pause, clock};
};
