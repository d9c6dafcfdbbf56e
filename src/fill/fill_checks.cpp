#include "fill/fill_checks.h"

#include "controls/number_text.h"
#include "fill/fill_request.h"
#include "res/resource_ids.h"
#include "res/string_table.h"
#include "trade/code_tables.h"
#include "trade/contract_text.h"

#include <string>

namespace {

// A commodity whose contracts are prompt dates with a rolling "3M" among them: the date that "3M" stands for
// today is to be entered as "3M".
bool NamesThreeMonthDate(const FillForm& form, const CommodityRecord& commodity, const TradeData& trade) {
    if (commodity.rollingCode != 'U') {
        return false;
    }
    const std::string date = trade.ThreeMonthContractNo(form.sign);
    return date != "3M" && date == form.contract;
}

// A fill of a combination goes out as the legs that its contract names, any other as one leg. A contract of
// the other kind than its commodity, which has the same code, would go out as legs of nothing or as half a
// combination. A removal names its fill by the number, whatever the contract.
bool NamesItsLegs(const FillForm& form, const CommodityRecord& commodity, const ContractKey& key,
                  const TradeData& trade) {
    if (!FillMode::IsInput(form.mode)) {
        return true;
    }
    if (!IsTwoLegType(commodity.commodityType)) {
        return !IsTwoLegType(key.commodityType);
    }
    SingleContractKey first{};
    SingleContractKey second{};
    SplitContractLegs(key, first, second, trade);
    return !first.exchangeNo.Empty() || !first.commodityNo.Empty();
}

std::string MistakesOf(const FillForm& form, const CommodityRecord* commodity, const TradeData& trade) {
    std::string mistakes;
    const ContractKey key = ContractKeyOf(form);
    if (!commodity) {
        mistakes += ResString(IDS_NO_COMMODITY);
    } else if (!trade.Contract(key) || !NamesItsLegs(form, *commodity, key, trade)) {
        mistakes += ResString(IDS_CONTRACT_EMPTY);
    } else if (NamesThreeMonthDate(form, *commodity, trade)) {
        mistakes += ResString(IDS_CONTRACT_IS_3M_DATE);
    }
    if (form.fillQty < 1) {
        mistakes += ResString(IDS_FILL_QTY_NOT_POSITIVE);
    }
    return mistakes;
}

std::string DoubtsOf(const FillForm& form, const CommodityRecord& commodity) {
    std::string doubts;
    const double price = PriceOf(form);
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
        prompt.Ask(mistakes, ResString(IDS_OPERATION_FAILED), PromptButtons::Ok);
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
