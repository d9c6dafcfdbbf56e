#include "trade/trade_data.h"
