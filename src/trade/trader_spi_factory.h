#pragma once

#include "trade/trader_spi.h"

// The hidden window of a listener: null when it could not be made, and always where there are no windows.
_TraderSpiWnd* CreateTraderSpiWnd(ITradeSpi* target, ITradeSpiSwitch* dispatcher);
void DestroyTraderSpiWnd(_TraderSpiWnd* window);  // null is ignored
