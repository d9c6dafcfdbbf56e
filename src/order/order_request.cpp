#include "order/order_request.h"

#include "entry/number_text.h"
#include "trade/code_tables.h"
#include "trade/contract_text.h"

namespace {

// New entries are the operator's own; a correction keeps who entered the order, and when.
void SetOperators(OrderRecord& order, const OrderForm& form, const TradeData& trade, const std::string& now) {
    const std::string operatorNo = OperatorNo(trade.User(form.account, form.sign));
    if (form.mode == OrderMode::Input || form.mode == OrderMode::Carry) {
        order.inputOperator.Set(operatorNo);
        order.inputTime.Set(now);
    } else if (form.original) {
        order.inputOperator.Set(form.original->inputOperator.View());
        order.inputTime.Set(form.original->inputTime.View());
    }
    order.updateOperator.Set(operatorNo);
    order.updateTime.Set(now);
}

void SetContract(OrderRecord& order, const OrderForm& form, const ContractRecord* contract) {
    ContractKey key{};
    if (ParseContractText(form.contractText, key)) {
        order.key = key;
    }
    order.key.sign.Set(form.sign);
    order.contract = const_cast<ContractRecord*>(contract);  // the host's, only handed back to it
}

}  // namespace

OrderRecord BuildOrder(const OrderForm& form, const ContractRecord* contract, const TradeData& trade,
                       const LocalMoment& now) {
    OrderRecord order{};
    SetContract(order, form, contract);
    order.flag137 = 'N';
    order.flag138 = 'N';

    order.orderState = form.orderState;
    order.orderSource = form.source;
    order.validType = form.validType;
    order.direction = form.direction;
    order.orderType = form.orderType;
    order.forcedClose = FlagToYN(form.forcedClose);
    SetOperators(order, form, trade, FormatLocalTime(kRecordTimePattern, now));
    if (form.validType == ValidType::kTillDate) {
        order.validUntil.Set(FormatLocalTime(kRecordTimePattern, {form.validUntil, 0}));
    }

    order.accountNo.Set(form.account);
    order.upperNo.Set(form.upper);
    order.systemNo.Set(form.systemNo);
    order.exchangeSystemNo.Set(form.exchangeSystemNo);
    order.orderQty = static_cast<std::uint32_t>(form.orderQty);
    order.fillQty = static_cast<std::uint32_t>(form.fillQty);
    order.orderPrice = PriceValue(form.orderPrice, form.denominator);
    order.triggerPrice = PriceValue(form.triggerPrice, form.denominator);
    order.fillPrice = PriceValue(form.fillPrice, form.denominator);

    if (form.original) {
        order.orderNo = form.original->orderNo;
        order.flag614 = form.original->flag614;
        order.text279 = form.original->text279;
    }
    return order;
}

FillTerms FillTermsOf(const OrderForm& form) {
    FillTerms terms;
    terms.exchangeFillNo = form.exchangeFillNo;
    terms.currency = form.currency;
    terms.feeGiven = FlagToYN(form.feeGiven);
    terms.fee = form.feeGiven ? ToDouble(form.fee) : 0;
    terms.secondLegPrice = PriceValue(form.fillPrice2, form.denominator);
    return terms;
}

FillRecord BuildOrderFill(const OrderRecord& order, const FillTerms& terms, const LocalMoment& now) {
    FillRecord fill{};
    fill.key = FirstLegOf(order.key);
    fill.flag111 = 'N';
    fill.direction = order.direction;
    fill.fillSource = order.orderSource;
    fill.fillTime.Set(FormatLocalTime(kRecordTimePattern, now));
    fill.exchangeFillNo.Set(terms.exchangeFillNo);
    fill.accountNo.Set(order.accountNo.View());
    fill.upperNo.Set(order.upperNo.View());
    fill.systemNo.Set(order.systemNo.View());
    fill.fillPrice = order.fillPrice;
    fill.fillQty = order.fillQty;
    fill.feeGiven = terms.feeGiven;
    fill.fee = terms.fee;
    fill.currencyNo.Set(terms.currency);
    fill.closePrice = terms.positionPrice;
    fill.carryPair = terms.closesPosition ? 1 : 0;  // the byte, not the character
    return fill;
}

SpreadFills BuildSpreadFills(const OrderRecord& order, const SingleContractKey& firstLeg,
                             const SingleContractKey& secondLeg, const FillTerms& terms,
                             const LocalMoment& now) {
    const FillRecord whole = BuildOrderFill(order, terms, now);
    SpreadFills fills{whole, whole};
    fills.first.key = firstLeg;
    fills.first.exchangeFillNo.Set(terms.exchangeFillNo + "_1");
    fills.second.key = secondLeg;
    fills.second.exchangeFillNo.Set(terms.exchangeFillNo + "_2");
    fills.second.direction = OppositeDirection(order.direction);
    fills.second.fillPrice = terms.secondLegPrice;
    return fills;
}
