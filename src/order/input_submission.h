#pragma once

#include "entry/date_text.h"
#include "entry/prompt.h"
#include "order/order_request.h"
#include "trade/trade_data.h"

// Sends an order together with its fill: what the order input and both legs of a carry have in common.

// Waits while the windows of the host and of the module stay alive. Afterwards the dialog may be gone.
class IPause {
public:
    virtual void Wait(int milliseconds) = 0;

protected:
    ~IPause() = default;
};

// What a submission works with. Nothing of it may belong to the dialog, which may go before the submission
// has ended.
struct OrderServices {
    TradeData trade;
    TradeRequests requests;
    IPrompt& prompt;
    IPause& pause;
    const IClock& clock;
};

// The server needs this long to know an order before it takes the order's fill. Milliseconds.
inline constexpr int kFillDelay = 100;

struct InputResult {
    bool failed = false;     // the dialog stays open
    bool orderSent = false;  // the server has the order, whatever became of its fill
};
// Sends the order and, when it has a fill quantity, its fill or the two fills of a spread. An order that is
// refused here was told to the operator and does not count as failed. Once the order is out its fill follows,
// even when the dialog goes meanwhile: the operator confirmed both.
InputResult SendInput(OrderRecord order, const FillTerms& terms, const OrderServices& services);
