#pragma once

#include "entry/numeric_rules.h"
#include "tests/trade/sample_book.h"
#include "trade/price_format.h"

#include <functional>

// The contract that a dialog with numeric edits shows: of DEC (decimals), QTR (quarters) or SPR, a spread in
// decimals over QTR.
class NumericContext final : public INumericContext {
public:
    explicit NumericContext(std::string_view commodityNo = "") {
        m_book.AddExchange("EXA");
        m_book.AddCommodity('F', "DEC", 0.5, 1);
        m_book.AddCommodity('F', "QTR", 1, 4);
        m_book.AddPair('m', "SPR", 2, 'F', "QTR", "QTR");
        Choose(commodityNo);
    }
    // None for a commodity that does not exist.
    void Choose(std::string_view commodityNo) {
        m_key = {};
        for (const CommodityRecord* commodity : m_book.commodities) {
            m_key = commodity->commodityNo.View() == commodityNo ? CommodityOf(*commodity) : m_key;
        }
    }
    CommodityKey Commodity() const override {
        whileAsked();
        return m_key;
    }
    TradeData Trade() const override { return TradeData(&m_book); }
    std::string FormatPrice(double price) const override { return FormatPriceText(price, nullptr); }

    std::function<void()> whileAsked = [] {};

private:
    mutable SampleBook m_book;
    CommodityKey m_key{};
};
