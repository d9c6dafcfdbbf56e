#include "book/ledger.h"
#include "book/price_format.h"
#include "host/sample.h"

#include <gtest/gtest.h>

namespace {

class LedgerTest : public testing::Test {
protected:
    Outcome Fill(const OrderRecord& order, const std::string& leg, char direction, double price,
                 std::uint32_t qty) {
        return m_ledger.SendFill(MakeFill(order, FirstLegOf(KeyOf("HQ", leg)), direction, price, qty));
    }
    // Open quantity, short ones negative.
    int Net(const std::string& account, const std::string& leg) {
        const LineKey line = MakeLineKey(account, FirstLegOf(KeyOf("HQ", leg)));
        const auto open = [&](char side) {
            return static_cast<int>(m_ledger.AllPositions().OpenQty(line, side));
        };
        return open('B') - open('S');
    }
    const OrderRecord& Order(std::uint32_t number) { return m_ledger.FindOrder(number)->record; }
    // State, filled quantity and average price of an order.
    std::string Filled(std::uint32_t number) {
        const OrderRecord& order = Order(number);
        return order.orderState + (": " + std::to_string(order.fillQty)) + " at " +
               DecimalText(order.fillPrice, 0);
    }

    std::unique_ptr<Book> m_book = Sample();
    Ledger& m_ledger = m_book->ledger;
};

TEST_F(LedgerTest, FillsDecideStateQuantityAndAveragePrice) {
    OrderRecord order = MakeOrder("800102", "NWX F SR 2505", 'B', 6100, 5, "S_1");
    order.orderState = '6';  // as input together with a fill
    order.fillQty = 5;
    const std::uint32_t number = m_ledger.SendOrder(order).orderNo;
    EXPECT_EQ(Filled(number), "4: 0 at 0");
    EXPECT_EQ(Order(number).backOffice, 'Y');

    EXPECT_TRUE(Fill(order, "NWX F SR 2505", 'B', 6100, 2).Accepted());
    EXPECT_EQ(Filled(number), "5: 2 at 6100");
    EXPECT_TRUE(Fill(order, "NWX F SR 2505", 'B', 6110, 3).Accepted());
    EXPECT_EQ(Filled(number), "6: 5 at 6106");
    EXPECT_FALSE(Fill(order, "NWX F SR 2505", 'B', 6110, 1).Accepted()) << "beyond the quantity";
    EXPECT_FALSE(m_ledger.SendOrder(order).Accepted()) << "the same system number again";
    EXPECT_EQ(Net("800102", "NWX F SR 2505"), 5);

    EXPECT_TRUE(m_ledger.DeleteOrder(number).Accepted());
    EXPECT_EQ(Filled(number), "4: 0 at 0");
    EXPECT_EQ(Net("800102", "NWX F SR 2505"), 0);
    EXPECT_FALSE(m_ledger.DeleteOrder(number).Accepted()) << "nothing left to remove";

    order.systemNo.Set("S_rejected");
    order.orderState = 'B';
    EXPECT_TRUE(m_ledger.SendOrder(order).Accepted());
    EXPECT_FALSE(m_ledger.SendFill(MakeFill(order)).Accepted());
}

TEST_F(LedgerTest, ASpreadIsFilledAsFarAsBothItsLegsAre) {
    // The second leg of the bond months is quoted first, so it has the order's direction.
    const OrderRecord order = MakeOrder("800101", "BRX m TB 2503/2506", 'B', 0, 4, "S_2");
    const std::uint32_t number = m_ledger.SendOrder(order).orderNo;
    EXPECT_FALSE(Fill(order, "BRX F TB 2503", 'B', 117, 4).Accepted()) << "the near leg is sold";
    EXPECT_TRUE(Fill(order, "BRX F TB 2506", 'B', 117.25, 4).Accepted());
    EXPECT_EQ(+Order(number).fillQty, 0u);
    EXPECT_TRUE(Fill(order, "BRX F TB 2503", 'S', 117.5, 3).Accepted());
    EXPECT_EQ(Filled(number), "5: 3 at 117.25") << "at the price of the leg that is quoted first";
    EXPECT_FALSE(Fill(order, "BRX F CO 2503", 'S', 451, 1).Accepted()) << "no leg of the order";
    EXPECT_EQ(Net("800101", "BRX F TB 2506"), 4);
    EXPECT_EQ(Net("800101", "BRX F TB 2503"), -3);
}

TEST_F(LedgerTest, ACarryClosesTheChosenPositionAndStandsOnTheDateOf3M) {
    // Short 10 at 9010.5 and 5 at 9032 in the near date; the later one is chosen.
    const OrderRecord near = MakeOrder("800120", "HMX F CU 241218", 'B', 9040, 4, "S_3_1", "UP003");
    FillRecord fill = MakeFill(near);
    fill.carryPair = 1;
    fill.closePrice = 9032;
    EXPECT_TRUE(m_ledger.SendFill(fill).Accepted());
    const OrderRecord forward = MakeOrder("800120", "HMX F CU 3M", 'S', 9100, 4, "S_3_2", "UP003");
    EXPECT_TRUE(m_ledger.SendOrder(forward).Accepted());
    FillRecord plain = MakeFill(forward);
    plain.upperNo = {};
    plain.currencyNo.Set("XXX");
    EXPECT_FALSE(m_ledger.SendFill(plain).Accepted()) << "an unknown currency";
    plain.currencyNo = {};
    EXPECT_TRUE(m_ledger.SendFill(plain).Accepted());
    EXPECT_EQ(m_ledger.Fills().back()->record.upperNo.View(), "UP003") << "its order's";

    const LineKey line = MakeLineKey("800120", FirstLegOf(near.key));
    EXPECT_EQ(+m_ledger.AllPositions().Find(line, 'S', 9032)->record.openQty, 1u);
    EXPECT_EQ(+m_ledger.AllPositions().Find(line, 'S', 9010.5)->record.openQty, 10u);
    EXPECT_EQ(Net("800120", "HMX F CU 250318"), 8 - 4) << "3M is 250318 under HQ";
    EXPECT_EQ(m_ledger.Fills().back()->record.key.contractNo.View(), "3M") << "the fill itself keeps it";
}

TEST_F(LedgerTest, AFillWithoutAnOrderGetsOneEachLegItsOwn) {
    const OrderRecord none = MakeOrder("800101", "NWX F WH 2501", 'B', 2500, 2, "S_unknown");
    const std::uint32_t first = Fill(none, "NWX F WH 2501", 'B', 2500, 2).orderNo;
    const std::uint32_t second = Fill(none, "NWX F WH 2505", 'S', 2520, 2).orderNo;
    ASSERT_TRUE(first && second && first != second) << first << ' ' << second;
    EXPECT_EQ(Order(first).orderState, '6');
    const std::string fillNo = m_ledger.FindOrder(first)->fills.front()->record.fillNo.Str();
    EXPECT_FALSE(m_ledger.RemoveFill(fillNo, "800102").Accepted()) << "another account's";
    EXPECT_TRUE(m_ledger.RemoveFill(fillNo, "800101").Accepted());
    EXPECT_EQ(Order(first).orderState, '9');
    EXPECT_FALSE(m_ledger.RemoveFill(fillNo, "").Accepted()) << "already removed";
}

TEST_F(LedgerTest, AModificationReplacesTheTermsAndNothingThatHappened) {
    m_ledger.FindOrder(1002)->record.text279.Set("the book's");
    const std::string inputTime = Order(1002).inputTime.Str();
    OrderRecord change = Order(1002);  // 10 ordered, 4 filled
    change.text279 = {};
    change.inputTime = {};
    change.orderPrice = 2295;
    change.orderQty = 4;
    change.orderState = '4';
    change.fillQty = 9;
    change.inputOperator.Set("NOBODY");
    change.updateOperator.Set("OP0200");
    EXPECT_TRUE(m_ledger.SendOrder(change).Accepted());
    EXPECT_EQ(+Order(1002).orderPrice, 2295);
    EXPECT_EQ(Order(1002).orderState, '6') << "what is left was taken away";
    EXPECT_EQ(+Order(1002).fillQty, 4u);
    EXPECT_EQ(Order(1002).text279.View(), "the book's");
    EXPECT_EQ(Order(1002).inputTime.View(), inputTime);
    EXPECT_EQ(Order(1002).inputOperator.View(), "OP0101");
    EXPECT_EQ(Order(1002).updateOperator.View(), "OP0200");

    const std::pair<const char*, void (*)(OrderRecord&)> rows[] = {
        {"quantity below the fills", [](OrderRecord& order) { order.orderQty = 3; }},
        {"direction under fills", [](OrderRecord& order) { order.direction = 'B'; }},
        {"contract under fills", [](OrderRecord& order) { order.key.contractNo.Set("2503"); }},
        {"unknown order", [](OrderRecord& order) { order.orderNo = 4711; }},
        {"unknown upper", [](OrderRecord& order) { order.upperNo.Set("UP999"); }},
        {"account that may not trade", [](OrderRecord& order) { order.accountNo.Set("800199"); }},
        {"account of another sign", [](OrderRecord& order) { order.accountNo.Set("860001"); }},
        {"no number as price", [](OrderRecord& order) { order.orderPrice = 0.0 / 0.0; }},
    };
    const std::string before = BookText(*m_book);
    for (const auto& [fault, spoil] : rows) {
        OrderRecord bad = Order(1002);
        spoil(bad);
        EXPECT_FALSE(m_ledger.SendOrder(bad).Accepted()) << fault;
    }
    EXPECT_TRUE(BookText(*m_book) == before) << "a refused request changes nothing";
}

TEST_F(LedgerTest, AMoveTakesOrderFillsAndPositionAndNothingElse) {
    const OrderRecord bought = MakeOrder("800103", "NWX F WH 2505", 'B', 2520, 2, "S_7", "UP002");
    const OrderRecord sold = MakeOrder("800103", "NWX F WH 2505", 'S', 2530, 3, "S_8", "UP002");
    for (const OrderRecord* later : {&bought, &sold}) {
        ASSERT_TRUE(m_ledger.SendFill(MakeFill(*later)).Accepted());
    }
    OrderRecord move = Order(1001);  // 5 bought on top of 12
    move.accountNo.Set("800103");
    move.upperNo.Set("UP002");
    move.orderPrice = 1;
    ASSERT_TRUE(m_ledger.SendOrder(move).Accepted());
    EXPECT_EQ(Net("800101", "NWX F WH 2505"), 12);
    EXPECT_EQ(Net("800103", "NWX F WH 2505"), 5 + 2 - 3);
    const LineKey line = MakeLineKey("800103", FirstLegOf(sold.key));
    EXPECT_EQ(+m_ledger.AllPositions().Find(line, 'B', 2514)->record.openQty, 2u) << "bought before the rest";
    EXPECT_EQ(+Order(1001).orderPrice, 2514) << "a move changes no price";
    EXPECT_EQ(m_ledger.FindFill("F00000001")->record.accountNo.View(), "800103");
}

TEST_F(LedgerTest, AnExerciseSettlesWhatIsHeldAndIsUndoneAsAWhole) {
    // 3 calls held: 5 are asked for, 3 are settled.
    OrderRecord call = MakeOrder("800103", "NWX O WH 2505 C2500", 'B', 0, 5, "S_5");
    const auto contract = [&](const char* name) { return m_book->catalogue.FindContract(KeyOf("HQ", name)); };
    int stranger = 0;
    const std::pair<const char*, ContractRecord*> rows[] = {
        {"no underlying", nullptr},
        {"the future of another commodity", contract("NWX F RM 2505")},
        {"no contract at all, which is not read", reinterpret_cast<ContractRecord*>(&stranger)},
    };
    for (const auto& [fault, underlying] : rows) {
        call.contract = underlying;
        EXPECT_FALSE(m_ledger.SendExercise(call).Accepted()) << fault;
    }
    call.contract = contract("NWX F WH 2505");
    const Outcome outcome = m_ledger.SendExercise(call);
    ASSERT_TRUE(outcome.Accepted()) << outcome.refusal;
    EXPECT_EQ(+Order(outcome.orderNo).fillQty, 3u);
    EXPECT_EQ(Net("800103", "NWX O WH 2505 C2500"), 0);
    EXPECT_EQ(Net("800103", "NWX F WH 2505"), 3);
    EXPECT_FALSE(m_ledger.RemoveFill(m_ledger.Fills().back()->record.fillNo.View(), "").Accepted());
    EXPECT_FALSE(m_ledger.SendOrder(Order(outcome.orderNo)).Accepted()) << "an exercise is not modified";
    EXPECT_TRUE(m_ledger.DeleteOrder(outcome.orderNo).Accepted());
    EXPECT_EQ(Net("800103", "NWX O WH 2505 C2500"), 3);
    EXPECT_EQ(Net("800103", "NWX F WH 2505"), 0);

    OrderRecord put = MakeOrder("800103", "NWX O WH 2505 P2500", 'S', 0, 1, "S_6");
    put.contract = call.contract;
    EXPECT_TRUE(m_ledger.SendExercise(put).Accepted());
    EXPECT_EQ(Net("800103", "NWX F WH 2505"), 1) << "who had sold a put is made to buy";
}

}  // namespace
