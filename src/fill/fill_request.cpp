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
    key.exchangeNo.Set(form.exchangeNo);
    key.commodityType = form.commodityType;
    key.commodityNo.Set(form.commodityNo);
    return key;
}

ExchangeKey ExchangeKeyOf(const FillForm& form) {
    ExchangeKey key{};
    key.sign.Set(form.sign);
    key.exchangeNo.Set(form.exchangeNo);
    return key;
}

ContractKey ContractKeyOf(const FillForm& form) {
    if (form.loadedKey.exchangeNo == form.exchangeNo && form.loadedKey.commodityNo == form.commodityNo &&
        form.loadedKey.commodityType == form.commodityType && form.loadedContract == form.contractNo) {
        return form.loadedKey;
    }
    ContractKey key = EmptyContractKey();
    if (!ParseContractText(form.exchangeNo + ' ' + form.commodityNo + ' ' + form.contractNo, key)) {
        key = EmptyContractKey();
    }
    key.sign.Set(form.sign);
    return key;
}

SingleContractKey CloseContractKeyOf(const FillForm& form) {
    const CommodityKey commodity = CommodityKeyOf(form);
    SingleContractKey key{
        commodity.sign, commodity.exchangeNo, commodity.commodityType, commodity.commodityNo, {}, {}, 0};
    key.contractNo.Set(form.contractNo);
    return key;
}

const CommodityRecord* FindCommodity(const FillForm& form, const TradeData& trade) {
    const CommodityRecord* known = trade.Commodity(CommodityKeyOf(form));
    if (known || form.fill || form.order || form.commodityNo.empty()) {
        return known;
    }
    for (const CommodityRecord* commodity : trade.Commodities(ExchangeKeyOf(form))) {
        if (commodity->commodityNo == form.commodityNo && (commodity->commodityType == form.commodityType ||
                                                           form.commodityType == CommodityType::kUnknown)) {
            return commodity;
        }
    }
    return nullptr;
}

FillRecord BuildFill(const FillForm& form, const LocalMoment& now) {
    FillRecord fill{};
    fill.accountNo.Set(form.account);
    fill.upperNo.Set(form.upper);
    fill.systemNo.Set(form.systemNo);
    fill.exchangeFillNo.Set(form.exchangeFillNo);
    fill.fillPrice = PriceOf(form, form.fillPrice);
    fill.fillQty = static_cast<std::uint32_t>(form.fillQty);
    fill.fillTime.Set(FormatLocalTime(kRecordTimePattern, now));
    fill.fee = form.fee;
    fill.currencyNo.Set(form.currency);
    fill.key = FirstLegOf(ContractKeyOf(form));
    fill.flag111 = 'N';
    fill.fillSource = form.source;
    fill.direction = form.direction;
    return fill;
}

void SetFee(FillRecord& fill, const FillForm& form) {
    fill.feeGiven = FlagToYN(form.feeGiven);
    if (form.feeGiven) {
        fill.fee = form.fee;
    }
}
