#pragma once

#include "book/record_key.h"
#include "trade/host_records.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// Where positions are kept apart: a line is one leg of one account at one upper. The contract is never "3M":
// trades in the rolling contract stand on the date that it means when they are booked.
struct LineKey {
    FixedText<21> sign;
    FixedText<21> accountNo;
    FixedText<11> exchangeNo;
    char commodityType;
    FixedText<11> commodityNo;
    FixedText<11> contractNo;
    FixedText<11> strikePrice;
    char optionType;
};
static_assert(sizeof(LineKey) == 21 + 67);

// One trade on a line, in the order of booking.
struct BookedTrade {
    std::uint32_t sequence;
    char direction;
    double price;
    std::uint32_t qty;
    double closeFirst;  // price of the position that is closed before the others; 0: none is preferred
};

// A position that was there before the first fill of the book.
struct OpeningPosition {
    LineKey key;
    std::string upperNo;
    char direction;
    double price;
    std::uint32_t qty;
};

// One row of the position list: what is open at one price. A row that is closed stays, with nothing open, so
// that its address can be used again and is never stale.
struct PositionEntry {
    PositionRecord record;
    std::string upperNo;
};

// Positions as a function of the opening positions and the trades on a line. A trade first closes positions
// of the other direction, those at its preferred price first and then the oldest, and opens a position at its
// own price with the rest. A trade that is taken away is as if it had never been: the line is computed anew,
// so removal restores what input has changed, whatever came between.
class Positions {
public:
    Positions() = default;
    Positions(const Positions&) = delete;
    Positions& operator=(const Positions&) = delete;

    void AddOpening(const OpeningPosition& opening);
    // Both return the rows whose open quantity changed.
    std::vector<PositionEntry*> Add(const LineKey& key, std::string_view upperNo, const BookedTrade& trade);
    std::vector<PositionEntry*> Remove(const LineKey& key, std::string_view upperNo, std::uint32_t sequence);

    // The row of an account and leg at a price; uppers are tried in the order in which they appeared. An
    // empty sign means any. Null when nothing is open there.
    PositionEntry* Find(const LineKey& key, char direction, double price) const;
    // Open quantity of a direction, on all uppers together or on one.
    std::uint32_t OpenQty(const LineKey& key, char direction,
                          std::optional<std::string_view> upperNo = {}) const;

    const std::deque<PositionEntry>& Rows() const { return m_rows; }
    const std::vector<OpeningPosition>& Openings() const { return m_openings; }

private:
    struct Lot {
        char direction;
        double price;
        std::uint32_t qty;
    };
    struct Line {
        LineKey key;
        std::string upperNo;
        std::vector<Lot> openings;
        std::vector<BookedTrade> trades;  // by sequence
        std::vector<PositionEntry*> rows;
    };

    Line& LineOf(const LineKey& key, std::string_view upperNo);
    const std::vector<Line*>& LinesOf(const LineKey& key) const;
    std::vector<PositionEntry*> Recompute(Line& line);
    PositionEntry* RowOf(Line& line, char direction, double price);

    std::deque<Line> m_lines;
    std::deque<PositionEntry> m_rows;
    std::vector<OpeningPosition> m_openings;
    std::unordered_map<std::string_view, std::vector<Line*>> m_linesByKey;  // with sign and without
};

LineKey MakeLineKey(std::string_view accountNo, const SingleContractKey& leg);
SingleContractKey LegOf(const LineKey& key);

inline char Opposite(char direction) {
    return direction == 'B' ? 'S' : direction == 'S' ? 'B' : direction;
}
