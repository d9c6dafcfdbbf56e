#pragma once

#include "probe/host_watch.h"

// Has a list of positions made in a window of the probe's own, as the carry dialog does, moves it, filters it
// and lets it go.
void CheckListWindow(ITradeList& lists, const PositionFilterRecord& filter, CallWatch& watch);
