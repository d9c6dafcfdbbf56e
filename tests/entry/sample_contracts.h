#pragma once

#include "entry/contract_catalog.h"
#include "tests/trade/sample_book.h"

#include <string>

// A small host for the popup and its catalog.
class SampleContracts : public SampleBook {
public:
    FakeTradeApi& api = *this;

    // On the exchange added last.
    CommodityRecord& AddCommodity(char type, const char* commodityNo, const char* name,
                                  const char* firstLeg = "", const char* secondLeg = "") {
        CommodityRecord& commodity = SampleBook::AddCommodity(type, commodityNo);
        commodity.commodityName.Set(name);
        commodity.relatedCommodityNo.Set(firstLeg);
        commodity.secondCommodityNo.Set(secondLeg);
        return commodity;
    }
    // Of the commodity added last: the contract's part of the text.
    ContractRecord& AddContract(const std::string& part) {
        const CommodityRecord& commodity = *commodities.back();
        return SampleBook::AddContract(commodity.exchangeNo.Str() + ' ' + commodity.commodityNo.Str() + ' ' +
                                       part);
    }

    // Two exchanges: EXA with goods, futures, options and straddles, LMX (forward market) with one commodity.
    void AddUsualBook() {
        AddExchange("EXA", "Exchange A");
        AddCommodity('O', "CMO", "Options", "CM");
        for (const char* contract : {"1512 C900", "1512 C1000", "1512 C900", "1509 P3000"}) {
            AddContract(contract);
        }
        AddCommodity('d', "CMD", "Straddles", "CM");
        AddContract("1509 C3000/1509 P3000");
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
};

// Text and data of every node, children indented.
inline std::string Outline(const std::vector<CatalogNode>& nodes, const std::string& indent = "") {
    std::string outline;
    for (const CatalogNode& node : nodes) {
        outline += indent + node.text + "|" + node.data + "\n" + Outline(node.children, indent + " ");
    }
    return outline;
}
