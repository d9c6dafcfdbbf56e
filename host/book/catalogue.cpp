#include "book/catalogue.h"

#include "book/contract_part.h"
#include "book/host_text.h"

#include <stdexcept>

namespace {

std::string_view Bytes(const void* record, std::size_t from, std::size_t to) {
    return {static_cast<const char*>(record) + from, to - from};
}

// Enters a record under its key with sign, which must be new, and under the key without, which the first
// record keeps.
template <typename Map, typename Value>
void Enter(Map& map, std::string_view keyBytes, Value value, const std::string& what) {
    if (!map.emplace(keyBytes, value).second) {
        throw std::invalid_argument(what + " is declared twice");
    }
    map.emplace(keyBytes.substr(sizeof(FixedText<21>)), value);
}

// What stands under a key; null when nothing does. A key without sign means any.
template <typename Map, typename Key>
const typename Map::mapped_type* Find(const Map& map, const Key& rawKey) {
    const Key key = TidyKey(rawKey);
    const auto found = map.find(key.sign.Empty() ? UnsignedBytes(key) : SignedBytes(key));
    return found == map.end() ? nullptr : &found->second;
}

template <typename Map, typename Key>
const typename Map::mapped_type& ListOf(const Map& map, const Key& key) {
    static const typename Map::mapped_type none;
    const auto* found = Find(map, key);
    return found ? *found : none;
}

// Null when none of the entries has that number.
template <typename Record, std::size_t Width>
Record* FindNumber(const std::vector<Entry<Record>*>& entries, FixedText<Width> Record::*number,
                   std::string_view wanted) {
    for (Entry<Record>* entry : entries) {  // a few dozen
        if ((entry->record.*number).View() == wanted) {
            return &entry->record;
        }
    }
    return nullptr;
}

[[noreturn]] void Refuse(const char* what, std::string_view name, const char* why) {
    throw std::invalid_argument(what + (" '" + std::string(name)) + "' " + why);
}

template <typename Record>
Entry<Record>& Append(std::deque<Entry<Record>>& entries, const Record& record, std::string_view name,
                      std::vector<std::string> signs = {}) {
    return entries.emplace_back(Entry<Record>{record, std::string(name), std::move(signs)});
}

CommodityKey RelatedOf(const CommodityRecord& commodity) {
    return {commodity.sign, commodity.relatedExchangeNo, commodity.relatedCommodityType,
            commodity.relatedCommodityNo};
}

CommodityKey SecondOf(const CommodityRecord& commodity) {
    return {commodity.sign, commodity.secondExchangeNo, commodity.secondCommodityType,
            commodity.secondCommodityNo};
}

}  // namespace

void Catalogue::CheckSign(std::string_view sign) const {
    if (!FindSign(sign)) {
        Refuse("sign", sign, "is not declared");
    }
}

void Catalogue::AddSign(std::string_view sign, std::string_view threeMonthNo) {
    if (sign.empty() || FindSign(sign)) {
        Refuse("sign", sign, "is empty or declared twice");
    }
    SignRecord& record = signs.emplace_back();
    record.sign.Set(sign);
    record.threeMonthNo = threeMonthNo.empty() ? "3M" : std::string(threeMonthNo);
}

void Catalogue::AddServer(const ServerRecord& server, std::string_view key) {
    if (m_servers.contains(key)) {
        Refuse("server", key, "is declared twice");
    }
    Entry<ServerRecord>& entry = Append(servers, server, key);
    m_servers.emplace(entry.name, &entry.record);
}

void Catalogue::AddServerConfig(const ServerConfigRecord& config, std::string_view name) {
    SetName(Append(serverConfigs, config, name).record.name, name);
}

GroupRecord& Catalogue::AddGroup(const GroupRecord& group, std::string_view id) {
    CheckSign(group.sign.View());
    if (m_groups.contains(id)) {
        Refuse("group", id, "is declared twice");
    }
    Entry<GroupRecord>& entry = Append(groups, group, id);
    m_groups.emplace(entry.name, &entry.record);
    return entry.record;
}

void Catalogue::AddAccount(const UserRecord& account, std::string_view name, std::string_view groupId) {
    GroupRecord* group = nullptr;
    if (!groupId.empty()) {
        const auto found = m_groups.find(groupId);
        if (found == m_groups.end()) {
            Refuse("group", groupId, "is not declared");
        }
        group = found->second;
        if (group->sign.View() != account.sign.View()) {
            Refuse("group", groupId, "has another sign");
        }
    }
    CheckSign(account.sign.View());
    if (!m_servers.contains(account.serverKey.View())) {
        Refuse("server", account.serverKey.View(), "is not declared");
    }
    UserRecord* known = FindAccount(account.accountNo.View(), account.sign.View());
    if (account.accountNo.Empty() || known) {
        Refuse("account", account.accountNo.View(), "is empty or declared twice");
    }
    Entry<UserRecord>& entry = Append(accounts, account, name);
    SetName(entry.record.accountName, name);
    entry.record.group = group;
    m_accounts[entry.record.accountNo.View()].push_back(&entry.record);
    accountsBySign.Add(account.sign.View(), &entry);
}

void Catalogue::AddUpper(const UpperRecord& upper, std::string_view name,
                         std::vector<std::string> signsOfIt) {
    CheckSign(upper.sign.View());
    if (FindUpper(upper.upperNo.View(), upper.sign.View())) {
        Refuse("upper", upper.upperNo.View(), "is declared twice");
    }
    Entry<UpperRecord>& entry = Append(uppers, upper, name, std::move(signsOfIt));
    SetName(entry.record.upperName, name);
    uppersBySign.Add(upper.sign.View(), &entry);
}

void Catalogue::AddCurrency(const CurrencyRecord& currency, std::string_view name,
                            std::vector<std::string> signsOfIt) {
    CheckSign(currency.sign.View());
    if (FindCurrency(currency.currencyNo.View(), currency.sign.View())) {
        Refuse("currency", currency.currencyNo.View(), "is declared twice");
    }
    Entry<CurrencyRecord>& entry = Append(currencies, currency, name, std::move(signsOfIt));
    SetName(entry.record.currencyName, name);
    currenciesBySign.Add(currency.sign.View(), &entry);
}

void Catalogue::AddExchange(const ExchangeRecord& exchange, std::string_view name,
                            std::vector<std::string> signsOfIt) {
    CheckSign(exchange.sign.View());
    Entry<ExchangeRecord>& entry = Append(exchanges, exchange, name, std::move(signsOfIt));
    SetName(entry.record.exchangeName, name);
    Enter(m_exchanges, Bytes(&entry.record, 0, sizeof(ExchangeKey)), &entry,
          "exchange '" + exchange.exchangeNo.Str() + "'");
    exchangesBySign.Add(exchange.sign.View(), &entry);
}

CommodityRecord& Catalogue::AddCommodity(const CommodityRecord& commodity, std::string_view name) {
    const std::string what = "commodity '" + commodity.commodityNo.Str() + "'";
    if (!FindExchange({commodity.sign, commodity.exchangeNo})) {
        Refuse("exchange", commodity.exchangeNo.View(), "is not declared");
    }
    if (!IsKnownCommodityType(commodity.commodityType)) {
        throw std::invalid_argument(what + " has an unknown type");
    }
    if (!(commodity.tickNumerator > 0) || commodity.tickDenominator < 1) {
        throw std::invalid_argument(what + " needs a tick above 0 and a denominator of 1 or more");
    }
    Entry<CommodityRecord>& entry = Append(commodities, commodity, name);
    SetName(entry.record.commodityName, name);
    Enter(m_commodities, Bytes(&entry.record, 0, sizeof(CommodityKey)), &entry, what);
    for (std::size_t from : {std::size_t{0}, sizeof(FixedText<21>)}) {
        m_commoditiesOf[Bytes(&entry.record, from, sizeof(ExchangeKey))].push_back(&entry);
    }
    return entry.record;
}

void Catalogue::AddContract(const ContractKey& rawKey, std::string_view name) {
    const ContractKey key = TidyKey(rawKey);
    const auto* found = Find(m_commodities, CommodityOf(key));
    if (!found) {
        Refuse("commodity", key.commodityNo.View(), "is not declared");
    }
    Entry<CommodityRecord>& commodity = **found;
    Entry<ContractRecord>& entry = Append(contracts, {key, {}, &commodity.record}, name);
    SetName(entry.record.contractName, name.empty() ? commodity.name + ' ' + ContractPart(key) : entry.name);
    Enter(m_contracts, Bytes(&entry.record, 0, sizeof(ContractKey)), &entry.record,
          "contract '" + ContractName(key) + "'");
    for (std::size_t from : {std::size_t{0}, sizeof(FixedText<21>)}) {
        m_contractsOf[Bytes(&entry.record, from, sizeof(CommodityKey))].push_back(&entry);
    }
    m_contractAddresses.insert(&entry.record);
}

std::string Catalogue::CheckRelations() const {
    for (const Entry<CommodityRecord>& entry : commodities) {
        const CommodityRecord& commodity = entry.record;
        const bool twoLegs = HasTwoLegs(commodity.commodityType);
        const bool needsRelated = twoLegs || commodity.commodityType == CommodityType::kOption;
        if (needsRelated && !FindCommodity(RelatedOf(commodity))) {
            return "commodity '" + commodity.commodityNo.Str() + "' names a first leg or underlying '" +
                   commodity.relatedCommodityNo.Str() + "' that is not declared";
        }
        if (twoLegs && !FindCommodity(SecondOf(commodity))) {
            return "commodity '" + commodity.commodityNo.Str() + "' names a second leg '" +
                   commodity.secondCommodityNo.Str() + "' that is not declared";
        }
    }
    return {};
}

const SignRecord* Catalogue::FindSign(std::string_view sign) const {
    for (const SignRecord& record : signs) {  // a handful
        if (sign.empty() || record.sign.View() == sign) {
            return &record;
        }
    }
    return nullptr;
}

ServerRecord* Catalogue::FindServer(std::string_view key) const {
    const auto found = m_servers.find(key);
    return found == m_servers.end() ? nullptr : found->second;
}

UserRecord* Catalogue::FindAccount(std::string_view accountNo, std::string_view sign) const {
    const auto found = m_accounts.find(accountNo);
    if (found != m_accounts.end()) {
        for (UserRecord* account : found->second) {
            if (sign.empty() || account->sign.View() == sign) {
                return account;
            }
        }
    }
    return nullptr;
}

UpperRecord* Catalogue::FindUpper(std::string_view upperNo, std::string_view sign) const {
    return FindNumber(uppersBySign.Of(sign), &UpperRecord::upperNo, upperNo);
}

CurrencyRecord* Catalogue::FindCurrency(std::string_view currencyNo, std::string_view sign) const {
    return FindNumber(currenciesBySign.Of(sign), &CurrencyRecord::currencyNo, currencyNo);
}

ExchangeRecord* Catalogue::FindExchange(const ExchangeKey& key) const {
    const auto* found = Find(m_exchanges, key);
    return found ? &(*found)->record : nullptr;
}

CommodityRecord* Catalogue::FindCommodity(const CommodityKey& key) const {
    const auto* found = Find(m_commodities, key);
    return found ? &(*found)->record : nullptr;
}

ContractRecord* Catalogue::FindContract(const ContractKey& key) const {
    const auto* found = Find(m_contracts, key);
    return found ? *found : nullptr;
}

bool Catalogue::Owns(const ContractRecord* contract) const {
    return m_contractAddresses.contains(contract);
}

const std::vector<Entry<CommodityRecord>*>& Catalogue::CommoditiesOf(const ExchangeKey& key) const {
    return ListOf(m_commoditiesOf, key);
}

const std::vector<Entry<ContractRecord>*>& Catalogue::ContractsOf(const CommodityKey& key) const {
    return ListOf(m_contractsOf, key);
}
