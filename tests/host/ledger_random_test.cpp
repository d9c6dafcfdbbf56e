#include "book/ledger.h"
#include "host/sample.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

constexpr int kBooks = 20;
constexpr int kSequences = 15;  // on each book, which is as good as new after each
constexpr int kSteps = 8;

using Quantities = std::map<std::string, long>;

// Long less short by contract and, when asked for, by everything else that keeps positions apart.
Quantities OpenQty(const Ledger& ledger, bool byRow) {
    Quantities quantities;
    for (const auto& [record, upperNo] : ledger.AllPositions().Rows()) {
        const std::string row = record.accountNo.Str() + ' ' + upperNo + ' ' + record.direction + ' ' +
                                std::to_string(record.price) + ' ';
        const long qty = record.openQty;
        quantities[(byRow ? row : "") + ContractName(record.key)] += record.direction == 'B' ? qty : -qty;
    }
    std::erase_if(quantities, [](const auto& quantity) { return quantity.second == 0; });
    return quantities;
}

class RandomRequests {
public:
    RandomRequests(Ledger& ledger, unsigned seed) : m_ledger(ledger), m_random(seed) {}

    void Steps() {
        using Request = void (RandomRequests::*)();
        constexpr Request kRequests[] = {&RandomRequests::Input,  &RandomRequests::Input,
                                         &RandomRequests::Input,  &RandomRequests::MoreFill,
                                         &RandomRequests::Carry,  &RandomRequests::Move,
                                         &RandomRequests::Unfill, &RandomRequests::RemoveFill};
        for (int step = 0; step < kSteps; ++step) {
            (this->*kRequests[Below(8)])();
        }
    }

private:
    unsigned Below(std::size_t limit) { return static_cast<unsigned>(m_random() % limit); }
    std::string Account() { return std::vector{"800101", "800102", "800103", "800120"}[Below(4)]; }
    std::string Upper() { return Below(2) ? "UP001" : "UP003"; }
    const OrderRecord& SomeOrder() { return m_ledger.Orders()[Below(m_ledger.Orders().size())].record; }

    void FillLegs(const OrderRecord& order, std::uint32_t qty) {
        char direction = order.direction;
        for (const SingleContractKey& leg : m_ledger.LegsOf(order)) {
            m_ledger.SendFill(MakeFill(order, leg, direction, 2500.0 + Below(4), qty));
            direction = direction == 'B' ? 'S' : 'B';
        }
    }

    void Input() {
        const std::vector contracts{"NWX F WH 2505", "NWX F RM 2501",      "BRX F CO 2503",
                                    "HMX F CU 3M",   "BRX m TB 2503/2506", "NWX u WH 2503 C2400/2503 C2500"};
        const OrderRecord order = MakeOrder(Account(), contracts[Below(6)], Below(2) ? 'B' : 'S', 2500,
                                            1 + Below(9), "R_" + std::to_string(m_serial++), Upper());
        ASSERT_TRUE(m_ledger.SendOrder(order).Accepted());
        FillLegs(order, 1 + Below(9));  // now and then more than was ordered: refused
    }

    void MoreFill() { FillLegs(SomeOrder(), 1 + Below(3)); }

    void Carry() {
        const std::string account = Account();
        const std::uint32_t qty = 1 + Below(9);
        char direction = Below(2) ? 'B' : 'S';
        for (const char* contract : {"HMX F CU 241218", "HMX F CU 3M"}) {
            const OrderRecord leg = MakeOrder(account, contract, direction, 9040, qty,
                                              "C_" + std::to_string(m_serial++), "UP003");
            FillRecord fill = MakeFill(leg);
            fill.carryPair = 1;
            ASSERT_TRUE(m_ledger.SendOrder(leg).Accepted() && m_ledger.SendFill(fill).Accepted());
            direction = direction == 'B' ? 'S' : 'B';
        }
    }

    void Move() {
        OrderRecord request = SomeOrder();
        const Quantities before = OpenQty(m_ledger, false);
        request.accountNo.Set(Account());
        m_ledger.SendOrder(request);
        EXPECT_EQ(OpenQty(m_ledger, false), before) << "a move conserves the total";
    }

    void Unfill() { m_ledger.DeleteOrder(SomeOrder().orderNo); }

    void RemoveFill() {
        const std::vector<FillEntry*> fills = m_ledger.Fills();
        if (!fills.empty()) {
            m_ledger.RemoveFill(fills[Below(fills.size())]->record.fillNo.View(), "");
        }
    }

    Ledger& m_ledger;
    std::mt19937 m_random;
    int m_serial = 0;
};

// Filled never exceeds ordered; numbers rise and so never come again, although fills are removed all the
// time.
void CheckOrders(const Ledger& ledger, std::string& highestFill) {
    std::uint32_t lastOrder = 0;
    for (const OrderEntry& order : ledger.Orders()) {
        ASSERT_LE(+order.record.fillQty, +order.record.orderQty);
        ASSERT_GT(+order.record.orderNo, lastOrder);
        lastOrder = order.record.orderNo;
    }
    for (const FillEntry* fill : ledger.Fills()) {
        ASSERT_GT(fill->record.fillNo.Str(), highestFill);
        highestFill = fill->record.fillNo.Str();
    }
}

void RemoveAllFills(Ledger& ledger) {
    for (const OrderEntry& order : ledger.Orders()) {
        ledger.DeleteOrder(order.record.orderNo);
    }
}

TEST(LedgerRandomTest, EverySequenceKeepsTheInvariantsAndCanBeUndone) {
    const std::unique_ptr<Book> fresh = Sample();
    RemoveAllFills(fresh->ledger);
    const std::string bare = BookText(*fresh);
    for (unsigned bookNumber = 0; bookNumber < kBooks; ++bookNumber) {
        const std::unique_ptr<Book> book = ReadBookText(bare, "bare book");
        Ledger& ledger = book->ledger;
        const Quantities openings = OpenQty(ledger, true);
        RandomRequests requests(ledger, bookNumber);
        std::string highestFill;
        for (int sequence = 0; sequence < kSequences; ++sequence) {
            SCOPED_TRACE("book " + std::to_string(bookNumber) + ", sequence " + std::to_string(sequence));
            requests.Steps();
            CheckOrders(ledger, highestFill);
            RemoveAllFills(ledger);
            ASSERT_EQ(OpenQty(ledger, true), openings) << "removal restores what input changed";
        }
        requests.Steps();
        const std::unique_ptr<Book> again = ReadBookText(BookText(*book), "saved book");
        ASSERT_TRUE(BookText(*again) == BookText(*book));
        ASSERT_EQ(OpenQty(again->ledger, true), OpenQty(ledger, true)) << "the same positions";
    }
}

}  // namespace
