#include "probe/record_checks.h"

#include "probe/host_watch.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace {

// A list that is not the same when it is read again at once. Records are compared by their place: the module
// reads them there.
template <typename Record, typename Read>
std::vector<const Record*> ReadTwice(const Subject& subject, const char* place, Read read) {
    const std::vector<const Record*> first = read();
    const std::vector<const Record*> second = read();
    if (first != second) {
        subject.findings.Add(Kind::kUnsteadyList, place,
                             std::to_string(first.size()) + " records, then " +
                                 std::to_string(second.size()) + ", not the same ones");
    }
    return second;
}

void NeedSome(const Subject& subject, const char* place, std::size_t count) {
    if (count == 0) {
        subject.findings.Add(Kind::kEmptyList, place, "no records");
    }
}

struct Configurations {
    std::vector<ServerConfigRecord> rows;
    bool any = false;
};

// The configuration table, asked as the access layer asks, with its answers looked at.
Configurations CheckConfigurations(const Subject& subject, ISysConfig* config) {
    Findings& findings = subject.findings;
    CallWatch watch(findings, nullptr);
    if (!config) {
        return {};
    }
    IConfigTable* table = watch.Watch("GetConfigTable", [&] { return config->GetConfigTable(); });
    if (!table) {
        findings.Add(Kind::kNoServerConfigurations, "GetConfigTable", "no table");
        return {};
    }
    ConfigQuery query{kConfigTradeServers, 0, nullptr};
    watch.Watch("Query", [&] { return table->Query(&query); });
    if (query.count == 0) {
        findings.Add(Kind::kNoServerConfigurations, "Query", "no rows");
        return {};
    }
    const bool readable = query.count <= 4096 && query.records &&
                          Readable(query.records, query.count * sizeof(ServerConfigRecord));
    if (!readable) {
        findings.Add(Kind::kBadConfiguration, "Query",
                     std::to_string(query.count) + " rows without that many records");
    }
    watch.Watch("Release", [&] { table->Release(&query); });
    Configurations configurations;
    if (readable) {
        configurations.rows = TradeData(nullptr, config).ServerConfigs();
    }
    for (const ServerConfigRecord& row : configurations.rows) {
        CheckText(findings, row.name, Text::kName, "ServerConfigRecord.name");
        CheckText(findings, row.address, Text::kCode, "ServerConfigRecord.address");
    }
    configurations.any = true;
    return configurations;
}

void CheckGroup(const Subject& subject, const UserRecord& user, std::size_t& usable) {
    if (!user.group) {
        subject.findings.Add(Kind::kAccountWithoutGroup, "UserRecord.group", user.accountNo.Str());
        return;
    }
    if (!Readable(user.group, sizeof(GroupRecord))) {
        subject.findings.Add(Kind::kUnreadableRecord, "UserRecord.group", user.accountNo.Str());
        return;
    }
    CheckText(subject.findings, user.group->sign, Text::kCodeOrEmpty, "GroupRecord.sign");
    CheckText(subject.findings, user.group->operatorNo, Text::kCodeOrEmpty, "GroupRecord.operatorNo");
    if (user.group->sign.View() != user.sign.View()) {
        subject.findings.Add(
            Kind::kForeignRecord, "UserRecord.group",
            user.accountNo.Str() + " of " + user.sign.Str() + " in a group of " + user.group->sign.Str());
    }
    usable += IsTradable(&user) ? 1 : 0;
}

void CheckServer(const Subject& subject, const UserRecord& user, const Configurations& configurations) {
    auto* owned = const_cast<UserRecord*>(&user);  // only handed back to its owner
    const ServerRecord* server = subject.api.GetUserServer(user.serverKey.Str().c_str(), owned);
    if (!server) {
        subject.findings.Add(Kind::kAccountWithoutServer, "GetUserServer",
                             user.accountNo.Str() + " at server " + user.serverKey.Str());
        return;
    }
    CheckText(subject.findings, server->address, Text::kCode, "ServerRecord.address");
    if (configurations.any && !subject.data.ServerOf(user, configurations.rows)) {
        subject.findings.Add(Kind::kServerNotConfigured, "GetUserServer",
                             server->address.Str() + " port " + std::to_string(server->port));
    }
}

}  // namespace

bool Subject::OutOfTime(const char* place) const {
    if (static_cast<int>(GetTickCount() - until) < 0) {
        return false;
    }
    findings.Add(Kind::kTooMuch, place, "looking ended here");
    return true;
}

void CheckText(Findings& findings, std::string_view field, std::size_t width, Text kind, const char* place) {
    if (field.size() == width) {
        findings.Add(Kind::kUnterminatedText, place, std::string(field));
        return;
    }
    const bool printable =
        std::all_of(field.begin(), field.end(), [](char c) { return c > ' ' && c <= '~'; });
    if ((kind != Text::kName && !printable) || (kind == Text::kCode && field.empty())) {
        findings.Add(Kind::kBadCode, place, field.empty() ? "empty" : std::string(field));
    }
}

std::string NameOf(const CommodityKey& key) {
    return key.sign.Str() + ' ' + key.exchangeNo.Str() + ' ' + key.commodityType + ' ' +
           key.commodityNo.Str();
}

std::string NameOf(const ContractKey& key) {
    const auto leg = [](const auto& contractNo, char optionType, const auto& strike) {
        return strike.Empty() ? contractNo.Str() : contractNo.Str() + ' ' + optionType + strike.Str();
    };
    const std::string name =
        NameOf(CommodityOf(key)) + ' ' + leg(key.contractNo, key.optionType, key.strikePrice);
    return key.contractNo2.Empty() && key.strikePrice2.Empty()
               ? name
               : name + '/' + leg(key.contractNo2, key.optionType2, key.strikePrice2);
}

std::string CheckAccounts(const Subject& subject, ISysConfig* config) {
    Findings& findings = subject.findings;
    const Configurations configurations = CheckConfigurations(subject, config);
    const auto users = ReadTwice<UserRecord>(subject, "GetUsers", [&] { return subject.data.Users(""); });
    NeedSome(subject, "GetUsers", users.size());
    std::size_t usable = 0;
    std::set<std::string> signs;
    for (const UserRecord* user : users) {
        if (subject.OutOfTime("UserRecord")) {
            break;
        }
        CheckText(findings, user->sign, Text::kCodeOrEmpty, "UserRecord.sign");
        CheckText(findings, user->serverKey, Text::kCodeOrEmpty, "UserRecord.serverKey");
        CheckText(findings, user->accountNo, Text::kCode, "UserRecord.accountNo");
        CheckText(findings, user->accountName, Text::kName, "UserRecord.accountName");
        CheckGroup(subject, *user, usable);
        CheckServer(subject, *user, configurations);
        const UserRecord* again = subject.data.User(user->accountNo.Str(), user->sign.Str());
        if (!again) {
            findings.Add(Kind::kNotFoundAgain, "GetUser", user->accountNo.Str() + " of " + user->sign.Str());
        } else {
            CheckText(findings, again->accountNo, Text::kCode, "GetUser: UserRecord.accountNo");
            if (again->accountNo.View() != user->accountNo.View()) {
                findings.Add(Kind::kForeignRecord, "GetUser",
                             "asked for " + user->accountNo.Str() + ", got " + again->accountNo.Str());
            }
        }
        signs.insert(user->sign.Str());
    }
    if (!users.empty() && usable == 0) {
        findings.Add(Kind::kNoAccountUsable, "UserRecord.group", "no account has a group that may trade");
    }
    for (const std::string& sign : signs) {
        for (const UserRecord* user : subject.data.Users(sign)) {
            if (!sign.empty() && user->sign.View() != sign) {
                findings.Add(Kind::kForeignRecord, "GetUsers",
                             user->accountNo.Str() + " is not of the sign " + sign);
            }
        }
    }
    return std::to_string(users.size()) + " accounts under " + std::to_string(signs.size()) + " signs, " +
           std::to_string(configurations.rows.size()) + " server configurations";
}

std::string CheckCodedLists(const Subject& subject) {
    Findings& findings = subject.findings;
    const auto uppers = ReadTwice<UpperRecord>(subject, "GetUppers", [&] { return subject.data.Uppers(""); });
    NeedSome(subject, "GetUppers", uppers.size());
    for (const UpperRecord* upper : uppers) {
        CheckText(findings, upper->sign, Text::kCodeOrEmpty, "UpperRecord.sign");
        CheckText(findings, upper->upperNo, Text::kCode, "UpperRecord.upperNo");
        CheckText(findings, upper->upperName, Text::kName, "UpperRecord.upperName");
    }
    const auto currencies =
        ReadTwice<CurrencyRecord>(subject, "GetCurrencies", [&] { return subject.data.Currencies(""); });
    NeedSome(subject, "GetCurrencies", currencies.size());
    for (const CurrencyRecord* currency : currencies) {
        CheckText(findings, currency->sign, Text::kCodeOrEmpty, "CurrencyRecord.sign");
        CheckText(findings, currency->currencyNo, Text::kCode, "CurrencyRecord.currencyNo");
        CheckText(findings, currency->currencyName, Text::kName, "CurrencyRecord.currencyName");
    }
    const std::uint32_t signs = subject.data.SignEntryCount("");
    NeedSome(subject, "ListSignEntries", signs);
    return std::to_string(uppers.size()) + " uppers, " + std::to_string(currencies.size()) + " currencies, " +
           std::to_string(signs) + " signs";
}

void CheckPosition(Findings& findings, const PositionRecord& position, const char* place) {
    CheckText(findings, position.accountNo, Text::kCode, "PositionRecord.accountNo");
    CheckLegTexts(findings, position.key, "PositionRecord.key");
    if ((position.direction != 'B' && position.direction != 'S') || !std::isfinite(position.price)) {
        findings.Add(Kind::kBadPosition, place,
                     position.accountNo.Str() + ": direction '" + position.direction + "', price " +
                         std::to_string(double{position.price}));
    }
}

std::string CheckPositions(const Subject& subject) {
    Findings& findings = subject.findings;
    const std::vector<const PositionRecord*> positions = subject.data.Positions("");
    struct Open {
        const PositionRecord* position;
        TradeData::Quantities sum;
    };
    std::map<std::string, Open> lines;  // by account and contract
    for (const PositionRecord* position : positions) {
        if (subject.OutOfTime("PositionRecord")) {
            break;
        }
        CheckPosition(findings, *position, "GetPositions");
        ContractKey key{};
        std::memcpy(&key, &position->key, sizeof position->key);
        const std::string name = position->accountNo.Str() + ' ' + NameOf(key);
        if (!subject.data.User(position->accountNo.Str(), position->key.sign.Str())) {
            findings.Add(Kind::kNotFoundAgain, "PositionRecord.accountNo", name);
        }
        if (!subject.data.Commodity(CommodityOf(key))) {
            findings.Add(Kind::kNotFoundAgain, "PositionRecord.key", name);
        }
        const std::string price = subject.data.FormatPrice(position, position->price);
        if (position->openQty > 0 &&
            !subject.data.Position(position->accountNo.Str(), key, position->direction, price)) {
            findings.Add(Kind::kNotFoundAgain, "GetPosition", name + ' ' + position->direction + ' ' + price);
        }
        Open& open = lines[name];
        open.position = position;
        (position->direction == 'B' ? open.sum.longQty : open.sum.shortQty) += position->openQty;
    }
    for (const auto& [name, open] : lines) {
        const TradeData::Quantities told =
            subject.data.PositionQty(open.position->accountNo.Str(), open.position->key);
        if (told.longQty != open.sum.longQty || told.shortQty != open.sum.shortQty) {
            findings.Add(Kind::kQuantitiesDiffer, "GetPositionQty",
                         name + ": told " + std::to_string(told.longQty) + " and " +
                             std::to_string(told.shortQty) + ", listed " + std::to_string(open.sum.longQty) +
                             " and " + std::to_string(open.sum.shortQty));
        }
    }
    return std::to_string(positions.size()) + " positions";
}
