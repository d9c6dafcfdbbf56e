#include "trade/coded_lists.h"

namespace {

template <typename Record, typename Code, typename Name>
std::vector<std::string> ItemsOf(const std::vector<const Record*>& records, Code Record::*code,
                                 Name Record::*name) {
    std::vector<std::string> items;
    items.reserve(records.size());
    for (const Record* record : records) {
        items.push_back(CodedItem((record->*code).View(), (record->*name).View()));
    }
    return items;
}

}  // namespace

std::string CodedItem(std::string_view code, std::string_view name) {
    std::string item;
    item.reserve(code.size() + 1 + name.size());
    return item.append(code).append(1, ' ').append(name);
}

bool ListsAreOpen(const std::string& accountNo, const std::string& sign, const TradeData& trade) {
    return accountNo.empty() || sign.empty() || IsTradable(trade.User(accountNo, sign));
}

std::vector<std::string> CurrencyItems(const TradeData& trade) {
    return ItemsOf(trade.Currencies(""), &CurrencyRecord::currencyNo, &CurrencyRecord::currencyName);
}

std::vector<std::string> AccountItems(const std::string& sign, const TradeData& trade) {
    return ItemsOf(trade.Users(sign), &UserRecord::accountNo, &UserRecord::accountName);
}

std::vector<std::string> UpperItems(const std::string& sign, const TradeData& trade) {
    return ItemsOf(trade.Uppers(sign), &UpperRecord::upperNo, &UpperRecord::upperName);
}

std::vector<std::string> ExchangeItems(const std::string& sign, const TradeData& trade) {
    return ItemsOf(trade.Exchanges(sign), &ExchangeRecord::exchangeNo, &ExchangeRecord::exchangeName);
}
