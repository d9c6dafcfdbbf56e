#include "order/order_form.h"

#include "trade/code_tables.h"
#include "trade/contract_text.h"

#include <cstring>

OrderCodes CodesOf(const OrderForm& form) {
    OrderCodes codes;
    codes.orderType = OrderTypeFromText(form.orderType);
    codes.orderState = OrderStateFromText(form.orderState);
    codes.validType = ValidTypeFromText(form.validType);
    codes.source = form.mode == OrderMode::Carry ? OrderSource::kCarry : OrderSourceFromText(form.source);
    codes.direction = DirectionFromText(form.direction);
    return codes;
}

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

std::string ForwardContractNo(const OrderForm& form) {
    return form.forwardContract.substr(0, form.forwardContract.find(NameSeparator));
}

std::string DatedContractNo(const std::string& contractNo, const std::string& sign, const TradeData& trade) {
    return contractNo == kThreeMonth ? trade.ThreeMonthContractNo(sign) : contractNo;
}
