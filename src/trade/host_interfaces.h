#pragma once

#include "trade/fill_record.h"
#include "trade/host_records.h"
#include "trade/order_record.h"
#include "trade/window_handle.h"

#include <cstdint>

// The host's services as the module uses them. The order of the operations is the contract with the host;
// slots that the module never calls are reserved so that the numbering can be read off. Nothing here owns
// anything: every record and service belongs to the host. No interface has a virtual destructor.

// The list that the host fills for a list query, one Add per record. Entries are not owned and may be null.
class IDataContainer {
public:
    virtual std::uint32_t Count() = 0;          // slot 0
    virtual void* At(std::uint32_t index) = 0;  // slot 1
    virtual void Clear() = 0;                   // slot 2
    virtual void Add(void* record) = 0;         // slot 3

protected:
    ~IDataContainer() = default;
};

class ITradeSpi;
class ISelectDataNotify;

// The host's trade data. Look-ups return null when nothing is found; list operations add to the given
// container. A sign selects the data of one group, "" means all.
class ITradeApi {
public:
    virtual void RegisterSpi(ITradeSpi* listener) = 0;                                 // slot 0
    virtual void UnregisterSpi(ITradeSpi* listener) = 0;                               // slot 1
    virtual void ListSignEntries(IDataContainer* list, const char* sign) = 0;          // slot 2
    virtual ServerRecord* GetUserServer(const char* serverKey, UserRecord* user) = 0;  // slot 3
    virtual void Reserved4() = 0;
    virtual void Reserved5() = 0;
    virtual OrderRecord* GetOrder(std::uint32_t orderNo) = 0;  // slot 6
    virtual void Reserved7() = 0;
    virtual void Reserved8() = 0;
    virtual void Reserved9() = 0;
    virtual void Reserved10() = 0;
    virtual void Reserved11() = 0;
    virtual void Reserved12() = 0;
    virtual void Reserved13() = 0;
    virtual void Reserved14() = 0;
    virtual void GetPositions(IDataContainer* list, const char* sign) = 0;  // slot 15
    virtual PositionRecord* GetPosition(const char* accountNo, const ContractKey* key, char direction,
                                        const char* priceText) = 0;  // slot 16
    virtual void Reserved17() = 0;
    virtual void Reserved18() = 0;
    virtual void Reserved19() = 0;
    virtual void Reserved20() = 0;
    virtual void Reserved21() = 0;
    virtual void Reserved22() = 0;
    virtual void Reserved23() = 0;
    virtual void Reserved24() = 0;
    virtual void GetPositionQty(const char* accountNo, const SingleContractKey* key, std::uint32_t* longQty,
                                std::uint32_t* shortQty, std::uint32_t* further1,
                                std::uint32_t* further2) = 0;                  // slot 25
    virtual void GetUsers(IDataContainer* list, const char* sign) = 0;         // slot 26
    virtual UserRecord* GetUser(const char* accountNo, const char* sign) = 0;  // slot 27
    virtual void Reserved28() = 0;
    virtual void Reserved29() = 0;
    virtual void Reserved30() = 0;
    virtual void Reserved31() = 0;
    virtual void Reserved32() = 0;
    virtual void Reserved33() = 0;
    virtual void Reserved34() = 0;
    virtual void Reserved35() = 0;
    virtual void Reserved36() = 0;
    virtual void GetExchanges(IDataContainer* list, const char* sign) = 0;           // slot 37
    virtual ExchangeRecord* GetExchange(const void* exchangeKey) = 0;                // slot 38
    virtual void GetCommodities(const void* exchangeKey, IDataContainer* list) = 0;  // slot 39
    virtual CommodityRecord* GetCommodity(const void* commodityKey) = 0;             // slot 40
    virtual void GetContracts(const void* commodityKey, IDataContainer* list) = 0;   // slot 41
    virtual void Reserved42() = 0;
    virtual ContractRecord* GetContract(const ContractKey* key) = 0;  // slot 43
    virtual const char* Get3MContractNo(const char* sign) = 0;        // slot 44
    virtual void Reserved45() = 0;
    virtual void Reserved46() = 0;
    virtual void Reserved47() = 0;
    virtual void GetCurrencies(IDataContainer* list, const char* sign) = 0;  // slot 48
    virtual void Reserved49() = 0;
    virtual void GetUppers(IDataContainer* list, const char* sign) = 0;  // slot 50
    virtual void Reserved51() = 0;
    virtual void Reserved52() = 0;
    virtual void Reserved53() = 0;
    virtual void Reserved54() = 0;
    virtual void FormatPrice(const void* recordWithKey, double price, char* buffer, int bufferSize, int zero,
                             char notation) = 0;  // slot 55

protected:
    ~ITradeApi() = default;
};

// Requests to the trade server. A result of 0 means that the request was sent, except for DeleteOrder, where
// nonzero means success.
class ITradeService {
public:
    virtual void Reserved0() = 0;
    virtual void Reserved1() = 0;
    virtual ITradeApi* GetTradeApi() = 0;  // slot 2
    virtual void Reserved3() = 0;
    virtual void Reserved4() = 0;
    virtual void Reserved5() = 0;
    virtual void Reserved6() = 0;
    virtual void Reserved7() = 0;
    virtual void Reserved8() = 0;
    virtual void Reserved9() = 0;
    virtual void Reserved10() = 0;
    virtual void Reserved11() = 0;
    virtual void Reserved12() = 0;
    virtual void Reserved13() = 0;
    virtual void Reserved14() = 0;
    virtual void Reserved15() = 0;
    virtual void Reserved16() = 0;
    virtual void Reserved17() = 0;
    virtual int SendOrder(OrderRecord* order) = 0;                     // slot 18
    virtual int DeleteOrder(std::uint32_t orderNo) = 0;                // slot 19
    virtual int SendFill(FillRecord* fill) = 0;                        // slot 20
    virtual int RemoveFill(const char* fillNo, FillRecord* fill) = 0;  // slot 21
    virtual int SendExercise(OrderRecord* order) = 0;                  // slot 22

protected:
    ~ITradeService() = default;
};

// Asked once at start; its answer is kept and not used.
class IQuoteDataCenter {
public:
    virtual void Reserved0() = 0;
    virtual void Reserved1() = 0;
    virtual void Reserved2() = 0;
    virtual void Reserved3() = 0;
    virtual void Reserved4() = 0;
    virtual void Reserved5() = 0;
    virtual void Reserved6() = 0;
    virtual void Reserved7() = 0;
    virtual void Reserved8() = 0;
    virtual void Reserved9() = 0;
    virtual void Reserved10() = 0;
    virtual void Reserved11() = 0;
    virtual void Reserved12() = 0;
    virtual void Reserved13() = 0;
    virtual void Reserved14() = 0;
    virtual void Reserved15() = 0;
    virtual void Reserved16() = 0;
    virtual void Reserved17() = 0;
    virtual void Reserved18() = 0;
    virtual void Reserved19() = 0;
    virtual void Reserved20() = 0;
    virtual void Reserved21() = 0;
    virtual void Reserved22() = 0;
    virtual void Reserved23() = 0;
    virtual void Reserved24() = 0;
    virtual void Reserved25() = 0;
    virtual void Reserved26() = 0;
    virtual void Reserved27() = 0;
    virtual void Reserved28() = 0;
    virtual void Reserved29() = 0;
    virtual void Reserved30() = 0;
    virtual void Reserved31() = 0;
    virtual void Reserved32() = 0;
    virtual void Reserved33() = 0;
    virtual void Reserved34() = 0;
    virtual void Reserved35() = 0;
    virtual void Reserved36() = 0;
    virtual void Reserved37() = 0;
    virtual void* Slot38() = 0;  // slot 38

protected:
    ~IQuoteDataCenter() = default;
};

// Asks a configuration table for its rows: `count` records of the kind that the request type names.
struct ConfigQuery {
    std::uint32_t requestType;
    std::uint32_t count;
    void* records;
};
static_assert(sizeof(ConfigQuery) == 12);
inline constexpr std::uint32_t kConfigTradeServers = 0x40000;  // answers ServerConfigRecord

// The records of an answer live until the block is released.
class IConfigTable {
public:
    virtual void Reserved0() = 0;
    virtual void Reserved1() = 0;
    virtual int Query(ConfigQuery* block) = 0;     // slot 2
    virtual void Release(ConfigQuery* block) = 0;  // slot 3

protected:
    ~IConfigTable() = default;
};

// The host's settings; GetConfigTable may return null.
class ISysConfig {
public:
    virtual void Reserved0() = 0;
    virtual void Reserved1() = 0;
    virtual void Reserved2() = 0;
    virtual void Reserved3() = 0;
    virtual void Reserved4() = 0;
    virtual void Reserved5() = 0;
    virtual void Reserved6() = 0;
    virtual void Reserved7() = 0;
    virtual void Reserved8() = 0;
    virtual void Reserved9() = 0;
    virtual void Reserved10() = 0;
    virtual void Reserved11() = 0;
    virtual void Reserved12() = 0;
    virtual void Reserved13() = 0;
    virtual void Reserved14() = 0;
    virtual void Reserved15() = 0;
    virtual void Reserved16() = 0;
    virtual void Reserved17() = 0;
    virtual void Reserved18() = 0;
    virtual void Reserved19() = 0;
    virtual void Reserved20() = 0;
    virtual void Reserved21() = 0;
    virtual void Reserved22() = 0;
    virtual void Reserved23() = 0;
    virtual void Reserved24() = 0;
    virtual void Reserved25() = 0;
    virtual IConfigTable* GetConfigTable() = 0;  // slot 26

protected:
    ~ISysConfig() = default;
};

// A list of positions inside a window of the module. Coordinates are client pixels of the owner.
class ITradeListWindow {
public:
    virtual void Reserved0() = 0;
    virtual void Reserved1() = 0;
    virtual void Reserved2() = 0;
    virtual void Reserved3() = 0;
    virtual void Reserved4() = 0;
    virtual void Place(int left, int top, int width, int height, int one) = 0;  // slot 5
    virtual void SetFilter(const PositionFilterRecord* filter) = 0;             // slot 6
    virtual void SetNotify(ISelectDataNotify* notify) = 0;                      // slot 7

protected:
    ~ITradeListWindow() = default;
};

// Makes position list windows: CreateListWindow(0, 4, owner, 1); null when none could be made.
class ITradeList {
public:
    virtual ITradeListWindow* CreateListWindow(int zero, int four, HWND owner, int one) = 0;  // slot 0
    virtual void ReleaseListWindow(ITradeListWindow* window) = 0;                             // slot 1

protected:
    ~ITradeList() = default;
};

// Implemented by the module: the operator picked a row of a position list window.
class ISelectDataNotify {
public:
    virtual void OnSelectData(ITradeListWindow* window, int unused, PositionRecord* record) = 0;  // slot 0

protected:
    ~ISelectDataNotify() = default;
};

// The host's directory of services: null when it has no such service.
class IPluginManager {
public:
    virtual void Reserved0() = 0;
    virtual void* GetPlugin(const char* name, const char* version) = 0;  // slot 1

protected:
    ~IPluginManager() = default;
};
