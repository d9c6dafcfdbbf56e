#pragma once

#include "tests/trade/fake_trade.h"
#include "trade/contract_key.h"

#include <deque>
#include <string>

// A small host for the popup and its catalog: records are added one by one and stay where they are.
class SampleContracts {
public:
    FakeTradeApi api;

    ExchangeRecord& AddExchange(const char* exchangeNo, const char* name, bool forward = false) {
        ExchangeRecord& exchange = m_exchanges.emplace_back();
        exchange.exchangeNo.Set(exchangeNo);
        exchange.exchangeName.Set(name);
        exchange.forwardMarket = forward ? 1 : 0;
        api.exchanges.push_back(&exchange);
        return exchange;
    }
    // On the exchange added last.
    CommodityRecord& AddCommodity(char type, const char* commodityNo, const char* name,
                                  const char* firstLeg = "", const char* secondLeg = "") {
        CommodityRecord& commodity = m_commodities.emplace_back();
        commodity.exchangeNo = m_exchanges.back().exchangeNo;
        commodity.commodityType = type;
        commodity.commodityNo.Set(commodityNo);
        commodity.commodityName.Set(name);
        commodity.relatedCommodityNo.Set(firstLeg);
        commodity.secondCommodityNo.Set(secondLeg);
        api.commodities.push_back(&commodity);
        return commodity;
    }
    // Of the commodity added last.
    ContractRecord& AddContract(const std::string& contractNo, const std::string& strike = "",
                                char optionType = 'N', const std::string& strike2 = "",
                                char optionType2 = 'N') {
        ContractRecord& contract = m_contracts.emplace_back();
        const CommodityRecord& commodity = m_commodities.back();
        contract.key = {commodity.sign,
                        commodity.exchangeNo,
                        commodity.commodityType,
                        commodity.commodityNo,
                        {},
                        {},
                        optionType,
                        {},
                        {},
                        optionType2};
        contract.key.contractNo.Set(contractNo);
        contract.key.strikePrice.Set(strike);
        contract.key.strikePrice2.Set(strike2);
        api.contracts.push_back(&contract);
        return contract;
    }

    // Two exchanges: EXA with goods, futures, options and straddles, LMX (forward market) with one commodity.
    void AddUsualBook() {
        AddExchange("EXA", "Exchange A");
        AddCommodity('O', "CMO", "Options", "CM");
        for (const char* strike : {"900", "1000", "900"}) {
            AddContract("1512", strike, 'C');
        }
        AddContract("1509", "3000", 'P');
        AddCommodity('d', "CMD", "Straddles", "CM");
        AddContract("1509", "3000", 'C', "3000", 'P');
        AddCommodity('G', "CM", "Goods");
        AddContract("");
        AddCommodity('F', "CM", "Copper");
        AddContract("1509");
        AddContract("1512");
        AddCommodity('F', "ZZ", "Nothing traded");
        AddExchange("NIL", "Empty");
        AddExchange("LMX", "Metal", true);
        AddCommodity('F', "CA", "Copper");
        AddContract("3M");
    }

private:
    std::deque<ExchangeRecord> m_exchanges;
    std::deque<CommodityRecord> m_commodities;
    std::deque<ContractRecord> m_contracts;
};
