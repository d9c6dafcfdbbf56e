#pragma once

#include "entry/prompt.h"
#include "order/order_form.h"
#include "trade/trade_data.h"

#include <vector>

// What is wrong with an entry. Texts are ids of the string table, in the order in which they are shown.
struct OrderFindings {
    std::vector<unsigned> errors;
    std::vector<unsigned> warnings;  // found only when there is no error
    // The three-month date of the underlying is not known: everything else is moot.
    bool noUnderlyingDate = false;
    // The contract that was looked up last: the order's, in the carry the forward one, in the exercise the
    // underlying one. Null when it was not found.
    const ContractRecord* contract = nullptr;
};
OrderFindings FindOrderProblems(const OrderForm& form, const TradeData& trade);

// The same, with the messages shown and the doubts put to the operator.
struct OrderCheck {
    bool passed = false;
    bool priceDoubted = false;                 // the operator wants to correct the fill price
    const ContractRecord* contract = nullptr;  // not null when passed
};
// In the form entries lose the blanks around them, and a whole fill of a new order takes its quantity.
OrderCheck CheckOrder(OrderForm& form, const TradeData& trade, IPrompt& prompt);

// An order that did not come from the back office is corrected only with the operator's consent. True when
// there is nothing to ask or the operator agreed.
bool ConfirmElectronicOrder(const OrderForm& form, IPrompt& prompt);
