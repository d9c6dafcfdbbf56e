#pragma once

#include "services/event_pump.h"
#include "services/other_services.h"
#include "services/trade_service.h"

// Every service that needs no windows, wired to one book. The plug-in manager offers them all; who has
// windows adds "TradeList".
class ServiceSet {
public:
    ServiceSet(Book& book, EventPosting posting);

    // Declared in the order in which they depend on each other.
    FaultPlan faults;
    Journal journal;
    ListenerRegistry listeners;
    EventPump events;
    HostTradeApi api;
    HostTradeService trade;
    HostQuoteDataCenter quotes;
    HostSysConfig config;
    HostIdleService abnormal;
    HostIdleService auxiInsertOrder;
    HostIdleService batchOrder;
    HostIdleService globalMonitor;
    HostPluginManager manager;
};
