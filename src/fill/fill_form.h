#pragma once

#include "controls/price_row.h"
#include "trade/contract_key.h"
#include "trade/fill_record.h"

#include <cstdint>
#include <string>

// What a fill dialog works at; every other number of the host is the input of a fill.
namespace FillMode {
inline constexpr int kFullInput = 0;  // the one input mode that takes combinations and carry pairs
inline constexpr int kModify = 2;     // of an existing fill; the server takes no such request
inline constexpr int kRemove = 3;     // of an existing fill

constexpr bool IsInput(int mode) {
    return mode != kModify && mode != kRemove;
}
}  // namespace FillMode

// The fill of a carry: a close leg now and an open leg at another date.
inline constexpr char kCarrySource = 'C';

// Everything that a fill dialog holds between two events: the values of its controls, exchanged with the
// window, and what it has learned from the record that it was opened on. Combo boxes of codes hold the code,
// fill source and directions their words.
struct FillForm {
    // The controls.
    std::string exchangeFillNo;
    std::string systemNo;
    std::string upper;
    std::string account;
    std::string fillSource;
    std::int32_t fillQty = 0;
    std::string exchange;
    std::string commodity;
    int commodityIndex = -1;  // of the chosen one among the exchange's commodities; -1: only typed
    std::string contract;     // short text: "1509", "1509 C3000/1509 P3000"; the close contract of a carry
    std::string direction;
    PriceRow price;
    std::int32_t denominator = 1;
    std::string openContract;
    std::string openDirection;  // always the opposite of the direction
    PriceRow price2;            // second leg of a combination, open leg of a carry
    std::int32_t denominator2 = 1;
    std::string currency;
    bool feeGiven = false;
    double fee = 0;

    // What the dialog knows.
    int mode = FillMode::kFullInput;
    const FillRecord* fill = nullptr;    // the host's
    const OrderRecord* order = nullptr;  // the host's
    FixedText<21> fillNo{};              // of the loaded fill
    char commodityType = CommodityType::kUnknown;
    std::string accountNo;  // of the loaded record, as `sign`
    std::string sign;
    std::int32_t remainingOrderQty = 0;
};

inline double PriceOf(const FillForm& form) {
    return PriceValue(form.price, form.denominator);
}
inline double Price2Of(const FillForm& form) {
    return PriceValue(form.price2, form.denominator2);
}
