#pragma once

#include "entry/date_text.h"
#include "order/order_form.h"
#include "trade/fill_record.h"
#include "trade/order_record.h"
#include "trade/trade_data.h"

// The records that the order dialog sends.

// The request of a checked entry. `contract` is what the check found.
OrderRecord BuildOrder(const OrderForm& form, const ContractRecord* contract, const TradeData& trade,
                       const LocalMoment& now);

// What a fill holds beside its order.
struct FillTerms {
    std::string exchangeFillNo;
    std::string currency;
    char feeGiven = 'N';
    double fee = 0;
    double secondLegPrice = 0;    // fill price of the second leg of a spread
    bool closesPosition = false;  // a carry leg: closes the position of this price
    double positionPrice = 0;
};

// The fee box and its amount; no fee while the box is not ticked.
FillTerms FillTermsOf(const OrderForm& form);

// The fill that goes out with an order, for the fill quantity of the order.
FillRecord BuildOrderFill(const OrderRecord& order, const FillTerms& terms, const LocalMoment& now);

// The fills of the two legs of a spread order.
struct SpreadFills {
    FillRecord first;
    FillRecord second;
};
SpreadFills BuildSpreadFills(const OrderRecord& order, const SingleContractKey& firstLeg,
                             const SingleContractKey& secondLeg, const FillTerms& terms,
                             const LocalMoment& now);
