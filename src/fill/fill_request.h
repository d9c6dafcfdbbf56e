#pragma once

#include "entry/date_text.h"
#include "fill/fill_form.h"
#include "trade/contract_key.h"
#include "trade/fill_record.h"
#include "trade/trade_data.h"

// The keys and the record that the dialog's values stand for.

ExchangeKey ExchangeKeyOf(const FillForm& form);
CommodityKey CommodityKeyOf(const FillForm& form);
// The loaded record's own key while the form names its contract, of which the text may hold a part only: the
// text of an option's fill has no strike. Else the text, read with exchange and commodity in front; a
// malformed one gives nothing but the option types ('N') and the sign.
ContractKey ContractKeyOf(const FillForm& form);
// The position that the close leg of a carry pair closes. Its contract is the text as it stands.
SingleContractKey CloseContractKeyOf(const FillForm& form);

// The chosen commodity; null when it is not known. A dialog that was opened on no record has no sign, so it
// looks among those that the exchange lists.
const CommodityRecord* FindCommodity(const FillForm& form, const TradeData& trade);

// The request as all modes start it, zero where the form says nothing. `now` is its fill time.
FillRecord BuildFill(const FillForm& form, const LocalMoment& now);
// The fee as the fee box says: 'Y' with the amount, 'N' with what stands there already.
void SetFee(FillRecord& fill, const FillForm& form);
