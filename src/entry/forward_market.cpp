#include "entry/forward_market.h"

#include "entry/date_text.h"
#include "trade/order_codes.h"

std::string ForwardMarket(const std::string& sign, const TradeData& trade) {
    for (const ExchangeRecord* exchange : trade.Exchanges(sign)) {
        if (exchange->forwardMarket) {
            return exchange->exchangeNo.Str();
        }
    }
    return {};
}

bool NamesThreeMonthDate(const std::string& contractNo, const CommodityRecord& commodity,
                         const std::string& sign, const TradeData& trade) {
    if (commodity.rollingCode != kRollingCommodity) {
        return false;
    }
    const std::string date = trade.ThreeMonthContractNo(sign);
    return date != kThreeMonth && date == contractNo;
}

int PromptDaysBetween(const std::string& from, const std::string& to) {
    return DaysBetween(ParseTimeValue(from.c_str(), kPromptDatePattern),
                       ParseTimeValue(to.c_str(), kPromptDatePattern));
}
