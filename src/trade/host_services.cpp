#include "trade/host_services.h"

#include "framework/debug_line.h"

HostServices g_hostServices{};
ITradeService* g_pTradeService = nullptr;
ITradeApi* g_pTradeApi = nullptr;
ITradeList* g_pTradeList = nullptr;

namespace {

void* Fetch(IPluginManager& manager, const char* name, const char* version) {
    void* service = manager.GetPlugin(name, version);
    if (!service) {
        TellDebugger("the terminal has no service %s %s", name, version);
    }
    return service;
}

template <typename Service>
void FetchOnce(Service*& holder, IPluginManager& manager, const char* name, const char* version) {
    if (holder) {
        return;
    }
    auto* found = static_cast<Service*>(Fetch(manager, name, version));
    if (!holder) {  // the host may have initialised the module again meanwhile
        holder = found;
    }
}

void FetchAll(IPluginManager& manager) {
    g_hostServices.pluginManager = &manager;
    if (void* service = Fetch(manager, "TradeApi", "1.0.0.1")) {
        g_pTradeService = static_cast<ITradeService*>(service);
        g_pTradeApi = g_pTradeService->GetTradeApi();
        if (!g_pTradeApi) {
            TellDebugger("TradeApi gives no trade data");
        }
    }
    g_hostServices.quoteDataCenter =
        static_cast<IQuoteDataCenter*>(Fetch(manager, "QuoteDataCenter", "1.0.0.1"));
    if (g_hostServices.quoteDataCenter) {
        g_hostServices.quoteSlot38 = g_hostServices.quoteDataCenter->Slot38();
    }
    FetchOnce(g_hostServices.sysConfig, manager, "SysConfig", "9.0.3.1");
    FetchOnce(g_hostServices.abnormal, manager, "Abnormal", "9.0.3.1");
    FetchOnce(g_hostServices.auxiInsertOrder, manager, "AuxiInsertOrder", "9.0.3.1");
    FetchOnce(g_hostServices.batchOrder, manager, "BatchOrder", "1.0.0.1");
    FetchOnce(g_hostServices.globalMonitor, manager, "GlobalMonitor", "9.0.3.1");
}

}  // namespace

void AcquireHostServices(IPluginManager* manager) {
    if (!manager) {
        return;
    }
    if (!g_hostServices.pluginManager) {
        FetchAll(*manager);
    }
    FetchOnce(g_pTradeList, *manager, "TradeList", "1.0.0.1");
}

TradeData CurrentTradeData() {
    return TradeData(g_pTradeApi, g_hostServices.sysConfig);
}

TradeRequests CurrentTradeRequests() {
    return TradeRequests(g_pTradeService);
}
