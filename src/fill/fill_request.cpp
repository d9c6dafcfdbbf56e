#include "fill/fill_request.h"

#include "trade/code_tables.h"
#include "trade/contract_text.h"

namespace {

ContractKey EmptyContractKey() {
    ContractKey key{};
    key.optionType = key.optionType2 = 'N';
    return key;
}

}  // namespace

CommodityKey CommodityKeyOf(const FillForm& form) {
    CommodityKey key{};
    key.sign.Set(form.sign);
    key.exchangeNo.Set(form.exchange);
    key.commodityType = form.commodityType;
    key.commodityNo.Set(form.commodity);
    return key;
}

ExchangeKey ExchangeKeyOf(const FillForm& form) {
    ExchangeKey key{};
    key.sign.Set(form.sign);
    key.exchangeNo.Set(form.exchange);
    return key;
}

ContractKey ContractKeyOf(const FillForm& form) {
    ContractKey key = EmptyContractKey();
    if (!ParseContractText(form.exchange + ' ' + form.commodity + ' ' + form.contract, key)) {
        key = EmptyContractKey();
    }
    key.sign.Set(form.sign);
    return key;
}

SingleContractKey CloseContractKeyOf(const FillForm& form) {
    const CommodityKey commodity = CommodityKeyOf(form);
    SingleContractKey key{
        commodity.sign, commodity.exchangeNo, commodity.commodityType, commodity.commodityNo, {}, {}, 0};
    key.contractNo.Set(form.contract);
    return key;
}

const CommodityRecord* FindCommodity(const FillForm& form, const TradeData& trade) {
    const CommodityRecord* known = trade.Commodity(CommodityKeyOf(form));
    if (known || form.commodityType != CommodityType::kUnknown || form.commodity.empty()) {
        return known;
    }
    // Commodities of different types may have one code: then the list tells which was chosen.
    const auto listed = trade.Commodities(ExchangeKeyOf(form));
    const auto index = static_cast<std::size_t>(form.commodityIndex);
    if (index < listed.size() && listed[index]->commodityNo == form.commodity) {
        return listed[index];
    }
    for (const CommodityRecord* commodity : listed) {
        if (commodity->commodityNo == form.commodity) {
            return commodity;
        }
    }
    return nullptr;
}

FillRecord MakeFillRecord(const FillForm& form, const LocalMoment& now) {
    FillRecord fill{};
    fill.accountNo.Set(form.account);
    fill.upperNo.Set(form.upper);
    fill.systemNo.Set(form.systemNo);
    fill.exchangeFillNo.Set(form.exchangeFillNo);
    fill.fillPrice = PriceOf(form);
    fill.fillQty = static_cast<std::uint32_t>(form.fillQty);
    fill.fillTime.Set(FormatLocalTime(kRecordTimePattern, now));
    fill.fee = form.fee;
    fill.currencyNo.Set(form.currency);
    const ContractKey key = ContractKeyOf(form);
    fill.key.sign.Set(form.sign);
    fill.key.exchangeNo.Set(form.exchange);
    fill.key.commodityType = key.commodityType;
    fill.key.commodityNo.Set(form.commodity);
    fill.key.contractNo = key.contractNo;
    fill.key.strikePrice = key.strikePrice;
    fill.key.optionType = key.optionType;
    fill.flag111 = 'N';
    fill.fillSource = OrderSourceFromText(form.fillSource);
    fill.direction = DirectionFromText(form.direction);
    return fill;
}

void SetFee(FillRecord& fill, const FillForm& form) {
    fill.feeGiven = FlagToYN(form.feeGiven);
    if (form.feeGiven) {
        fill.fee = form.fee;
    }
}
