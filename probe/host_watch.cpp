#include "probe/host_watch.h"

#include "framework/format_text.h"
#include "trade/data_container.h"

#include <cstring>
#include <vector>

namespace {

// Shorter stops are not felt among the hundred calls of an opening dialog, and come from a busy machine as
// well.
constexpr DWORD kSlowMilliseconds = 400;

}  // namespace

bool Readable(const void* start, std::size_t size) {
    const auto* at = static_cast<const char*>(start);
    const char* const end = at + size;
    while (at < end) {
        MEMORY_BASIC_INFORMATION region{};
        if (!VirtualQuery(at, &region, sizeof region) || region.State != MEM_COMMIT ||
            (region.Protect & (PAGE_NOACCESS | PAGE_GUARD))) {
            return false;
        }
        at = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
    }
    return true;
}

CallWatch::Round::~Round() {
    const DWORD taken = GetTickCount() - start;
    if (taken >= kSlowMilliseconds) {
        watch.m_findings.Add(Kind::kSlowAnswer, operation, FormatText("%lu ms", taken));
    }
    if (watch.m_parent && !IsWindow(watch.m_parent)) {
        watch.m_findings.Add(Kind::kParentDestroyed, operation, "the parent window was gone after this call");
        watch.m_parent = nullptr;
    }
}

template <typename Fill>
void WatchedTradeApi::List(const char* operation, IDataContainer* list, std::size_t size, Fill fill) {
    CDataContainer entries;
    m_watch.Watch(operation, [&] { fill(&entries); });
    for (std::uint32_t i = 0; i < entries.Count(); ++i) {
        void* record = entries.At(i);
        if (!record) {
            m_watch.Found().Add(Kind::kNullEntry, operation,
                                FormatText("entry %u of %u", i, entries.Count()));
        } else if (!Readable(record, size)) {
            m_watch.Found().Add(Kind::kUnreadableRecord, operation,
                                FormatText("entry %u of %u is no readable memory", i, entries.Count()));
        } else {
            list->Add(record);
        }
    }
}

template <typename Record>
Record* WatchedTradeApi::LookUp(const char* operation, Record* found) {
    if (found && !Readable(found, sizeof(Record))) {
        m_watch.Found().Add(Kind::kUnreadableRecord, operation, "the answer is no readable memory");
        return nullptr;
    }
    return found;
}

void WatchedTradeApi::RegisterSpi(ITradeSpi* listener) {
    m_watch.Watch("RegisterSpi", [&] { m_host.RegisterSpi(listener); });
}

void WatchedTradeApi::UnregisterSpi(ITradeSpi* listener) {
    m_watch.Watch("UnregisterSpi", [&] { m_host.UnregisterSpi(listener); });
}

void WatchedTradeApi::ListSignEntries(IDataContainer* list, const char* sign) {
    List("ListSignEntries", list, 0, [&](IDataContainer* own) { m_host.ListSignEntries(own, sign); });
}

ServerRecord* WatchedTradeApi::GetUserServer(const char* serverKey, UserRecord* user) {
    return LookUp("GetUserServer",
                  m_watch.Watch("GetUserServer", [&] { return m_host.GetUserServer(serverKey, user); }));
}

OrderRecord* WatchedTradeApi::GetOrder(std::uint32_t orderNo) {
    return LookUp("GetOrder", m_watch.Watch("GetOrder", [&] { return m_host.GetOrder(orderNo); }));
}

void WatchedTradeApi::GetPositions(IDataContainer* list, const char* sign) {
    List("GetPositions", list, sizeof(PositionRecord),
         [&](IDataContainer* own) { m_host.GetPositions(own, sign); });
}

PositionRecord* WatchedTradeApi::GetPosition(const char* accountNo, const ContractKey* key, char direction,
                                             const char* priceText) {
    return LookUp("GetPosition", m_watch.Watch("GetPosition", [&] {
        return m_host.GetPosition(accountNo, key, direction, priceText);
    }));
}

void WatchedTradeApi::GetPositionQty(const char* accountNo, const SingleContractKey* key,
                                     std::uint32_t* longQty, std::uint32_t* shortQty, std::uint32_t* further1,
                                     std::uint32_t* further2) {
    m_watch.Watch("GetPositionQty",
                  [&] { m_host.GetPositionQty(accountNo, key, longQty, shortQty, further1, further2); });
}

void WatchedTradeApi::GetUsers(IDataContainer* list, const char* sign) {
    List("GetUsers", list, sizeof(UserRecord), [&](IDataContainer* own) { m_host.GetUsers(own, sign); });
}

UserRecord* WatchedTradeApi::GetUser(const char* accountNo, const char* sign) {
    return LookUp("GetUser", m_watch.Watch("GetUser", [&] { return m_host.GetUser(accountNo, sign); }));
}

void WatchedTradeApi::GetExchanges(IDataContainer* list, const char* sign) {
    List("GetExchanges", list, sizeof(ExchangeRecord),
         [&](IDataContainer* own) { m_host.GetExchanges(own, sign); });
}

ExchangeRecord* WatchedTradeApi::GetExchange(const void* exchangeKey) {
    return LookUp("GetExchange",
                  m_watch.Watch("GetExchange", [&] { return m_host.GetExchange(exchangeKey); }));
}

void WatchedTradeApi::GetCommodities(const void* exchangeKey, IDataContainer* list) {
    List("GetCommodities", list, sizeof(CommodityRecord),
         [&](IDataContainer* own) { m_host.GetCommodities(exchangeKey, own); });
}

CommodityRecord* WatchedTradeApi::GetCommodity(const void* commodityKey) {
    return LookUp("GetCommodity",
                  m_watch.Watch("GetCommodity", [&] { return m_host.GetCommodity(commodityKey); }));
}

void WatchedTradeApi::GetContracts(const void* commodityKey, IDataContainer* list) {
    List("GetContracts", list, sizeof(ContractRecord),
         [&](IDataContainer* own) { m_host.GetContracts(commodityKey, own); });
}

ContractRecord* WatchedTradeApi::GetContract(const ContractKey* key) {
    return LookUp("GetContract", m_watch.Watch("GetContract", [&] { return m_host.GetContract(key); }));
}

const char* WatchedTradeApi::Get3MContractNo(const char* sign) {
    return m_watch.Watch("Get3MContractNo", [&] { return m_host.Get3MContractNo(sign); });
}

void WatchedTradeApi::GetCurrencies(IDataContainer* list, const char* sign) {
    List("GetCurrencies", list, sizeof(CurrencyRecord),
         [&](IDataContainer* own) { m_host.GetCurrencies(own, sign); });
}

void WatchedTradeApi::GetUppers(IDataContainer* list, const char* sign) {
    List("GetUppers", list, sizeof(UpperRecord), [&](IDataContainer* own) { m_host.GetUppers(own, sign); });
}

// The text is written into a buffer with a margin, so that one that is too long is seen and does no harm.
void WatchedTradeApi::FormatPrice(const void* recordWithKey, double price, char* buffer, int bufferSize,
                                  int zero, char notation) {
    constexpr char kUntouched = '\x7F';
    const auto size = static_cast<std::size_t>(bufferSize);
    std::vector<char> text(size + 256, kUntouched);
    text[0] = '\0';
    m_watch.Watch("FormatPrice",
                  [&] { m_host.FormatPrice(recordWithKey, price, text.data(), bufferSize, zero, notation); });
    for (std::size_t i = size; i < text.size(); ++i) {
        if (text[i] != kUntouched) {
            m_watch.Found().Add(Kind::kPriceOverrun, "FormatPrice",
                                FormatText("wrote behind its buffer of %d characters", bufferSize));
            break;
        }
    }
    if (!std::memchr(text.data(), 0, size)) {
        m_watch.Found().Add(Kind::kUnterminatedText, "FormatPrice", "no zero within the buffer");
        text[size - 1] = '\0';
    }
    std::memcpy(buffer, text.data(), size);
}
