#include "order/order_request.h"

#include "order/order_fixture.h"
#include "order/order_submission.h"

namespace {

using namespace std::string_view_literals;

// Little-endian doubles.
constexpr auto k97_5 = "\0\0\0\0\0\x60\x58\x40"sv;
constexpr auto k97_25 = "\0\0\0\0\0\x50\x58\x40"sv;
constexpr auto k97_375 = "\0\0\0\0\0\x58\x58\x40"sv;
constexpr auto k96_5 = "\0\0\0\0\0\x20\x58\x40"sv;
constexpr auto k2_25 = "\0\0\0\0\0\0\x02\x40"sv;
constexpr auto k12_5 = "\0\0\0\0\0\0\x29\x40"sv;
constexpr auto kNow = "2026-03-04 05:06:07"sv;

using Bytes = std::vector<BytesAt>;

// What the requests of the sample entries have in common; later parts overwrite earlier ones.
const Bytes kOrder = {{0, "SIG"},   {21, "EXA"},  {32, "F"},     {66, "N"},   {89, "N"},
                      {90, "100"},  {111, "2E0"}, {135, "NBNN"}, {157, "\5"}, {321, "S_1"},
                      {372, "X_2"}, {434, "U7"},  {498, "OP9"},  {519, kNow}, {540, "4"}};
const Bytes kEntered = {{456, "OP9"}, {477, kNow}};
const Bytes kFill = {{0, "SIG"},  {21, "EXA"}, {32, "F"},    {66, "N"},  {88, "100"}, {109, "EBN"},
                     {190, kNow}, {240, "\5"}, {245, "USD"}, {256, "N"}, {303, "U7"}, {332, "S_1"}};

Bytes operator+(Bytes parts, const Bytes& more) {
    parts.insert(parts.end(), more.begin(), more.end());
    return parts;
}

class OrderRequests : public OrderTest {
protected:
    // Sends the form; the operator agrees to everything.
    void Confirm(OrderForm form) {
        prompt.answers.assign(4, PromptAnswer::Yes);
        EXPECT_NE(SubmitOrder(form, services).outcome, SubmitOutcome::Stay);
    }
    // The pointer is checked apart, since it differs in every run.
    void ExpectOrder(OrderRecord order, const ContractRecord* contract, const Bytes& parts) {
        EXPECT_TRUE(order.contract == contract);
        order.contract = nullptr;
        ExpectBytes(order, parts);
    }
};

// clang-format off
TEST_F(OrderRequests, Input) {
    OrderForm form = Entry();
    form.orderType = "Limit stop";
    form.triggerPrice.whole = "97.25";
    form.validType = "GTD";
    form.validUntil = clock.now.fields;
    form.validUntil.tm_year = 127;
    form.source = "Manual Order";
    form.forcedClose = true;
    Confirm(form);
    ASSERT_EQ(service.orders.size(), 1u);
    ExpectOrder(service.orders[0], api.contracts[0], kOrder + kEntered +
        Bytes{{33, "CM"}, {44, "1509"}, {111, "4M2"}, {114, "2027-03-04 05:06:07"}, {135, "YBNN"}, {139, k97_5},
              {147, k97_25}});
    EXPECT_TRUE(service.fills.empty());
}

TEST_F(OrderRequests, InputWithFill) {
    OrderForm form = FilledEntry(OrderMode::Input, "EXA FR 1509");
    form.denominator = 8;
    form.orderPrice = {"97", 4};
    form.fillPrice = {"97", 3};
    form.feeGiven = true;
    form.fee = "12.5";
    Confirm(form);
    ASSERT_EQ(service.orders.size(), 1u);
    ExpectOrder(service.orders[0], api.contracts[1], kOrder + kEntered +
        Bytes{{33, "FR"}, {44, "1509"}, {139, k97_5}, {540, "6"}, {541, k97_375}, {549, "\5"}});
    ASSERT_EQ(service.fills.size(), 1u);
    ExpectBytes(service.fills[0], kFill +
        Bytes{{33, "FR"}, {44, "1509"}, {139, "M_3"}, {232, k97_375}, {256, "Y"}, {268, k12_5}});
}

TEST_F(OrderRequests, InputOfASpreadWithFills) {
    AddSpread('l', "EXA CS 1509 C3000/1512 C3000");
    OrderForm form = FilledEntry(OrderMode::Input, "EXA CS 1509 C3000/1512 C3000");
    form.direction = "Sell";
    Confirm(form);
    ASSERT_EQ(service.orders.size(), 1u);
    ExpectOrder(service.orders[0], api.contracts.back(), kOrder + kEntered +
        Bytes{{32, "l"}, {33, "CS"}, {44, "1509"}, {55, "3000"}, {66, "C"}, {67, "1512"}, {78, "3000"},
              {89, "C"}, {135, "NSNN"}, {139, k97_5}, {540, "6"}, {541, k97_25}, {549, "\5"}});
    ASSERT_EQ(service.fills.size(), 2u);
    const Bytes leg = kFill + Bytes{{55, "3000"}, {66, "C"}};
    ExpectBytes(service.fills[0], leg +
        Bytes{{33, "LEG1"}, {44, "1509"}, {109, "ESN"}, {139, "M_3_1"}, {232, k97_25}});
    ExpectBytes(service.fills[1], leg +
        Bytes{{21, "EXB"}, {33, "LEG2"}, {44, "1512"}, {109, "EBN"}, {139, "M_3_2"}, {232, k96_5}});
}

TEST_F(OrderRequests, ModifyAndMoveKeepWhoEnteredTheOrder) {
    UserRecord target = user;
    target.accountNo.Set("200");
    api.users.push_back(&target);
    const Bytes kept = {{33, "CM"}, {44, "1509"}, {139, k97_5}, {270, "\x4d"}, {279, "kept text"},
                        {456, "OP1"}, {477, "2026-01-02 03:04:05"}, {614, "Q"}};
    Confirm(Correction(OrderMode::Modify));
    OrderForm move = Correction(OrderMode::Move);
    move.account = "200";
    Confirm(move);
    ASSERT_EQ(service.orders.size(), 2u);
    ExpectOrder(service.orders[0], api.contracts[0], kOrder + kept);
    ExpectOrder(service.orders[1], api.contracts[0], kOrder + kept + Bytes{{90, "200"}});
}

TEST_F(OrderRequests, Exercise) {
    OrderForm form = Entry(OrderMode::Exercise, "EXA CO 240315 C3000");
    form.forwardContract = "240329";
    form.orderType = "Exercise";
    form.orderPrice = {};
    Confirm(form);
    ASSERT_EQ(service.exercises.size(), 1u);
    ExpectOrder(service.exercises[0], api.contracts[4], kOrder +
        Bytes{{32, "O"}, {33, "CO"}, {44, "240315"}, {55, "3000"}, {66, "C"}, {111, "5E0"}});
}

TEST_F(OrderRequests, CarryLegs) {
    OrderForm form = CarryEntry("240315", "240329");
    form.nearPositionPrice.whole = "2.25";
    form.forwardPositionPrice.whole = "12.5";
    Confirm(form);
    ASSERT_EQ(service.orders.size(), 2u);
    const Bytes order = kOrder + kEntered + Bytes{{33, "CA"}, {111, "2C0"}, {540, "6"}, {549, "\5"}};
    const ContractRecord* forward = api.contracts[4];  // found last, so both legs carry it
    ExpectOrder(service.orders[0], forward, order +
        Bytes{{44, "240315"}, {139, k97_25}, {321, "S_1_1"}, {541, k97_25}});
    ExpectOrder(service.orders[1], forward, order +
        Bytes{{44, "240329"}, {135, "NSNN"}, {139, k96_5}, {321, "S_1_2"}, {541, k96_5}});
    ASSERT_EQ(service.fills.size(), 2u);
    const Bytes fill = kFill + Bytes{{33, "CA"}, {256, "Y"}, {331, "\1"}};
    ExpectBytes(service.fills[0], fill +
        Bytes{{44, "240315"}, {109, "CBN"}, {139, "M_3_1"}, {232, k97_25}, {315, k2_25}, {332, "S_1_1"}});
    ExpectBytes(service.fills[1], fill +
        Bytes{{44, "240329"}, {109, "CSN"}, {139, "M_3_2"}, {232, k96_5}, {315, k12_5}, {332, "S_1_2"}});
}
// clang-format on

TEST_F(OrderRequests, LongTextsAreCutAndAStrangerHasNoOperator) {
    OrderForm form = Entry();
    form.account = std::string(40, '9');
    form.systemNo = std::string(80, 's');
    const OrderRecord order = BuildOrder(form, nullptr, trade, clock.now);
    EXPECT_EQ(order.accountNo, std::string(20, '9'));
    EXPECT_EQ(order.systemNo, std::string(50, 's'));
    EXPECT_TRUE(order.updateOperator.Empty());
    form.contractText = "none";
    EXPECT_EQ(BuildOrder(form, nullptr, TradeData(nullptr), clock.now).key.exchangeNo, "");
}

}  // namespace
