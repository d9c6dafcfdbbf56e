#pragma once

#include "trade/host_records.h"

#include <optional>
#include <string>
#include <string_view>

// Prices that differ by no more are one price.
inline constexpr double kPriceTolerance = 1e-10;
bool SamePrice(double a, double b);

// `price` in the notation of the commodity. A denominator of 1: a decimal with the digits of the tick, more
// when the price needs them. A larger one: whole part, "+", numerator, "/", denominator ("97+3/8"), the whole
// part alone when nothing is left over; whole part plus fraction gives the price, so -1.25 is "-2+3/4". A
// price between two fractions stays decimal, so that nothing is hidden. Without a commodity: the shortest
// decimal.
std::string PriceText(double price, const CommodityRecord* commodity);
std::string DecimalText(double price, int minimumDigits);

// Reads "97", "97.25" or "97+3/8"; none for anything else.
std::optional<double> ReadPriceText(std::string_view text);
