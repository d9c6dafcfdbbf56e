#include "fill/fill_submission.h"

#include "entry/forward_market.h"
#include "entry/telling.h"
#include "fill/fill_checks.h"
#include "fill/fill_request.h"
#include "framework/format_text.h"
#include "res/resource_ids.h"
#include "res/string_table.h"
#include "trade/code_tables.h"
#include "trade/contract_text.h"

namespace {

FillOutcome StayOrGone(const FillServices& services) {
    return services.prompt.DialogExists() ? FillOutcome::Stay : FillOutcome::Gone;
}

FillOutcome Refuse(const FillServices& services, unsigned textId, unsigned captionId = IDS_TIPS) {
    Tell(services.prompt, textId, captionId);
    return StayOrGone(services);
}

FillOutcome CloseIf(bool sent, const FillServices& services, unsigned failureId) {
    return sent ? FillOutcome::Close : Refuse(services, failureId);
}

// What the commodity makes of a fill.
struct Legs {
    char commodityType = 0;  // 0: not known
    SingleContractKey first{};
    SingleContractKey second{};  // of a combination
    bool Combination() const { return IsTwoLegType(commodityType); }
};

Legs LegsOf(const FillForm& form, const TradeData& trade) {
    Legs legs;
    if (const CommodityRecord* commodity = FindCommodity(form, trade)) {
        legs.commodityType = commodity->commodityType;
    }
    if (legs.Combination()) {
        SplitContractLegs(ContractKeyOf(form), legs.first, legs.second, trade);
    }
    return legs;
}

// Sends the record, a combination as its two legs, which the record then holds last. The last send decides;
// Close means that it was sent.
FillOutcome SendLegs(FillRecord& fill, const FillForm& form, const Legs& legs, const FillServices& services) {
    const std::string exchangeFillNo = fill.exchangeFillNo.Str();
    if (legs.Combination()) {
        fill.key = legs.first;
        fill.exchangeFillNo.Set(exchangeFillNo + "_1");
    }
    bool sent = services.requests.SendFill(fill);
    if (legs.Combination()) {
        fill.fillPrice = PriceOf(form, form.fillPrice2);
        fill.key = legs.second;
        fill.exchangeFillNo.Set(exchangeFillNo + "_2");
        fill.direction = OppositeDirection(fill.direction);
        sent = services.requests.SendFill(fill);
    }
    return CloseIf(sent, services, IDS_SEND_INPUT_FAILED);
}

std::string NoPositionText(const FillRecord& fill) {
    std::string contract;
    FormatContractWithSign(contract, fill.key);
    const std::string direction = DirectionToText(OppositeDirection(fill.direction));
    const std::string text = ResString(IDS_NO_CLOSE_POSITION);
    // The English words begin with the direction, the Chinese ones name the contract first.
    const bool directionFirst = text.starts_with("%s");
    return FormatText(text.c_str(), (directionFirst ? direction : contract).c_str(),
                      (directionFirst ? contract : direction).c_str());
}

// The id of the message that forbids a carry from the close to the open date; 0 when nothing does.
unsigned DateMistake(const FillRecord& fill, const FillForm& form) {
    const int days = PromptDaysBetween(fill.key.contractNo.Str(), form.openContract.substr(0, 19));
    if (days == 0) {
        return IDS_SAME_CLOSE_OPEN_CONTRACTS;
    }
    return days < 0 ? IDS_CLOSE_OPEN_CONTRACTS_REVERSED : 0;
}

bool HasPositionToClose(const FillRecord& fill, const FillForm& form, const TradeData& trade) {
    const TradeData::Quantities held = trade.PositionQty(fill.accountNo.Str(), CloseContractKeyOf(form));
    return !(held.shortQty == 0 && fill.direction == Direction::kBuy) &&
           !(held.longQty == 0 && fill.direction == Direction::kSell);
}

// Closes the position at one date and opens it at another. The open leg goes out whatever became of the close
// leg: each tells its own failure.
FillOutcome SendCarryPair(FillRecord& fill, const FillForm& form, const Legs& legs,
                          const FillServices& services) {
    if (legs.commodityType == CommodityType::kSpreadMonth ||
        legs.commodityType == CommodityType::kSpreadCommodity) {
        return Refuse(services, IDS_NO_SPREAD_CARRY, IDS_INPUT_FAILED_CAPTION);
    }
    if (const unsigned mistake = DateMistake(fill, form)) {
        return Refuse(services, mistake);
    }
    if (!HasPositionToClose(fill, form, services.trade)) {
        Tell(services.prompt, NoPositionText(fill));
        return StayOrGone(services);
    }
    if (!services.prompt.DialogExists()) {
        return FillOutcome::Gone;
    }
    fill.feeGiven = 'Y';
    fill.fee = 0.0;
    fill.carryPair = 'Y';
    if (SendLegs(fill, form, legs, services) == FillOutcome::Gone) {
        return FillOutcome::Gone;
    }
    fill.fillPrice = PriceOf(form, form.fillPrice2);
    fill.direction = OppositeDirection(fill.direction);
    fill.key.contractNo.Set(form.openContract);
    fill.fillNo.Set(fill.fillNo.Str() + "~");
    fill.systemNo.Set(fill.systemNo.Str() + "~");
    SetFee(fill, form);
    return SendLegs(fill, form, legs, services);
}

FillOutcome SendInput(FillRecord& fill, const FillForm& form, const FillServices& services) {
    if (form.remainingOrderQty < form.fillQty && !Agrees(services.prompt, IDS_ASK_FILL_ABOVE_REMAINING)) {
        return StayOrGone(services);
    }
    const Legs legs = LegsOf(form, services.trade);
    if (!services.prompt.DialogExists()) {
        return FillOutcome::Gone;
    }
    if (fill.fillSource == OrderSource::kCarry) {
        return SendCarryPair(fill, form, legs, services);
    }
    SetFee(fill, form);
    return SendLegs(fill, form, legs, services);
}

FillOutcome Remove(FillRecord& fill, const FillForm& form, const FillServices& services) {
    fill.fillNo = form.fillNo;
    return CloseIf(services.requests.RemoveFill(fill), services, IDS_SEND_REMOVE_FAILED);
}

}  // namespace

// A host that takes the dialog away before the first request is out does not want its entry any more.
FillOutcome SubmitFill(const FillForm& form, const FillServices& services) {
    switch (CheckFill(form, services.trade, services.prompt)) {
        case FillCheck::Passed:
            break;
        case FillCheck::Refused:
            return StayOrGone(services);
        case FillCheck::PriceDoubted:
            return services.prompt.DialogExists() ? FillOutcome::StayWithPrice : FillOutcome::Gone;
    }
    if (!services.prompt.DialogExists()) {
        return FillOutcome::Gone;
    }
    FillRecord fill = BuildFill(form, services.clock.Now());
    switch (form.mode) {
        case FillMode::Modify:
            return Refuse(services, IDS_SEND_MODIFY_FAILED);
        case FillMode::Remove:
            return Remove(fill, form, services);
        default:
            return SendInput(fill, form, services);
    }
}
