#include "order/input_submission.h"

#include "entry/telling.h"
#include "trade/code_tables.h"
#include "trade/contract_text.h"

namespace {

struct Legs {
    SingleContractKey first{};
    SingleContractKey second{};
};

// Both fills go out; the second one decides.
bool SendSpreadFills(const OrderRecord& order, const Legs& legs, const FillTerms& terms,
                     const OrderServices& services) {
    SpreadFills fills = BuildSpreadFills(order, legs.first, legs.second, terms, services.clock.Now());
    services.requests.SendFill(fills.first);
    return services.requests.SendFill(fills.second);
}

bool SendPlainFill(const OrderRecord& order, const FillTerms& terms, const OrderServices& services) {
    FillRecord fill = BuildOrderFill(order, terms, services.clock.Now());
    return services.requests.SendFill(fill);
}

}  // namespace

InputResult SendInput(OrderRecord order, const FillTerms& terms, const OrderServices& services) {
    if (services.trade.Order(order.orderNo)) {
        Tell(services.prompt, IDS_ORDER_EXISTS, IDS_INPUT_FAILED_CAPTION);
        return {};
    }
    const bool spread = order.contract && IsTwoLegType(order.key.commodityType);
    if (spread && terms.closesPosition) {
        Tell(services.prompt, IDS_NO_SPREAD_CARRY, IDS_INPUT_FAILED_CAPTION);
        return {};
    }
    const OrderRecord* known = services.trade.Order(order.orderNo);
    const std::uint32_t alreadyFilled = known ? known->fillQty : 0;
    if (order.fillQty > 0 && order.fillQty <= alreadyFilled) {
        Tell(services.prompt, IDS_ORDER_ALREADY_FILLED, IDS_INPUT_FAILED_CAPTION);
        return {};
    }

    // The legs are found first: an order whose fills could not be named is better not sent at all.
    Legs legs;
    const bool legsKnown = !spread || order.fillQty == 0 || services.trade.Commodity(CommodityOf(order.key));
    if (spread) {
        SplitContractLegs(order.key, legs.first, legs.second, services.trade);
    }
    if (!legsKnown || !services.requests.SendOrder(order)) {
        Tell(services.prompt, IDS_SEND_INPUT_FAILED);
        return {.failed = true};
    }
    if (order.fillQty == 0) {
        return {.orderSent = true};
    }
    services.pause.Wait(kFillDelay);
    order.fillQty -= alreadyFilled;
    const bool filled =
        spread ? SendSpreadFills(order, legs, terms, services) : SendPlainFill(order, terms, services);
    return {.failed = !filled, .orderSent = true};
}
