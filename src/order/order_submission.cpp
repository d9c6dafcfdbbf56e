#include "order/order_submission.h"

#include "order/carry_submission.h"
#include "order/exercise_submission.h"
#include "order/order_checks.h"
#include "res/resource_ids.h"
#include "res/string_table.h"

namespace {

SubmitOutcome CloseIf(bool sent) {
    return sent ? SubmitOutcome::Close : SubmitOutcome::Stay;
}

SubmitOutcome SubmitInput(const OrderForm& form, OrderRecord order, const OrderServices& services) {
    if (order.orderState == OrderState::kFilled) {
        order.orderQty = order.fillQty;
    }
    if (SendInput(order, FillTermsOf(form), services).failed) {
        return SubmitOutcome::Stay;
    }
    if (!services.prompt.DialogExists()) {
        return SubmitOutcome::Gone;
    }
    const PromptAnswer answer =
        services.prompt.Ask(ResString(IDS_ASK_NEXT_ORDER), ResString(IDS_TIPS), PromptButtons::YesNo);
    return answer == PromptAnswer::Yes ? SubmitOutcome::NextOrder : SubmitOutcome::Close;
}

SubmitOutcome SubmitModify(OrderRecord order, const OrderServices& services) {
    const bool sent = services.requests.SendOrder(order);
    if (!sent) {
        Tell(IDS_SEND_MODIFY_FAILED, IDS_TIPS, services.prompt);
    }
    return CloseIf(sent);
}

SubmitOutcome SubmitRemove(const OrderRecord& order, const OrderServices& services) {
    const bool sent = services.requests.DeleteOrder(order.orderNo);
    if (!sent) {
        Tell(IDS_SEND_REMOVE_FAILED, IDS_TIPS, services.prompt);
    }
    return CloseIf(sent);
}

SubmitOutcome SubmitMove(const OrderForm& form, OrderRecord order, const OrderServices& services) {
    if (form.original && order.accountNo == form.original->accountNo.View()) {
        Tell(IDS_SAME_ACCOUNT, IDS_MOVE_FAILED_CAPTION, services.prompt);
        return SubmitOutcome::Close;
    }
    return CloseIf(services.requests.SendOrder(order));
}

SubmitOutcome Send(const OrderForm& form, const OrderRecord& order, const OrderServices& services) {
    switch (form.mode) {
        case OrderMode::Input:
            return SubmitInput(form, order, services);
        case OrderMode::Carry:
            return CloseIf(SubmitCarry(form, order, services) == CarryResult::Done);
        case OrderMode::Modify:
            return SubmitModify(order, services);
        case OrderMode::RemoveFilled:
            return SubmitRemove(order, services);
        case OrderMode::Move:
            return SubmitMove(form, order, services);
        case OrderMode::Exercise:
            return CloseIf(SubmitExercise(order, services));
    }
    return SubmitOutcome::Close;
}

}  // namespace

Submission SubmitOrder(const OrderForm& form, const OrderServices& services) {
    OrderForm entered = form;  // what is checked is sent, whatever becomes of the dialog meanwhile
    const OrderCheck check = CheckOrder(entered, services.trade, services.prompt);
    Submission submission;
    submission.focusFillPrice = check.focusFillPrice;
    if (check.passed) {
        const OrderRecord order = BuildOrder(entered, check.contract, services.trade, services.clock.Now());
        // A host that took the dialog away meanwhile does not want its entry any more.
        if (services.prompt.DialogExists()) {
            submission.outcome = Send(entered, order, services);
        }
    }
    if (!services.prompt.DialogExists()) {
        submission.outcome = SubmitOutcome::Gone;
        submission.focusFillPrice = false;
    }
    return submission;
}
