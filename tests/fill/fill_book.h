#pragma once

#include "fill/fill_form.h"
#include "support/fake_requests.h"
#include "trade/contract_text.h"
#include "trade/fake_trade.h"

#include <deque>
#include <functional>
#include <string>

// A small book for the fill dialog: exchange EXA, and EXF on the forward market; sign SG.
struct FillBook : FakeTradeApi {
    FillBook() {
        AddExchange("EXA", "Exchange A", 0);
        AddExchange("EXF", "Forward", 1);
        AddExchange("EXG", "Second forward", 1);
        AddCommodity("EXA", 'F', "CM", 1, 1);
        AddCommodity("EXA", 'F', "DN", 0.5, 1);
        AddCommodity("EXA", 'F', "TR", 1, 8);
        AddPair('m', "CM", "CM", "CM");
        AddPair('u', "OP", "OP", "OP");
        AddPair('c', "CM&DN", "CM", "DN");
        AddCommodity("EXF", 'F', "CA", 0.25, 1).rollingCode = 'U';
        for (const char* text :
             {"EXA CM 1509", "EXA DN 1509", "EXA TR 1509", "EXA CM 1509/1512", "EXA OP 1509 C3000/1509 C3100",
              "EXA CM&DN 1509", "EXF CA 150320", "EXF CA 150618", "EXF CA 3M"}) {
            AddContract(text);
        }
    }

    std::function<void()> whileAsked;  // what the host does during a look-up
    void Asked() {
        if (whileAsked) {
            whileAsked();
        }
    }
    void GetUsers(IDataContainer* list, const char* sign) override {
        Asked();
        FakeTradeApi::GetUsers(list, sign);
    }
    void GetExchanges(IDataContainer* list, const char* sign) override {
        Asked();
        FakeTradeApi::GetExchanges(list, sign);
    }

    // A key without a sign means all signs, which here is SG.
    template <typename Key>
    static Key WithSign(const void* key) {
        Key known = *static_cast<const Key*>(key);
        if (known.sign.Empty()) {
            known.sign.Set("SG");
        }
        return known;
    }
    void GetCommodities(const void* key, IDataContainer* list) override {
        Asked();
        const auto known = WithSign<ExchangeKey>(key);
        FakeTradeApi::GetCommodities(&known, list);
    }
    CommodityRecord* GetCommodity(const void* key) override {
        Asked();
        const auto known = WithSign<CommodityKey>(key);
        return FakeTradeApi::GetCommodity(&known);
    }
    ContractRecord* GetContract(const ContractKey* key) override {
        Asked();
        const auto known = WithSign<ContractKey>(key);
        return FakeTradeApi::GetContract(&known);
    }

    std::deque<ExchangeRecord> exchangeStore;
    std::deque<CommodityRecord> commodityStore;
    std::deque<ContractRecord> contractStore;

    void AddExchange(const char* code, const char* name, char forward) {
        ExchangeRecord& record = exchangeStore.emplace_back();
        record.sign.Set("SG");
        record.exchangeNo.Set(code);
        record.exchangeName.Set(name);
        record.forwardMarket = forward;
        exchanges.push_back(&record);
    }
    CommodityRecord& AddCommodity(const char* exchange, char type, const char* code, double tick,
                                  std::uint32_t denominator) {
        CommodityRecord& record = commodityStore.emplace_back();
        record.sign.Set("SG");
        record.exchangeNo.Set(exchange);
        record.commodityType = type;
        record.commodityNo.Set(code);
        record.commodityName.Set(std::string("Name of ") + code);
        record.tickNumerator = tick;
        record.tickDenominator = denominator;
        commodities.push_back(&record);
        return record;
    }
    CommodityRecord& AddPair(char type, const char* code, const char* first, const char* second) {
        CommodityRecord& record = AddCommodity("EXA", type, code, 1, 1);
        record.relatedExchangeNo.Set("EXA");
        record.relatedCommodityType = type == 'u' ? 'O' : 'F';
        record.relatedCommodityNo.Set(first);
        record.secondExchangeNo.Set("EXA");
        record.secondCommodityType = record.relatedCommodityType;
        record.secondCommodityNo.Set(second);
        return record;
    }
    void AddContract(const char* text) {
        ContractRecord& record = contractStore.emplace_back();
        ParseContractText(text, record.key);
        record.key.sign.Set("SG");
        contracts.push_back(&record);
    }
    CommodityRecord& Commodity(char type, std::string_view code) {
        for (CommodityRecord& record : commodityStore) {
            if (record.commodityType == type && record.commodityNo == code) {
                return record;
            }
        }
        return commodityStore.front();
    }
};

// What an operator has entered for one contract, prices 97 and 98.
inline FillForm EnteredForm(const char* exchange, char type, const char* commodity, const char* contract) {
    FillForm form;
    form.account = form.accountNo = "10001";
    form.sign = "SG";
    form.upper = "UP1";
    form.systemNo = "SYS7";
    form.exchangeFillNo = "M_0317142530123";
    form.exchange = exchange;
    form.commodity = commodity;
    form.commodityType = type;
    form.contract = contract;
    form.fillQty = 3;
    form.remainingOrderQty = 3;
    form.price.whole = "97";
    form.price2.whole = "98";
    form.currency = "USD";
    form.fillSource = "E-TRADE";
    form.direction = "Buy";
    form.fee = 2.5;
    return form;
}
