#pragma once

#include "trade/host_interfaces.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// The one way in which the module reads the host. Every pointer may be null: a missing trade interface is an
// empty list, or a look-up that finds nothing. Lists hold no null entries. Cheap to copy; records stay the
// host's.
class TradeData {
public:
    explicit TradeData(ITradeApi* api, ISysConfig* config = nullptr) : m_api(api), m_config(config) {}

    // Lists, in the host's order. `sign` "" means all signs.
    std::vector<const UserRecord*> Users(const std::string& sign) const;
    std::vector<const UpperRecord*> Uppers(const std::string& sign) const;
    std::vector<const CurrencyRecord*> Currencies(const std::string& sign) const;
    std::vector<const ExchangeRecord*> Exchanges(const std::string& sign) const;
    std::vector<const CommodityRecord*> Commodities(const ExchangeKey& exchange) const;
    std::vector<const ContractRecord*> Contracts(const CommodityKey& commodity) const;
    std::vector<const PositionRecord*> Positions(const std::string& sign) const;
    std::uint32_t SignEntryCount(const std::string& sign) const;

    // Look-ups; null when not found.
    const UserRecord* User(const std::string& accountNo, const std::string& sign) const;
    const OrderRecord* Order(std::uint32_t orderNo) const;
    const CommodityRecord* Commodity(const CommodityKey& key) const;
    const ContractRecord* Contract(const ContractKey& key) const;
    // `priceText` in the form "10" or "10+3/8"; direction 'B' or 'S'.
    const PositionRecord* Position(const std::string& accountNo, const ContractKey& key, char direction,
                                   const std::string& priceText) const;

    struct Quantities {
        std::uint32_t longQty = 0;
        std::uint32_t shortQty = 0;
    };
    Quantities PositionQty(const std::string& accountNo, const SingleContractKey& key) const;

    // Sum of the open quantities of every position that agrees in all five values exactly.
    std::uint32_t PositionTotal(const std::string& accountNo, const std::string& exchangeNo,
                                const std::string& commodityNo, const std::string& contractNo,
                                char direction) const;

    // The contract number (prompt date "%y%m%d") that "3M" stands for under the sign; "3M" when it is not
    // known.
    std::string ThreeMonthContractNo(const std::string& sign) const;

    // `price` in the notation of the commodity whose key heads `recordWithKey` (at least a CommodityKey's
    // fields, given as a whole host record): "97.25" or "97+3/8". Without the host's formatter, or when it
    // writes nothing, the module's own.
    std::string FormatPrice(const void* recordWithKey, double price) const;

    // The configured trade servers; empty without a configuration service.
    std::vector<ServerConfigRecord> ServerConfigs() const;
    // The configuration whose address and port are the account's server's; none when no one is.
    std::optional<ServerConfigRecord> ServerOf(const UserRecord& user,
                                               const std::vector<ServerConfigRecord>& configs) const;

private:
    ITradeApi* m_api;
    ISysConfig* m_config;
};

// The account's operator number: the text of its group record, empty without account or group.
std::string OperatorNo(const UserRecord* user);
// True when the account's group lets the dialogs list and accept it.
bool IsTradable(const UserRecord* user);

// The requests. Without a trade service every one of them fails.
class TradeRequests {
public:
    explicit TradeRequests(ITradeService* service) : m_service(service) {}

    // True when the request was sent.
    bool SendOrder(OrderRecord& order) const;
    bool DeleteOrder(std::uint32_t orderNo) const;
    bool SendFill(FillRecord& fill) const;
    bool RemoveFill(FillRecord& fill) const;  // by the fill number inside the record
    bool SendExercise(OrderRecord& order) const;

private:
    ITradeService* m_service;
};
