#pragma once

#include "trade/contract_key.h"

#include <cstring>
#include <string_view>

// Keys come from the module with anything behind a text's terminator and with an empty option type where 'N'
// is meant. A tidy key has neither, so that its bytes can be compared and hashed as they are.
template <std::size_t Width>
FixedText<Width> Tidy(const FixedText<Width>& text) {
    FixedText<Width> result;
    result.Set(text.View());
    return result;
}

inline char TidyOption(char optionType) {
    return optionType == 'C' || optionType == 'P' ? optionType : 'N';
}

inline ExchangeKey TidyKey(const ExchangeKey& key) {
    return {Tidy(key.sign), Tidy(key.exchangeNo)};
}

inline CommodityKey TidyKey(const CommodityKey& key) {
    return {Tidy(key.sign), Tidy(key.exchangeNo), key.commodityType, Tidy(key.commodityNo)};
}

inline SingleContractKey TidyKey(const SingleContractKey& key) {
    return {Tidy(key.sign),       Tidy(key.exchangeNo),  key.commodityType,         Tidy(key.commodityNo),
            Tidy(key.contractNo), Tidy(key.strikePrice), TidyOption(key.optionType)};
}

// A pair of commodities names its one contract code once or twice; tidy it is there twice.
inline ContractKey TidyKey(const ContractKey& key) {
    const bool pair = key.commodityType == CommodityType::kSpreadCommodity && key.contractNo2.Empty();
    return {Tidy(key.sign),
            Tidy(key.exchangeNo),
            key.commodityType,
            Tidy(key.commodityNo),
            Tidy(key.contractNo),
            Tidy(key.strikePrice),
            TidyOption(key.optionType),
            Tidy(pair ? key.contractNo : key.contractNo2),
            Tidy(key.strikePrice2),
            TidyOption(key.optionType2)};
}

// A tidy key copied from memory that need not be aligned or typed.
template <typename Key>
Key TidyKeyAt(const void* record) {
    Key key;
    std::memcpy(&key, record, sizeof key);
    return TidyKey(key);
}

// The bytes of a tidy key as hash key, with the sign or behind it; the key must outlive the view.
template <typename Key>
std::string_view SignedBytes(const Key& key) {
    return {reinterpret_cast<const char*>(&key), sizeof(Key)};
}
template <typename Key>
std::string_view UnsignedBytes(const Key& key) {
    return SignedBytes(key).substr(sizeof(key.sign));
}

// True when both name the same leg; signs are compared only when both have one.
inline bool SameLeg(const SingleContractKey& a, const SingleContractKey& b) {
    const SingleContractKey left = TidyKey(a);
    const SingleContractKey right = TidyKey(b);
    return UnsignedBytes(left) == UnsignedBytes(right) &&
           (left.sign.Empty() || right.sign.Empty() || left.sign.View() == right.sign.View());
}
