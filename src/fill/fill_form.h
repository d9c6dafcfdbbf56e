#pragma once

#include "entry/price_row.h"
#include "trade/contract_key.h"
#include "trade/fill_record.h"
#include "trade/order_codes.h"

#include <cstdint>
#include <string>

// What a fill dialog works at. The host gives the mode as a number; a number without a name here is the input
// of a fill too.
enum class FillMode : int {
    FullInput = 0,  // the one input mode that takes combinations and carry pairs
    Modify = 2,     // of an existing fill; the server takes no such request
    Remove = 3,     // of an existing fill
};

constexpr bool IsInput(FillMode mode) {
    return mode != FillMode::Modify && mode != FillMode::Remove;
}

// Everything that a fill dialog holds between two events: the values of its controls, exchanged with the
// window, and what it has learned from the record that it was opened on. Lists give the host's own codes,
// whatever the box shows of them, and entries have no blanks around them.
struct FillForm {
    // The controls.
    std::string exchangeFillNo;
    std::string systemNo;
    std::string upper;
    std::string account;
    char source = 0;  // 0: none
    std::int32_t fillQty = 0;
    std::string exchangeNo;
    std::string commodityNo;
    char commodityType = CommodityType::kUnknown;  // of the line shown; without one of the loaded record
    std::string contractNo;  // short text: "1509", "1509 C3000/1509 P3000"; the close contract of a carry
    char direction = 0;      // 0: none; the open direction is the opposite
    PriceRow fillPrice;
    std::int32_t denominator = 1;  // of both prices
    std::string openContract;
    PriceRow fillPrice2;  // second leg of a combination, open leg of a carry
    std::string currency;
    bool feeGiven = false;
    double fee = 0;

    // What the dialog knows.
    FillMode mode = FillMode::FullInput;
    const FillRecord* fill = nullptr;    // the host's
    const OrderRecord* order = nullptr;  // the host's
    FixedText<21> fillNo{};              // of the loaded fill
    // Of the loaded record: its key, and what the contract edit shows of it.
    ContractKey loadedKey{{}, {}, CommodityType::kUnknown, {}, {}, {}, 'N', {}, {}, 'N'};
    std::string loadedContract;
    std::string accountNo;  // of the loaded record, as `sign`
    std::string sign;
    std::int32_t remainingOrderQty = 0;
};

// Below this denominator a commodity has no fractions, and its prices no numerators.
inline constexpr std::int32_t kFractionDenominator = 2;

inline double PriceOf(const FillForm& form, const PriceRow& row) {
    return PriceValue(row, form.denominator < kFractionDenominator ? 0 : form.denominator);
}
