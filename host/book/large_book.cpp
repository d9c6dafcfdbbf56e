#include "book/large_book.h"

#include <cstdio>

namespace {

constexpr char kSign[] = "LARGE";

std::string Numbered(const char* format, int number) {
    char text[24];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

void AddPeople(Catalogue& catalogue, int accounts) {
    catalogue.AddSign(kSign, "250318");
    ServerRecord server{};
    server.address.Set("10.0.0.1");
    server.port = 7001;
    catalogue.AddServer(server, "S1");
    ServerConfigRecord config{};
    config.address.Set("10.0.0.1");
    config.port = 7001;
    catalogue.AddServerConfig(config, "Large book");
    GroupRecord group{};
    group.sign.Set(kSign);
    group.operatorNo.Set("OP0001");
    group.tradable = 'Y';
    catalogue.AddGroup(group, "all");
    for (int i = 0; i < accounts; ++i) {
        UserRecord account{};
        account.sign.Set(kSign);
        account.serverKey.Set("S1");
        account.accountNo.Set(Numbered("A%06d", i));
        catalogue.AddAccount(account, Numbered("Client %d", i), "all");
    }
    UpperRecord upper{};
    upper.sign.Set(kSign);
    upper.upperNo.Set("UP001");
    catalogue.AddUpper(upper, "Upper one", {kSign});
    CurrencyRecord currency{};
    currency.sign.Set(kSign);
    currency.currencyNo.Set("USD");
    catalogue.AddCurrency(currency, "US Dollar", {kSign});
}

}  // namespace

std::unique_ptr<Book> MakeLargeBook(int accounts, int exchanges, int commodities, int contracts) {
    auto book = std::make_unique<Book>();
    Catalogue& catalogue = book->catalogue;
    AddPeople(catalogue, accounts);
    for (int i = 0; i < exchanges; ++i) {
        ExchangeRecord exchange{};
        exchange.sign.Set(kSign);
        exchange.exchangeNo.Set(Numbered("X%d", i));
        catalogue.AddExchange(exchange, Numbered("Exchange %d", i), {kSign});
    }
    for (int i = 0; i < commodities; ++i) {
        CommodityRecord commodity{};
        commodity.sign.Set(kSign);
        commodity.exchangeNo.Set(Numbered("X%d", i % exchanges));
        commodity.commodityType = CommodityType::kFutures;
        commodity.commodityNo.Set(Numbered("C%d", i));
        commodity.tickNumerator = 1;
        commodity.tickDenominator = 1;
        commodity.legOrder = '0';
        catalogue.AddCommodity(commodity, Numbered("Commodity %d", i));
    }
    for (int i = 0; i < contracts; ++i) {
        const int commodity = i % commodities;
        ContractKey key{};
        key.sign.Set(kSign);
        key.exchangeNo.Set(Numbered("X%d", commodity % exchanges));
        key.commodityType = CommodityType::kFutures;
        key.commodityNo.Set(Numbered("C%d", commodity));
        key.contractNo.Set(Numbered("%05d", i / commodities));
        key.optionType = key.optionType2 = 'N';
        catalogue.AddContract(key, "");
    }
    return book;
}
