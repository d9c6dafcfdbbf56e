#pragma once

#include "trade/host_records.h"

#include <string>

// A price as text when the host's formatter is not at hand. A commodity with a denominator of 2 or more gives
// the whole part, "+", the numerator, "/", the denominator ("97+3/8"; the whole part of a negative price is
// the next lower whole number, "-1+1/4" for -0.75, since the numerator adds to it). Any other, also a null
// one, gives as many decimals as the price has, ten at most and fewer where it would take more than fifteen
// digits: "97.25". Empty for a price that is no number.
std::string FormatPriceText(double price, const CommodityRecord* commodity);
