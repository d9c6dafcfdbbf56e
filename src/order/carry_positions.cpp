#include "order/carry_positions.h"

#include "entry/forward_market.h"
#include "res/resource_ids.h"
#include "res/string_table.h"
#include "trade/code_tables.h"

#include <cmath>
#include <cstdio>

namespace {

constexpr double kPriceTolerance = 1e-10;
constexpr int kListMargin = 8;

// One leg of the carry, as its positions are looked up.
struct Leg {
    std::string contractNo;
    char direction;  // of the positions
    const PriceRow& price;
};

Leg NearLeg(const OrderForm& form) {
    return {form.contractNo, OppositeDirection(form.direction), form.nearPositionPrice};
}

Leg ForwardLeg(const OrderForm& form) {
    return {ForwardContractNo(form), form.direction, form.forwardPositionPrice};
}

// The exchange that the positions of carries are kept under.
std::string PositionExchange(const OrderForm& form, const TradeData& trade) {
    const std::string market = ForwardMarket(form.sign, trade);
    return market.empty() ? form.exchangeNo : market;
}

void SetLeg(PositionFilterRecord& filter, const Leg& leg, const OrderForm& form, const TradeData& trade) {
    filter.contractNo.Set(DatedContractNo(leg.contractNo, form.sign, trade));
    filter.direction = leg.direction;
    filter.price = PriceValue(leg.price, form.denominator);
}

// The price as the host looks positions up by it: "2010.5" or "97+3/8".
std::string LookUpText(const PriceRow& price, std::int32_t denominator) {
    if (price.numerator <= 0) {
        return price.whole;
    }
    return price.whole + "+" + std::to_string(price.numerator) + "/" + std::to_string(denominator);
}

bool IsOfLeg(const PositionRecord& position, const Leg& leg, double price, const OrderForm& form) {
    return position.accountNo == form.account && std::fabs(position.price - price) <= kPriceTolerance &&
           position.key.commodityNo == form.commodityNo && position.key.contractNo == leg.contractNo;
}

// Nothing when the changed position is not the leg's.
std::optional<std::uint32_t> QuantityOf(const Leg& leg, const OrderForm& form, const TradeData& trade,
                                        const PositionRecord* changed) {
    const double price = PriceValue(leg.price, form.denominator);
    if (std::fabs(price) <= kPriceTolerance) {
        return trade.PositionTotal(form.account, form.exchangeNo, form.commodityNo, leg.contractNo,
                                   leg.direction);
    }
    if (changed) {
        return IsOfLeg(*changed, leg, price, form) ? std::optional(changed->openQty + 0u) : std::nullopt;
    }
    std::optional<ContractKey> key = ContractKeyOf(form);
    if (!key) {
        return 0;
    }
    key->contractNo.Set(leg.contractNo);
    const PositionRecord* position =
        trade.Position(form.account, *key, leg.direction, LookUpText(leg.price, form.denominator));
    return position ? position->openQty : 0;
}

}  // namespace

PositionFilters FiltersOf(const OrderForm& form, const TradeData& trade) {
    PositionFilters filters{};
    filters.near.accountNo.Set(form.account);
    filters.near.upperNo.Set(form.upper);
    filters.near.exchangeNo.Set(PositionExchange(form, trade));
    filters.near.commodityNo.Set(form.commodityNo);
    filters.forward = filters.near;
    SetLeg(filters.near, NearLeg(form), form, trade);
    SetLeg(filters.forward, ForwardLeg(form), form, trade);
    return filters;
}

PositionQuantities QuantitiesOf(const OrderForm& form, const TradeData& trade,
                                const PositionRecord* changed) {
    PositionQuantities quantities;
    const Leg near = NearLeg(form);
    if (!changed || changed->direction == near.direction) {
        quantities.near = QuantityOf(near, form, trade, changed);
        if (!quantities.near) {
            return quantities;
        }
    }
    const Leg forward = ForwardLeg(form);
    if (!changed || changed->direction == forward.direction) {
        quantities.forward = QuantityOf(forward, form, trade, changed);
    }
    return quantities;
}

std::string CarryFeeText(const OrderForm& form) {
    const double difference =
        PriceValue(form.fillPrice, form.denominator) - PriceValue(form.fillPrice2, form.denominator);
    if (difference == 0) {
        return ResString(IDS_COVER_FEE);
    }
    const unsigned textId = difference > 0 ? IDS_FORWARD_DISCOUNT : IDS_FORWARD_PREMIUM;
    char text[256];
    std::snprintf(text, sizeof(text), ResString(textId).c_str(), std::fabs(difference));
    return text;
}

PriceRow PickedPrice(const PositionRecord& position, std::int32_t denominator, const TradeData& trade) {
    return InPartsOf(denominator, SplitPriceText(trade.FormatPrice(&position, position.price))).row;
}

PixelRect PositionListPlace(const PixelRect& priceLabel, const PixelRect& priceEdit, const PixelRect& qtyEdit,
                            const PixelRect& separator) {
    return {priceLabel.left, priceEdit.bottom + kListMargin, qtyEdit.right, separator.top - kListMargin};
}
