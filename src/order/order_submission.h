#pragma once

#include "order/input_submission.h"

// What the confirm button does, once the operator has agreed to correct an electronic order and the values of
// the controls are in the form: check, build, send.

enum class OrderOutcome {
    Close,          // the dialog closes
    Stay,           // it stays open as it is
    StayWithPrice,  // likewise, and the operator looks at the fill price next
    NextOrder,      // it stays open for the next order
    Gone,           // it went meanwhile: nothing of it may be touched, the form included
};

// `form` may belong to the dialog: it is not touched once the dialog is gone.
OrderOutcome SubmitOrder(const OrderForm& form, const OrderServices& services);
