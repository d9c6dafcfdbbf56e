#include "fill/fill_population.h"

#include "framework/format_text.h"
#include "res/resource_ids.h"
#include "res/string_table.h"
#include "trade/code_tables.h"
#include "trade/contract_text.h"

namespace {

std::vector<std::string> WordsOf(std::string_view codes, std::string (*toText)(char)) {
    std::vector<std::string> words;
    for (char code : codes) {
        words.push_back(toText(code));
    }
    return words;
}

// What fills and orders tell under the same names.
template <typename Record>
void TakeIdentity(FillForm& form, const Record& record) {
    form.account = form.accountNo = record.accountNo.Str();
    form.sign = record.key.sign.Str();
    form.exchange = record.key.exchangeNo.Str();
    form.commodity = record.key.commodityNo.Str();
    form.commodityType = record.key.commodityType;
    form.upper = record.upperNo.Str();
    form.direction = DirectionToText(record.direction);
    form.openDirection = OpenDirectionOf(form.direction);
}

void TakePrice(FillForm& form, const std::string& text) {
    const SplitPrice split = SplitPriceText(text);
    form.price = split.row;
    form.denominator = form.denominator2 = split.denominator ? split.denominator : 1;
}

void LoadFill(FillForm& form, const FillRecord& fill, const TradeData& trade) {
    TakeIdentity(form, fill);
    form.fillSource = OrderSourceToText(fill.fillSource);
    form.fillQty = static_cast<std::int32_t>(fill.fillQty);
    form.fillNo = fill.fillNo;
    form.exchangeFillNo = fill.exchangeFillNo.Str();
    // A fill names its order's number itself too; the order is the one to trust while it is there.
    form.systemNo = fill.order ? fill.order->systemNo.Str() : fill.systemNo.Str();
    form.contract = fill.key.contractNo.Str();
    TakePrice(form, trade.FormatPrice(&fill, fill.fillPrice));
}

void LoadOrder(FillForm& form, const OrderRecord& order, const TradeData& trade) {
    TakeIdentity(form, order);
    form.fillSource = OrderSourceToTextWithAll(order.orderSource);
    form.remainingOrderQty = static_cast<std::int32_t>(order.orderQty - order.fillQty);
    form.fillQty = form.remainingOrderQty;
    form.systemNo = order.systemNo.Str();
    FormatContractText(order.key, form.contract, true, false, trade);
    TakePrice(form, trade.FormatPrice(&order, order.fillPrice));
    if (IsTwoLegType(form.commodityType)) {
        form.price2 = form.price;
    }
}

}  // namespace

std::vector<std::string> DirectionItems() {
    return WordsOf("BS", DirectionToText);
}

std::vector<std::string> FillSourceItems() {
    return WordsOf("EJPMSDR", OrderSourceToText);
}

std::string DefaultExchange(const FillForm& form, const TradeData& trade) {
    for (const ExchangeRecord* exchange : trade.Exchanges(form.sign)) {
        if (exchange->forwardMarket) {
            return exchange->exchangeNo.Str();
        }
    }
    return {};
}

std::string FillTitle(const FillForm& form) {
    switch (form.mode) {
        case FillMode::kModify:
            return ResString(IDS_MODIFY_FILL_TITLE);
        case FillMode::kRemove:
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

std::string FillConfirmCaption(int mode) {
    switch (mode) {
        case FillMode::kModify:
            return ResString(IDS_MODIFY);
        case FillMode::kRemove:
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
        LoadFill(form, *form.fill, trade);
    } else if (form.order) {
        LoadOrder(form, *form.order, trade);
    }
    return form.fill || form.order;
}

std::string OpenDirectionOf(const std::string& direction) {
    return DirectionToText(OppositeDirection(DirectionFromText(direction)));
}
