#include "book/contract_part.h"
#include "book/ledger.h"
#include "book/price_format.h"
#include "book/record_fields.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <stdexcept>

// How the ledger deals with fills: the order that a fill belongs to, booking and removal,
// exercise; and how a saved ledger is restored.

namespace {

constexpr char kExerciseType = '5';

char Opposite(char direction) {
    return direction == 'B' ? 'S' : direction == 'S' ? 'B' : direction;
}

std::string Text(std::string_view view) {
    return '\'' + std::string(view) + '\'';
}

ContractKey AsContract(const SingleContractKey& leg) {
    ContractKey key{};
    key.sign = leg.sign;
    key.exchangeNo = leg.exchangeNo;
    key.commodityType = leg.commodityType;
    key.commodityNo = leg.commodityNo;
    key.contractNo = leg.contractNo;
    key.strikePrice = leg.strikePrice;
    key.optionType = leg.optionType;
    return TidyKey(key);
}

std::string FillNumber(std::uint32_t number) {
    char text[16];
    std::snprintf(text, sizeof text, "F%08u", number);
    return text;
}

}  // namespace

std::string Ledger::CheckFill(const FillRecord& request) const {
    const std::string_view sign = request.key.sign.View();
    const UserRecord* user = m_catalogue.FindAccount(request.accountNo.View(), sign);
    if (!user) {
        return "account " + Text(request.accountNo.View()) + " is not known under sign " + Text(sign);
    }
    if (!user->group || user->group->tradable != 'Y') {
        return "account " + Text(request.accountNo.View()) + " may not trade";
    }
    if (request.systemNo.Empty()) {
        return "the fill has no system number";
    }
    if (request.fillQty == 0) {
        return "the quantity is 0";
    }
    if (request.direction != 'B' && request.direction != 'S') {
        return "the direction is none of B, S";
    }
    if (!std::isfinite(request.fillPrice)) {
        return "the price is not a number";
    }
    if (!request.upperNo.Empty() && !m_catalogue.FindUpper(request.upperNo.View(), sign)) {
        return "upper " + Text(request.upperNo.View()) + " is not known under sign " + Text(sign);
    }
    if (!request.currencyNo.Empty() && !m_catalogue.FindCurrency(request.currencyNo.View(), sign)) {
        return "currency " + Text(request.currencyNo.View()) + " is not known under sign " + Text(sign);
    }
    if (!m_catalogue.FindContract(AsContract(request.key))) {
        return "contract " + Text(ContractName(request.key)) + " is not known under sign " + Text(sign);
    }
    return {};
}

std::string Ledger::CheckFillOfOrder(const FillRecord& request, const OrderEntry& order, int leg) const {
    const std::string name = "order " + std::to_string(order.record.orderNo);
    if (order.record.orderType == kExerciseType) {
        return name + " is an exercise, which is settled by the server";
    }
    if (order.restState == 'B') {
        return name + " was rejected";
    }
    const char expected = leg == 0 ? order.record.direction : Opposite(order.record.direction);
    if (order.record.direction != 'A' && request.direction != expected) {
        return std::string("this leg of ") + name + " trades " + expected;
    }
    const std::uint32_t open = order.record.orderQty - std::min(LegQty(order, leg), +order.record.orderQty);
    if (request.fillQty > open) {
        return name + " has only " + std::to_string(open) + " left to fill";
    }
    return {};
}

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
            refusal = "contract " + Text(ContractName(fill.key)) + " is no leg of order " +
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

FillEntry& Ledger::Book(OrderEntry& order, FillRecord record, int leg, Outcome& outcome) {
    record.key = TidyKey(record.key);
    record.fillNo.Set(FillNumber(m_next.fill++));
    record.order = &order.record;
    if (record.upperNo.Empty()) {
        record.upperNo = order.record.upperNo;
    }
    FillEntry& fill = m_fills.emplace_back(FillEntry{record, &order, BookedLeg(record.key),
                                                     record.upperNo.Str(), leg, m_next.sequence++, false});
    m_fillsByNo.emplace(fill.record.fillNo.Str(), &fill);
    order.fills.push_back(&fill);
    PutOnPositions(fill, outcome);
    UpdateFilled(order);
    Report(outcome, fill, "added");
    return fill;
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
        return Refused("fill " + Text(fillNo) + " does not exist");
    }
    if (!accountNo.empty() && fill->record.accountNo.View() != accountNo) {
        return Refused("fill " + Text(fillNo) + " is that of account " + Text(fill->record.accountNo.View()));
    }
    if (fill->order->record.orderType == kExerciseType) {
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
    std::string refusal = CheckOrder(request);
    refusal = refusal.empty() ? CheckSystemNo(request, nullptr) : refusal;
    if (!refusal.empty()) {
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
        return Refused("contract " + Text(ContractName(underlying)) + " is no underlying of " +
                       Text(ContractName(request.key)));
    }
    if (!ReadPriceText(request.key.strikePrice.View())) {
        return Refused("the strike is no price");
    }
    OrderRecord record = request;
    record.orderNo = m_next.order++;
    record.backOffice = 'Y';
    record.orderType = kExerciseType;
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
                                                   exercise.upperNo.View(), held);
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
    const CommodityRecord* commodity = m_catalogue.FindCommodity(CommodityOf(record.key));
    outcome.changes.push_back({"order", std::to_string(record.orderNo), what,
                               record.accountNo.Str() + ' ' + ContractName(record.key) + ' ' +
                                   record.direction + ' ' + std::to_string(record.orderQty) + " at " +
                                   PriceText(record.orderPrice, commodity) + ", filled " +
                                   std::to_string(record.fillQty) + ", " +
                                   std::string(WordOf(Words::kState, record.orderState))});
    for (const PositionEntry* row : outcome.positions) {
        const PositionRecord& position = row->record;
        const CommodityRecord* of = m_catalogue.FindCommodity(CommodityOf(position.key));
        outcome.changes.push_back({"position", position.accountNo.Str() + ' ' + ContractName(position.key),
                                   position.openQty == 0 ? "removed" : "changed",
                                   std::string(1, position.direction) + ' ' +
                                       std::to_string(position.openQty) + " at " +
                                       PriceText(position.price, of) + ", upper " + row->upperNo});
    }
}

void Ledger::Report(Outcome& outcome, const FillEntry& fill, const char* what) const {
    const FillRecord& record = fill.record;
    const CommodityRecord* commodity = m_catalogue.FindCommodity(CommodityOf(record.key));
    outcome.changes.push_back({"fill", record.fillNo.Str(), what,
                               record.accountNo.Str() + ' ' + ContractName(record.key) + ' ' +
                                   record.direction + ' ' + std::to_string(record.fillQty) + " at " +
                                   PriceText(record.fillPrice, commodity)});
}

void Ledger::RestoreOpening(const OpeningPosition& opening) {
    m_positions.AddOpening(opening);
}

void Ledger::RestoreOrder(const OrderRecord& order, char restState, bool madeFromFill) {
    const std::string refusal = CheckOrder(order);
    if (!refusal.empty()) {
        throw std::invalid_argument(refusal);
    }
    if (order.orderNo == 0 || FindOrder(order.orderNo)) {
        throw std::invalid_argument("order number " + std::to_string(order.orderNo) + " is 0 or used twice");
    }
    if (restState == 0 || restState == '5' || restState == '6' || restState == 'A') {
        throw std::invalid_argument("restState is none of a state without fills");
    }
    OrderRecord record = order;
    if (record.orderType != kExerciseType) {
        record.contract = m_catalogue.FindContract(order.key);
    }
    Insert(record, restState, madeFromFill);
}

void Ledger::RestoreFill(const FillRecord& saved, std::uint32_t orderNo, std::uint32_t sequence,
                         std::string_view bookedContractNo) {
    OrderEntry* order = FindOrder(orderNo);
    if (!order) {
        throw std::invalid_argument("order " + std::to_string(orderNo) + " does not exist");
    }
    const std::string fillNo = saved.fillNo.Str();
    if (fillNo.empty() || FindFill(fillNo)) {
        throw std::invalid_argument("fill number " + Text(fillNo) + " is empty or used twice");
    }
    if (saved.fillQty == 0 || (saved.direction != 'B' && saved.direction != 'S')) {
        throw std::invalid_argument("the fill has no quantity or no direction");
    }
    const std::vector<SingleContractKey> legs = LegsOf(order->record);
    std::size_t leg = 0;
    while (leg < legs.size() && !SameLeg(legs[leg], saved.key)) {
        ++leg;
    }
    if (leg == legs.size()) {
        throw std::invalid_argument("contract " + Text(ContractName(saved.key)) + " is no leg of its order");
    }
    if (LegQty(*order, static_cast<int>(leg)) + saved.fillQty > order->record.orderQty) {
        throw std::invalid_argument("the order would be filled beyond its quantity");
    }
    FillRecord record = saved;
    record.key = TidyKey(record.key);
    record.order = &order->record;
    SingleContractKey booked = record.key;
    booked.contractNo.Set(bookedContractNo);
    FillEntry& fill = m_fills.emplace_back(
        FillEntry{record, order, booked, record.upperNo.Str(), static_cast<int>(leg), sequence, false});
    m_fillsByNo.emplace(fillNo, &fill);
    order->fills.push_back(&fill);
    Outcome ignored;
    PutOnPositions(fill, ignored);
    UpdateFilled(*order);
}

void Ledger::RestoreNumbers(const NextNumbers& numbers) {
    for (const OrderEntry& order : m_orders) {
        if (order.record.orderNo >= numbers.order) {
            throw std::invalid_argument("nextNumbers.order is not above order " +
                                        std::to_string(order.record.orderNo));
        }
    }
    for (const FillEntry& fill : m_fills) {
        if (fill.sequence >= numbers.sequence || fill.record.fillNo.View() >= FillNumber(numbers.fill)) {
            throw std::invalid_argument("nextNumbers.fill or .sequence is not above fill " +
                                        fill.record.fillNo.Str());
        }
    }
    m_next = numbers;
}
