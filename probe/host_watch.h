#pragma once

#include "probe/findings.h"
#include "trade/host_interfaces.h"

#include <windows.h>

// True when the whole range can be read.
bool Readable(const void* start, std::size_t size);

// Stands around every call of the terminal: notes one that takes long, and one after which the window that
// was given to the dialogs is gone.
class CallWatch {
public:
    CallWatch(Findings& findings, HWND parent) : m_findings(findings), m_parent(parent) {}

    template <typename Call>
    auto Watch(const char* operation, Call call) {
        const Round round(*this, operation);
        return call();
    }
    Findings& Found() { return m_findings; }

private:
    struct Round {
        Round(CallWatch& owner, const char* name) : watch(owner), operation(name), start(GetTickCount()) {}
        ~Round();
        CallWatch& watch;
        const char* operation;
        DWORD start;
    };

    Findings& m_findings;
    HWND m_parent;
};

// The terminal's trade data with a watch around it: hands everything on as it is, except what would crash the
// reader, which is left out.
class WatchedTradeApi final : public ITradeApi {
public:
    WatchedTradeApi(ITradeApi& host, CallWatch& watch) : m_host(host), m_watch(watch) {}

    void RegisterSpi(ITradeSpi* listener) override;
    void UnregisterSpi(ITradeSpi* listener) override;
    void ListSignEntries(IDataContainer* list, const char* sign) override;
    ServerRecord* GetUserServer(const char* serverKey, UserRecord* user) override;
    OrderRecord* GetOrder(std::uint32_t orderNo) override;
    void GetPositions(IDataContainer* list, const char* sign) override;
    PositionRecord* GetPosition(const char* accountNo, const ContractKey* key, char direction,
                                const char* priceText) override;
    void GetPositionQty(const char* accountNo, const SingleContractKey* key, std::uint32_t* longQty,
                        std::uint32_t* shortQty, std::uint32_t* further1, std::uint32_t* further2) override;
    void GetUsers(IDataContainer* list, const char* sign) override;
    UserRecord* GetUser(const char* accountNo, const char* sign) override;
    void GetExchanges(IDataContainer* list, const char* sign) override;
    ExchangeRecord* GetExchange(const void* exchangeKey) override;
    void GetCommodities(const void* exchangeKey, IDataContainer* list) override;
    CommodityRecord* GetCommodity(const void* commodityKey) override;
    void GetContracts(const void* commodityKey, IDataContainer* list) override;
    ContractRecord* GetContract(const ContractKey* key) override;
    const char* Get3MContractNo(const char* sign) override;
    void GetCurrencies(IDataContainer* list, const char* sign) override;
    void GetUppers(IDataContainer* list, const char* sign) override;
    void FormatPrice(const void* recordWithKey, double price, char* buffer, int bufferSize, int zero,
                     char notation) override;

    // clang-format off
#define RESERVED(n) void Reserved##n() override {}
    RESERVED(4) RESERVED(5) RESERVED(7) RESERVED(8) RESERVED(9) RESERVED(10) RESERVED(11) RESERVED(12)
    RESERVED(13) RESERVED(14) RESERVED(17) RESERVED(18) RESERVED(19) RESERVED(20) RESERVED(21) RESERVED(22)
    RESERVED(23) RESERVED(24) RESERVED(28) RESERVED(29) RESERVED(30) RESERVED(31) RESERVED(32) RESERVED(33)
    RESERVED(34) RESERVED(35) RESERVED(36) RESERVED(42) RESERVED(45) RESERVED(46) RESERVED(47) RESERVED(49)
    RESERVED(51) RESERVED(52) RESERVED(53) RESERVED(54)
#undef RESERVED
        // clang-format on

        private :
        // `size`: bytes of a record that are read; 0 when the list is only counted.
        template <typename Fill>
        void List(const char* operation, IDataContainer* list, std::size_t size, Fill fill);
    template <typename Record>
    Record* LookUp(const char* operation, Record* found);

    ITradeApi& m_host;
    CallWatch& m_watch;
};
