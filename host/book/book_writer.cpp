#include "book/book_file.h"
#include "book/contract_part.h"
#include "book/host_text.h"
#include "book/record_json.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

namespace {

std::string Code(char code) {
    return code == 0 ? std::string() : std::string(1, code);
}

void PutSigns(Json& object, const std::vector<std::string>& signs) {
    if (signs.size() == 1) {
        object["sign"] = signs.front();
    } else {
        object["signs"] = signs;
    }
}

Json CommodityToJson(const Book& book, const Entry<CommodityRecord>& entry) {
    const CommodityRecord& commodity = entry.record;
    Json object = {{"commodityType", Code(commodity.commodityType)},
                   {"commodityNo", commodity.commodityNo.Str()},
                   {"name", entry.name},
                   {"tickNumerator", commodity.tickNumerator + 0},
                   {"tickDenominator", commodity.tickDenominator + 0},
                   {"legOrder", Code(commodity.legOrder)}};
    if (commodity.rollingCode) {
        object["rollingCode"] = Code(commodity.rollingCode);
    }
    const auto putRelated = [&](const char* name, const FixedText<11>& exchangeNo, char type,
                                const FixedText<11>& commodityNo) {
        if (!commodityNo.Empty()) {
            object[name] = {{"exchangeNo", exchangeNo.Str()},
                            {"commodityType", Code(type)},
                            {"commodityNo", commodityNo.Str()}};
        }
    };
    putRelated("related", commodity.relatedExchangeNo, commodity.relatedCommodityType,
               commodity.relatedCommodityNo);
    putRelated("second", commodity.secondExchangeNo, commodity.secondCommodityType,
               commodity.secondCommodityNo);
    Json& contracts = object["contracts"] = Json::array();
    for (const Entry<ContractRecord>* contract : book.catalogue.ContractsOf(CommodityOf(commodity))) {
        const std::string part = ContractPart(contract->record.key);
        if (contract->name.empty()) {
            contracts.push_back(part);
        } else {
            contracts.push_back({{"contract", part}, {"name", contract->name}});
        }
    }
    return object;
}

Json ExchangesToJson(const Book& book) {
    Json list = Json::array();
    for (const Entry<ExchangeRecord>& entry : book.catalogue.exchanges) {
        if (entry.signs.empty()) {
            continue;
        }
        Json& object = list.emplace_back();
        PutSigns(object, entry.signs);
        object["exchangeNo"] = entry.record.exchangeNo.Str();
        object["name"] = entry.name;
        object["forwardMarket"] = entry.record.forwardMarket != 0;
        Json& commodities = object["commodities"] = Json::array();
        for (const auto* commodity :
             book.catalogue.CommoditiesOf({entry.record.sign, entry.record.exchangeNo})) {
            commodities.push_back(CommodityToJson(book, *commodity));
        }
    }
    return list;
}

void PutPeople(Json& root, const Catalogue& catalogue) {
    Json& signs = root["signs"] = Json::array();
    for (const SignRecord& sign : catalogue.signs) {
        signs.push_back({{"sign", sign.sign.Str()}, {"threeMonthNo", sign.threeMonthNo}});
    }
    Json& servers = root["servers"] = Json::array();
    for (const Entry<ServerRecord>& server : catalogue.servers) {
        servers.push_back({{"serverKey", server.name},
                           {"address", server.record.address.Str()},
                           {"port", server.record.port + 0}});
    }
    Json& configs = root["serverConfigs"] = Json::array();
    for (const Entry<ServerConfigRecord>& config : catalogue.serverConfigs) {
        configs.push_back({{"name", config.name},
                           {"address", config.record.address.Str()},
                           {"port", config.record.port + 0}});
    }
    Json& groups = root["groups"] = Json::array();
    std::unordered_map<const GroupRecord*, std::string> groupIds;
    for (const Entry<GroupRecord>& group : catalogue.groups) {
        groupIds[&group.record] = group.name;
        groups.push_back({{"id", group.name},
                          {"sign", group.record.sign.Str()},
                          {"operatorNo", group.record.operatorNo.Str()},
                          {"accountLock", Code(group.record.accountLock)},
                          {"tradable", group.record.tradable == 'Y'}});
    }
    Json& accounts = root["accounts"] = Json::array();
    for (const Entry<UserRecord>& account : catalogue.accounts) {
        Json& object = accounts.emplace_back(Json{{"sign", account.record.sign.Str()},
                                                  {"accountNo", account.record.accountNo.Str()},
                                                  {"name", account.name},
                                                  {"serverKey", account.record.serverKey.Str()}});
        if (GroupRecord* group = account.record.group) {
            object["group"] = groupIds[group];
        }
    }
}

template <typename Record, std::size_t Width>
Json SharedToJson(const std::deque<Entry<Record>>& entries, const char* codeName,
                  FixedText<Width> Record::*code) {
    Json list = Json::array();
    for (const Entry<Record>& entry : entries) {
        if (!entry.signs.empty()) {
            Json& object = list.emplace_back();
            PutSigns(object, entry.signs);
            object[codeName] = (entry.record.*code).Str();
            object["name"] = entry.name;
        }
    }
    return list;
}

// Part of the contract, which the file names in one text.
bool BelongsToContract(const RecordField& field) {
    static constexpr std::string_view kNames[] = {"exchangeNo",  "commodityType", "commodityNo",
                                                  "contractNo",  "strikePrice",   "optionType",
                                                  "contractNo2", "strikePrice2",  "optionType2"};
    return std::find(std::begin(kNames), std::end(kNames), field.name) != std::end(kNames);
}

// The fields of a record that are not 0, without its contract and pointers.
Json FieldsToJson(const RecordLayout& layout, const void* record) {
    Json object = Json::object();
    for (const RecordField& field : layout.fields) {
        const auto* bytes = static_cast<const unsigned char*>(record) + field.offset;
        if (field.kind != FieldKind::kPointer && !BelongsToContract(field) &&
            std::any_of(bytes, bytes + field.width, [](unsigned char byte) { return byte != 0; })) {
            object[std::string(field.name)] = FieldToJson(field, record);
        }
    }
    return object;
}

void PutLedger(Json& root, const Ledger& ledger) {
    Json& positions = root["positions"] = Json::array();
    for (const OpeningPosition& opening : ledger.AllPositions().Openings()) {
        const LineKey& key = opening.key;
        positions.push_back({{"sign", key.sign.Str()},
                             {"accountNo", key.accountNo.Str()},
                             {"upperNo", opening.upperNo},
                             {"contract", ContractName(LegOf(key))},
                             {"direction", Code(opening.direction)},
                             {"price", opening.price},
                             {"openQty", opening.qty}});
    }
    Json& orders = root["orders"] = Json::array();
    for (const OrderEntry& order : ledger.Orders()) {
        Json& object = orders.emplace_back(FieldsToJson(OrderLayout(), &order.record));
        object["contract"] = ContractName(order.record.key);
        if (order.record.orderType == '5') {
            object["underlying"] = ContractName(order.record.contract->key);
        }
        object["restState"] = Code(order.restState);
        object["madeFromFill"] = order.madeFromFill;
    }
    Json& fills = root["fills"] = Json::array();
    for (const FillEntry* fill : ledger.Fills()) {
        Json& object = fills.emplace_back(FieldsToJson(FillLayout(), &fill->record));
        object["contract"] = ContractName(fill->record.key);
        object["bookedContractNo"] = fill->bookedLeg.contractNo.Str();
        object["orderNo"] = fill->order->record.orderNo + 0;
        object["sequence"] = fill->sequence;
    }
    root["nextNumbers"] = {{"order", ledger.Numbers().order},
                           {"fill", ledger.Numbers().fill},
                           {"sequence", ledger.Numbers().sequence}};
}

}  // namespace

std::string BookText(const Book& book) {
    Json root = {{"format", "emendo-book-1"}};
    PutPeople(root, book.catalogue);
    root["uppers"] = SharedToJson(book.catalogue.uppers, "upperNo", &UpperRecord::upperNo);
    root["currencies"] = SharedToJson(book.catalogue.currencies, "currencyNo", &CurrencyRecord::currencyNo);
    root["exchanges"] = ExchangesToJson(book);
    PutLedger(root, book.ledger);
    return JsonText(root, 1) + '\n';
}

void WriteBookFile(const Book& book, const std::string& path) {
    if (const std::string reason = WriteWholeFile(path, BookText(book)); !reason.empty()) {
        throw BookFileError(path, "/", reason);
    }
}
