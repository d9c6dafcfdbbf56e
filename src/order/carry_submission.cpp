#include "order/carry_submission.h"

#include "entry/forward_market.h"
#include "entry/telling.h"
#include "trade/code_tables.h"

#include <string>

namespace {

// A carry that is at most this many days long has no fee on its forward leg; a longer one is left to the
// server.
constexpr int kFreeDays = 14;

// The days from the near to the forward date, or why there are none.
struct CarryTerm {
    int days = 0;
    unsigned textId = 0;  // 0: all is well
    unsigned captionId = 0;
};

CarryTerm FindTerm(const OrderForm& form, const OrderRecord& order, const TradeData& trade) {
    const std::string forwardDate = DatedContractNo(ForwardContractNo(form), form.sign, trade);
    if (forwardDate == kThreeMonth && !form.feeGiven) {
        return {0, IDS_NO_FORWARD_DATE, IDS_TIPS};
    }
    const int days = PromptDaysBetween(order.key.contractNo.Str(), forwardDate);
    if (days == 0) {
        return {days, IDS_SAME_CARRY_CONTRACTS, IDS_CARRY_FAILED_CAPTION};
    }
    if (days < 0) {
        return {days, IDS_CARRY_CONTRACTS_REVERSED, IDS_CARRY_FAILED_CAPTION};
    }
    return {days};
}

// One leg: order and fill carry the leg's number behind theirs.
struct CarryLeg {
    OrderRecord order;
    FillTerms terms;
};

CarryLeg MakeLeg(const OrderForm& form, const OrderRecord& order, const char* suffix,
                 const PriceRow& position) {
    CarryLeg leg{order, FillTermsOf(form)};
    leg.order.systemNo.Set(form.systemNo + suffix);
    leg.terms.exchangeFillNo = form.exchangeFillNo + suffix;
    leg.terms.closesPosition = true;
    leg.terms.positionPrice = PriceValue(position, form.denominator);
    return leg;
}

CarryLeg MakeNearLeg(const OrderForm& form, const OrderRecord& order) {
    CarryLeg leg = MakeLeg(form, order, "_1", form.nearPositionPrice);
    leg.terms.feeGiven = 'Y';
    leg.terms.fee = 0;
    return leg;
}

CarryLeg MakeForwardLeg(const OrderForm& form, const OrderRecord& order, int days) {
    CarryLeg leg = MakeLeg(form, order, "_2", form.forwardPositionPrice);
    leg.order.key.contractNo.Set(ForwardContractNo(form));
    leg.order.direction = OppositeDirection(order.direction);
    leg.order.fillPrice = PriceValue(form.fillPrice2, form.denominator);
    leg.order.orderPrice = leg.order.fillPrice;
    if (!form.feeGiven) {
        leg.terms.feeGiven = FlagToYN(days <= kFreeDays);
    }
    return leg;
}

}  // namespace

CarryResult SubmitCarry(const OrderForm& form, const OrderRecord& order, const OrderServices& services) {
    const CarryTerm term = FindTerm(form, order, services.trade);
    if (term.textId) {
        Tell(services.prompt, term.textId, term.captionId);
        return CarryResult::Stopped;
    }
    OrderRecord traded = order;  // a carry has traded: its order is as its fill
    traded.orderSource = OrderSource::kCarry;
    traded.orderPrice = order.fillPrice;
    traded.orderQty = order.fillQty;

    const CarryLeg near = MakeNearLeg(form, traded);
    const InputResult nearResult = SendInput(near.order, near.terms, services);
    if (!nearResult.orderSent && !services.prompt.DialogExists()) {
        return CarryResult::Failed;
    }
    const CarryLeg forward = MakeForwardLeg(form, traded, term.days);
    return SendInput(forward.order, forward.terms, services).failed ? CarryResult::Failed : CarryResult::Done;
}
