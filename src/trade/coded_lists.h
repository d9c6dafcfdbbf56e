#pragma once

#include "trade/trade_data.h"

#include <string>
#include <string_view>
#include <vector>

// What the combo boxes of both dialogs list: one text per host record, code, one blank, name.
std::string CodedItem(std::string_view code, std::string_view name);

// True when a dialog may list anything: it has no account or no sign yet, or its account exists and belongs
// to a group that may be traded.
bool ListsAreOpen(const std::string& accountNo, const std::string& sign, const TradeData& trade);

// The lists in the host's order; `sign` "" means all signs.
std::vector<std::string> CurrencyItems(const TradeData& trade);  // of every sign
std::vector<std::string> AccountItems(const std::string& sign, const TradeData& trade);
std::vector<std::string> UpperItems(const std::string& sign, const TradeData& trade);
std::vector<std::string> ExchangeItems(const std::string& sign, const TradeData& trade);
