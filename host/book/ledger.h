#pragma once

#include "book/catalogue.h"
#include "book/positions.h"
#include "trade/fill_record.h"
#include "trade/order_record.h"

#include <deque>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

struct OrderEntry;

// A fill of the book.
struct FillEntry {
    FillRecord record;
    OrderEntry* order;
    SingleContractKey bookedLeg;  // as the record's, with the date in place of "3M"
    std::string bookedUpper;
    int leg;                 // 0 or 1: which leg of its order it fills
    std::uint32_t sequence;  // order of booking
    bool removed;            // kept for its address, in no list any more
};

// An order of the book.
struct OrderEntry {
    OrderRecord record;
    char restState;                 // state of what is not filled: never '5', '6' or 'A'
    bool madeFromFill;              // was entered by the server for a fill that named no order
    std::vector<FillEntry*> fills;  // in the order of booking
};

// One thing that a request changed, for the journal.
struct Change {
    std::string kind;  // "order", "fill" or "position"
    std::string id;    // order number, fill number, or account and contract of a position
    std::string what;  // "added", "changed" or "removed"
    std::string text;  // what it is now
};

// What became of a request. A refused one has a reason and has changed nothing.
struct Outcome {
    std::string refusal;
    std::vector<Change> changes;
    std::vector<PositionEntry*> positions;  // rows whose quantity changed, each once
    std::uint32_t orderNo = 0;              // the order that was entered or changed
    bool Accepted() const { return refusal.empty(); }
};
Outcome Refused(std::string reason);

// The numbers that are given next; a number that was given is never given again.
struct NextNumbers {
    std::uint32_t order = 1001;
    std::uint32_t fill = 1;
    std::uint32_t sequence = 1;
};

// Orders, fills and positions, and what each request does to them (docs/host.md has the rules in full).
// Records keep their address while the ledger lives. Texts of a request are read bounded; its pointers are
// not followed.
class Ledger {
public:
    explicit Ledger(const Catalogue& catalogue) : m_catalogue(catalogue) {}
    Ledger(const Ledger&) = delete;
    Ledger& operator=(const Ledger&) = delete;

    // Order number 0: a new order. Otherwise a modification, or a move when the account is another.
    Outcome SendOrder(const OrderRecord& request);
    // Takes the fills of the order away.
    Outcome DeleteOrder(std::uint32_t orderNo);
    Outcome SendFill(const FillRecord& request);
    // `accountNo` may be empty; otherwise it must be the fill's.
    Outcome RemoveFill(std::string_view fillNo, std::string_view accountNo);
    // Enters an exercise and settles what the position allows; the request's contract is the underlying.
    Outcome SendExercise(const OrderRecord& request);

    OrderEntry* FindOrder(std::uint32_t orderNo) const;
    FillEntry* FindFill(std::string_view fillNo) const;
    const std::deque<OrderEntry>& Orders() const { return m_orders; }
    std::vector<FillEntry*> Fills() const;  // those that are not removed, in the order of booking
    const Positions& AllPositions() const { return m_positions; }
    // The leg with the prompt date that "3M" stands for under its sign now.
    SingleContractKey BookedLeg(const SingleContractKey& leg) const;
    // The legs of an order's contract: one, or the first and the second; for an exercise the option and the
    // underlying. Quoted first is leg 0 unless the commodity says otherwise.
    std::vector<SingleContractKey> LegsOf(const OrderRecord& order) const;

    // Restoring a saved book: throws std::invalid_argument with the reason.
    void RestoreOpening(const OpeningPosition& opening);
    void RestoreOrder(const OrderRecord& order, char restState, bool madeFromFill);
    void RestoreFill(const FillRecord& fill, std::uint32_t orderNo, std::uint32_t sequence,
                     std::string_view bookedContractNo);
    void RestoreNumbers(const NextNumbers& numbers);
    const NextNumbers& Numbers() const { return m_next; }

private:
    // The reasons for which a request is refused; empty when there is none.
    std::string CheckOrder(const OrderRecord& request) const;
    // Also that no order but `self` has the system number.
    std::string CheckEntry(const OrderRecord& request, const OrderEntry* self) const;
    std::string CheckFill(const FillRecord& request) const;
    std::string CheckFillOfOrder(const FillRecord& request, const OrderEntry& order, int leg) const;

    Outcome EnterOrder(const OrderRecord& request);
    Outcome ModifyOrder(OrderEntry& order, const OrderRecord& request);
    Outcome MoveOrder(OrderEntry& order, const OrderRecord& request);
    OrderEntry& Insert(const OrderRecord& record, char restState, bool madeFromFill);
    void RememberSystemNo(OrderEntry& order);
    void ForgetSystemNo(OrderEntry& order);

    // The order and leg that a fill belongs to. Null without a refusal: the fill gets an order of its own.
    OrderEntry* OrderOfFill(const FillRecord& fill, std::string& refusal, int& leg) const;
    OrderEntry& MakeOrderFor(const FillRecord& fill);
    FillEntry& Insert(OrderEntry& order, const FillRecord& record, const SingleContractKey& booked, int leg,
                      std::uint32_t sequence, Outcome& outcome);
    void Book(OrderEntry& order, FillRecord record, int leg, Outcome& outcome);
    void Settle(OrderEntry& order, Outcome& outcome);
    void Take(FillEntry& fill, Outcome& outcome);
    // Takes every fill of the order off the positions, lets `change` alter the order and its fills, and puts
    // them back in their old sequence.
    template <typename Action>
    void Rebook(OrderEntry& order, Outcome& outcome, Action change);
    void PutOnPositions(FillEntry& fill, Outcome& outcome);
    void TakeOffPositions(FillEntry& fill, Outcome& outcome);
    std::uint32_t LegQty(const OrderEntry& order, int leg) const;
    // What follows from the fills: filled quantity, average price of the first leg, state.
    void UpdateFilled(OrderEntry& order) const;

    void Report(Outcome& outcome, const OrderEntry& order, const char* what) const;
    void Report(Outcome& outcome, const FillEntry& fill, const char* what) const;

    const Catalogue& m_catalogue;
    Positions m_positions;
    std::deque<OrderEntry> m_orders;
    std::deque<FillEntry> m_fills;
    std::unordered_map<std::uint32_t, OrderEntry*> m_ordersByNo;
    std::unordered_map<std::string, std::vector<OrderEntry*>> m_ordersBySystemNo;
    std::unordered_map<std::string, FillEntry*> m_fillsByNo;
    NextNumbers m_next;
};
