#pragma once

#include "trade/host_records.h"

#include <map>

#include <windows.h>

// Records whose texts fill their fields to the last character, without a terminator, and which end where
// readable memory ends.

template <std::size_t Width>
void FillUp(FixedText<Width>& text) {
    std::memset(text.chars + text.View().size(), 'W', Width - text.View().size());
}
template <typename... Text>
void FillUp(Text&... texts) {
    (FillUp(texts), ...);
}
template <typename Record>
Record* Widened(const Record* record);

inline void FillTexts(ExchangeRecord& record) {
    FillUp(record.sign, record.exchangeNo, record.exchangeName);
}
inline void FillTexts(CommodityRecord& record) {
    FillUp(record.sign, record.exchangeNo, record.commodityNo, record.commodityName, record.relatedExchangeNo,
           record.relatedCommodityNo, record.secondExchangeNo, record.secondCommodityNo);
}
inline void FillTexts(ContractKey& key) {
    FillUp(key.sign, key.exchangeNo, key.commodityNo, key.contractNo, key.strikePrice, key.contractNo2,
           key.strikePrice2);
}
inline void FillTexts(ContractRecord& record) {
    FillTexts(record.key);
    FillUp(record.contractName);
    record.commodity = Widened(record.commodity);
}
inline void FillTexts(GroupRecord& record) {
    FillUp(record.sign, record.operatorNo);
}
inline void FillTexts(UserRecord& record) {
    FillUp(record.sign, record.serverKey, record.accountNo, record.accountName);
    record.group = Widened(record.group);
}
inline void FillTexts(UpperRecord& record) {
    FillUp(record.sign, record.upperNo, record.upperName);
}
inline void FillTexts(CurrencyRecord& record) {
    FillUp(record.sign, record.currencyNo, record.currencyName);
}
inline void FillTexts(PositionRecord& record) {
    FillUp(record.key.sign, record.key.exchangeNo, record.key.commodityNo, record.key.contractNo,
           record.key.strikePrice, record.accountNo);
}
inline void FillTexts(ServerRecord& record) {
    FillUp(record.address);
}
inline void FillTexts(ServerConfigRecord& record) {
    FillUp(record.name, record.address);
}
inline void FillTexts(OrderRecord& record) {
    FillTexts(record.key);
    FillUp(record.accountNo, record.validUntil, record.text279, record.systemNo, record.exchangeSystemNo,
           record.upperNo, record.inputOperator, record.inputTime, record.updateOperator, record.updateTime);
}

// A copy of a record; one for each, made anew at each call.
template <typename Record>
Record* Widened(const Record* record) {
    static std::map<const Record*, Record*> copies;
    if (!record) {
        return nullptr;
    }
    Record*& copy = copies[record];
    if (!copy) {
        constexpr std::size_t kPage = 4096;
        static_assert(sizeof(Record) <= kPage);
        auto* pages = static_cast<char*>(VirtualAlloc(nullptr, 2 * kPage, MEM_RESERVE, PAGE_NOACCESS));
        VirtualAlloc(pages, kPage, MEM_COMMIT, PAGE_READWRITE);
        copy = reinterpret_cast<Record*>(pages + kPage - sizeof(Record));
    }
    *copy = *record;
    FillTexts(*copy);
    return copy;
}
