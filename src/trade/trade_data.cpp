#include "trade/trade_data.h"

#include "framework/debug_line.h"
#include "trade/data_container.h"
#include "trade/order_codes.h"
#include "trade/price_format.h"

#include <cstring>

namespace {

constexpr std::size_t kAccountBytes = sizeof(UserRecord::accountNo);
constexpr std::size_t kPriceTextBytes = 100;
constexpr std::size_t kContractNoBytes = sizeof(ContractKey::contractNo);
// More trade servers than anyone configures: a larger count is a broken answer, not a list.
constexpr std::uint32_t kMaxServerConfigs = 4096;

// The host may copy a whole account or sign field from the text that it is given, so the memory behind a
// short text is at least as long, and zero.
std::string FieldText(const std::string& text) {
    std::string padded = text;
    if (padded.size() < kAccountBytes) {
        padded.resize(kAccountBytes);
    }
    return padded;
}

// Likewise for the shorter keys: a host that reads the key as the head of a contract key finds zeros behind
// it.
template <typename Key>
ContractKey ZeroExtended(const Key& key) {
    ContractKey extended{};
    std::memcpy(&extended, &key, sizeof(key));
    return extended;
}

template <typename Record, typename Query>
std::vector<const Record*> ReadList(const char* operation, Query query) {
    CDataContainer list;
    query(list);
    std::vector<const Record*> records;
    records.reserve(list.Count());
    for (std::uint32_t i = 0; i < list.Count(); ++i) {
        if (const void* record = list.At(i)) {
            records.push_back(static_cast<const Record*>(record));
        }
    }
    if (records.size() < list.Count()) {
        TellDebugger("%s added %u null entries", operation,
                     static_cast<unsigned>(list.Count() - records.size()));
    }
    return records;
}

// The lists that are asked for by a sign share one shape.
template <typename Record>
std::vector<const Record*> ReadSignList(ITradeApi* api, const std::string& sign, const char* name,
                                        void (ITradeApi::*operation)(IDataContainer*, const char*)) {
    if (!api) {
        return {};
    }
    return ReadList<Record>(name,
                            [&](IDataContainer& list) { (api->*operation)(&list, FieldText(sign).c_str()); });
}

}  // namespace

std::vector<const UserRecord*> TradeData::Users(const std::string& sign) const {
    return ReadSignList<UserRecord>(m_api, sign, "GetUsers", &ITradeApi::GetUsers);
}

std::vector<const UpperRecord*> TradeData::Uppers(const std::string& sign) const {
    return ReadSignList<UpperRecord>(m_api, sign, "GetUppers", &ITradeApi::GetUppers);
}

std::vector<const CurrencyRecord*> TradeData::Currencies(const std::string& sign) const {
    return ReadSignList<CurrencyRecord>(m_api, sign, "GetCurrencies", &ITradeApi::GetCurrencies);
}

std::vector<const ExchangeRecord*> TradeData::Exchanges(const std::string& sign) const {
    return ReadSignList<ExchangeRecord>(m_api, sign, "GetExchanges", &ITradeApi::GetExchanges);
}

std::vector<const PositionRecord*> TradeData::Positions(const std::string& sign) const {
    return ReadSignList<PositionRecord>(m_api, sign, "GetPositions", &ITradeApi::GetPositions);
}

std::uint32_t TradeData::SignEntryCount(const std::string& sign) const {
    CDataContainer entries;
    if (m_api) {
        m_api->ListSignEntries(&entries, FieldText(sign).c_str());
    }
    return entries.Count();
}

std::vector<const CommodityRecord*> TradeData::Commodities(const ExchangeKey& exchange) const {
    if (!m_api) {
        return {};
    }
    const ContractKey key = ZeroExtended(exchange);
    return ReadList<CommodityRecord>("GetCommodities",
                                     [&](IDataContainer& list) { m_api->GetCommodities(&key, &list); });
}

std::vector<const ContractRecord*> TradeData::Contracts(const CommodityKey& commodity) const {
    if (!m_api) {
        return {};
    }
    const ContractKey key = ZeroExtended(commodity);
    return ReadList<ContractRecord>("GetContracts",
                                    [&](IDataContainer& list) { m_api->GetContracts(&key, &list); });
}

const UserRecord* TradeData::User(const std::string& accountNo, const std::string& sign) const {
    return m_api ? m_api->GetUser(FieldText(accountNo).c_str(), FieldText(sign).c_str()) : nullptr;
}

const OrderRecord* TradeData::Order(std::uint32_t orderNo) const {
    return m_api ? m_api->GetOrder(orderNo) : nullptr;
}

const CommodityRecord* TradeData::Commodity(const CommodityKey& key) const {
    if (!m_api) {
        return nullptr;
    }
    const ContractKey extended = ZeroExtended(key);
    return m_api->GetCommodity(&extended);
}

const ContractRecord* TradeData::Contract(const ContractKey& key) const {
    return m_api ? m_api->GetContract(&key) : nullptr;
}

const PositionRecord* TradeData::Position(const std::string& accountNo, const ContractKey& key,
                                          char direction, const std::string& priceText) const {
    return m_api ? m_api->GetPosition(FieldText(accountNo).c_str(), &key, direction, priceText.c_str())
                 : nullptr;
}

TradeData::Quantities TradeData::PositionQty(const std::string& accountNo,
                                             const SingleContractKey& key) const {
    Quantities found;
    if (m_api) {
        std::uint32_t further1 = 0;
        std::uint32_t further2 = 0;
        const ContractKey extended = ZeroExtended(key);
        m_api->GetPositionQty(FieldText(accountNo).c_str(),
                              reinterpret_cast<const SingleContractKey*>(&extended), &found.longQty,
                              &found.shortQty, &further1, &further2);
    }
    return found;
}

std::uint32_t TradeData::PositionTotal(const std::string& accountNo, const std::string& exchangeNo,
                                       const std::string& commodityNo, const std::string& contractNo,
                                       char direction) const {
    std::uint32_t total = 0;
    for (const PositionRecord* position : Positions("")) {
        if (position->accountNo == accountNo && position->key.exchangeNo == exchangeNo &&
            position->key.commodityNo == commodityNo && position->key.contractNo == contractNo &&
            position->direction == direction) {
            total += position->openQty;
        }
    }
    return total;
}

std::string TradeData::ThreeMonthContractNo(const std::string& sign) const {
    const char* contractNo = m_api ? m_api->Get3MContractNo(FieldText(sign).c_str()) : nullptr;
    if (!contractNo || !*contractNo) {
        return kThreeMonth;
    }
    return {contractNo, strnlen(contractNo, kContractNoBytes - 1)};
}

std::string TradeData::FormatPrice(const void* recordWithKey, double price) const {
    if (!recordWithKey) {
        return FormatPriceText(price, nullptr);
    }
    if (m_api) {
        char buffer[kPriceTextBytes] = {};
        m_api->FormatPrice(recordWithKey, price, buffer, sizeof(buffer), 0, 'D');
        if (buffer[kPriceTextBytes - 1]) {
            TellDebugger("FormatPrice filled its buffer without an end");
        }
        if (buffer[0]) {
            return {buffer, strnlen(buffer, sizeof(buffer))};
        }
        TellDebugger("FormatPrice wrote nothing");
    }
    CommodityKey key;
    std::memcpy(&key, recordWithKey, sizeof(key));
    return FormatPriceText(price, Commodity(key));
}

std::vector<ServerConfigRecord> TradeData::ServerConfigs() const {
    IConfigTable* table = m_config ? m_config->GetConfigTable() : nullptr;
    if (!table) {
        return {};
    }
    ConfigQuery query{kConfigTradeServers, 0, nullptr};
    table->Query(&query);
    if (query.count == 0) {
        return {};
    }
    std::vector<ServerConfigRecord> configs;
    if (query.records && query.count <= kMaxServerConfigs) {
        configs.resize(query.count);
        std::memcpy(configs.data(), query.records, query.count * sizeof(ServerConfigRecord));
    } else {
        TellDebugger("the server configurations are %u, %s", query.count,
                     query.records ? "more than can be" : "without records");
    }
    table->Release(&query);
    return configs;
}

std::optional<ServerConfigRecord> TradeData::ServerOf(const UserRecord& user,
                                                      const std::vector<ServerConfigRecord>& configs) const {
    if (!m_api) {
        return std::nullopt;
    }
    // The record is only handed back to its owner.
    auto* owned = const_cast<UserRecord*>(&user);
    const ServerRecord* server = m_api->GetUserServer(FieldText(user.serverKey.Str()).c_str(), owned);
    if (!server) {
        return std::nullopt;
    }
    const std::string wanted = server->address.Str() + std::to_string(server->port);
    for (const ServerConfigRecord& config : configs) {
        if (config.address.Str() + std::to_string(config.port) == wanted) {
            return config;
        }
    }
    return std::nullopt;
}

std::string OperatorNo(const UserRecord* user) {
    return user && user->group ? user->group->operatorNo.Str() : std::string();
}

bool IsTradable(const UserRecord* user) {
    return user && user->group && user->group->tradable == 'Y';
}

bool TradeRequests::SendOrder(OrderRecord& order) const {
    return m_service && m_service->SendOrder(&order) == 0;
}

bool TradeRequests::DeleteOrder(std::uint32_t orderNo) const {
    return m_service && m_service->DeleteOrder(orderNo) != 0;
}

bool TradeRequests::SendFill(FillRecord& fill) const {
    return m_service && m_service->SendFill(&fill) == 0;
}

bool TradeRequests::RemoveFill(FillRecord& fill) const {
    return m_service && m_service->RemoveFill(fill.fillNo.chars, &fill) == 0;
}

bool TradeRequests::SendExercise(OrderRecord& order) const {
    return m_service && m_service->SendExercise(&order) == 0;
}
