#pragma once

#include "entry/prompt.h"
#include "fill/fill_form.h"
#include "trade/trade_data.h"

enum class FillCheck {
    Passed,
    Refused,       // the operator was told why, or did not agree
    PriceDoubted,  // the operator wants to look at the price again
};

// Checks what the operator confirmed, in every mode: mistakes are told in one box, doubts asked in one
// question. After an answer of None the dialog may be gone.
FillCheck CheckFill(const FillForm& form, const TradeData& trade, IPrompt& prompt);
