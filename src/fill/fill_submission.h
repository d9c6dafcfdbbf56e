#pragma once

#include "entry/date_text.h"
#include "entry/prompt.h"
#include "fill/fill_form.h"
#include "trade/trade_data.h"

// What a confirmed dialog does next.
enum class FillOutcome {
    Close,          // the request was sent
    Stay,           // the operator was told why not
    StayWithPrice,  // likewise, and looks at the price next
    Gone,           // the dialog was destroyed during a question
};

// Everything that confirming reaches outside of the form. The operator is told and asked through `prompt`.
struct FillServices {
    TradeData trade;
    TradeRequests requests;
    IPrompt& prompt;
    const IClock& clock;
};

// Checks the form and sends what its mode asks for: an input as one record per leg, a carry as two fills, a
// removal. Nothing is sent once the dialog is gone.
FillOutcome SubmitFill(const FillForm& form, const FillServices& services);
