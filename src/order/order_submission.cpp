#include "order/order_submission.h"

#include "entry/telling.h"
#include "order/carry_submission.h"
#include "order/order_checks.h"
#include "res/string_table.h"

namespace {

OrderOutcome CloseIf(bool sent) {
    return sent ? OrderOutcome::Close : OrderOutcome::Stay;
}

OrderOutcome CloseOrTell(bool sent, unsigned failureId, const OrderServices& services) {
    if (!sent) {
        Tell(services.prompt, failureId);
    }
    return CloseIf(sent);
}

OrderOutcome SubmitInput(const OrderForm& form, OrderRecord order, const OrderServices& services) {
    if (order.orderState == OrderState::kFilled) {
        order.orderQty = order.fillQty;
    }
    if (SendInput(order, FillTermsOf(form), services).failed) {
        return OrderOutcome::Stay;
    }
    if (!services.prompt.DialogExists()) {
        return OrderOutcome::Gone;
    }
    const PromptAnswer answer =
        services.prompt.Ask(ResString(IDS_ASK_NEXT_ORDER), ResString(IDS_TIPS), PromptButtons::YesNo);
    return answer == PromptAnswer::Yes ? OrderOutcome::NextOrder : OrderOutcome::Close;
}

OrderOutcome SubmitMove(const OrderForm& form, OrderRecord order, const OrderServices& services) {
    if (form.original && order.accountNo == form.original->accountNo.View()) {
        Tell(services.prompt, IDS_SAME_ACCOUNT, IDS_MOVE_FAILED_CAPTION);
        return OrderOutcome::Close;
    }
    return CloseIf(services.requests.SendOrder(order));
}

// A position that is smaller than the order is asked about first.
OrderOutcome SubmitExercise(OrderRecord order, const OrderServices& services) {
    const TradeData::Quantities held =
        services.trade.PositionQty(order.accountNo.Str(), FirstLegOf(order.key));
    const std::uint32_t position = order.direction == Direction::kBuy ? held.longQty : held.shortQty;
    if (position < order.orderQty && !Agrees(services.prompt, IDS_ASK_FEW_POSITIONS)) {
        return OrderOutcome::Stay;
    }
    return CloseOrTell(services.requests.SendExercise(order), IDS_SEND_EXERCISE_FAILED, services);
}

OrderOutcome Send(const OrderForm& form, OrderRecord order, const OrderServices& services) {
    switch (form.mode) {
        case OrderMode::Input:
            return SubmitInput(form, order, services);
        case OrderMode::Carry:
            return CloseIf(SubmitCarry(form, order, services) == CarryResult::Done);
        case OrderMode::Modify:
            return CloseOrTell(services.requests.SendOrder(order), IDS_SEND_MODIFY_FAILED, services);
        case OrderMode::RemoveFilled:
            return CloseOrTell(services.requests.DeleteOrder(order.orderNo), IDS_SEND_REMOVE_FAILED,
                               services);
        case OrderMode::Move:
            return SubmitMove(form, order, services);
        case OrderMode::Exercise:
            return SubmitExercise(order, services);
    }
    return OrderOutcome::Close;
}

}  // namespace

OrderOutcome SubmitOrder(const OrderForm& form, const OrderServices& services) {
    OrderForm entered = form;  // what is checked is sent, whatever becomes of the dialog meanwhile
    const OrderCheck check = CheckOrder(entered, services.trade, services.prompt);
    OrderOutcome outcome = check.priceDoubted ? OrderOutcome::StayWithPrice : OrderOutcome::Stay;
    if (check.passed) {
        const OrderRecord order = BuildOrder(entered, check.contract, services.trade, services.clock.Now());
        // A host that took the dialog away meanwhile does not want its entry any more.
        if (services.prompt.DialogExists()) {
            outcome = Send(entered, order, services);
        }
    }
    return services.prompt.DialogExists() ? outcome : OrderOutcome::Gone;
}
