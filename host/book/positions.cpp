#include "book/positions.h"

#include "book/price_format.h"

#include <algorithm>
#include <cstring>

namespace {

template <typename Lots>
void Close(Lots& lots, char direction, const double* onlyPrice, std::uint32_t& qty) {
    for (auto& lot : lots) {
        if (lot.direction == direction && (!onlyPrice || SamePrice(lot.price, *onlyPrice))) {
            const std::uint32_t closed = std::min(qty, lot.qty);
            lot.qty -= closed;
            qty -= closed;
        }
    }
}

}  // namespace

LineKey MakeLineKey(std::string_view accountNo, const SingleContractKey& rawLeg) {
    const SingleContractKey leg = TidyKey(rawLeg);
    LineKey key{leg.sign,        {},
                leg.exchangeNo,  leg.commodityType,
                leg.commodityNo, leg.contractNo,
                leg.strikePrice, leg.optionType};
    key.accountNo.Set(accountNo);
    return key;
}

SingleContractKey LegOf(const LineKey& key) {
    return {key.sign,       key.exchangeNo,  key.commodityType, key.commodityNo,
            key.contractNo, key.strikePrice, key.optionType};
}

void Positions::AddOpening(const OpeningPosition& opening) {
    m_openings.push_back(opening);
    Line& line = LineOf(opening.key, opening.upperNo);
    line.openings.push_back({opening.direction, opening.price, opening.qty});
    Recompute(line);
}

std::vector<PositionEntry*> Positions::Add(const LineKey& key, std::string_view upperNo,
                                           const BookedTrade& trade) {
    Line& line = LineOf(key, upperNo);
    const auto place = std::find_if(line.trades.begin(), line.trades.end(), [&](const BookedTrade& other) {
        return other.sequence > trade.sequence;
    });
    line.trades.insert(place, trade);
    return Recompute(line);
}

std::vector<PositionEntry*> Positions::Remove(const LineKey& key, std::string_view upperNo,
                                              std::uint32_t sequence) {
    Line& line = LineOf(key, upperNo);
    std::erase_if(line.trades, [&](const BookedTrade& trade) { return trade.sequence == sequence; });
    return Recompute(line);
}

PositionEntry* Positions::Find(const LineKey& key, char direction, double price) const {
    for (const Line* line : LinesOf(key)) {
        for (PositionEntry* row : line->rows) {
            if (row->record.direction == direction && row->record.openQty > 0 &&
                SamePrice(row->record.price, price)) {
                return row;
            }
        }
    }
    return nullptr;
}

std::uint32_t Positions::OpenQty(const LineKey& key, char direction,
                                 std::optional<std::string_view> upperNo) const {
    std::uint32_t sum = 0;
    for (const Line* line : LinesOf(key)) {
        for (const PositionEntry* row : line->rows) {
            const bool counts =
                row->record.direction == direction && upperNo.value_or(row->upperNo) == row->upperNo;
            sum += counts ? row->record.openQty : 0;
        }
    }
    return sum;
}

Positions::Line& Positions::LineOf(const LineKey& key, std::string_view upperNo) {
    for (Line* line : LinesOf(key)) {
        if (line->upperNo == upperNo) {
            return *line;
        }
    }
    Line& line = m_lines.emplace_back(Line{key, std::string(upperNo), {}, {}, {}});
    m_linesByKey[SignedBytes(line.key)].push_back(&line);
    m_linesByKey[UnsignedBytes(line.key)].push_back(&line);
    return line;
}

const std::vector<Positions::Line*>& Positions::LinesOf(const LineKey& key) const {
    static const std::vector<Line*> none;
    const auto found = m_linesByKey.find(key.sign.Empty() ? UnsignedBytes(key) : SignedBytes(key));
    return found == m_linesByKey.end() ? none : found->second;
}

std::vector<PositionEntry*> Positions::Recompute(Line& line) {
    std::vector<Lot> lots = line.openings;
    for (const BookedTrade& trade : line.trades) {
        std::uint32_t rest = trade.qty;
        if (trade.closeFirst != 0) {
            Close(lots, Opposite(trade.direction), &trade.closeFirst, rest);
        }
        Close(lots, Opposite(trade.direction), nullptr, rest);
        if (rest > 0) {
            lots.push_back({trade.direction, trade.price, rest});
        }
    }
    std::vector<std::uint32_t> before;
    for (PositionEntry* row : line.rows) {
        before.push_back(+row->record.openQty);
        row->record.openQty = 0;
    }
    for (const Lot& lot : lots) {
        if (lot.qty > 0) {
            PositionEntry* row = RowOf(line, lot.direction, lot.price);
            row->record.openQty = row->record.openQty + lot.qty;
        }
    }
    before.resize(line.rows.size());
    std::vector<PositionEntry*> changed;
    for (std::size_t i = 0; i < line.rows.size(); ++i) {
        if (line.rows[i]->record.openQty != before[i]) {
            changed.push_back(line.rows[i]);
        }
    }
    return changed;
}

PositionEntry* Positions::RowOf(Line& line, char direction, double price) {
    for (PositionEntry* row : line.rows) {
        if (row->record.direction == direction && SamePrice(row->record.price, price)) {
            return row;
        }
    }
    PositionEntry& row = m_rows.emplace_back();
    row.record.key = LegOf(line.key);
    row.record.accountNo = line.key.accountNo;
    row.record.direction = direction;
    row.record.price = price;
    row.upperNo = line.upperNo;
    line.rows.push_back(&row);
    return &row;
}
