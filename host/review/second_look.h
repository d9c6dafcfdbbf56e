#pragma once

#include "book/book.h"
#include "services/journal.h"

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

// A price that could be entered in the dialog when a request left it, as it was shown.
struct ShownPrice {
    std::string name;  // "order price"
    std::string whole;
    std::string numerator;  // empty when the commodity has no fractions
    std::string denominator;
    bool ofPosition;  // names the position that a leg of a carry closes
};

// What an attentive colleague would ask about a request that was just accepted: the likely mistakes of
// entering by hand. It only remarks; nothing is ever held back for it. docs/desk.md lists the questions and
// their limits.
class SecondLook {
public:
    explicit SecondLook(const Book& book) : m_book(book) {}

    // Is shown every request after it was applied, in turn; `now` is when it came, in seconds on any clock
    // that does not run backwards; `shown` are the prices of the dialog that it came from, which tell what
    // a record no longer does. The remarks, one sentence each in UTF-8; none for a refused request.
    std::vector<std::string> Look(const JournalEntry& entry, std::int64_t now,
                                  const std::vector<ShownPrice>& shown = {});

private:
    // A new order, fill or exercise that came not long ago.
    struct Recent {
        std::int64_t when;
        std::string operation;
        std::string account;
        std::string contract;  // with its sign, "3M" replaced by its date
        std::vector<SingleContractKey> legs;
        char direction;
        double price;
        std::uint32_t qty;
    };

    std::string SameAgain(const Recent& request) const;
    std::string UnusualQty(const OrderRecord& order, std::uint32_t ownNo) const;
    std::string FarPrice(const SingleContractKey& leg, double price, std::string_view ownFillNo) const;
    std::string LooseLegs(const Recent& request) const;
    std::string FillPriceOf(const OrderRecord& order, bool canBeEntered) const;
    Recent Describe(const JournalEntry& entry, const OrderRecord& order, std::int64_t now) const;
    Recent Describe(const JournalEntry& entry, const FillRecord& fill, std::int64_t now) const;
    void Forget(std::int64_t now);

    const Book& m_book;
    std::deque<Recent> m_recent;  // the oldest first
};
