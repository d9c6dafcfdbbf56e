#pragma once

#include "entry/combo_settings.h"
#include "entry/date_text.h"
#include "fill/fill_form.h"
#include "trade/code_tables.h"
#include "trade/trade_data.h"

#include <span>
#include <string>

// What the dialog offers and starts with.

std::span<const ComboSettings> FillComboSettings();

inline constexpr CodeList kDirections{"BS", DirectionToText, DirectionFromText};
// A carry is not offered; it comes from a loaded record only. An order's source may be All, which a fill's is
// not.
inline CodeList SourcesOf(const FillForm& form) {
    return {"EJPMSDR", form.fill ? OrderSourceToText : OrderSourceToTextWithAll, OrderSourceFromText};
}

// Title of the dialog; empty: the caption of the template stays, because there is no order to name.
std::string FillTitle(const FillForm& form);
std::string ConfirmText(FillMode mode);

// Generated numbers of an input: the fill's on the exchange, and the system number unless an order gives one.
void GenerateNumbers(FillForm& form, const LocalMoment& now);

// Takes the values of the record that the dialog was opened on: the fill, else the order. False when there is
// neither.
bool LoadRecord(FillForm& form, const TradeData& trade);
