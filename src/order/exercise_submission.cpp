#include "order/exercise_submission.h"

#include "res/resource_ids.h"
#include "res/string_table.h"

bool SubmitExercise(OrderRecord order, const OrderServices& services) {
    const TradeData::Quantities held =
        services.trade.PositionQty(order.accountNo.Str(), FirstLegOf(order.key));
    const std::uint32_t position = order.direction == 'B' ? held.longQty : held.shortQty;
    if (position < order.orderQty) {
        const PromptAnswer answer =
            services.prompt.Ask(ResString(IDS_ASK_FEW_POSITIONS), ResString(IDS_TIPS), PromptButtons::YesNo);
        if (answer != PromptAnswer::Yes || !services.prompt.DialogExists()) {
            return false;
        }
    }
    if (!services.requests.SendExercise(order)) {
        Tell(IDS_SEND_EXERCISE_FAILED, IDS_TIPS, services.prompt);
        return false;
    }
    return true;
}
