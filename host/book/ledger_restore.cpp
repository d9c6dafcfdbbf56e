#include "book/contract_part.h"
#include "book/ledger.h"
#include "book/ledger_terms.h"

#include <stdexcept>

// How a saved ledger is restored.

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
    if (restState == 0 || restState == kPartlyFilled || restState == kFilled || restState == kRestCancelled) {
        throw std::invalid_argument("restState is none of a state without fills");
    }
    OrderRecord record = order;
    if (record.orderType != kExercise) {
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
        throw std::invalid_argument("fill number " + Quoted(fillNo) + " is empty or used twice");
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
        throw std::invalid_argument("contract " + Quoted(ContractName(saved.key)) +
                                    " is no leg of its order");
    }
    if (LegQty(*order, static_cast<int>(leg)) + saved.fillQty > order->record.orderQty) {
        throw std::invalid_argument("the order would be filled beyond its quantity");
    }
    SingleContractKey booked = TidyKey(saved.key);
    booked.contractNo.Set(bookedContractNo);
    Outcome ignored;
    Insert(*order, saved, booked, static_cast<int>(leg), sequence, ignored);
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
