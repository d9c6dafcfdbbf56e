#pragma once

#include "trade/host_interfaces.h"
#include "trade/plugin_interface.h"
#include "trade/trade_spi.h"

#include <cstdio>
#include <cstring>

// Every service that the module asks a terminal for, over one account and one contract: the least with which
// both dialogs work. Needs no more of C++ than its virtual functions, so that any compiler for 32-bit Windows
// builds it.

// A slot that the module never calls.
#define RESERVED(slot)                                            \
    void Reserved##slot() override {                              \
        std::printf("reserved operation " #slot " was called\n"); \
    }

// The terminal's records. The module keeps pointers to them while a dialog is open, so they stay where they
// are.
struct SmallBook {
    GroupRecord group{};
    UserRecord account{};
    UpperRecord upper{};
    CurrencyRecord currency{};
    ExchangeRecord exchange{};
    CommodityRecord commodity{};
    ContractRecord contract{};
    PositionRecord position{};
    ServerRecord server{};
    ServerConfigRecord serverConfig{};

    SmallBook() {
        // What belongs together has one sign; the records of a terminal with one group may leave it empty.
        group.sign.Set("SIG");
        group.operatorNo.Set("OP9");
        group.tradable = 'Y';
        account.sign = upper.sign = currency.sign = exchange.sign = commodity.sign = group.sign;
        account.serverKey.Set("main");
        account.accountNo.Set("100");
        account.accountName.Set("First client");
        account.group = &group;
        upper.upperNo.Set("U7");
        upper.upperName.Set("Clearing");
        currency.currencyNo.Set("USD");
        currency.currencyName.Set("Dollar");
        exchange.exchangeNo.Set("EXA");
        exchange.exchangeName.Set("Exchange");
        commodity.exchangeNo = exchange.exchangeNo;
        commodity.commodityType = CommodityType::kFutures;
        commodity.commodityNo.Set("CM");
        commodity.commodityName.Set("Commodity");
        commodity.tickNumerator = 0.25;
        commodity.tickDenominator = 1;
        // A contract begins with its commodity's key; what it does not have is empty, an option type 'N'.
        std::memcpy(&contract.key, &commodity, sizeof(CommodityKey));
        contract.key.contractNo.Set("2612");
        contract.key.optionType = contract.key.optionType2 = 'N';
        contract.contractName.Set("Commodity December");
        contract.commodity = &commodity;
        std::memcpy(&position.key, &contract.key, sizeof(position.key));
        position.accountNo = account.accountNo;
        position.direction = 'B';
        position.price = 97.25;
        position.openQty = 8;
        server.address.Set("trade.example");
        server.port = 7001;
        serverConfig.name.Set("Main");
        serverConfig.address.Set("trade.example");
        serverConfig.port = 7001;
    }
};

// The trade data. Keys point to the first bytes of a record; an empty sign means all of them.
class SmallTradeApi : public ITradeApi {
public:
    explicit SmallTradeApi(SmallBook& book) : m_book(book) {}

    ITradeSpi* listener = nullptr;  // one for each open dialog; this terminal sends events to the last

    void RegisterSpi(ITradeSpi* added) override { listener = added; }
    void UnregisterSpi(ITradeSpi* removed) override { listener = listener == removed ? nullptr : listener; }
    void ListSignEntries(IDataContainer* list, const char*) override { list->Add(&m_book.group); }
    ServerRecord* GetUserServer(const char*, UserRecord*) override { return &m_book.server; }
    OrderRecord* GetOrder(std::uint32_t) override { return nullptr; }
    void GetPositions(IDataContainer* list, const char*) override { list->Add(&m_book.position); }
    PositionRecord* GetPosition(const char*, const ContractKey*, char, const char*) override {
        return nullptr;
    }
    void GetPositionQty(const char*, const SingleContractKey*, std::uint32_t* longQty,
                        std::uint32_t* shortQty, std::uint32_t* further1, std::uint32_t* further2) override {
        *longQty = m_book.position.openQty;
        *shortQty = *further1 = *further2 = 0;
    }
    void GetUsers(IDataContainer* list, const char*) override { list->Add(&m_book.account); }
    UserRecord* GetUser(const char* accountNo, const char*) override {
        return std::strcmp(accountNo, m_book.account.accountNo.chars) == 0 ? &m_book.account : nullptr;
    }
    void GetExchanges(IDataContainer* list, const char*) override { list->Add(&m_book.exchange); }
    ExchangeRecord* GetExchange(const void* key) override {
        return Find(m_book.exchange, key, sizeof(ExchangeKey));
    }
    void GetCommodities(const void* key, IDataContainer* list) override {
        if (GetExchange(key)) {
            list->Add(&m_book.commodity);
        }
    }
    CommodityRecord* GetCommodity(const void* key) override {
        return Find(m_book.commodity, key, sizeof(CommodityKey));
    }
    void GetContracts(const void* key, IDataContainer* list) override {
        if (GetCommodity(key)) {
            list->Add(&m_book.contract);
        }
    }
    ContractRecord* GetContract(const ContractKey* key) override {
        return Find(m_book.contract, key, sizeof(ContractKey));
    }
    const char* Get3MContractNo(const char*) override { return nullptr; }
    void GetCurrencies(IDataContainer* list, const char*) override { list->Add(&m_book.currency); }
    void GetUppers(IDataContainer* list, const char*) override { list->Add(&m_book.upper); }
    void FormatPrice(const void*, double price, char* buffer, int size, int, char) override {
        char text[320];
        std::sprintf(text, "%.2f", price);
        std::strncpy(buffer, text, static_cast<std::size_t>(size) - 1);
    }
    // clang-format off
    RESERVED(4) RESERVED(5) RESERVED(7) RESERVED(8) RESERVED(9) RESERVED(10) RESERVED(11) RESERVED(12)
    RESERVED(13) RESERVED(14) RESERVED(17) RESERVED(18) RESERVED(19) RESERVED(20) RESERVED(21) RESERVED(22)
    RESERVED(23) RESERVED(24) RESERVED(28) RESERVED(29) RESERVED(30) RESERVED(31) RESERVED(32) RESERVED(33)
    RESERVED(34) RESERVED(35) RESERVED(36) RESERVED(42) RESERVED(45) RESERVED(46) RESERVED(47) RESERVED(49)
    RESERVED(51) RESERVED(52) RESERVED(53) RESERVED(54)
        // clang-format on

        private : template <typename Record>
                  static Record* Find(Record& record, const void* key, std::size_t size) {
        const char* const wanted = static_cast<const char*>(key);
        const std::size_t from = *wanted ? 0 : sizeof(ExchangeKey::sign);
        const char* const known = reinterpret_cast<const char*>(&record);
        return std::memcmp(known + from, wanted + from, size - from) == 0 ? &record : nullptr;
    }

    SmallBook& m_book;
};

// The requests: printed, and answered with success.
class SmallTradeService : public ITradeService {
public:
    explicit SmallTradeService(ITradeApi& api) : m_api(api) {}

    ITradeApi* GetTradeApi() override { return &m_api; }
    int SendOrder(OrderRecord* order) override {
        return Print("order", *order, order->orderQty, order->orderPrice);
    }
    int DeleteOrder(std::uint32_t orderNo) override {
        std::printf("delete order %u\n", static_cast<unsigned>(orderNo));
        return 1;
    }
    int SendFill(FillRecord* fill) override { return Print("fill", *fill, fill->fillQty, fill->fillPrice); }
    int RemoveFill(const char* fillNo, FillRecord*) override {
        std::printf("remove fill %s\n", fillNo);
        return 0;
    }
    int SendExercise(OrderRecord* order) override { return Print("exercise", *order, order->orderQty, 0); }
    // clang-format off
    RESERVED(0) RESERVED(1) RESERVED(3) RESERVED(4) RESERVED(5) RESERVED(6) RESERVED(7) RESERVED(8) RESERVED(9)
    RESERVED(10) RESERVED(11) RESERVED(12) RESERVED(13) RESERVED(14) RESERVED(15) RESERVED(16) RESERVED(17)
        // clang-format on

        private
        : template <typename Record>
          static int Print(const char* what, const Record& record, std::uint32_t quantity, double price) {
        std::printf("%s: account %.21s, %s %u of %.11s %.11s %.11s at %.6f\n", what, record.accountNo.chars,
                    record.direction == 'B' ? "buys" : "sells", static_cast<unsigned>(quantity),
                    record.key.exchangeNo.chars, record.key.commodityNo.chars, record.key.contractNo.chars,
                    price);
        return 0;
    }

    ITradeApi& m_api;
};

// A place for a list of positions inside a carry dialog, which this terminal leaves empty.
class SmallListWindow : public ITradeListWindow {
public:
    void Place(int, int, int, int, int) override {}
    void SetFilter(const PositionFilterRecord*) override {}
    void SetNotify(ISelectDataNotify*) override {}
    RESERVED(0) RESERVED(1) RESERVED(2) RESERVED(3) RESERVED(4)
};

class SmallTradeList : public ITradeList {
public:
    // The two lists of a dialog may be one object where nothing is kept in it.
    ITradeListWindow* CreateListWindow(int, int, HWND, int) override { return &m_window; }
    void ReleaseListWindow(ITradeListWindow*) override {}

private:
    SmallListWindow m_window;
};

// The configured trade servers: the fill dialog names the one that an account trades through.
class SmallConfigTable : public IConfigTable {
public:
    explicit SmallConfigTable(SmallBook& book) : m_book(book) {}
    int Query(ConfigQuery* block) override {
        if (block->requestType == kConfigTradeServers) {
            block->records = &m_book.serverConfig;
            block->count = 1;
        }
        return 0;
    }
    void Release(ConfigQuery* block) override { *block = {}; }
    RESERVED(0)
    RESERVED(1)

private:
    SmallBook& m_book;
};

class SmallSysConfig : public ISysConfig {
public:
    explicit SmallSysConfig(SmallBook& book) : m_table(book) {}
    IConfigTable* GetConfigTable() override { return &m_table; }
    // clang-format off
    RESERVED(0) RESERVED(1) RESERVED(2) RESERVED(3) RESERVED(4) RESERVED(5) RESERVED(6) RESERVED(7) RESERVED(8)
    RESERVED(9) RESERVED(10) RESERVED(11) RESERVED(12) RESERVED(13) RESERVED(14) RESERVED(15) RESERVED(16)
    RESERVED(17) RESERVED(18) RESERVED(19) RESERVED(20) RESERVED(21) RESERVED(22) RESERVED(23) RESERVED(24)
    RESERVED(25)
        // clang-format on

        private : SmallConfigTable m_table;
};

class SmallQuoteDataCenter : public IQuoteDataCenter {
public:
    void* Slot38() override { return nullptr; }
    // clang-format off
    RESERVED(0) RESERVED(1) RESERVED(2) RESERVED(3) RESERVED(4) RESERVED(5) RESERVED(6) RESERVED(7) RESERVED(8)
    RESERVED(9) RESERVED(10) RESERVED(11) RESERVED(12) RESERVED(13) RESERVED(14) RESERVED(15) RESERVED(16)
    RESERVED(17) RESERVED(18) RESERVED(19) RESERVED(20) RESERVED(21) RESERVED(22) RESERVED(23) RESERVED(24)
    RESERVED(25) RESERVED(26) RESERVED(27) RESERVED(28) RESERVED(29) RESERVED(30) RESERVED(31) RESERVED(32)
    RESERVED(33) RESERVED(34) RESERVED(35) RESERVED(36) RESERVED(37)
    // clang-format on
};

// The directory of services. The module asks for four more, which may be missing.
class SmallPluginManager : public IPluginManager {
public:
    SmallPluginManager(ITradeService& trade, ITradeList& list, ISysConfig& config)
        : m_trade(trade), m_list(list), m_config(config) {}
    void* GetPlugin(const char* name, const char*) override {
        // Each pointer is of the very interface that the module takes it for.
        return Is(name, "TradeApi")          ? static_cast<void*>(&m_trade)
               : Is(name, "TradeList")       ? static_cast<void*>(&m_list)
               : Is(name, "SysConfig")       ? static_cast<void*>(&m_config)
               : Is(name, "QuoteDataCenter") ? static_cast<IQuoteDataCenter*>(&m_quotes)
                                             : static_cast<void*>(nullptr);
    }
    RESERVED(0)

private:
    static bool Is(const char* name, const char* known) { return std::strcmp(name, known) == 0; }

    ITradeService& m_trade;
    ITradeList& m_list;
    ISysConfig& m_config;
    SmallQuoteDataCenter m_quotes;
};
