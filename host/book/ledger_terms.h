#pragma once

#include "book/record_key.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

// What the files of the ledger share.

inline constexpr char kWorking = '4';
inline constexpr char kPartlyFilled = '5';
inline constexpr char kFilled = '6';
inline constexpr char kCancelled = '9';
inline constexpr char kRestCancelled = 'A';
inline constexpr char kRejected = 'B';
inline constexpr char kExercise = '5';  // an order type

inline std::string Quoted(std::string_view name) {
    return '\'' + std::string(name) + '\'';
}

// The contract that a leg is by itself.
inline ContractKey AsContract(const SingleContractKey& leg) {
    return TidyKey(ContractKey{leg.sign,
                               leg.exchangeNo,
                               leg.commodityType,
                               leg.commodityNo,
                               leg.contractNo,
                               leg.strikePrice,
                               leg.optionType,
                               {},
                               {},
                               0});
}

// "F00000006"
inline std::string FillNumber(std::uint32_t number) {
    char text[16];
    std::snprintf(text, sizeof text, "F%08u", static_cast<unsigned>(number));
    return text;
}
