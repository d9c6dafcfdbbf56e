#pragma once

#include "entry/price_row.h"
#include "order/order_mode.h"
#include "trade/contract_key.h"
#include "trade/order_codes.h"
#include "trade/order_record.h"
#include "trade/trade_data.h"

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

// The spreads whose price may be zero or negative.
constexpr bool IsSpread(char commodityType) {
    return commodityType == CommodityType::kSpreadMonth || commodityType == CommodityType::kSpreadCommodity;
}

// One selectable account. Rows stand in ascending order of the account number.
struct AccountRow {
    std::string accountNo;
    std::string accountName;
    std::string serverName;  // of the configured server that holds the account; empty when none matches
    std::string operatorNo;
    std::string sign;
};

// Everything that an order dialog holds between two events: the values of its controls, exchanged with the
// window, and what it has learned about account and contract. Boxes of words hold codes, 0 for none; account,
// upper and currency the code in front of the first blank.
struct OrderForm {
    // The controls.
    std::string account;
    std::string upper;
    char source = 0;
    char orderType = 0;
    char orderState = 0;
    char validType = 0;
    std::tm validUntil{};         // local time of the valid-date picker
    char direction = 0;           // the forward direction of a carry is the opposite
    std::string forwardContract;  // carry: forward contract number; exercise: underlying; may be "3M"
    std::string currency;
    std::string contractText;  // as shown: "EXA CM 1509"
    std::string systemNo;
    std::string exchangeSystemNo;
    std::string exchangeFillNo;
    std::string fee;
    std::int32_t orderQty = 0;
    std::int32_t fillQty = 0;
    PriceRow orderPrice;
    PriceRow triggerPrice;
    PriceRow fillPrice;   // carry: of the near leg
    PriceRow fillPrice2;  // second leg of a spread; carry: forward leg
    PriceRow nearPositionPrice;
    PriceRow forwardPositionPrice;
    bool forcedClose = false;
    bool feeGiven = false;
    bool nearPositionChosen = false;     // close the near position at a chosen price
    bool forwardPositionChosen = false;  // likewise the forward one

    // What the dialog knows.
    OrderMode mode = OrderMode::Input;
    const OrderRecord* original = nullptr;  // the host's; null for a new order
    std::string sign;                       // of the chosen account
    std::string exchangeNo;
    std::string commodityNo;
    char commodityType = CommodityType::kUnknown;
    std::string contractNo;        // short text of the chosen contract
    std::int32_t denominator = 1;  // one for all price rows
    std::vector<AccountRow> accounts;
};

// The commodity of the chosen contract as the dialog knows it, whatever the contract edit shows.
CommodityKey CommodityKeyOf(const OrderForm& form);

// The contract of the contract edit, under the commodity that the dialog knows. Nothing for a text that is
// none.
std::optional<ContractKey> ContractKeyOf(const OrderForm& form);

// The contract number of a line of the forward or underlying list, which carries the contract's name behind
// it.
std::string ContractNoOfLine(const std::string& line);
// The number of the forward or underlying contract, "3M" included.
inline std::string ForwardContractNo(const OrderForm& form) {
    return ContractNoOfLine(form.forwardContract);
}

// `contractNo` with the "3M" of the sign replaced by its prompt date; "3M" when that is not known.
std::string DatedContractNo(const std::string& contractNo, const std::string& sign, const TradeData& trade);
