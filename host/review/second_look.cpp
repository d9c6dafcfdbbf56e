#include "review/second_look.h"

#include "book/contract_part.h"
#include "book/host_text.h"
#include "book/price_format.h"
#include "services/wording.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace {

constexpr std::int64_t kRecentSeconds = 120;
constexpr std::size_t kOrdersForHabit = 3;  // fewer orders of an account say nothing about its habits
constexpr std::uint32_t kUnusualTimes = 5;
constexpr double kFarShare = 0.05;
constexpr double kFarShareOfOption = 0.5;
constexpr char kMarketOrder = '1';
constexpr char kLimitOrder = '2';
constexpr char kStopOrder = '3';
constexpr char kLimitStopOrder = '4';
constexpr char kExercise = '5';
constexpr char kFillPrice[] = "fill price";

bool HasOrderPrice(char orderType) {
    return orderType == kLimitOrder || orderType == kLimitStopOrder;
}

bool HasTriggerPrice(char orderType) {
    return orderType == kStopOrder || orderType == kLimitStopOrder;
}

bool IsFilledState(char state) {
    return state == '5' || state == '6' || state == 'A';
}

bool IsOption(char commodityType) {
    return commodityType == CommodityType::kOption;
}

// The legs of these pairs are bought or sold together; those of every other pair on opposite sides.
bool LegsOnOneSide(char commodityType) {
    return commodityType == CommodityType::kStraddle || commodityType == CommodityType::kStrangle;
}

// The order or fill that the request made; empty when it changed what was there.
std::string AddedId(const JournalEntry& entry, std::string_view kind) {
    for (const Change& change : entry.changes) {
        if (change.kind == kind && change.what == "added") {
            return change.id;
        }
    }
    return {};
}

template <typename Record>
Record CopyOf(const void* bytes) {
    Record record;
    std::memcpy(&record, bytes, sizeof record);
    return record;
}

bool Names(const std::vector<ShownPrice>& shown, std::string_view name) {
    return std::any_of(shown.begin(), shown.end(),
                       [&](const ShownPrice& price) { return price.name == name; });
}

// In the record 97+9/8 is 98.125 like any other, and no position price is like one that was not given.
std::string DoubtOf(const ShownPrice& price) {
    const long numerator = std::strtol(price.numerator.c_str(), nullptr, 10);
    const long denominator = std::strtol(price.denominator.c_str(), nullptr, 10);
    if (!price.numerator.empty() && numerator >= denominator) {
        return Say("numerator %1 of the %2 is not below its denominator %3",
                   {price.numerator, Say(price.name), price.denominator});
    }
    if (price.ofPosition && numerator == 0 && std::atof(price.whole.c_str()) == 0) {
        return Say("a position is chosen without a %1", {Say(price.name)});
    }
    return {};
}

}  // namespace

std::vector<std::string> SecondLook::Look(const JournalEntry& entry, std::int64_t now,
                                          const std::vector<ShownPrice>& shown) {
    std::vector<std::string> remarks;
    const auto remark = [&](const std::string& text) {
        if (!text.empty()) {
            remarks.push_back(text);
        }
    };
    if (!entry.record || !entry.note.empty() || entry.operation == "RemoveFill") {
        return remarks;
    }
    Forget(now);
    if (entry.layout == &OrderLayout()) {
        auto order = CopyOf<OrderRecord>(entry.record);
        if (entry.operation != "SendExercise") {
            order.contract = nullptr;  // only an exercise has it checked
        }
        const std::string added = AddedId(entry, "order");
        const Recent request = Describe(entry, order, now);
        if (!added.empty()) {
            remark(SameAgain(request));
            remark(LooseLegs(request));
            m_recent.push_back(request);
        }
        remark(UnusualQty(order, added.empty() ? order.orderNo : std::stoul(added)));
        if (request.legs.size() == 1 && order.orderType != kMarketOrder && order.orderType != kExercise) {
            remark(FarPrice(request.legs[0], order.orderPrice, ""));
        }
        if (HasTriggerPrice(order.orderType) && order.triggerPrice == 0) {
            remark(Say("a stop order with trigger price 0"));
        }
        remark(FillPriceOf(order, Names(shown, kFillPrice)));
    } else if (entry.layout == &FillLayout()) {
        const auto fill = CopyOf<FillRecord>(entry.record);
        const Recent request = Describe(entry, fill, now);
        remark(SameAgain(request));
        remark(FarPrice(request.legs[0], fill.fillPrice, AddedId(entry, "fill")));
        m_recent.push_back(request);
    }
    for (const ShownPrice& price : shown) {
        remark(DoubtOf(price));
    }
    return remarks;
}

SecondLook::Recent SecondLook::Describe(const JournalEntry& entry, const OrderRecord& order,
                                        std::int64_t now) const {
    Recent request{now, entry.operation, order.accountNo.Str(), "",
                   {},  order.direction, order.orderPrice,      order.orderQty};
    for (const SingleContractKey& leg : m_book.ledger.LegsOf(order)) {
        request.legs.push_back(m_book.ledger.BookedLeg(leg));
        request.contract += order.key.sign.Str() + ' ' + ContractName(request.legs.back()) + ' ';
    }
    return request;
}

SecondLook::Recent SecondLook::Describe(const JournalEntry& entry, const FillRecord& fill,
                                        std::int64_t now) const {
    const SingleContractKey leg = m_book.ledger.BookedLeg(fill.key);
    return {now,   entry.operation, fill.accountNo.Str(), leg.sign.Str() + ' ' + ContractName(leg),
            {leg}, fill.direction,  fill.fillPrice,       fill.fillQty};
}

void SecondLook::Forget(std::int64_t now) {
    while (!m_recent.empty() && now - m_recent.front().when > kRecentSeconds) {
        m_recent.pop_front();
    }
}

std::string SecondLook::SameAgain(const Recent& request) const {
    for (auto other = m_recent.rbegin(); other != m_recent.rend(); ++other) {
        if (other->operation == request.operation && other->account == request.account &&
            other->contract == request.contract && other->direction == request.direction &&
            other->qty == request.qty && SamePrice(other->price, request.price)) {
            return Say("the same was entered %1 s before", {std::to_string(request.when - other->when)});
        }
    }
    return {};
}

std::string SecondLook::UnusualQty(const OrderRecord& order, std::uint32_t ownNo) const {
    std::vector<std::uint32_t> quantities;
    for (const OrderEntry& other : m_book.ledger.Orders()) {
        if (other.record.orderNo != ownNo && other.record.accountNo.View() == order.accountNo.View()) {
            quantities.push_back(other.record.orderQty + 0);  // copied out: it is packed
        }
    }
    if (quantities.size() < kOrdersForHabit) {
        return {};
    }
    const auto middle = quantities.begin() + static_cast<std::ptrdiff_t>(quantities.size() / 2);
    std::nth_element(quantities.begin(), middle, quantities.end());
    const std::uint64_t limit = std::uint64_t{*middle} * kUnusualTimes;
    if (order.orderQty <= limit) {
        return {};
    }
    return Say(
        "quantity %1 is far above the usual %2 of account %3",
        {std::to_string(order.orderQty), std::to_string(*middle), Utf8FromAnsi(order.accountNo.View())});
}

std::string SecondLook::FarPrice(const SingleContractKey& leg, double price,
                                 std::string_view ownFillNo) const {
    const FillEntry* last = nullptr;
    for (const FillEntry* fill : m_book.ledger.Fills()) {
        if (fill->record.fillNo.View() != ownFillNo && SameLeg(fill->bookedLeg, leg)) {
            last = fill;
        }
    }
    if (!last) {
        return {};
    }
    const double lastPrice = last->record.fillPrice;
    const double share = IsOption(leg.commodityType) ? kFarShareOfOption : kFarShare;
    if (std::fabs(price - lastPrice) <= std::fabs(lastPrice) * share) {
        return {};
    }
    const CommodityRecord* commodity = m_book.catalogue.FindCommodity(CommodityOf(leg));
    return Say("price %1 is far from the last, %2",
               {PriceText(price, commodity), PriceText(lastPrice, commodity)});
}

// The dialog puts the order price into the fill price when a state with fills is chosen and when such an
// order is opened. What the operator makes of it afterwards may be right, so both cases are told apart by
// their order: one that has fills is compared with them. A pair's own price says nothing about that of its
// leg.
std::string SecondLook::FillPriceOf(const OrderRecord& order, bool canBeEntered) const {
    if (!IsFilledState(order.orderState) || !HasOrderPrice(order.orderType)) {
        return {};
    }
    const CommodityRecord* commodity = m_book.catalogue.FindCommodity(CommodityOf(order.key));
    const auto text = [&](double price) { return PriceText(price, commodity); };
    const OrderEntry* booked = order.orderNo ? m_book.ledger.FindOrder(order.orderNo) : nullptr;
    if (booked && !booked->fills.empty()) {
        const double bookedPrice = booked->record.fillPrice;
        const bool follows = std::trunc(order.fillPrice) == std::trunc(order.orderPrice);
        return canBeEntered && follows && !SamePrice(order.fillPrice, bookedPrice)
                   ? Say("fill price %1 is that of the order, which was filled at %2",
                         {text(order.fillPrice), text(bookedPrice)})
                   : "";
    }
    return HasTwoLegs(order.key.commodityType) || SamePrice(order.fillPrice, order.orderPrice)
               ? ""
               : Say("fill price %1 differs from the order price %2",
                     {text(order.fillPrice), text(order.orderPrice)});
}

// On a forward market opposite trades in two dates are a carry, which has a dialog of its own and no
// contract.
std::string SecondLook::LooseLegs(const Recent& request) const {
    if (request.legs.size() != 1) {
        return {};
    }
    const SingleContractKey& leg = request.legs[0];
    const ExchangeRecord* exchange = m_book.catalogue.FindExchange({leg.sign, leg.exchangeNo});
    if (exchange && exchange->forwardMarket) {
        return {};
    }
    for (auto other = m_recent.rbegin(); other != m_recent.rend(); ++other) {
        if (other->operation != request.operation || other->account != request.account ||
            other->qty != request.qty || other->legs.size() != 1 || SameLeg(other->legs[0], leg)) {
            continue;
        }
        const bool oneSide = other->direction == request.direction;
        for (const Entry<ContractRecord>& contract : m_book.catalogue.contracts) {
            OrderRecord probe{};
            probe.key = contract.record.key;
            if (!HasTwoLegs(probe.key.commodityType) || LegsOnOneSide(probe.key.commodityType) != oneSide) {
                continue;
            }
            const std::vector<SingleContractKey> legs = m_book.ledger.LegsOf(probe);
            if (legs.size() == 2 && ((SameLeg(legs[0], leg) && SameLeg(legs[1], other->legs[0])) ||
                                     (SameLeg(legs[1], leg) && SameLeg(legs[0], other->legs[0])))) {
                return Say(
                    "with the order entered %1 s before this looks like the spread %2",
                    {std::to_string(request.when - other->when), Utf8FromAnsi(ContractName(probe.key))});
            }
        }
    }
    return {};
}
