#pragma once

#include "shown_is_sent/world.h"
#include "sweep/faults.h"
#include "sweep/wide.h"

// A host of which each single call may fail.

template <typename Ask>
auto AnswerService(const char* operation, Ask ask) -> decltype(ask()) {
    const Kind kind = g_faults.At(Site::Call, 'p', operation);
    return kind == Kind::Null ? nullptr : g_faults.Aside(ask);
}
template <typename Record, typename Ask>
Record* AnswerRecord(const char* operation, Ask ask) {
    const Kind kind = g_faults.At(Site::Call, 'r', operation);
    Record* const record = kind == Kind::Null ? nullptr : g_faults.Aside(ask);
    return kind == Kind::Wide ? Widened(record) : record;
}

template <typename Record, typename Ask>
void AnswerList(const char* operation, IDataContainer* list, Ask ask) {
    struct Wide : IDataContainer {
        IDataContainer* list;
        explicit Wide(IDataContainer* given) : list(given) {}
        std::uint32_t Count() override { return list->Count(); }
        void* At(std::uint32_t index) override { return list->At(index); }
        void Clear() override { list->Clear(); }
        void Add(void* record) override { list->Add(Widened(static_cast<Record*>(record))); }
    } wide(list);
    const Kind kind = g_faults.At(Site::Call, 'l', operation);
    if (kind == Kind::Nulls) {
        for (int entry = 0; entry < 3; ++entry) {
            list->Add(nullptr);
        }
    } else if (kind != Kind::Null) {
        g_faults.Aside([&] { ask(kind == Kind::Wide ? &wide : list); });
    }
}

class FaultyWorld final : public World {
public:
    void RegisterSpi(ITradeSpi* listener) override {
        World::RegisterSpi(listener);
        g_faults.At(Site::Call, 'v', "RegisterSpi");
    }
    void UnregisterSpi(ITradeSpi* listener) override {
        World::UnregisterSpi(listener);
        g_faults.At(Site::Call, 'v', "UnregisterSpi");
    }
// Operations that answer one record, and those that fill a list, which stands first or second in them.
#define ANSWER(Record, operation, parameters, arguments)                                     \
    Record* operation parameters override {                                                  \
        return AnswerRecord<Record>(#operation, [&] { return World::operation arguments; }); \
    }
#define LIST(Record, operation, parameters, arguments)                                                 \
    void operation parameters override {                                                               \
        AnswerList<Record>(#operation, list, [&](IDataContainer* to) { World::operation arguments; }); \
    }
    ANSWER(ServerRecord, GetUserServer, (const char* key, UserRecord* user), (key, user))
    ANSWER(OrderRecord, GetOrder, (std::uint32_t number), (number))
    ANSWER(PositionRecord, GetPosition,
           (const char* account, const ContractKey* key, char direction, const char* price),
           (account, key, direction, price))
    ANSWER(UserRecord, GetUser, (const char* account, const char* sign), (account, sign))
    ANSWER(ExchangeRecord, GetExchange, (const void* key), (key))
    ANSWER(CommodityRecord, GetCommodity, (const void* key), (key))
    ANSWER(ContractRecord, GetContract, (const ContractKey* key), (key))
    LIST(GroupRecord, ListSignEntries, (IDataContainer * list, const char* sign), (to, sign))
    LIST(PositionRecord, GetPositions, (IDataContainer * list, const char* sign), (to, sign))
    LIST(UserRecord, GetUsers, (IDataContainer * list, const char* sign), (to, sign))
    LIST(ExchangeRecord, GetExchanges, (IDataContainer * list, const char* sign), (to, sign))
    LIST(CommodityRecord, GetCommodities, (const void* key, IDataContainer* list), (key, to))
    LIST(ContractRecord, GetContracts, (const void* key, IDataContainer* list), (key, to))
    LIST(CurrencyRecord, GetCurrencies, (IDataContainer * list, const char* sign), (to, sign))
    LIST(UpperRecord, GetUppers, (IDataContainer * list, const char* sign), (to, sign))
#undef ANSWER
#undef LIST
    const char* Get3MContractNo(const char* sign) override {
        const Kind kind = g_faults.At(Site::Call, 'r', "Get3MContractNo");
        static const std::string wide(400, 'W');
        return kind == Kind::Null   ? nullptr
               : kind == Kind::Wide ? wide.c_str()
                                    : World::Get3MContractNo(sign);
    }
    void GetPositionQty(const char* account, const SingleContractKey* key, std::uint32_t* longOut,
                        std::uint32_t* shortOut, std::uint32_t* further1, std::uint32_t* further2) override {
        if (g_faults.At(Site::Call, 'r', "GetPositionQty") != Kind::Null) {
            World::GetPositionQty(account, key, longOut, shortOut, further1, further2);
        }
    }
    void FormatPrice(const void* record, double price, char* buffer, int size, int zero,
                     char notation) override {
        const Kind kind = g_faults.At(Site::Call, 'r', "FormatPrice");
        if (kind == Kind::Wide) {
            // The same price, with noughts in front of it.
            char text[64];
            World::FormatPrice(record, price, text, sizeof text, zero, notation);
            const std::size_t length = std::strlen(text);
            std::memset(buffer, '0', static_cast<std::size_t>(size));
            std::memcpy(buffer + size - length, text, length);
        } else if (kind != Kind::Null) {
            g_faults.Aside([&] { World::FormatPrice(record, price, buffer, size, zero, notation); });
        }
    }
};

// Keeps every request, with whether the operator had pressed the button for it.
class FaultyServer final : public FakeTradeService {
public:
    struct Sent {
        std::string what;
        // Without clock, numbers made by the module, pointers, and what stands in the place of a line that a
        // list has lost.
        std::string bytes;
        bool operator==(const Sent&) const = default;
    };
    std::vector<Sent> sent;
    bool confirmed = false;
    int unasked = 0;

    ITradeApi* GetTradeApi() override {
        return AnswerService("GetTradeApi", [&] { return api; });
    }
    int SendOrder(OrderRecord* order) override { return Take("SendOrder", Bare(*order)) ? 0 : -1; }
    int DeleteOrder(std::uint32_t orderNo) override { return Take("DeleteOrder", orderNo); }
    int SendFill(FillRecord* fill) override { return Take("SendFill", Bare(*fill)) ? 0 : -1; }
    int SendExercise(OrderRecord* order) override { return Take("SendExercise", Bare(*order)) ? 0 : -1; }
    int RemoveFill(const char* fillNo, FillRecord* fill) override {
        return Take(std::string("RemoveFill ") + fillNo, Bare(*fill)) ? 0 : -1;
    }

private:
    static OrderRecord Bare(OrderRecord order) {
        order.contract = nullptr;
        order.upperNo.Set("");
        order.systemNo.Set("");
        order.inputTime.Set("");
        order.updateTime.Set("");
        return order;
    }
    static FillRecord Bare(FillRecord fill) {
        fill.order = nullptr;
        fill.upperNo.Set("");
        fill.currencyNo.Set("");
        fill.systemNo.Set("");
        fill.exchangeFillNo.Set("");
        fill.fillTime.Set("");
        return fill;
    }
    template <typename Record>
    bool Take(const std::string& what, const Record& record) {
        sent.push_back({what, std::string(reinterpret_cast<const char*>(&record), sizeof record)});
        unasked += !confirmed;
        return g_faults.At(Site::Call, 'q', what.c_str()) != Kind::Null;
    }
};

class FaultyLists final : public ITradeList {
public:
    ListMaker lists;

    ITradeListWindow* CreateListWindow(int zero, int four, HWND owner, int one) override {
        return AnswerService("CreateListWindow", [&]() -> ITradeListWindow* {
            ITradeListWindow* made = lists.CreateListWindow(zero, four, owner, one);
            Window& window = m_windows[made == &lists.windows[1]];
            window.inner = made;
            return &window;
        });
    }
    void ReleaseListWindow(ITradeListWindow* window) override {
        lists.ReleaseListWindow(static_cast<Window*>(window)->inner);
        g_faults.At(Site::Call, 'v', "ReleaseListWindow");
    }

private:
    struct Window final : ITradeListWindow {
        ITradeListWindow* inner = nullptr;
        void Place(int left, int top, int width, int height, int one) override {
            inner->Place(left, top, width, height, one);
            g_faults.At(Site::Call, 'v', "Place");
        }
        void SetFilter(const PositionFilterRecord* filter) override {
            inner->SetFilter(filter);
            g_faults.At(Site::Call, 'v', "SetFilter");
        }
        void SetNotify(ISelectDataNotify* notify) override {
            inner->SetNotify(notify);
            g_faults.At(Site::Call, 'v', "SetNotify");
        }
        // clang-format off
        RESERVED(0) RESERVED(1) RESERVED(2) RESERVED(3) RESERVED(4)
        // clang-format on
    };
    Window m_windows[2];
};

class FaultyConfig final : public FakeConfig {
public:
    IConfigTable* GetConfigTable() override {
        return AnswerService("GetConfigTable", [&] { return FakeConfig::GetConfigTable(); });
    }
    int Query(ConfigQuery* block) override {
        const Kind kind = g_faults.At(Site::Call, 'r', "Query");
        const int result = kind == Kind::Null ? -1 : FakeConfig::Query(block);
        if (kind == Kind::Wide) {
            block->records = Widened(configs.data());
        }
        return result;
    }
    void Release(ConfigQuery* block) override {
        FakeConfig::Release(block);
        g_faults.At(Site::Call, 'v', "Release");
    }
};

// The services by name, as RawHost has them.
class FaultyManager final : public IPluginManager {
public:
    RawHost raw;
    void Reserved0() override {}
    void* GetPlugin(const char* name, const char* version) override {
        return AnswerService(name, [&] { return CallSlot<void*>(raw.Manager(), 1, name, version); });
    }
};
