#pragma once

#include "tests/trade/reserved.h"
#include "trade/host_interfaces.h"

#include <cstring>
#include <functional>
#include <string>
#include <vector>

// A host's trade data for tests: lists are the pointers that the test put in (null ones too), look-ups search
// them, and the rest is answered from plain members.
class FakeTradeApi : public ITradeApi {
public:
    std::vector<UserRecord*> users;
    std::vector<UpperRecord*> uppers;
    std::vector<CurrencyRecord*> currencies;
    std::vector<ExchangeRecord*> exchanges;
    std::vector<CommodityRecord*> commodities;
    std::vector<ContractRecord*> contracts;
    std::vector<PositionRecord*> positions;
    std::vector<OrderRecord*> orders;
    std::vector<void*> signEntries;
    ServerRecord* server = nullptr;
    PositionRecord* position = nullptr;  // the answer of GetPosition
    std::uint32_t longQty = 0;
    std::uint32_t shortQty = 0;
    const char* threeMonthContractNo = nullptr;
    std::string priceText;  // what FormatPrice writes, as far as the buffer goes, without a terminator
    std::string log;        // the arguments of the last look-up that takes texts
    std::vector<ITradeSpi*> listeners;
    std::function<void()> whileAsked;  // what the host does during each of these calls
    int unregistrations = 0;

    void RegisterSpi(ITradeSpi* listener) override {
        listeners.push_back(listener);
        Asked();
    }
    void UnregisterSpi(ITradeSpi* listener) override {
        ++unregistrations;
        std::erase(listeners, listener);
        Asked();
    }
    void ListSignEntries(IDataContainer* list, const char* sign) override { AddAll(list, signEntries, sign); }
    ServerRecord* GetUserServer(const char* serverKey, UserRecord*) override {
        Asked();
        log = serverKey;
        return server;
    }
    OrderRecord* GetOrder(std::uint32_t orderNo) override {
        return Find(orders, [&](const OrderRecord& order) { return order.orderNo == orderNo; });
    }
    void GetPositions(IDataContainer* list, const char* sign) override { AddAll(list, positions, sign); }
    PositionRecord* GetPosition(const char* accountNo, const ContractKey*, char direction,
                                const char* text) override {
        Asked();
        log = std::string(accountNo) + direction + text;
        return position;
    }
    void GetPositionQty(const char* accountNo, const SingleContractKey*, std::uint32_t* longOut,
                        std::uint32_t* shortOut, std::uint32_t* further1, std::uint32_t* further2) override {
        Asked();
        log.assign(accountNo, sizeof(UserRecord::accountNo));  // the whole field, as a host may
        *longOut = longQty;
        *shortOut = shortQty;
        *further1 = *further2 = 0;
    }
    void GetUsers(IDataContainer* list, const char* sign) override { AddAll(list, users, sign); }
    UserRecord* GetUser(const char* accountNo, const char* sign) override {
        return Find(users, [&](const UserRecord& user) {
            return user.accountNo == accountNo && (!*sign || user.sign == sign);
        });
    }
    void GetExchanges(IDataContainer* list, const char* sign) override { AddAll(list, exchanges, sign); }
    ExchangeRecord* GetExchange(const void* key) override {
        return FindKey(exchanges, key, sizeof(ExchangeKey));
    }
    void GetCommodities(const void* key, IDataContainer* list) override {
        AddMatching(list, commodities, key, sizeof(ExchangeKey));
    }
    CommodityRecord* GetCommodity(const void* key) override {
        return FindKey(commodities, key, sizeof(CommodityKey));
    }
    void GetContracts(const void* key, IDataContainer* list) override {
        AddMatching(list, contracts, key, sizeof(CommodityKey));
    }
    ContractRecord* GetContract(const ContractKey* key) override {
        return FindKey(contracts, key, sizeof(ContractKey));
    }
    const char* Get3MContractNo(const char*) override {
        Asked();
        return threeMonthContractNo;
    }
    void GetCurrencies(IDataContainer* list, const char* sign) override { AddAll(list, currencies, sign); }
    void GetUppers(IDataContainer* list, const char* sign) override { AddAll(list, uppers, sign); }
    void FormatPrice(const void*, double, char* buffer, int bufferSize, int zero, char notation) override {
        Asked();
        log = std::to_string(zero) + notation;
        std::memcpy(buffer, priceText.data(), std::min<std::size_t>(priceText.size(), bufferSize));
    }
    // clang-format off
    RESERVED(4) RESERVED(5) RESERVED(7) RESERVED(8) RESERVED(9) RESERVED(10) RESERVED(11) RESERVED(12)
    RESERVED(13) RESERVED(14) RESERVED(17) RESERVED(18) RESERVED(19) RESERVED(20) RESERVED(21) RESERVED(22)
    RESERVED(23) RESERVED(24) RESERVED(28) RESERVED(29) RESERVED(30) RESERVED(31) RESERVED(32) RESERVED(33)
    RESERVED(34) RESERVED(35) RESERVED(36) RESERVED(42) RESERVED(45) RESERVED(46) RESERVED(47) RESERVED(49)
    RESERVED(51) RESERVED(52) RESERVED(53) RESERVED(54)
        // clang-format on

        private : void Asked() {
        if (whileAsked) {
            whileAsked();
        }
    }
    template <typename Record>
    void AddAll(IDataContainer* list, const std::vector<Record*>& records, const char* sign) {
        Asked();
        log = sign;
        for (Record* record : records) {
            list->Add(record);
        }
    }
    // A key without a sign means those of every sign.
    template <typename Record>
    static bool IsOfKey(const Record& record, const void* key, std::size_t keySize) {
        const auto* wanted = static_cast<const char*>(key);
        const auto* found = reinterpret_cast<const char*>(&record);
        const std::size_t from = *wanted ? 0 : sizeof(ExchangeKey::sign);
        return std::memcmp(found + from, wanted + from, keySize - from) == 0;
    }
    template <typename Record>
    void AddMatching(IDataContainer* list, const std::vector<Record*>& records, const void* key,
                     std::size_t keySize) {
        Asked();
        for (Record* record : records) {
            if (!record || IsOfKey(*record, key, keySize)) {
                list->Add(record);
            }
        }
    }
    template <typename Record, typename Matches>
    Record* Find(const std::vector<Record*>& records, Matches matches) {
        Asked();
        for (Record* record : records) {
            if (record && matches(*record)) {
                return record;
            }
        }
        return nullptr;
    }
    template <typename Record>
    Record* FindKey(const std::vector<Record*>& records, const void* key, std::size_t keySize) {
        return Find(records, [&](const Record& record) { return IsOfKey(record, key, keySize); });
    }
};
