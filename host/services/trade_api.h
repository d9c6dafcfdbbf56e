#pragma once

#include "book/book.h"
#include "services/fault_plan.h"
#include "services/listener_registry.h"
#include "trade/host_interfaces.h"

#include <deque>
#include <string>
#include <vector>

// The trade data of the book, as the module reads it. Null arguments are answered like unknown ones.
class HostTradeApi final : public ITradeApi {
public:
    HostTradeApi(Book& book, FaultPlan& faults, ListenerRegistry& listeners)
        : m_book(book), m_faults(faults), m_listeners(listeners) {}

    void RegisterSpi(ITradeSpi* listener) override;
    void UnregisterSpi(ITradeSpi* listener) override;
    void ListSignEntries(IDataContainer* list, const char* sign) override;
    ServerRecord* GetUserServer(const char* serverKey, UserRecord* user) override;
    OrderRecord* GetOrder(std::uint32_t orderNo) override;
    void GetPositions(IDataContainer* list, const char* sign) override;
    PositionRecord* GetPosition(const char* accountNo, const ContractKey* key, char direction,
                                const char* priceText) override;
    // The two further outputs are set to 0.
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
    // Notation 'D': that of the commodity; anything else: a plain decimal. Cut to the buffer.
    void FormatPrice(const void* recordWithKey, double price, char* buffer, int bufferSize, int zero,
                     char notation) override;

    // Calls of slots that the module has no business with.
    unsigned StrayCalls() const { return m_strayCalls; }

// clang-format off
#define STRAY(n) \
    void Reserved##n() override { ++m_strayCalls; }
    STRAY(4) STRAY(5) STRAY(7) STRAY(8) STRAY(9) STRAY(10) STRAY(11) STRAY(12) STRAY(13) STRAY(14)
    STRAY(17) STRAY(18) STRAY(19) STRAY(20) STRAY(21) STRAY(22) STRAY(23) STRAY(24)
    STRAY(28) STRAY(29) STRAY(30) STRAY(31) STRAY(32) STRAY(33) STRAY(34) STRAY(35) STRAY(36)
    STRAY(42) STRAY(45) STRAY(46) STRAY(47) STRAY(49) STRAY(51) STRAY(52) STRAY(53) STRAY(54);
#undef STRAY
    // clang-format on

private:
    // What a look-up returns under a fault.
    template <typename Record>
    Record* Answer(FaultKind fault, Record* record);
    // Puts the records of the entries into the list, as far as the fault lets it.
    template <typename Entries>
    void FillList(Operation operation, IDataContainer* list, const Entries& entries);
    void* BrokenCopy(const void* record, std::size_t size, std::string_view layout);

    Book& m_book;
    FaultPlan& m_faults;
    ListenerRegistry& m_listeners;
    std::deque<std::vector<unsigned char>> m_copies;  // handed out, so they stay
    unsigned m_strayCalls = 0;
};
