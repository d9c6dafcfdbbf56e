#include "fill/fill_checks.h"

#include "entry/forward_market.h"
#include "entry/number_text.h"
#include "entry/telling.h"
#include "fill/fill_request.h"
#include "res/resource_ids.h"
#include "res/string_table.h"
#include "trade/code_tables.h"
#include "trade/contract_text.h"

#include <string>

namespace {

// A contract of another shape than its commodity, which may have the code of one that suits, would go out as
// legs of nothing, as half a combination or as a fill of something else.
bool HasShapeOf(const CommodityRecord& commodity, const ContractKey& key, const TradeData& trade) {
    const char type = commodity.commodityType;
    const bool hasText = IsTwoLegType(type) || std::string_view("GYFO").find(type) != std::string_view::npos;
    if (hasText ? key.commodityType != type : IsTwoLegType(key.commodityType)) {
        return false;
    }
    if (!IsTwoLegType(type)) {
        return true;
    }
    SingleContractKey first{};
    SingleContractKey second{};
    SplitContractLegs(key, first, second, trade);
    return !first.exchangeNo.Empty() || !first.commodityNo.Empty();
}

std::string MistakesOf(const FillForm& form, const CommodityRecord* commodity, const TradeData& trade) {
    std::string mistakes;
    const ContractKey key = ContractKeyOf(form);
    const bool input = IsInput(form.mode);  // the fill that is removed exists, whatever is said of it
    if (!commodity) {
        mistakes += ResString(IDS_NO_COMMODITY);
    } else if (!trade.Contract(key) || (input && !HasShapeOf(*commodity, key, trade))) {
        mistakes += ResString(IDS_CONTRACT_EMPTY);
    } else if (NamesThreeMonthDate(form.contractNo, *commodity, form.sign, trade)) {
        mistakes += ResString(IDS_CONTRACT_IS_3M_DATE);
    }
    if (form.fillQty < 1) {
        mistakes += ResString(IDS_FILL_QTY_NOT_POSITIVE);
    }
    if (input && form.direction == 0) {
        mistakes += ResString(IDS_DIRECTION_EMPTY);
    }
    if (input && form.source == 0) {
        mistakes += ResString(IDS_SOURCE_EMPTY);
    }
    return mistakes;
}

std::string DoubtsOf(const FillForm& form, const CommodityRecord& commodity) {
    std::string doubts;
    const double price = PriceOf(form, form.fillPrice);
    if (!IsWholeTicks(price, commodity.tickNumerator / commodity.tickDenominator, kTickTolerance)) {
        doubts += ResString(IDS_FILL_DIALOG_PRICE_NOT_TICKS);
    }
    if (price == 0.0) {
        doubts += ResString(IDS_FILL_PRICE_ZERO);
    }
    return doubts;
}

}  // namespace

FillCheck CheckFill(const FillForm& form, const TradeData& trade, IPrompt& prompt) {
    const CommodityRecord* commodity = FindCommodity(form, trade);
    const std::string mistakes = MistakesOf(form, commodity, trade);
    if (!mistakes.empty()) {
        Tell(prompt, mistakes, IDS_OPERATION_FAILED);
        return FillCheck::Refused;
    }
    const std::string doubts = commodity ? DoubtsOf(form, *commodity) : std::string();
    if (doubts.empty()) {
        return FillCheck::Passed;
    }
    switch (prompt.Ask(doubts + ResString(IDS_CONFIRM_WARNINGS), ResString(IDS_CONFIRM_CAPTION),
                       PromptButtons::OkCancel)) {
        case PromptAnswer::Ok:
            return prompt.DialogExists() ? FillCheck::Passed : FillCheck::Refused;
        case PromptAnswer::Cancel:
            return FillCheck::PriceDoubted;
        default:
            return FillCheck::Refused;
    }
}
