#include "book/ledger.h"
#include "host/sample.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

constexpr int kBooks = 20;
constexpr int kSequences = 15;  // on each book, which is as good as new after each
constexpr int kSteps = 8;

// Long less short by contract, over all accounts.
std::map<std::string, long> Totals(const Ledger& ledger) {
    std::map<std::string, long> totals;
    for (const PositionEntry& row : ledger.AllPositions().Rows()) {
        const long qty = row.record.openQty;
        totals[ContractName(row.record.key)] += row.record.direction == 'B' ? qty : -qty;
    }
    std::erase_if(totals, [](const auto& total) { return total.second == 0; });
    return totals;
}

// Everything that is open, by account, contract, upper, direction and price.
std::map<std::string, std::uint32_t> OpenRows(const Ledger& ledger) {
    std::map<std::string, std::uint32_t> rows;
    for (const PositionEntry& row : ledger.AllPositions().Rows()) {
        if (row.record.openQty > 0) {
            rows[row.record.accountNo.Str() + ' ' + ContractName(row.record.key) + ' ' + row.upperNo + ' ' +
                 row.record.direction + ' ' + std::to_string(row.record.price)] += row.record.openQty;
        }
    }
    return rows;
}

class RandomRequests {
public:
    RandomRequests(Ledger& ledger, unsigned seed) : m_ledger(ledger), m_random(seed) {}

    void Step() {
        switch (Below(8)) {
            case 0:
            case 1:
            case 2:
                Input();
                break;
            case 3:
                MoreFill();
                break;
            case 4:
                Carry();
                break;
            case 5:
                Move();
                break;
            case 6:
                m_ledger.DeleteOrder(SomeOrder().orderNo);
                break;
            default:
                RemoveSomeFill();
                break;
        }
    }

private:
    unsigned Below(unsigned limit) { return static_cast<unsigned>(m_random() % limit); }
    std::string Account() { return std::vector{"800101", "800102", "800103", "800120"}[Below(4)]; }
    std::string Upper() { return Below(2) ? "UP001" : "UP003"; }
    const OrderRecord& SomeOrder() {
        return m_ledger.Orders()[Below(static_cast<unsigned>(m_ledger.Orders().size()))].record;
    }

    void FillLegs(const OrderRecord& order, std::uint32_t qty) {
        char direction = order.direction;
        for (const SingleContractKey& leg : m_ledger.LegsOf(order)) {
            m_ledger.SendFill(MakeFill(order, leg, direction, 2500.0 + Below(4), qty));
            direction = direction == 'B' ? 'S' : 'B';
        }
    }

    void Input() {
        const std::vector contracts{"NWX F WH 2505",
                                    "NWX F RM 2501",
                                    "BRX F CO 2503",
                                    "BRX m TB 2503/2506",
                                    "NWX u WH 2503 C2400/2503 C2500",
                                    "HMX F CU 3M"};
        const OrderRecord order = MakeOrder(Account(), contracts[Below(6)], Below(2) ? 'B' : 'S', 2500,
                                            1 + Below(9), "R_" + std::to_string(m_serial++), "HQ", Upper());
        ASSERT_TRUE(m_ledger.SendOrder(order).Accepted());
        FillLegs(order, 1 + Below(9));  // now and then more than was ordered: refused
    }
    void MoreFill() { FillLegs(SomeOrder(), 1 + Below(3)); }

    void Carry() {
        const std::map<std::string, long> before = Totals(m_ledger);
        const std::string account = Account();
        const std::string stem = "C_" + std::to_string(m_serial++);
        const char direction = Below(2) ? 'B' : 'S';
        const char opposite = direction == 'B' ? 'S' : 'B';
        const std::uint32_t qty = 1 + Below(9);
        const OrderRecord near =
            MakeOrder(account, "HMX F CU 241218", direction, 9040, qty, stem + "_1", "HQ", "UP003");
        const OrderRecord forward =
            MakeOrder(account, "HMX F CU 3M", opposite, 9100, qty, stem + "_2", "HQ", "UP003");
        for (const OrderRecord* leg : {&near, &forward}) {
            ASSERT_TRUE(m_ledger.SendOrder(*leg).Accepted());
            FillRecord fill = MakeFill(*leg, FirstLegOf(leg->key), leg->direction, leg->orderPrice, qty);
            fill.carryPair = 1;
            ASSERT_TRUE(m_ledger.SendFill(fill).Accepted());
        }
        std::map<std::string, long> after = Totals(m_ledger);
        for (const auto& [contract, total] : before) {
            after[contract] -= total;
        }
        EXPECT_EQ(after["HMX F CU 241218"] + after["HMX F CU 250318"], 0)
            << "a carry is even in its commodity";
    }

    void Move() {
        OrderRecord request = SomeOrder();
        const std::map<std::string, long> before = Totals(m_ledger);
        request.accountNo.Set(Account());
        m_ledger.SendOrder(request);
        EXPECT_EQ(Totals(m_ledger), before) << "a move conserves the total";
    }

    void RemoveSomeFill() {
        const std::vector<FillEntry*> fills = m_ledger.Fills();
        if (!fills.empty()) {
            m_ledger.RemoveFill(fills[Below(static_cast<unsigned>(fills.size()))]->record.fillNo.View(), "");
        }
    }

    Ledger& m_ledger;
    std::mt19937 m_random;
    int m_serial = 0;
};

// Filled never exceeds ordered; numbers rise and so never come again, although fills are removed all the
// time.
void CheckOrders(const Ledger& ledger, std::uint32_t& highestFill) {
    std::uint32_t lastOrder = 0;
    for (const OrderEntry& order : ledger.Orders()) {
        ASSERT_LE(+order.record.fillQty, +order.record.orderQty);
        ASSERT_GT(+order.record.orderNo, lastOrder);
        lastOrder = order.record.orderNo;
    }
    for (const FillEntry* fill : ledger.Fills()) {
        const std::string number = fill->record.fillNo.Str();
        const auto value = static_cast<std::uint32_t>(std::stoul(number.substr(1)));
        ASSERT_GT(value, highestFill);
        highestFill = value;
    }
}

TEST(LedgerRandomTest, EverySequenceKeepsTheInvariantsAndCanBeUndone) {
    const std::unique_ptr<Book> fresh = Sample();
    for (OrderEntry const& order : fresh->ledger.Orders()) {
        fresh->ledger.DeleteOrder(order.record.orderNo);
    }
    const std::string bare = BookText(*fresh);
    for (unsigned bookNumber = 0; bookNumber < kBooks; ++bookNumber) {
        const std::unique_ptr<Book> book = ReadBookText(bare, "bare book");
        Ledger& ledger = book->ledger;
        const auto openings = OpenRows(ledger);
        RandomRequests requests(ledger, bookNumber);
        std::uint32_t highestFill = 0;
        for (int sequence = 0; sequence < kSequences; ++sequence) {
            SCOPED_TRACE("book " + std::to_string(bookNumber) + ", sequence " + std::to_string(sequence));
            for (int step = 0; step < kSteps; ++step) {
                requests.Step();
            }
            CheckOrders(ledger, highestFill);
            for (const OrderEntry& order : ledger.Orders()) {
                ledger.DeleteOrder(+order.record.orderNo);
            }
            ASSERT_EQ(OpenRows(ledger), openings) << "removal restores what input changed";
        }
        for (int step = 0; step < kSteps; ++step) {
            requests.Step();
        }
        const std::unique_ptr<Book> again = ReadBookText(BookText(*book), "saved book");
        ASSERT_TRUE(BookText(*again) == BookText(*book));
        ASSERT_EQ(OpenRows(again->ledger), OpenRows(ledger)) << "a saved book has the same positions";
    }
}

}  // namespace
