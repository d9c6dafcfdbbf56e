#pragma once

#include "tests/trade/fake_trade.h"
#include "trade/contract_key.h"

#include <deque>
#include <map>
#include <string>
#include <vector>

// A host that answers its lists from an index, as quickly as a host can.
class IndexedBook : public FakeTradeApi {
public:
    IndexedBook(int exchangeCount, int commoditiesEach, int contractsEach) {
        for (int e = 0; e < exchangeCount; ++e) {
            ExchangeRecord& exchange = m_exchanges.emplace_back();
            exchange.exchangeNo.Set("EX" + std::to_string(e));
            exchange.exchangeName.Set("Exchange " + std::to_string(e));
            exchanges.push_back(&exchange);
            for (int c = 0; c < commoditiesEach; ++c) {
                AddCommodity(exchange, c, contractsEach);
            }
        }
        signEntries.push_back(this);
    }
    void GetCommodities(const void* key, IDataContainer* list) override {
        for (CommodityRecord* commodity :
             m_byExchange[static_cast<const ExchangeKey*>(key)->exchangeNo.Str()]) {
            list->Add(commodity);
        }
    }
    void GetContracts(const void* key, IDataContainer* list) override {
        for (ContractRecord* contract : m_byCommodity[NameOf(*static_cast<const CommodityKey*>(key))]) {
            list->Add(contract);
        }
    }

private:
    template <typename Key>
    static std::string NameOf(const Key& key) {
        return key.exchangeNo.Str() + "/" + key.commodityType + key.commodityNo.Str();
    }
    void AddCommodity(const ExchangeRecord& exchange, int index, int contractCount) {
        CommodityRecord& commodity = m_commodities.emplace_back();
        commodity.exchangeNo = exchange.exchangeNo;
        const bool option = index % 4 == 3;
        commodity.commodityType = option ? 'O' : 'F';
        commodity.commodityNo.Set("C" + std::to_string(index * 7919 % 1000));
        commodity.commodityName.Set("Commodity " + std::to_string(index));
        commodity.relatedCommodityNo = commodity.commodityNo;
        m_byExchange[exchange.exchangeNo.Str()].push_back(&commodity);
        for (int i = 0; i < contractCount; ++i) {
            ContractRecord& contract = m_contracts.emplace_back();
            contract.key = {commodity.sign,
                            commodity.exchangeNo,
                            commodity.commodityType,
                            commodity.commodityNo,
                            {},
                            {},
                            option ? 'C' : 'N',
                            {},
                            {},
                            'N'};
            contract.key.contractNo.Set(std::to_string(1501 + (option ? i / 10 : i)));
            contract.key.strikePrice.Set(option ? std::to_string(1000 + i % 10 * 50) : "");
            m_byCommodity[NameOf(commodity)].push_back(&contract);
        }
    }

    std::deque<ExchangeRecord> m_exchanges;
    std::deque<CommodityRecord> m_commodities;
    std::deque<ContractRecord> m_contracts;
    std::map<std::string, std::vector<CommodityRecord*>> m_byExchange;
    std::map<std::string, std::vector<ContractRecord*>> m_byCommodity;
};
