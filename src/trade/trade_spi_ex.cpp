#include "trade/trader_spi.h"
#include "trade/trader_spi_factory.h"

TradeSpiEx::TradeSpiEx(ITradeSpiSwitch* dispatcher)
    : TraderSpi(false), m_window(CreateTraderSpiWnd(this, dispatcher)) {}

TradeSpiEx::~TradeSpiEx() {
    DestroyTraderSpiWnd(m_window);
}
