#pragma once

#include "entry/placement.h"
#include "entry/price_row.h"
#include "order/order_form.h"
#include "trade/host_records.h"
#include "trade/trade_data.h"

#include <cstdint>
#include <optional>
#include <string>

// The positions that the two legs of a carry close: what the position lists show, how much is open, and what
// the two prices make.

// The near list shows positions opposite to the near direction, the forward list those of that direction; the
// operator enters the trade that closes them.
struct PositionFilters {
    PositionFilterRecord near;
    PositionFilterRecord forward;
};
PositionFilters FiltersOf(const OrderForm& form, const TradeData& trade);

// Open quantities as the dialog shows them; an absent one stays as it is.
struct PositionQuantities {
    std::optional<std::uint32_t> near;
    std::optional<std::uint32_t> forward;
};
// `changed` is the position that the host reports as changed, null when the operator changed something. At a
// position price of zero a quantity is the sum over all prices.
PositionQuantities QuantitiesOf(const OrderForm& form, const TradeData& trade, const PositionRecord* changed);

// The difference of the two fill prices as a text: forward discount, premium or none.
std::string CarryFeeText(const OrderForm& form);

// The price of a position that the operator picked in a list, for a position price row of this denominator.
PriceRow PickedPrice(const PositionRecord& position, std::int32_t denominator, const TradeData& trade);

// Where a position list stands: between the left edge of the position price label and the right edge of the
// position quantity edit, below the price edit and above the separator. Client pixels.
PixelRect PositionListPlace(const PixelRect& priceLabel, const PixelRect& priceEdit, const PixelRect& qtyEdit,
                            const PixelRect& separator);
