#include "fill/fill_population.h"

#include "entry/forward_market.h"
#include "fill/fill_request.h"
#include "framework/format_text.h"
#include "res/resource_ids.h"
#include "res/string_table.h"
#include "trade/code_tables.h"
#include "trade/contract_text.h"
#include "trade/price_format.h"

#include <cstring>

namespace {

// The words of sources and directions are whole items: "Manual Order" is not "Manual".
constexpr ComboSettings kComboSettings[] = {
    //                full   whole  menu  list   rows
    {IDC_UPPER, false, false, true, false, 10},     {IDC_ACCOUNT, false, false, false, false, 0},
    {IDC_FILL_SOURCE, false, true, true, true, 0},  {IDC_EXCHANGE, false, false, true, false, 10},
    {IDC_COMMODITY, false, false, true, false, 10}, {IDC_DIRECTION, false, true, true, true, 0},
    {IDC_CURRENCY, false, false, true, true, 0},
};

// What fills and orders tell under the same names.
template <typename Record>
void TakeIdentity(FillForm& form, const Record& record) {
    form.account = form.accountNo = record.accountNo.Str();
    form.sign = record.key.sign.Str();
    form.exchangeNo = record.key.exchangeNo.Str();
    form.commodityNo = record.key.commodityNo.Str();
    form.commodityType = record.key.commodityType;
    form.upper = record.upperNo.Str();
    form.direction = record.direction;
}

// The key as a contract text would give it: no option is said as 'N', and nothing stands behind the texts.
ContractKey CleanKey(ContractKey key) {
    const auto clean = [](auto&... texts) { (texts.Set(texts.Str()), ...); };
    clean(key.sign, key.exchangeNo, key.commodityNo, key.contractNo, key.strikePrice, key.contractNo2,
          key.strikePrice2);
    key.optionType = key.optionType ? key.optionType : 'N';
    key.optionType2 = key.optionType2 ? key.optionType2 : 'N';
    if (key.commodityType == CommodityType::kSpreadCommodity) {
        key.contractNo2 = key.contractNo;
    }
    return key;
}

// In the fractions of the commodity, whatever the host has reduced them to.
void TakePrice(FillForm& form, const std::string& text, const TradeData& trade) {
    SplitPrice price = SplitPriceText(text);
    form.denominator = price.denominator ? price.denominator : 1;
    if (const CommodityRecord* commodity = FindCommodity(form, trade)) {
        form.denominator = static_cast<std::int32_t>(commodity->tickDenominator);
        if (form.denominator < kFractionDenominator && price.row.numerator != 0) {
            price.row = {FormatPriceText(PriceValue(price.row, price.denominator), nullptr), 0};
        }
        price = InPartsOf(form.denominator, price);
    }
    form.fillPrice = price.row;
}

void LoadFill(FillForm& form, const FillRecord& fill) {
    TakeIdentity(form, fill);
    form.source = fill.fillSource;
    form.fillQty = static_cast<std::int32_t>(fill.fillQty);
    form.fillNo = fill.fillNo;
    form.exchangeFillNo = fill.exchangeFillNo.Str();
    // A fill names its order's number itself too; the order is the one to trust while it is there.
    form.systemNo = fill.order ? fill.order->systemNo.Str() : fill.systemNo.Str();
    ContractKey key{};
    std::memcpy(&key, &fill.key, sizeof(fill.key));
    form.loadedKey = CleanKey(key);
    form.contractNo = form.loadedContract = fill.key.contractNo.Str();
}

void LoadOrder(FillForm& form, const OrderRecord& order, const TradeData& trade) {
    TakeIdentity(form, order);
    form.source = order.orderSource;
    form.remainingOrderQty = static_cast<std::int32_t>(order.orderQty - order.fillQty);
    form.fillQty = form.remainingOrderQty;
    form.systemNo = order.systemNo.Str();
    form.loadedKey = CleanKey(order.key);
    FormatContractText(order.key, form.contractNo, true, false, trade);
    form.loadedContract = form.contractNo;
}

}  // namespace

std::span<const ComboSettings> FillComboSettings() {
    return kComboSettings;
}

std::string FillTitle(const FillForm& form) {
    switch (form.mode) {
        case FillMode::Modify:
            return ResString(IDS_MODIFY_FILL_TITLE);
        case FillMode::Remove:
            if (!form.fill) {
                return ResString(IDS_REMOVE_FILLED_TITLE);
            }
            return FormatText(ResString(IDS_REMOVE_FILL_TITLE).c_str(), form.fill->fillNo.Str().c_str());
        default:
            if (!form.order) {
                return {};
            }
            return FormatText(ResString(IDS_INPUT_FILL_TITLE).c_str(), static_cast<int>(form.order->orderNo));
    }
}

std::string ConfirmText(FillMode mode) {
    switch (mode) {
        case FillMode::Modify:
            return ResString(IDS_MODIFY);
        case FillMode::Remove:
            return ResString(IDS_REMOVE);
        default:
            return ResString(IDS_INPUT);
    }
}

void GenerateNumbers(FillForm& form, const LocalMoment& now) {
    const std::string stamp = FormatLocalTime("%m%d%H%M%S%s", now);
    if (!form.order) {
        form.systemNo = "S_" + stamp;
    }
    form.exchangeFillNo = "M_" + stamp;
}

bool LoadRecord(FillForm& form, const TradeData& trade) {
    if (form.fill) {
        LoadFill(form, *form.fill);
    } else if (form.order) {
        LoadOrder(form, *form.order, trade);
    } else {
        return false;
    }
    if (form.source == OrderSource::kCarry && !form.exchangeNo.empty() && !form.commodityNo.empty()) {
        // A carry belongs on the forward market, whatever exchange its record names.
        const std::string exchange = ForwardMarket(form.sign, trade);
        form.exchangeNo = exchange.empty() ? form.exchangeNo : exchange;
    }
    TakePrice(form,
              form.fill ? trade.FormatPrice(form.fill, form.fill->fillPrice)
                        : trade.FormatPrice(form.order, form.order->fillPrice),
              trade);
    if (!form.fill && IsTwoLegType(form.commodityType)) {
        form.fillPrice2 = form.fillPrice;
    }
    return true;
}
