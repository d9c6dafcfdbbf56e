#include "order/order_form.h"

#include "trade/contract_text.h"

#include <cstring>

CommodityKey CommodityKeyOf(const OrderForm& form) {
    CommodityKey key{};
    key.sign.Set(form.sign);
    key.exchangeNo.Set(form.exchangeNo);
    key.commodityType = form.commodityType;
    key.commodityNo.Set(form.commodityNo);
    return key;
}

std::optional<ContractKey> ContractKeyOf(const OrderForm& form) {
    ContractKey key{};
    if (!ParseContractText(form.contractText, key)) {
        return std::nullopt;
    }
    const CommodityKey commodity = CommodityKeyOf(form);
    std::memcpy(&key, &commodity, sizeof(commodity));
    return key;
}

std::string ContractNoOfLine(const std::string& line) {
    return line.substr(0, line.find(NameSeparator));
}

std::string DatedContractNo(const std::string& contractNo, const std::string& sign, const TradeData& trade) {
    return contractNo == kThreeMonth ? trade.ThreeMonthContractNo(sign) : contractNo;
}
