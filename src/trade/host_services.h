#pragma once

#include "trade/host_interfaces.h"
#include "trade/trade_data.h"

// The host's services, fetched once and never cleared; none is owned, any may be null.
struct HostServices {
    IQuoteDataCenter* quoteDataCenter;
    void* quoteSlot38;  // answer of the quote data centre at start; not used
    ISysConfig* sysConfig;
    void* abnormal;
    void* auxiInsertOrder;
    IPluginManager* pluginManager;  // non-null marks the holder as initialised
    void* batchOrder;
    void* globalMonitor;
};

extern HostServices g_hostServices;
extern ITradeService* g_pTradeService;
extern ITradeApi* g_pTradeApi;
extern ITradeList* g_pTradeList;

// Fetches what is not there yet. A null manager is ignored; a repeated call only retries "TradeList".
void AcquireHostServices(IPluginManager* manager);

// The trade data and requests of the services that are held now.
TradeData CurrentTradeData();
TradeRequests CurrentTradeRequests();
