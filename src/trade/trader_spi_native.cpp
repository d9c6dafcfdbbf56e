#include "trade/trader_spi_factory.h"

_TraderSpiWnd* CreateTraderSpiWnd(ITradeSpi*, ITradeSpiSwitch*) {
    return nullptr;
}

void DestroyTraderSpiWnd(_TraderSpiWnd*) {}
