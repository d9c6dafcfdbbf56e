#include "book/book_file.h"

#include "book/book_node.h"
#include "book/contract_part.h"
#include "book/host_text.h"
#include "book/record_json.h"

namespace {

constexpr std::string_view kFormat = "emendo-book-1";

// The first of the signs keeps them all, for the way back into the file.
std::vector<std::string> Kept(const std::vector<std::string>& signs, const std::string& sign) {
    return sign == signs.front() ? signs : std::vector<std::string>();
}

void ReadRelated(const BookNode& node, const char* name, FixedText<11>& exchangeNo, char& type,
                 FixedText<11>& commodityNo) {
    if (!node.Has(name)) {
        return;
    }
    const BookNode related = node.Member(name);
    related.Only({"exchangeNo", "commodityType", "commodityNo"});
    if (related.Has("exchangeNo")) {
        related.Code("exchangeNo", exchangeNo);
    }
    type = related.Code("commodityType", 0);
    related.Code("commodityNo", commodityNo);
}

void ReadContract(Catalogue& catalogue, const CommodityRecord& commodity, const BookNode& node) {
    const bool named = node.Value().is_object();
    if (named) {
        node.Only({"contract", "name"});
    }
    const std::string part = named ? node.Text("contract") : node.Text();
    ContractKey key{};
    key.sign = commodity.sign;
    key.exchangeNo = commodity.exchangeNo;
    key.commodityType = commodity.commodityType;
    key.commodityNo = commodity.commodityNo;
    if (!ReadContractPart(commodity.commodityType, part, key)) {
        node.Refuse("'" + part + "' is no contract of commodity type '" + commodity.commodityType + "'");
    }
    catalogue.AddContract(key, named ? node.Text("name", "") : "");
}

void ReadCommodity(Catalogue& catalogue, const ExchangeRecord& exchange, const BookNode& node) {
    node.Only({"commodityType", "commodityNo", "name", "tickNumerator", "tickDenominator", "legOrder",
               "rollingCode", "related", "second", "contracts"});
    CommodityRecord commodity{};
    commodity.sign = exchange.sign;
    commodity.exchangeNo = exchange.exchangeNo;
    commodity.commodityType = node.Code("commodityType", 0);
    node.Code("commodityNo", commodity.commodityNo);
    commodity.tickNumerator = node.Number("tickNumerator");
    commodity.tickDenominator = node.Has("tickDenominator") ? node.Whole("tickDenominator", 1, 1000000) : 1;
    commodity.legOrder = node.Code("legOrder", '0');
    commodity.rollingCode = node.Code("rollingCode", 0);
    commodity.relatedExchangeNo = commodity.secondExchangeNo = exchange.exchangeNo;
    ReadRelated(node, "related", commodity.relatedExchangeNo, commodity.relatedCommodityType,
                commodity.relatedCommodityNo);
    ReadRelated(node, "second", commodity.secondExchangeNo, commodity.secondCommodityType,
                commodity.secondCommodityNo);
    const CommodityRecord& added = catalogue.AddCommodity(commodity, node.Text("name"));
    node.Each("contracts", [&](const BookNode& contract) { ReadContract(catalogue, added, contract); });
}

void ReadExchange(Catalogue& catalogue, const BookNode& node) {
    node.Only({"sign", "signs", "exchangeNo", "name", "forwardMarket", "commodities"});
    const std::vector<std::string> signs = node.Signs();
    for (const std::string& sign : signs) {
        ExchangeRecord exchange{};
        exchange.sign.Set(sign);
        node.Code("exchangeNo", exchange.exchangeNo);
        exchange.forwardMarket = node.Flag("forwardMarket", false) ? 1 : 0;
        catalogue.AddExchange(exchange, node.Text("name"), Kept(signs, sign));
        node.Each("commodities",
                  [&](const BookNode& commodity) { ReadCommodity(catalogue, exchange, commodity); });
    }
}

void ReadServers(Catalogue& catalogue, const BookNode& root) {
    root.Each("servers", [&](const BookNode& node) {
        node.Only({"serverKey", "address", "port"});
        ServerRecord server{};
        FixedText<21> key{};
        node.Code("serverKey", key);
        node.Code("address", server.address);
        server.port = static_cast<std::uint16_t>(node.Whole("port", 1, 65535));
        catalogue.AddServer(server, key.View());
    });
    root.Each("serverConfigs", [&](const BookNode& node) {
        node.Only({"name", "address", "port"});
        ServerConfigRecord config{};
        node.Code("address", config.address);
        config.port = node.Whole("port", 1, 65535);
        catalogue.AddServerConfig(config, node.Text("name"));
    });
}

// Records of a number and a name, each under one sign or several.
template <typename Record, std::size_t Width, typename Add>
void ReadShared(const BookNode& root, const char* listName, const char* numberName,
                FixedText<Width> Record::*number, Add add) {
    root.Each(listName, [&](const BookNode& node) {
        node.Only({"sign", "signs", numberName, "name"});
        const std::vector<std::string> signs = node.Signs();
        for (const std::string& sign : signs) {
            Record record{};
            record.sign.Set(sign);
            node.Code(numberName, record.*number);
            add(record, node.Text("name"), Kept(signs, sign));
        }
    });
}

void ReadPeople(Catalogue& catalogue, const BookNode& root) {
    root.Each("groups", [&](const BookNode& node) {
        node.Only({"id", "sign", "operatorNo", "accountLock", "tradable"});
        GroupRecord group{};
        node.Code("sign", group.sign);
        node.Code("operatorNo", group.operatorNo);
        group.accountLock = node.Code("accountLock", 0);
        group.tradable = node.Flag("tradable", true) ? 'Y' : 'N';
        catalogue.AddGroup(group, node.Text("id"));
    });
    root.Each("accounts", [&](const BookNode& node) {
        node.Only({"sign", "accountNo", "name", "serverKey", "group"});
        UserRecord account{};
        node.Code("sign", account.sign);
        node.Code("serverKey", account.serverKey);
        node.Code("accountNo", account.accountNo);
        catalogue.AddAccount(account, node.Text("name"), node.Text("group", ""));
    });
    ReadShared(root, "uppers", "upperNo", &UpperRecord::upperNo,
               [&](const auto&... upper) { catalogue.AddUpper(upper...); });
    ReadShared(root, "currencies", "currencyNo", &CurrencyRecord::currencyNo,
               [&](const auto&... currency) { catalogue.AddCurrency(currency...); });
}

ContractKey ReadKey(const BookNode& node, const char* name, const std::string& sign) {
    ContractKey key{};
    key.sign.Set(sign);
    if (!ReadContractName(node.Text(name), key)) {
        node.Member(name).Refuse("must be exchange, type, commodity and contract");
    }
    return key;
}

void ReadPosition(Book& book, const BookNode& node) {
    node.Only({"sign", "accountNo", "upperNo", "contract", "direction", "price", "openQty"});
    OpeningPosition opening{};
    const std::string sign = node.Text("sign");
    const ContractKey key = ReadKey(node, "contract", sign);
    FixedText<21> accountNo{};
    FixedText<11> upperNo{};
    node.Code("accountNo", accountNo);
    node.Code("upperNo", upperNo);
    if (!book.catalogue.FindAccount(accountNo.View(), sign)) {
        node.Refuse("account '" + accountNo.Str() + "' is not declared");
    }
    if (!book.catalogue.FindUpper(upperNo.View(), sign)) {
        node.Refuse("upper '" + upperNo.Str() + "' is not declared");
    }
    if (HasTwoLegs(key.commodityType) || !book.catalogue.FindContract(key)) {
        node.Member("contract").Refuse("is not declared or has two legs");
    }
    opening.key = MakeLineKey(accountNo.View(), FirstLegOf(key));
    opening.upperNo = upperNo.Str();
    opening.direction = node.Code("direction", 0);
    opening.price = node.Number("price");
    opening.qty = node.Whole("openQty", 1, 0xFFFFFFFF);
    if (opening.direction != 'B' && opening.direction != 'S') {
        node.Member("direction").Refuse("must be B or S");
    }
    book.ledger.RestoreOpening(opening);
}

void ReadOrder(Book& book, const BookNode& node) {
    OrderRecord order{};
    RecordFromJson(OrderLayout(), node.Value(), &order,
                   {"contract", "underlying", "restState", "madeFromFill"});
    const std::string sign = order.key.sign.Str();
    order.key = ReadKey(node, "contract", sign);
    if (node.Has("underlying")) {
        order.contract = book.catalogue.FindContract(ReadKey(node, "underlying", sign));
    }
    if (order.orderType == '5' && !order.contract) {
        node.Refuse("an exercise needs an underlying that is declared");
    }
    book.ledger.RestoreOrder(order, node.Code("restState", '4'), node.Flag("madeFromFill", false));
}

void ReadFill(Book& book, const BookNode& node) {
    FillRecord fill{};
    RecordFromJson(FillLayout(), node.Value(), &fill,
                   {"contract", "orderNo", "sequence", "bookedContractNo"});
    const ContractKey key = ReadKey(node, "contract", fill.key.sign.Str());
    fill.key = FirstLegOf(key);
    const std::string contractNo = fill.key.contractNo.Str();
    const std::string booked = node.Text("bookedContractNo", contractNo.c_str());
    book.ledger.RestoreFill(fill, node.Whole("orderNo", 1, 0xFFFFFFFF), node.Whole("sequence", 1, 0xFFFFFFFF),
                            booked);
}

void ReadAll(Book& book, const BookNode& root) {
    if (!root.Value().is_object() || root.Text("format") != kFormat) {
        root.Refuse("this is no book of format '" + std::string(kFormat) + "'");
    }
    root.Only({"format", "signs", "servers", "serverConfigs", "groups", "accounts", "uppers", "currencies",
               "exchanges", "positions", "orders", "fills", "nextNumbers"});
    root.Each("signs", [&](const BookNode& node) {
        node.Only({"sign", "threeMonthNo"});
        FixedText<21> sign{};
        node.Code("sign", sign);
        book.catalogue.AddSign(sign.View(), node.Text("threeMonthNo", ""));
    });
    ReadServers(book.catalogue, root);
    ReadPeople(book.catalogue, root);
    root.Each("exchanges", [&](const BookNode& node) { ReadExchange(book.catalogue, node); });
    const std::string unrelated = book.catalogue.CheckRelations();
    if (!unrelated.empty()) {
        root.Member("exchanges").Refuse(unrelated);
    }
    root.Each("positions", [&](const BookNode& node) { ReadPosition(book, node); });
    root.Each("orders", [&](const BookNode& node) { ReadOrder(book, node); });
    root.Each("fills", [&](const BookNode& node) { ReadFill(book, node); });
    if (root.Has("nextNumbers")) {
        const BookNode next = root.Member("nextNumbers");
        try {
            book.ledger.RestoreNumbers({next.Whole("order", 1, 0xFFFFFFFF), next.Whole("fill", 1, 0xFFFFFFFF),
                                        next.Whole("sequence", 1, 0xFFFFFFFF)});
        } catch (const std::invalid_argument& reason) {
            next.Refuse(reason.what());
        }
    } else if (!book.ledger.Orders().empty()) {
        root.Refuse("'nextNumbers' is missing");
    }
}

// "line 3, column 5" out of the parser's message.
std::string PlaceOf(const std::string& message) {
    const std::size_t from = message.find("line ");
    const std::size_t to = message.find(':', from);
    return from == std::string::npos || to == std::string::npos ? "/" : message.substr(from, to - from);
}

std::string ReasonOf(const std::string& message) {
    const std::size_t from = message.find(": ");
    return from == std::string::npos ? message : message.substr(from + 2);
}

}  // namespace

std::unique_ptr<Book> ReadBookText(const std::string& text, const std::string& file) {
    try {
        const Json json = Json::parse(text);
        auto book = std::make_unique<Book>();
        ReadAll(*book, BookNode(json, ""));
        return book;
    } catch (const BookFileError& error) {
        throw BookFileError(file, error.place, error.reason);
    } catch (const Json::parse_error& error) {
        throw BookFileError(file, PlaceOf(error.what()), ReasonOf(error.what()));
    }
}

std::unique_ptr<Book> ReadBookFile(const std::string& path) {
    const std::optional<std::string> text = ReadWholeFile(path);
    if (!text) {
        throw BookFileError(path, "/", "cannot be read");
    }
    return ReadBookText(*text, path);
}
