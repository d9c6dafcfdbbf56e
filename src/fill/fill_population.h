#pragma once

#include "controls/date_text.h"
#include "fill/fill_form.h"
#include "trade/trade_data.h"

#include <string>
#include <vector>

// What the dialog offers and starts with.

// Words of the two direction lists and of the source list, in the order in which they are offered. A carry is
// not offered; it comes from a loaded record only.
std::vector<std::string> DirectionItems();
std::vector<std::string> FillSourceItems();

// The exchange of the dialog's sign that trades on the forward market, the first of several; empty when there
// is none.
std::string DefaultExchange(const FillForm& form, const TradeData& trade);

// Title of the dialog; empty: the caption of the template stays, because there is no order to name.
std::string FillTitle(const FillForm& form);
std::string FillConfirmCaption(int mode);

// Generated numbers of an input: the fill's on the exchange, and the system number unless an order gives one.
void GenerateNumbers(FillForm& form, const LocalMoment& now);

// Takes the values of the record that the dialog was opened on: the fill, else the order. False when there is
// neither.
bool LoadRecord(FillForm& form, const TradeData& trade);

// The word that the open direction shows for a direction.
std::string OpenDirectionOf(const std::string& direction);
