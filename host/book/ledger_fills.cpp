#include "book/contract_part.h"
#include "book/ledger.h"
#include "book/ledger_terms.h"
#include "book/price_format.h"
#include "book/record_fields.h"

#include <algorithm>

// How the ledger deals with fills: the order that a fill belongs to, booking and removal, exercise.

namespace {

// "B 5 at 2514"
template <typename Key>
std::string TradeText(const Catalogue& catalogue, const Key& key, char direction, std::uint32_t qty,
                      double price) {
    return std::string(1, direction) + ' ' + std::to_string(qty) + " at " +
           PriceText(price, catalogue.FindCommodity(CommodityOf(key)));
}

}  // namespace

OrderEntry* Ledger::OrderOfFill(const FillRecord& fill, std::string& refusal, int& leg) const {
    const auto found = m_ordersBySystemNo.find(fill.systemNo.Str());
    if (found == m_ordersBySystemNo.end()) {
        return nullptr;
    }
    const SingleContractKey booked = BookedLeg(fill.key);
    for (OrderEntry* order : found->second) {
        if (order->record.accountNo.View() != fill.accountNo.View() ||
            order->record.key.sign.View() != fill.key.sign.View()) {
            continue;
        }
        const std::vector<SingleContractKey> legs = LegsOf(order->record);
        for (std::size_t i = 0; i < legs.size(); ++i) {
            if (SameLeg(BookedLeg(legs[i]), booked)) {
                leg = static_cast<int>(i);
                return order;
            }
        }
        if (!order->madeFromFill) {
            refusal = "contract " + Quoted(ContractName(fill.key)) + " is no leg of order " +
                      std::to_string(order->record.orderNo);
        }
    }
    return nullptr;
}

OrderEntry& Ledger::MakeOrderFor(const FillRecord& fill) {
    OrderRecord record{};
    record.key = AsContract(fill.key);
    record.accountNo = fill.accountNo;
    record.orderType = '2';
    record.orderSource = fill.fillSource;
    record.validType = '0';
    record.forcedClose = record.flag137 = record.flag138 = 'N';
    record.direction = fill.direction;
    record.orderPrice = fill.fillPrice;
    record.orderQty = fill.fillQty;
    record.systemNo = fill.systemNo;
    record.upperNo = fill.upperNo;
    record.inputTime = record.updateTime = fill.fillTime;
    record.orderNo = m_next.order++;
    record.backOffice = 'Y';
    record.contract = m_catalogue.FindContract(record.key);
    // Without its fill such an order means nothing, so what is not filled counts as cancelled.
    return Insert(record, '9', true);
}

FillEntry& Ledger::Insert(OrderEntry& order, const FillRecord& record, const SingleContractKey& booked,
                          int leg, std::uint32_t sequence, Outcome& outcome) {
    FillEntry& fill =
        m_fills.emplace_back(FillEntry{record, &order, booked, record.upperNo.Str(), leg, sequence, false});
    fill.record.key = TidyKey(record.key);
    fill.record.order = &order.record;
    m_fillsByNo.emplace(record.fillNo.Str(), &fill);
    order.fills.push_back(&fill);
    PutOnPositions(fill, outcome);
    UpdateFilled(order);
    return fill;
}

void Ledger::Book(OrderEntry& order, FillRecord record, int leg, Outcome& outcome) {
    record.fillNo.Set(FillNumber(m_next.fill++));
    if (record.upperNo.Empty()) {
        record.upperNo = order.record.upperNo;
    }
    Report(outcome, Insert(order, record, BookedLeg(record.key), leg, m_next.sequence++, outcome), "added");
}

void Ledger::Take(FillEntry& fill, Outcome& outcome) {
    TakeOffPositions(fill, outcome);
    fill.removed = true;
    std::erase(fill.order->fills, &fill);
    UpdateFilled(*fill.order);
    Report(outcome, fill, "removed");
}

Outcome Ledger::SendFill(const FillRecord& rawRequest) {
    FillRecord request = rawRequest;
    TerminateTexts(FillLayout(), &request);
    int leg = 0;
    std::string refusal = CheckFill(request);
    OrderEntry* order = refusal.empty() ? OrderOfFill(request, refusal, leg) : nullptr;
    if (order) {
        refusal = CheckFillOfOrder(request, *order, leg);
    }
    if (!refusal.empty()) {
        return Refused(refusal);
    }
    Outcome outcome;
    const bool made = !order;
    if (made) {
        order = &MakeOrderFor(request);
    }
    Book(*order, request, leg, outcome);
    Report(outcome, *order, made ? "added" : "changed");
    return outcome;
}

Outcome Ledger::RemoveFill(std::string_view fillNo, std::string_view accountNo) {
    FillEntry* fill = FindFill(fillNo);
    if (!fill) {
        return Refused("fill " + Quoted(fillNo) + " does not exist");
    }
    if (!accountNo.empty() && fill->record.accountNo.View() != accountNo) {
        return Refused("fill " + Quoted(fillNo) + " is that of account " +
                       Quoted(fill->record.accountNo.View()));
    }
    if (fill->order->record.orderType == kExercise) {
        return Refused("the fills of an exercise are removed together, by its order");
    }
    Outcome outcome;
    Take(*fill, outcome);
    Report(outcome, *fill->order, "changed");
    return outcome;
}

Outcome Ledger::SendExercise(const OrderRecord& rawRequest) {
    OrderRecord request = rawRequest;
    TerminateTexts(OrderLayout(), &request);
    if (request.orderNo != 0) {
        return Refused("an exercise is always a new order");
    }
    if (std::string refusal = CheckEntry(request, nullptr); !refusal.empty()) {
        return Refused(refusal);
    }
    const CommodityRecord* commodity = m_catalogue.FindCommodity(CommodityOf(request.key));
    if (request.key.commodityType != CommodityType::kOption || request.direction == 'A') {
        return Refused("only an option that was bought or sold can be exercised");
    }
    if (!request.contract || !m_catalogue.Owns(request.contract)) {
        return Refused("the request names no underlying contract");
    }
    const ContractKey& underlying = request.contract->key;
    if (underlying.exchangeNo.View() != commodity->relatedExchangeNo.View() ||
        underlying.commodityType != commodity->relatedCommodityType ||
        underlying.commodityNo.View() != commodity->relatedCommodityNo.View()) {
        return Refused("contract " + Quoted(ContractName(underlying)) + " is no underlying of " +
                       Quoted(ContractName(request.key)));
    }
    if (!ReadPriceText(request.key.strikePrice.View())) {
        return Refused("the strike is no price");
    }
    OrderRecord record = request;
    record.orderNo = m_next.order++;
    record.backOffice = 'Y';
    record.orderType = kExercise;
    Outcome outcome;
    OrderEntry& order = Insert(record, '1', false);
    Settle(order, outcome);
    Report(outcome, order, "added");
    return outcome;
}

// The option position shrinks at price 0; the underlying is traded at the strike. Who holds a call buys, who
// holds a put sells, and who had sold the option is on the other side.
void Ledger::Settle(OrderEntry& order, Outcome& outcome) {
    const OrderRecord& exercise = order.record;
    const std::vector<SingleContractKey> legs = LegsOf(exercise);
    const char held = exercise.direction;
    const std::uint32_t open = m_positions.OpenQty(MakeLineKey(exercise.accountNo.View(), BookedLeg(legs[0])),
                                                   held, exercise.upperNo.View());
    const std::uint32_t qty = std::min(open, +exercise.orderQty);
    if (qty == 0) {
        return;
    }
    const double strike = ReadPriceText(exercise.key.strikePrice.View()).value_or(0);
    const char underlyingSide = exercise.key.optionType == 'C' ? held : Opposite(held);
    for (int leg = 0; leg < 2; ++leg) {
        FillRecord fill{};
        fill.key = legs[leg];
        fill.accountNo = exercise.accountNo;
        fill.fillSource = 'D';
        fill.direction = leg == 0 ? Opposite(held) : underlyingSide;
        fill.flag111 = 'N';
        fill.exchangeFillNo.Set("D_" + std::to_string(exercise.orderNo) + "_" + std::to_string(leg + 1));
        fill.fillTime = exercise.updateTime;
        fill.fillPrice = leg == 0 ? 0 : strike;
        fill.fillQty = qty;
        fill.feeGiven = 'N';
        fill.upperNo = exercise.upperNo;
        fill.systemNo = exercise.systemNo;
        Book(order, fill, leg, outcome);
    }
}

void Ledger::Report(Outcome& outcome, const OrderEntry& order, const char* what) const {
    const OrderRecord& record = order.record;
    outcome.orderNo = record.orderNo;
    outcome.changes.push_back(
        {"order", std::to_string(record.orderNo), what,
         record.accountNo.Str() + ' ' + ContractName(record.key) + ' ' +
             TradeText(m_catalogue, record.key, record.direction, record.orderQty, record.orderPrice) +
             ", filled " + std::to_string(record.fillQty) + ", " +
             std::string(WordOf(Words::kState, record.orderState))});
    for (const PositionEntry* row : outcome.positions) {
        const PositionRecord& position = row->record;
        outcome.changes.push_back(
            {"position", position.accountNo.Str() + ' ' + ContractName(position.key),
             position.openQty == 0 ? "removed" : "changed",
             TradeText(m_catalogue, position.key, position.direction, position.openQty, position.price) +
                 ", upper " + row->upperNo});
    }
}

void Ledger::Report(Outcome& outcome, const FillEntry& fill, const char* what) const {
    const FillRecord& record = fill.record;
    outcome.changes.push_back(
        {"fill", record.fillNo.Str(), what,
         record.accountNo.Str() + ' ' + ContractName(record.key) + ' ' +
             TradeText(m_catalogue, record.key, record.direction, record.fillQty, record.fillPrice)});
}
