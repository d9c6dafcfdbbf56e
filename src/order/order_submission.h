#pragma once

#include "order/input_submission.h"

// What the confirm button does, once the operator has agreed to correct an electronic order and the values of
// the controls are in the form: check, build, send.

enum class SubmitOutcome {
    Close,      // the dialog closes
    Stay,       // it stays open as it is
    NextOrder,  // it stays open for the next order
    Gone,       // it went meanwhile: nothing of it may be touched, the form included
};

struct Submission {
    SubmitOutcome outcome = SubmitOutcome::Stay;
    bool focusFillPrice = false;  // the operator wants to correct the fill price
};
// `form` may belong to the dialog: it is not touched once the dialog is gone.
Submission SubmitOrder(const OrderForm& form, const OrderServices& services);
