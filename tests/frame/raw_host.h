#pragma once

#include "support/fake_requests.h"
#include "trade/fake_trade.h"

#include <windows.h>

#include <array>
#include <map>
#include <string>
#include <vector>

// The compiler knows this convention for member functions only and says so each time.
#pragma GCC diagnostic ignored "-Wattributes"

// Calls an operation by its number in the object's table, as a host built by another compiler does.
template <typename Result, typename... Arguments>
Result CallSlot(void* object, int slot, Arguments... arguments) {
    using Function = Result(__attribute__((thiscall))*)(void*, Arguments...);
    return (*static_cast<Function**>(object))[slot](object, arguments...);
}

// Makes no list windows.
class EmptyTradeList final : public ITradeList {
public:
    ITradeListWindow* CreateListWindow(int, int, HWND, int) override { return nullptr; }
    void ReleaseListWindow(ITradeListWindow*) override {}
};

// A host's plug-in manager and its services. The manager and the quote service are bare tables of functions:
// a call of any operation but the one that they serve runs into nothing and fails.
class RawHost {
public:
    RawHost() {
        m_managerTable[1] = reinterpret_cast<void*>(&RawHost::GetPlugin);
        m_quoteTable[38] = reinterpret_cast<void*>(&RawHost::Slot38);
        service.api = &api;
        for (const char* name : {"Abnormal", "AuxiInsertOrder", "BatchOrder", "GlobalMonitor"}) {
            services[name] = this;
        }
        services["TradeApi"] = &service;
        services["QuoteDataCenter"] = &m_quote;
        services["TradeList"] = &list;
    }

    IPluginManager* Manager() { return reinterpret_cast<IPluginManager*>(&m_manager); }

    FakeTradeApi api;
    FakeTradeService service;
    EmptyTradeList list;
    std::map<std::string, void*> services;  // no configuration service unless a test adds one
    std::vector<std::string> requested;     // "name version", in order
    int quoteCalls = 0;

private:
    struct RawObject {
        void** table;
        RawHost* host;
    };
    __attribute__((thiscall)) static void* GetPlugin(RawObject* manager, const char* name,
                                                     const char* version) {
        RawHost& host = *manager->host;
        host.requested.push_back(std::string(name) + " " + version);
        const auto found = host.services.find(name);
        return found == host.services.end() ? nullptr : found->second;
    }
    __attribute__((thiscall)) static void* Slot38(RawObject* quote) {
        ++quote->host->quoteCalls;
        return nullptr;
    }

    std::array<void*, 2> m_managerTable{};
    std::array<void*, 39> m_quoteTable{};
    RawObject m_manager{m_managerTable.data(), this};
    RawObject m_quote{m_quoteTable.data(), this};
};
