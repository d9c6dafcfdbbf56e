#include "book/contract_part.h"
#include "book/ledger.h"
#include "book/ledger_terms.h"

#include <algorithm>
#include <cmath>

// The reasons for which the ledger refuses a request.

namespace {

std::string NotKnown(const char* what, std::string_view name, std::string_view sign) {
    return what + (' ' + Quoted(name)) + " is not known under sign " + Quoted(sign);
}

std::string CheckAccount(const Catalogue& catalogue, std::string_view accountNo, std::string_view sign) {
    const UserRecord* user = catalogue.FindAccount(accountNo, sign);
    if (!user) {
        return NotKnown("account", accountNo, sign);
    }
    const bool tradable = user->group && user->group->tradable == 'Y';
    return tradable ? "" : "account " + Quoted(accountNo) + " may not trade";
}

}  // namespace

std::string Ledger::CheckOrder(const OrderRecord& request) const {
    const std::string_view sign = request.key.sign.View();
    if (std::string refusal = CheckAccount(m_catalogue, request.accountNo.View(), sign); !refusal.empty()) {
        return refusal;
    }
    if (!m_catalogue.FindContract(request.key)) {
        return NotKnown("contract", ContractName(request.key), sign);
    }
    if (!m_catalogue.FindUpper(request.upperNo.View(), sign)) {
        return NotKnown("upper", request.upperNo.View(), sign);
    }
    if (request.orderQty == 0) {
        return "the quantity is 0";
    }
    if (request.direction != 'B' && request.direction != 'S' && request.direction != 'A') {
        return "the direction is none of B, S, A";
    }
    if (!std::isfinite(request.orderPrice) || !std::isfinite(request.triggerPrice)) {
        return "a price is not a number";
    }
    return {};
}

std::string Ledger::CheckEntry(const OrderRecord& request, const OrderEntry* self) const {
    if (std::string refusal = CheckOrder(request); !refusal.empty()) {
        return refusal;
    }
    const auto found = m_ordersBySystemNo.find(request.systemNo.Str());
    if (found != m_ordersBySystemNo.end() && !request.systemNo.Empty()) {
        for (const OrderEntry* other : found->second) {
            if (other != self && other->record.accountNo.View() == request.accountNo.View()) {
                return "system number " + Quoted(request.systemNo.View()) + " is that of order " +
                       std::to_string(other->record.orderNo);
            }
        }
    }
    return {};
}

std::string Ledger::CheckFill(const FillRecord& request) const {
    const std::string_view sign = request.key.sign.View();
    if (std::string refusal = CheckAccount(m_catalogue, request.accountNo.View(), sign); !refusal.empty()) {
        return refusal;
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
        return NotKnown("upper", request.upperNo.View(), sign);
    }
    if (!request.currencyNo.Empty() && !m_catalogue.FindCurrency(request.currencyNo.View(), sign)) {
        return NotKnown("currency", request.currencyNo.View(), sign);
    }
    if (!m_catalogue.FindContract(AsContract(request.key))) {
        return NotKnown("contract", ContractName(request.key), sign);
    }
    return {};
}

std::string Ledger::CheckFillOfOrder(const FillRecord& request, const OrderEntry& order, int leg) const {
    const std::string name = "order " + std::to_string(order.record.orderNo);
    if (order.record.orderType == kExercise) {
        return name + " is an exercise, which is settled by the server";
    }
    if (order.restState == kRejected) {
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
