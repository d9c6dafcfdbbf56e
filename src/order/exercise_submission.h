#pragma once

#include "order/input_submission.h"

// Sends the exercise of an option position. A position that is smaller than the order is asked about first.
// True when the request was sent.
bool SubmitExercise(OrderRecord order, const OrderServices& services);
