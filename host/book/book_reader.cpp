#include "book/book_file.h"

#include "book/contract_part.h"
#include "book/host_text.h"
#include "book/record_json.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace {

constexpr std::string_view kFormat = "emendo-book-1";

// One object of the file with its place, so that every complaint can say where.
class Node {
public:
    Node(const Json& json, std::string place) : m_json(json), m_place(std::move(place)) {}

    const Json& Value() const { return m_json; }
    const std::string& Place() const { return m_place; }

    [[noreturn]] void Refuse(const std::string& reason) const {
        throw BookFileError("", m_place.empty() ? "/" : m_place, reason);
    }

    bool Has(const char* name) const { return m_json.contains(name); }

    Node Member(const char* name) const {
        if (!m_json.is_object() || !m_json.contains(name)) {
            Refuse("'" + std::string(name) + "' is missing");
        }
        return {m_json[name], m_place + '/' + name};
    }

    // A misspelt member would otherwise be a default that nobody asked for.
    void Only(std::initializer_list<std::string_view> names) const {
        if (!m_json.is_object()) {
            Refuse("must be an object");
        }
        for (const auto& [name, value] : m_json.items()) {
            if (std::find(names.begin(), names.end(), name) == names.end()) {
                Refuse("'" + name + "' is not known here");
            }
        }
    }

    // Calls `visit` for each element of the array; an absent one is empty.
    template <typename Visit>
    void Each(const char* name, Visit visit) const {
        if (!Has(name)) {
            return;
        }
        const Node list = Member(name);
        if (!list.m_json.is_array()) {
            list.Refuse("must be a list");
        }
        for (std::size_t i = 0; i < list.m_json.size(); ++i) {
            const Node element(list.m_json[i], list.m_place + '/' + std::to_string(i));
            try {
                visit(element);
            } catch (const std::invalid_argument& reason) {
                element.Refuse(reason.what());
            }
        }
    }

    std::string Text() const {
        if (!m_json.is_string()) {
            Refuse("must be a text");
        }
        return m_json.get<std::string>();
    }
    std::string Text(const char* name) const { return Member(name).Text(); }
    std::string Text(const char* name, const char* otherwise) const {
        return Has(name) ? Text(name) : otherwise;
    }

    bool Flag(const char* name, bool otherwise) const {
        if (!Has(name)) {
            return otherwise;
        }
        const Node member = Member(name);
        if (!member.m_json.is_boolean()) {
            member.Refuse("must be true or false");
        }
        return member.m_json.get<bool>();
    }

    double Number(const char* name) const {
        const Node member = Member(name);
        if (!member.m_json.is_number()) {
            member.Refuse("must be a number");
        }
        return member.m_json.get<double>();
    }

    std::uint32_t Whole(const char* name, std::uint32_t least, std::uint32_t most) const {
        const Node member = Member(name);
        if (!member.m_json.is_number_unsigned() || member.m_json.get<std::uint64_t>() < least ||
            member.m_json.get<std::uint64_t>() > most) {
            member.Refuse("must be a whole number of " + std::to_string(least) + " to " +
                          std::to_string(most));
        }
        return member.m_json.get<std::uint32_t>();
    }

    char Code(const char* name, char otherwise) const {
        const std::string text = Text(name, otherwise ? std::string(1, otherwise).c_str() : "");
        if (text.size() > 1) {
            Member(name).Refuse("must be one character");
        }
        return text.empty() ? '\0' : text[0];
    }

    // A code goes into its field whole or not at all, and means the same in every code page.
    template <std::size_t Width>
    void Code(const char* name, FixedText<Width>& field) const {
        SetCode(Member(name), field);
    }
    template <std::size_t Width>
    static void SetCode(const Node& node, FixedText<Width>& field) {
        const std::string code = node.Text();
        if (code.size() >= Width) {
            node.Refuse("'" + code + "' is longer than " + std::to_string(Width - 1));
        }
        for (const char c : code) {
            if (c <= ' ' || c > '~') {
                node.Refuse("'" + code + "' holds a character that no code may have");
            }
        }
        field.Set(code);
    }

    // "sign": "A" or "signs": ["A", "B"].
    std::vector<std::string> Signs() const {
        if (Has("sign")) {
            return {Text("sign")};
        }
        std::vector<std::string> signs;
        Member("signs");
        Each("signs", [&](const Node& sign) { signs.push_back(sign.Text()); });
        if (signs.empty()) {
            Refuse("'signs' is empty");
        }
        return signs;
    }

private:
    const Json& m_json;
    std::string m_place;
};

// The first of the signs keeps them all, for the way back into the file.
std::vector<std::string> Kept(const std::vector<std::string>& signs, const std::string& sign) {
    return sign == signs.front() ? signs : std::vector<std::string>();
}

void ReadRelated(const Node& node, const char* name, FixedText<11>& exchangeNo, char& type,
                 FixedText<11>& commodityNo) {
    if (!node.Has(name)) {
        return;
    }
    const Node related = node.Member(name);
    related.Only({"exchangeNo", "commodityType", "commodityNo"});
    if (related.Has("exchangeNo")) {
        related.Code("exchangeNo", exchangeNo);
    }
    type = related.Code("commodityType", 0);
    related.Code("commodityNo", commodityNo);
}

void ReadContract(Catalogue& catalogue, const CommodityRecord& commodity, const Node& node) {
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

void ReadCommodity(Catalogue& catalogue, const ExchangeRecord& exchange, const Node& node) {
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
    node.Each("contracts", [&](const Node& contract) { ReadContract(catalogue, added, contract); });
}

void ReadExchange(Catalogue& catalogue, const Node& node) {
    node.Only({"sign", "signs", "exchangeNo", "name", "forwardMarket", "commodities"});
    const std::vector<std::string> signs = node.Signs();
    for (const std::string& sign : signs) {
        ExchangeRecord exchange{};
        exchange.sign.Set(sign);
        node.Code("exchangeNo", exchange.exchangeNo);
        exchange.forwardMarket = node.Flag("forwardMarket", false) ? 1 : 0;
        catalogue.AddExchange(exchange, node.Text("name"), Kept(signs, sign));
        node.Each("commodities",
                  [&](const Node& commodity) { ReadCommodity(catalogue, exchange, commodity); });
    }
}

void ReadServers(Catalogue& catalogue, const Node& root) {
    root.Each("servers", [&](const Node& node) {
        node.Only({"serverKey", "address", "port"});
        ServerRecord server{};
        FixedText<21> key{};
        node.Code("serverKey", key);
        node.Code("address", server.address);
        server.port = static_cast<std::uint16_t>(node.Whole("port", 1, 65535));
        catalogue.AddServer(server, key.View());
    });
    root.Each("serverConfigs", [&](const Node& node) {
        node.Only({"name", "address", "port"});
        ServerConfigRecord config{};
        node.Code("address", config.address);
        config.port = node.Whole("port", 1, 65535);
        catalogue.AddServerConfig(config, node.Text("name"));
    });
}

void ReadPeople(Catalogue& catalogue, const Node& root) {
    root.Each("groups", [&](const Node& node) {
        node.Only({"id", "sign", "operatorNo", "accountLock", "tradable"});
        GroupRecord group{};
        node.Code("sign", group.sign);
        node.Code("operatorNo", group.operatorNo);
        group.accountLock = node.Code("accountLock", 0);
        group.tradable = node.Flag("tradable", true) ? 'Y' : 'N';
        catalogue.AddGroup(group, node.Text("id"));
    });
    root.Each("accounts", [&](const Node& node) {
        node.Only({"sign", "accountNo", "name", "serverKey", "group"});
        UserRecord account{};
        node.Code("sign", account.sign);
        node.Code("serverKey", account.serverKey);
        node.Code("accountNo", account.accountNo);
        catalogue.AddAccount(account, node.Text("name"), node.Text("group", ""));
    });
    root.Each("uppers", [&](const Node& node) {
        node.Only({"sign", "signs", "upperNo", "name"});
        const std::vector<std::string> signs = node.Signs();
        for (const std::string& sign : signs) {
            UpperRecord upper{};
            upper.sign.Set(sign);
            node.Code("upperNo", upper.upperNo);
            catalogue.AddUpper(upper, node.Text("name"), Kept(signs, sign));
        }
    });
    root.Each("currencies", [&](const Node& node) {
        node.Only({"sign", "signs", "currencyNo", "name"});
        const std::vector<std::string> signs = node.Signs();
        for (const std::string& sign : signs) {
            CurrencyRecord currency{};
            currency.sign.Set(sign);
            node.Code("currencyNo", currency.currencyNo);
            catalogue.AddCurrency(currency, node.Text("name"), Kept(signs, sign));
        }
    });
}

ContractKey ReadKey(const Node& node, const char* name, const std::string& sign) {
    ContractKey key{};
    key.sign.Set(sign);
    if (!ReadContractName(node.Text(name), key)) {
        node.Member(name).Refuse("must be exchange, type, commodity and contract");
    }
    return key;
}

void ReadPosition(Book& book, const Node& node) {
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

// Members that are no fields of the record are taken out, the rest goes through the field table.
Json FieldsOf(const Node& node, std::initializer_list<const char*> others) {
    Json fields = node.Value();
    for (const char* other : others) {
        fields.erase(other);
    }
    return fields;
}

void ReadOrder(Book& book, const Node& node) {
    OrderRecord order{};
    RecordFromJson(OrderLayout(), FieldsOf(node, {"contract", "underlying", "restState", "madeFromFill"}),
                   &order);
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

void ReadFill(Book& book, const Node& node) {
    FillRecord fill{};
    RecordFromJson(FillLayout(), FieldsOf(node, {"contract", "orderNo", "sequence", "bookedContractNo"}),
                   &fill);
    const ContractKey key = ReadKey(node, "contract", fill.key.sign.Str());
    fill.key = FirstLegOf(key);
    const std::string contractNo = fill.key.contractNo.Str();
    const std::string booked = node.Text("bookedContractNo", contractNo.c_str());
    book.ledger.RestoreFill(fill, node.Whole("orderNo", 1, 0xFFFFFFFF), node.Whole("sequence", 1, 0xFFFFFFFF),
                            booked);
}

void ReadAll(Book& book, const Node& root) {
    if (!root.Value().is_object() || root.Text("format") != kFormat) {
        root.Refuse("this is no book of format '" + std::string(kFormat) + "'");
    }
    root.Only({"format", "signs", "servers", "serverConfigs", "groups", "accounts", "uppers", "currencies",
               "exchanges", "positions", "orders", "fills", "nextNumbers"});
    root.Each("signs", [&](const Node& node) {
        node.Only({"sign", "threeMonthNo"});
        FixedText<21> sign{};
        node.Code("sign", sign);
        book.catalogue.AddSign(sign.View(), node.Text("threeMonthNo", ""));
    });
    ReadServers(book.catalogue, root);
    ReadPeople(book.catalogue, root);
    root.Each("exchanges", [&](const Node& node) { ReadExchange(book.catalogue, node); });
    const std::string unrelated = book.catalogue.CheckRelations();
    if (!unrelated.empty()) {
        root.Member("exchanges").Refuse(unrelated);
    }
    root.Each("positions", [&](const Node& node) { ReadPosition(book, node); });
    root.Each("orders", [&](const Node& node) { ReadOrder(book, node); });
    root.Each("fills", [&](const Node& node) { ReadFill(book, node); });
    if (root.Has("nextNumbers")) {
        const Node next = root.Member("nextNumbers");
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
        ReadAll(*book, Node(json, ""));
        return book;
    } catch (const BookFileError& error) {
        throw BookFileError(file, error.place, error.reason);
    } catch (const Json::parse_error& error) {
        throw BookFileError(file, PlaceOf(error.what()), ReasonOf(error.what()));
    }
}

std::unique_ptr<Book> ReadBookFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream text;
    if (!stream || !(text << stream.rdbuf())) {
        throw BookFileError(path, "/", "cannot be read");
    }
    return ReadBookText(text.str(), path);
}
