#pragma once

#include "order/input_submission.h"
#include "res/language.h"
#include "support/fake_requests.h"
#include "support/scripted_prompt.h"
#include "trade/code_tables.h"
#include "trade/contract_text.h"
#include "trade/fake_trade.h"

#include <gtest/gtest.h>

#include <cstring>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

struct FixedClock : IClock {
    LocalMoment now;
    FixedClock() {
        now.fields.tm_year = 126;  // 2026-03-04 05:06:07.089
        now.fields.tm_mon = 2;
        now.fields.tm_mday = 4;
        now.fields.tm_hour = 5;
        now.fields.tm_min = 6;
        now.fields.tm_sec = 7;
        now.milliseconds = 89;
    }
    LocalMoment Now() const override { return now; }
};

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
        group.sign.Set("SIG");
        group.operatorNo.Set("OP9");
        group.tradable = 'Y';
        user.sign.Set("SIG");
        user.accountNo.Set("100");
        user.group = &group;
        api.users = {&user};
        AddCommodity('F', "CM", 0.25, 1);
        AddCommodity('F', "FR", 1, 8);
        AddCommodity('F', "CA", 0.25, 1).rollingCode = 'U';
        CommodityRecord& option = AddCommodity('O', "CO", 0.25, 1);
        option.rollingCode = 'U';
        option.relatedCommodityType = 'F';
        for (const char* text : {"EXA CM 1509", "EXA FR 1509", "EXA CA 3M", "EXA CA 240315", "EXA CA 240329",
                                 "EXA CA 240330", "EXA CA 240613", "EXA CO 240315 C3000"}) {
            AddContract(text);
        }
    }

    CommodityRecord& AddCommodity(char type, const char* commodityNo, double tick,
                                  std::uint32_t denominator) {
        CommodityRecord& record = m_commodities.emplace_back();
        record.sign.Set("SIG");
        record.exchangeNo.Set("EXA");
        record.commodityType = type;
        record.commodityNo.Set(commodityNo);
        record.tickNumerator = tick;
        record.tickDenominator = denominator;
        record.relatedExchangeNo.Set("EXA");
        record.relatedCommodityNo.Set("CA");
        api.commodities.push_back(&record);
        return record;
    }

    ContractRecord& AddContract(const std::string& text) {
        ContractRecord& record = m_contracts.emplace_back();
        EXPECT_TRUE(ParseContractText(text, record.key)) << text;
        record.key.sign.Set("SIG");
        api.contracts.push_back(&record);
        return record;
    }
    // A two-leg contract and its commodity, whose legs are the futures of LEG1 and LEG2.
    void AddSpread(char type, const std::string& text) {
        const std::size_t blank = text.find(' ', 4);
        CommodityRecord& record = AddCommodity(type, text.substr(4, blank - 4).c_str(), 0.25, 1);
        record.relatedCommodityType = record.secondCommodityType = 'F';
        record.relatedCommodityNo.Set("LEG1");
        record.secondExchangeNo.Set("EXB");
        record.secondCommodityNo.Set("LEG2");
        EXPECT_EQ(AddContract(text).key.commodityType, type) << text;
    }

    // A complete entry: 5 at 97.5, limit, working, good for the day, of E-TRADE.
    OrderForm Entry(OrderMode mode = OrderMode::Input, const std::string& contract = "EXA CM 1509") {
        OrderForm form;
        form.mode = mode;
        form.account = "100";
        form.sign = "SIG";
        form.upper = "U7";
        form.source = OrderSourceToText('E');
        form.orderType = OrderTypeToText('2');
        form.orderState = OrderStateToText('4');
        form.validType = ValidTypeToText('0');
        form.direction = DirectionToText('B');
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
        form.orderState = OrderStateToText('6');
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
    // An order that the server has, as the form's original.
    OrderForm Correction(OrderMode mode) {
        original.orderNo = 77;
        original.accountNo.Set("100");
        original.backOffice = 'Y';
        original.flag614 = 'Q';
        original.text279.Set("kept text");
        original.inputOperator.Set("OP1");
        original.inputTime.Set("2026-01-02 03:04:05");
        OrderForm form = Entry(mode);
        form.original = &original;
        return form;
    }

    GroupRecord group{};
    UserRecord user{};
    OrderRecord original{};
    FakeTradeApi api;
    FakeTradeService service;
    ScriptedPrompt prompt;
    CountingPause pause;
    FixedClock clock;
    TradeData trade{&api};
    TradeRequests requests{&service};
    OrderServices services{trade, requests, prompt, pause, clock};

private:
    std::deque<CommodityRecord> m_commodities;
    std::deque<ContractRecord> m_contracts;
};

// A record in which only these bytes are not zero.
struct BytesAt {
    std::size_t offset;
    std::string_view bytes;
};
template <typename Record>
void ExpectBytes(const Record& record, const std::vector<BytesAt>& parts) {
    std::string expected(sizeof(record), '\0');
    for (const BytesAt& part : parts) {
        expected.replace(part.offset, part.bytes.size(), part.bytes);
    }
    const char* actual = reinterpret_cast<const char*>(&record);
    for (std::size_t i = 0; i < sizeof(record); ++i) {
        EXPECT_EQ(static_cast<int>(actual[i]), static_cast<int>(expected[i])) << "at offset " << i;
    }
}
