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
    if (form.loadedKey.exchangeNo == form.exchange && form.loadedKey.commodityNo == form.commodity &&
        form.loadedKey.commodityType == form.commodityType && form.loadedContract == form.contract) {
        return form.loadedKey;
    }
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
    if (known || form.fill || form.order || form.commodity.empty()) {
        return known;
    }
    for (const CommodityRecord* commodity : trade.Commodities(ExchangeKeyOf(form))) {
        if (commodity->commodityNo == form.commodity && (commodity->commodityType == form.commodityType ||
                                                         form.commodityType == CommodityType::kUnknown)) {
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
    fill.fillPrice = PriceOf(form, form.price);
    fill.fillQty = static_cast<std::uint32_t>(form.fillQty);
    fill.fillTime.Set(FormatLocalTime(kRecordTimePattern, now));
    fill.fee = form.fee;
    fill.currencyNo.Set(form.currency);
    fill.key = FirstLegOf(ContractKeyOf(form));
    fill.flag111 = 'N';
    fill.fillSource = form.fillSource;
    fill.direction = form.direction;
    return fill;
}

void SetFee(FillRecord& fill, const FillForm& form) {
    fill.feeGiven = FlagToYN(form.feeGiven);
    if (form.feeGiven) {
        fill.fee = form.fee;
    }
}
