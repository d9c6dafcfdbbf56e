#pragma once

#include "book/positions.h"

// True when the row has something open and agrees with every field that the filter gives: an empty text, an
// empty direction and a price of 0 stand for anything. Texts are compared exactly.
bool PositionMatches(const PositionFilterRecord& filter, const PositionEntry& row);
