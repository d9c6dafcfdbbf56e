#pragma once

#include "order/input_submission.h"

// The carry: a nearby and a forward order, opposite to each other, each with its fill.

enum class CarryResult {
    Stopped,  // told to the operator; nothing was sent
    Failed,   // the forward leg failed
    Done,
};
// `order` is the request of the form. The forward leg goes out whatever became of the near one, since the
// server may take the legs one by one; only when nothing was sent and the dialog is gone, nothing follows.
CarryResult SubmitCarry(const OrderForm& form, const OrderRecord& order, const OrderServices& services);
