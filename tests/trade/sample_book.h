#pragma once

#include "tests/trade/fake_trade.h"
#include "trade/contract_text.h"

#include <deque>
#include <string>
#include <string_view>

// A host's trade data with records of its own, all of one sign: they are added one by one and stay where they
// are.
class SampleBook : public FakeTradeApi {
public:
    GroupRecord group{};  // of every account

    explicit SampleBook(std::string_view sign = "") {
        group.sign.Set(sign);
        group.tradable = 'Y';
    }

    UserRecord& AddUser(std::string_view accountNo, std::string_view name = "") {
        UserRecord& user = Add(m_users, users);
        user.sign = group.sign;
        user.accountNo.Set(accountNo);
        user.accountName.Set(name);
        user.group = &group;
        return user;
    }
    void AddUpper(std::string_view upperNo) {
        UpperRecord& upper = Add(m_uppers, uppers);
        upper.upperNo.Set(upperNo);
        upper.upperName.Set("Clearing");
    }
    void AddCurrency(std::string_view currencyNo) {
        CurrencyRecord& currency = Add(m_currencies, currencies);
        currency.currencyNo.Set(currencyNo);
        currency.currencyName.Set("Money");
    }
    ExchangeRecord& AddExchange(std::string_view exchangeNo, std::string_view name = "Exchange",
                                bool forward = false) {
        ExchangeRecord& exchange = Add(m_exchanges, exchanges);
        exchange.sign = group.sign;
        exchange.exchangeNo.Set(exchangeNo);
        exchange.exchangeName.Set(name);
        exchange.forwardMarket = forward;
        return exchange;
    }
    // On the exchange added last.
    CommodityRecord& AddCommodity(char type, std::string_view commodityNo, double tick = 0,
                                  std::uint32_t denominator = 0) {
        CommodityRecord& commodity = Add(m_commodities, commodities);
        commodity.sign = group.sign;
        commodity.exchangeNo = m_exchanges.back().exchangeNo;
        commodity.commodityType = type;
        commodity.commodityNo.Set(commodityNo);
        commodity.tickNumerator = tick;
        commodity.tickDenominator = denominator;
        return commodity;
    }
    // A two-leg commodity; the legs are of the same exchange.
    CommodityRecord& AddPair(char type, std::string_view commodityNo, double tick, char legType,
                             std::string_view first, std::string_view second) {
        CommodityRecord& pair = AddCommodity(type, commodityNo, tick, 1);
        pair.relatedExchangeNo = pair.secondExchangeNo = pair.exchangeNo;
        pair.relatedCommodityType = pair.secondCommodityType = legType;
        pair.relatedCommodityNo.Set(first);
        pair.secondCommodityNo.Set(second);
        return pair;
    }
    // By its full text.
    ContractRecord& AddContract(const std::string& text) {
        ContractRecord& contract = Add(m_contracts, contracts);
        ParseContractText(text, contract.key);
        contract.key.sign = group.sign;
        return contract;
    }

private:
    template <typename Record>
    static Record& Add(std::deque<Record>& records, std::vector<Record*>& list) {
        list.push_back(&records.emplace_back());
        return records.back();
    }

    std::deque<UserRecord> m_users;
    std::deque<UpperRecord> m_uppers;
    std::deque<CurrencyRecord> m_currencies;
    std::deque<ExchangeRecord> m_exchanges;
    std::deque<CommodityRecord> m_commodities;
    std::deque<ContractRecord> m_contracts;
};
