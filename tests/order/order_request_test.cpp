#include "order/order_request.h"

#include "order/order_fixture.h"
#include "order/order_submission.h"
#include "support/record_bytes.h"

namespace {

using namespace std::string_literals;

// Little-endian doubles.
const auto k97_5 = "\0\0\0\0\0\x60\x58\x40"s;
const auto k97_25 = "\0\0\0\0\0\x50\x58\x40"s;
const auto k97_375 = "\0\0\0\0\0\x58\x58\x40"s;
const auto k96_5 = "\0\0\0\0\0\x20\x58\x40"s;
const auto k2_25 = "\0\0\0\0\0\0\x02\x40"s;
const auto k12_5 = "\0\0\0\0\0\0\x29\x40"s;
const auto kNow = "2026-03-04 05:06:07"s;

// What the requests of the sample entries have in common; later parts overwrite earlier ones.
const Bytes kOrder = {{0, "SIG"},   {21, "EXA"},  {32, "F"},     {66, "N"},   {89, "N"},
                      {90, "100"},  {111, "2E0"}, {135, "NBNN"}, {157, "\5"}, {321, "S_1"},
                      {372, "X_2"}, {434, "U7"},  {498, "OP9"},  {519, kNow}, {540, "4"}};
const Bytes kEntered = {{456, "OP9"}, {477, kNow}};
const Bytes kFill = {{0, "SIG"},  {21, "EXA"}, {32, "F"},    {66, "N"},  {88, "100"}, {109, "EBN"},
                     {190, kNow}, {240, "\5"}, {245, "USD"}, {256, "N"}, {303, "U7"}, {332, "S_1"}};

class OrderRequests : public OrderTest {
protected:
    // Sends the form; the operator agrees to everything.
    void Confirm(OrderForm form) {
        prompt.answers.assign(4, PromptAnswer::Yes);
        EXPECT_NE(SubmitOrder(form, services), OrderOutcome::Stay);
    }
    // The orders by what they have of their own, all of one contract, whose pointer differs in every run.
    void ExpectOrders(std::vector<OrderRecord> orders, const ContractRecord* contract,
                      const std::vector<Bytes>& records) {
        ASSERT_EQ(orders.size(), records.size());
        for (std::size_t i = 0; i < records.size(); ++i) {
            EXPECT_TRUE(orders[i].contract == contract);
            orders[i].contract = nullptr;
            ExpectBytes(orders[i], kOrder + records[i]);
        }
    }
    void ExpectFills(const std::vector<Bytes>& records) {
        ASSERT_EQ(service.fills.size(), records.size());
        for (std::size_t i = 0; i < records.size(); ++i) {
            ExpectBytes(service.fills[i], kFill + records[i]);
        }
    }
};

// clang-format off
TEST_F(OrderRequests, Input) {
    OrderForm form = Entry();
    form.orderType = '4';
    form.triggerPrice.whole = "97.25";
    form.validType = '2';
    form.validUntil = clock.now.fields;
    form.validUntil.tm_year = 127;
    form.source = 'M';
    form.forcedClose = true;
    Confirm(form);
    ExpectOrders(service.orders, api.contracts[0], {kEntered +
        Bytes{{33, "CM"}, {44, "1509"}, {111, "4M2"}, {114, "2027-03-04 05:06:07"}, {135, "YBNN"},
              {139, k97_5}, {147, k97_25}}});
    ExpectFills({});
}

TEST_F(OrderRequests, InputWithFill) {
    OrderForm form = FilledEntry(OrderMode::Input, "EXA FR 1509");
    form.denominator = 8;
    form.orderPrice = {"97", 4};
    form.fillPrice = {"97", 3};
    form.feeGiven = true;
    form.fee = "12.5";
    Confirm(form);
    const Bytes contract = {{33, "FR"}, {44, "1509"}};
    ExpectOrders(service.orders, api.contracts[1],
        {kEntered + contract + Bytes{{139, k97_5}, {540, "6"}, {541, k97_375}, {549, "\5"}}});
    ExpectFills({contract + Bytes{{139, "M_3"}, {232, k97_375}, {256, "Y"}, {268, k12_5}}});
}

TEST_F(OrderRequests, InputOfASpreadWithFills) {
    AddSpread('l', "EXA CS 1509 C3000/1512 C3000");
    OrderForm form = FilledEntry(OrderMode::Input, "EXA CS 1509 C3000/1512 C3000");
    form.direction = 'S';
    Confirm(form);
    ExpectOrders(service.orders, api.contracts.back(), {kEntered +
        Bytes{{32, "l"}, {33, "CS"}, {44, "1509"}, {55, "3000"}, {66, "C"}, {67, "1512"}, {78, "3000"},
              {89, "C"}, {135, "NSNN"}, {139, k97_5}, {540, "6"}, {541, k97_25}, {549, "\5"}}});
    const Bytes leg = {{55, "3000"}, {66, "C"}};
    ExpectFills({leg + Bytes{{33, "LEG1"}, {44, "1509"}, {109, "ESN"}, {139, "M_3_1"}, {232, k97_25}},
                 leg + Bytes{{21, "EXB"}, {33, "LEG2"}, {44, "1512"}, {109, "EBN"}, {139, "M_3_2"},
                             {232, k96_5}}});
}

TEST_F(OrderRequests, ModifyAndMoveKeepWhoEnteredTheOrder) {
    api.AddUser("200");
    const Bytes kept = {{33, "CM"}, {44, "1509"}, {139, k97_5}, {270, "\x4d"}, {279, "kept text"},
                        {456, "OP1"}, {477, "2026-01-02 03:04:05"}, {614, "Q"}};
    Confirm(Correction(OrderMode::Modify));
    OrderForm move = Correction(OrderMode::Move);
    move.account = "200";
    Confirm(move);
    ExpectOrders(service.orders, api.contracts[0], {kept, kept + Bytes{{90, "200"}}});
}

TEST_F(OrderRequests, Exercise) {
    OrderForm form = Entry(OrderMode::Exercise, "EXA CO 240315 C3000");
    form.forwardContract = "240329";
    form.orderType = '5';
    form.orderPrice = {};
    Confirm(form);
    ExpectOrders(service.exercises, api.contracts[4],
        {{{32, "O"}, {33, "CO"}, {44, "240315"}, {55, "3000"}, {66, "C"}, {111, "5E0"}}});
}

TEST_F(OrderRequests, CarryLegs) {
    OrderForm form = CarryEntry("240315", "240329");
    form.nearPositionPrice.whole = "2.25";
    form.forwardPositionPrice.whole = "12.5";
    Confirm(form);
    const Bytes order = kEntered + Bytes{{33, "CA"}, {111, "2C0"}, {540, "6"}, {549, "\5"}};
    // The forward contract is found last, so both legs carry it.
    ExpectOrders(service.orders, api.contracts[4],
        {order + Bytes{{44, "240315"}, {139, k97_25}, {321, "S_1_1"}, {541, k97_25}},
         order + Bytes{{44, "240329"}, {135, "NSNN"}, {139, k96_5}, {321, "S_1_2"}, {541, k96_5}}});
    const Bytes fill = {{33, "CA"}, {256, "Y"}, {331, "\1"}};
    ExpectFills({fill + Bytes{{44, "240315"}, {109, "CBN"}, {139, "M_3_1"}, {232, k97_25}, {315, k2_25},
                              {332, "S_1_1"}},
                 fill + Bytes{{44, "240329"}, {109, "CSN"}, {139, "M_3_2"}, {232, k96_5}, {315, k12_5},
                              {332, "S_1_2"}}});
}
// clang-format on

}  // namespace
