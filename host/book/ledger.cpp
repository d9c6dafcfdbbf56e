#include "book/ledger.h"

#include "book/contract_part.h"
#include "book/ledger_terms.h"
#include "book/record_fields.h"

#include <algorithm>

namespace {

// The state of the unfilled part that a requested state means. The states of fills follow from the fills that
// arrive, not from what a request says.
char RestStateFor(char requested, char current) {
    switch (requested) {
        case kPartlyFilled:
        case kFilled:
            return current == 0 || current == kCancelled ? kWorking : current;
        case kRestCancelled:
            return kCancelled;
        case 0:
            return current == 0 ? kWorking : current;
        default:
            return requested;
    }
}

// Adds the rows that are not there yet.
void Note(Outcome& outcome, const std::vector<PositionEntry*>& rows) {
    for (PositionEntry* row : rows) {
        if (std::find(outcome.positions.begin(), outcome.positions.end(), row) == outcome.positions.end()) {
            outcome.positions.push_back(row);
        }
    }
}

}  // namespace

Outcome Refused(std::string reason) {
    Outcome outcome;
    outcome.refusal = std::move(reason);
    return outcome;
}

std::vector<FillEntry*> Ledger::Fills() const {
    std::vector<FillEntry*> fills;
    for (const FillEntry& fill : m_fills) {
        if (!fill.removed) {
            fills.push_back(const_cast<FillEntry*>(&fill));
        }
    }
    return fills;
}

OrderEntry* Ledger::FindOrder(std::uint32_t orderNo) const {
    const auto found = m_ordersByNo.find(orderNo);
    return found == m_ordersByNo.end() ? nullptr : found->second;
}

FillEntry* Ledger::FindFill(std::string_view fillNo) const {
    const auto found = m_fillsByNo.find(std::string(fillNo));
    return found == m_fillsByNo.end() || found->second->removed ? nullptr : found->second;
}

SingleContractKey Ledger::BookedLeg(const SingleContractKey& leg) const {
    SingleContractKey booked = TidyKey(leg);
    if (booked.contractNo.View() == "3M") {
        if (const SignRecord* sign = m_catalogue.FindSign(booked.sign.View())) {
            booked.contractNo.Set(sign->threeMonthNo);
        }
    }
    return booked;
}

std::vector<SingleContractKey> Ledger::LegsOf(const OrderRecord& order) const {
    const ContractKey key = TidyKey(order.key);
    const CommodityRecord* commodity = m_catalogue.FindCommodity(CommodityOf(key));
    if (order.orderType == kExercise && order.contract) {
        SingleContractKey underlying = FirstLegOf(order.contract->key);
        underlying.sign = key.sign;
        return {FirstLegOf(key), underlying};
    }
    if (!commodity || !HasTwoLegs(key.commodityType)) {
        return {FirstLegOf(key)};
    }
    const SingleContractKey first{key.sign,
                                  commodity->relatedExchangeNo,
                                  commodity->relatedCommodityType,
                                  commodity->relatedCommodityNo,
                                  key.contractNo,
                                  key.strikePrice,
                                  key.optionType};
    const SingleContractKey second{key.sign,
                                   commodity->secondExchangeNo,
                                   commodity->secondCommodityType,
                                   commodity->secondCommodityNo,
                                   key.contractNo2,
                                   key.strikePrice2,
                                   key.optionType2};
    return commodity->legOrder == '2' ? std::vector{second, first} : std::vector{first, second};
}

Outcome Ledger::SendOrder(const OrderRecord& rawRequest) {
    OrderRecord request = rawRequest;
    TerminateTexts(OrderLayout(), &request);
    if (request.orderNo == 0) {
        return EnterOrder(request);
    }
    OrderEntry* order = FindOrder(request.orderNo);
    if (!order) {
        return Refused("order " + std::to_string(request.orderNo) + " does not exist");
    }
    const bool otherAccount = request.accountNo.View() != order->record.accountNo.View() ||
                              request.key.sign.View() != order->record.key.sign.View();
    return otherAccount ? MoveOrder(*order, request) : ModifyOrder(*order, request);
}

Outcome Ledger::EnterOrder(const OrderRecord& request) {
    if (std::string refusal = CheckEntry(request, nullptr); !refusal.empty()) {
        return Refused(refusal);
    }
    OrderRecord record = request;
    record.orderNo = m_next.order++;
    record.backOffice = 'Y';
    record.contract = m_catalogue.FindContract(request.key);
    OrderEntry& order = Insert(record, RestStateFor(request.orderState, 0), false);
    Outcome outcome;
    Report(outcome, order, "added");
    return outcome;
}

Outcome Ledger::ModifyOrder(OrderEntry& order, const OrderRecord& request) {
    if (std::string refusal = CheckEntry(request, &order); !refusal.empty()) {
        return Refused(refusal);
    }
    OrderRecord& record = order.record;
    const ContractKey oldKey = TidyKey(record.key);
    const ContractKey newKey = TidyKey(request.key);
    if (record.orderType == kExercise) {
        return Refused("an exercise is removed and entered again, not modified");
    }
    if (!order.fills.empty() && SignedBytes(oldKey) != SignedBytes(newKey)) {
        return Refused("the contract of an order with fills cannot change");
    }
    if (!order.fills.empty() && record.direction != request.direction) {
        return Refused("the direction of an order with fills cannot change");
    }
    if (request.orderQty < record.fillQty) {
        return Refused("the quantity is below what is filled");
    }
    Outcome outcome;
    const bool otherUpper = record.upperNo.View() != request.upperNo.View();
    const auto change = [&] {
        ForgetSystemNo(order);
        const OrderRecord old = record;
        record = request;
        record.text279 = old.text279;
        record.flag614 = old.flag614;
        record.inputOperator = old.inputOperator;
        record.inputTime = old.inputTime;
        record.backOffice = old.backOffice;
        record.contract = m_catalogue.FindContract(request.key);
        if (record.systemNo.Empty()) {
            record.systemNo = old.systemNo;
        }
        RememberSystemNo(order);
        order.restState = RestStateFor(request.orderState, order.restState);
        for (FillEntry* fill : order.fills) {
            fill->record.systemNo = record.systemNo;
            if (otherUpper) {
                fill->record.upperNo = record.upperNo;
                fill->bookedUpper = record.upperNo.Str();
            }
        }
        UpdateFilled(order);
    };
    if (otherUpper) {
        Rebook(order, outcome, change);
    } else {
        change();
    }
    Report(outcome, order, "changed");
    return outcome;
}

Outcome Ledger::MoveOrder(OrderEntry& order, const OrderRecord& request) {
    OrderRecord moved = order.record;
    moved.accountNo = request.accountNo;
    moved.key.sign = request.key.sign;
    if (!request.upperNo.Empty()) {
        moved.upperNo = request.upperNo;
    }
    moved.updateOperator = request.updateOperator;
    moved.updateTime = request.updateTime;
    if (std::string refusal = CheckEntry(moved, &order); !refusal.empty()) {
        return Refused(refusal);
    }
    Outcome outcome;
    Rebook(order, outcome, [&] {
        const bool exercise = order.record.orderType == kExercise;
        moved.contract = exercise ? order.record.contract : m_catalogue.FindContract(moved.key);
        order.record = moved;
        for (FillEntry* fill : order.fills) {
            fill->record.accountNo = moved.accountNo;
            fill->record.key.sign = moved.key.sign;
            fill->bookedLeg.sign = moved.key.sign;
            fill->record.upperNo = moved.upperNo;
            fill->bookedUpper = moved.upperNo.Str();
        }
    });
    Report(outcome, order, "changed");
    return outcome;
}

Outcome Ledger::DeleteOrder(std::uint32_t orderNo) {
    OrderEntry* order = FindOrder(orderNo);
    if (!order) {
        return Refused("order " + std::to_string(orderNo) + " does not exist");
    }
    if (order->fills.empty()) {
        return Refused("order " + std::to_string(orderNo) + " has no fills");
    }
    Outcome outcome;
    const std::vector<FillEntry*> fills = order->fills;
    for (FillEntry* fill : fills) {
        Take(*fill, outcome);
    }
    Report(outcome, *order, "changed");
    return outcome;
}

OrderEntry& Ledger::Insert(const OrderRecord& source, char restState, bool madeFromFill) {
    OrderEntry& order = m_orders.emplace_back(OrderEntry{source, restState, madeFromFill, {}});
    OrderRecord& record = order.record;
    record.key = TidyKey(record.key);
    if (record.systemNo.Empty()) {
        record.systemNo.Set("H_" + std::to_string(record.orderNo));
    }
    m_ordersByNo.emplace(+record.orderNo, &order);
    RememberSystemNo(order);
    UpdateFilled(order);
    return order;
}

void Ledger::RememberSystemNo(OrderEntry& order) {
    m_ordersBySystemNo[order.record.systemNo.Str()].push_back(&order);
}

void Ledger::ForgetSystemNo(OrderEntry& order) {
    std::erase(m_ordersBySystemNo[order.record.systemNo.Str()], &order);
}

template <typename Action>
void Ledger::Rebook(OrderEntry& order, Outcome& outcome, Action change) {
    for (FillEntry* fill : order.fills) {
        TakeOffPositions(*fill, outcome);
    }
    change();
    for (FillEntry* fill : order.fills) {
        PutOnPositions(*fill, outcome);
        outcome.changes.push_back(
            {"fill", fill->record.fillNo.Str(), "changed",
             "account " + fill->record.accountNo.Str() + ", upper " + fill->bookedUpper});
    }
}

void Ledger::PutOnPositions(FillEntry& fill, Outcome& outcome) {
    const FillRecord& record = fill.record;
    const double closeFirst = record.carryPair != 0 ? record.closePrice : 0;
    Note(outcome,
         m_positions.Add(MakeLineKey(record.accountNo.View(), fill.bookedLeg), fill.bookedUpper,
                         {fill.sequence, record.direction, record.fillPrice, record.fillQty, closeFirst}));
}

void Ledger::TakeOffPositions(FillEntry& fill, Outcome& outcome) {
    Note(outcome, m_positions.Remove(MakeLineKey(fill.record.accountNo.View(), fill.bookedLeg),
                                     fill.bookedUpper, fill.sequence));
}

std::uint32_t Ledger::LegQty(const OrderEntry& order, int leg) const {
    std::uint32_t sum = 0;
    for (const FillEntry* fill : order.fills) {
        sum += fill->leg == leg ? fill->record.fillQty : 0;
    }
    return sum;
}

void Ledger::UpdateFilled(OrderEntry& order) const {
    OrderRecord& record = order.record;
    std::uint32_t filled = LegQty(order, 0);
    if (record.orderType != kExercise && HasTwoLegs(record.key.commodityType)) {
        filled = std::min(filled, LegQty(order, 1));
    }
    double amount = 0;
    double single = 0;
    std::uint32_t qty = 0;
    bool samePrice = true;
    for (const FillEntry* fill : order.fills) {
        if (fill->leg == 0) {
            samePrice = samePrice && (qty == 0 || fill->record.fillPrice == single);
            single = fill->record.fillPrice;
            amount += single * fill->record.fillQty;
            qty += fill->record.fillQty;
        }
    }
    record.fillQty = filled;
    record.fillPrice = qty == 0 ? 0 : samePrice ? single : amount / qty;
    record.orderState = filled == 0                     ? order.restState
                        : filled >= record.orderQty     ? kFilled
                        : order.restState == kCancelled ? kRestCancelled
                                                        : kPartlyFilled;
}
