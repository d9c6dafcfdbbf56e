#pragma once

#include "trade/fixed_text.h"

#include <cstddef>

// The identity of a contract, the head of most host records. All texts are in the ANSI code page. A key is
// cleared to zero bytes before it is filled.
#pragma pack(push, 1)
struct ExchangeKey {
    FixedText<21> sign;  // the sign under which the host groups its data; empty means all
    FixedText<11> exchangeNo;
};

struct CommodityKey {
    FixedText<21> sign;
    FixedText<11> exchangeNo;
    char commodityType;  // CommodityType below
    FixedText<11> commodityNo;
};

// One leg: all that a fill names.
struct SingleContractKey {
    FixedText<21> sign;
    FixedText<11> exchangeNo;
    char commodityType;
    FixedText<11> commodityNo;
    FixedText<11> contractNo;   // month or prompt date, or "3M"
    FixedText<11> strikePrice;  // as text, without the option letter
    char optionType;            // 'C' call, 'P' put, 'N' none
};

struct ContractKey {
    FixedText<21> sign;
    FixedText<11> exchangeNo;
    char commodityType;
    FixedText<11> commodityNo;
    FixedText<11> contractNo;
    FixedText<11> strikePrice;
    char optionType;
    FixedText<11> contractNo2;
    FixedText<11> strikePrice2;
    char optionType2;
};
#pragma pack(pop)

static_assert(sizeof(ExchangeKey) == 32 && offsetof(ExchangeKey, exchangeNo) == 21);
static_assert(sizeof(CommodityKey) == 44 && offsetof(CommodityKey, commodityType) == 32 &&
              offsetof(CommodityKey, commodityNo) == 33);
static_assert(sizeof(SingleContractKey) == 67 && offsetof(SingleContractKey, contractNo) == 44 &&
              offsetof(SingleContractKey, strikePrice) == 55 &&
              offsetof(SingleContractKey, optionType) == 66);
static_assert(sizeof(ContractKey) == 90 && offsetof(ContractKey, contractNo2) == 67 &&
              offsetof(ContractKey, strikePrice2) == 78 && offsetof(ContractKey, optionType2) == 89);

// The commodity type codes of the host, and what the key of such a contract holds.
namespace CommodityType {
inline constexpr char kGoods = 'G';            // commodity only, no contract
inline constexpr char kGoodsDeferred = 'Y';    // commodity only, its code contains "("
inline constexpr char kFutures = 'F';          // one contract
inline constexpr char kSpreadMonth = 'm';      // two contracts of one commodity
inline constexpr char kSpreadCommodity = 'c';  // a commodity pair, one contract code for both legs
inline constexpr char kOption = 'O';           // one option
inline constexpr char kBullVertical = 'u';     // two calls, same contract, first strike lower
inline constexpr char kBearVertical = 'e';     // two puts, same contract, first strike higher
inline constexpr char kStraddle = 'd';         // call and put, same contract, equal strikes
inline constexpr char kStrangle = 'g';         // call and put, same contract, call strike higher
inline constexpr char kCalendarCall = 'l';     // two calls, different contracts, equal strikes
inline constexpr char kCalendarPut = 'r';      // two puts, different contracts, equal strikes
inline constexpr char kUnknown = 'U';          // what a dialog holds before a contract is known
}  // namespace CommodityType

// The fields of a key that make up its commodity's key and its first leg.
template <typename Key>
CommodityKey CommodityOf(const Key& key) {
    return {key.sign, key.exchangeNo, key.commodityType, key.commodityNo};
}
inline SingleContractKey FirstLegOf(const ContractKey& key) {
    return {key.sign,       key.exchangeNo,  key.commodityType, key.commodityNo,
            key.contractNo, key.strikePrice, key.optionType};
}
