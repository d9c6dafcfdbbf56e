#pragma once

#include "trade/trade_data.h"

#include <string>

// The forward market, whose contracts are prompt dates with a rolling "3M" among them.

// The exchange that trades on it under this sign, the first of several; empty when there is none.
std::string ForwardMarket(const std::string& sign, const TradeData& trade);

// True when `contractNo` is the date that the "3M" of the commodity stands for today, which is to be entered
// as "3M".
bool NamesThreeMonthDate(const std::string& contractNo, const CommodityRecord& commodity,
                         const std::string& sign, const TradeData& trade);

// Whole days from one prompt date to another, as contract numbers name them.
int PromptDaysBetween(const std::string& from, const std::string& to);
