#pragma once

#include "book/record_key.h"
#include "trade/host_records.h"

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

// A record that is handed out by address, with what the record itself cannot hold.
template <typename Record>
struct Entry {
    Record record;
    std::string name;  // UTF-8, uncut
    // The signs that the book file declares together; empty in the copies for all but the first of them.
    std::vector<std::string> signs;
};

// A sign and the prompt date that "3M" stands for under it.
struct SignRecord {
    FixedText<21> sign;
    std::string threeMonthNo;  // "3M" when the date is not known
};

// Entries of one kind in the order of the book, all of them or those of one sign. "" means all.
template <typename T>
class SignedList {
public:
    void Add(std::string_view sign, T* entry) {
        m_lists[std::string(sign)].push_back(entry);
        m_lists[std::string()].push_back(entry);
    }
    const std::vector<T*>& Of(std::string_view sign) const {
        static const std::vector<T*> none;
        const auto found = m_lists.find(std::string(sign));
        return found == m_lists.end() ? none : found->second;
    }

private:
    std::unordered_map<std::string, std::vector<T*>> m_lists;
};

// What a trade server knows before the first order: signs, servers, accounts, uppers, currencies, exchanges,
// commodities, contracts. Records keep their address while the catalogue lives. Every look-up costs the same
// in a large book; a key without sign finds the first record under any sign.
class Catalogue {
public:
    Catalogue() = default;
    Catalogue(const Catalogue&) = delete;
    Catalogue& operator=(const Catalogue&) = delete;

    // Each throws std::invalid_argument with the reason when the record is a duplicate or refers to something
    // that is not there. Texts of records must be terminated.
    void AddSign(std::string_view sign, std::string_view threeMonthNo);
    void AddServer(const ServerRecord& server, std::string_view key);
    void AddServerConfig(const ServerConfigRecord& config, std::string_view name);
    GroupRecord& AddGroup(const GroupRecord& group, std::string_view id);
    void AddAccount(const UserRecord& account, std::string_view name, std::string_view groupId);
    void AddUpper(const UpperRecord& upper, std::string_view name, std::vector<std::string> signs);
    void AddCurrency(const CurrencyRecord& currency, std::string_view name, std::vector<std::string> signs);
    void AddExchange(const ExchangeRecord& exchange, std::string_view name, std::vector<std::string> signs);
    CommodityRecord& AddCommodity(const CommodityRecord& commodity, std::string_view name);
    // Without a name the contract gets its commodity's with the contract part behind it.
    void AddContract(const ContractKey& key, std::string_view name);
    // Checks what could not be checked while records were still missing: the legs of two-leg commodities and
    // the underlyings of options. Returns the reason of the first fault, empty when all is well.
    std::string CheckRelations() const;

    // Look-ups; null when not found.
    const SignRecord* FindSign(std::string_view sign) const;
    ServerRecord* FindServer(std::string_view key) const;
    UserRecord* FindAccount(std::string_view accountNo, std::string_view sign) const;
    UpperRecord* FindUpper(std::string_view upperNo, std::string_view sign) const;
    CurrencyRecord* FindCurrency(std::string_view currencyNo, std::string_view sign) const;
    ExchangeRecord* FindExchange(const ExchangeKey& key) const;
    CommodityRecord* FindCommodity(const CommodityKey& key) const;
    ContractRecord* FindContract(const ContractKey& key) const;
    // True when the pointer is a contract of this catalogue; it is not read.
    bool Owns(const ContractRecord* contract) const;

    const std::vector<Entry<CommodityRecord>*>& CommoditiesOf(const ExchangeKey& key) const;
    const std::vector<Entry<ContractRecord>*>& ContractsOf(const CommodityKey& key) const;

    // Everything, in the order of the book.
    std::deque<SignRecord> signs;
    std::deque<Entry<ServerRecord>> servers;
    std::deque<Entry<ServerConfigRecord>> serverConfigs;
    std::deque<Entry<GroupRecord>> groups;  // name: the group's id in the book file
    std::deque<Entry<UserRecord>> accounts;
    std::deque<Entry<UpperRecord>> uppers;
    std::deque<Entry<CurrencyRecord>> currencies;
    std::deque<Entry<ExchangeRecord>> exchanges;
    std::deque<Entry<CommodityRecord>> commodities;
    std::deque<Entry<ContractRecord>> contracts;

    SignedList<Entry<UserRecord>> accountsBySign;
    SignedList<Entry<UpperRecord>> uppersBySign;
    SignedList<Entry<CurrencyRecord>> currenciesBySign;
    SignedList<Entry<ExchangeRecord>> exchangesBySign;

private:
    // Keys are views of the records' own bytes: nothing is stored twice.
    template <typename T>
    using ByBytes = std::unordered_map<std::string_view, T>;

    void CheckSign(std::string_view sign) const;

    ByBytes<ServerRecord*> m_servers;
    ByBytes<GroupRecord*> m_groups;
    ByBytes<std::vector<UserRecord*>> m_accounts;  // by account number, one a sign
    ByBytes<Entry<ExchangeRecord>*> m_exchanges;
    ByBytes<Entry<CommodityRecord>*> m_commodities;
    ByBytes<ContractRecord*> m_contracts;
    ByBytes<std::vector<Entry<CommodityRecord>*>> m_commoditiesOf;
    ByBytes<std::vector<Entry<ContractRecord>*>> m_contractsOf;
    std::unordered_set<const ContractRecord*> m_contractAddresses;
};
