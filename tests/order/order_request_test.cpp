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

class OrderRequests : public OrderTest {
protected:
    // Sends the form; the operator agrees to everything.
    void Confirm(OrderForm form) {
        prompt.answers.assign(4, PromptAnswer::Yes);
        EXPECT_NE(SubmitOrder(form, services).outcome, SubmitOutcome::Stay);
    }
    // The pointer in the last record, checked and then cleared, so that the other bytes are the same in
    // every run.
    OrderRecord TakeOrder(std::vector<OrderRecord>& orders, const ContractRecord* contract) {
        EXPECT_EQ(orders.size(), 1u);
        OrderRecord order = orders.front();
        orders.erase(orders.begin());
        EXPECT_TRUE(order.contract == contract);
        order.contract = nullptr;
        return order;
    }
};

TEST_F(OrderRequests, Input) {
    OrderForm form = Entry();
    form.orderType = OrderTypeToText('4');
    form.triggerPrice.whole = "97.25";
    form.validType = ValidTypeToText('2');
    form.validUntil = clock.now.fields;
    form.validUntil.tm_year = 127;
    form.source = OrderSourceToText('M');
    form.forcedClose = true;
    Confirm(form);
    ExpectBytes(TakeOrder(service.orders, api.contracts[0]),
                {{0, "SIG"},    {21, "EXA"},  {32, "F"},     {33, "CM"},    {44, "1509"},
                 {66, "N"},     {89, "N"},    {90, "100"},   {111, "4M2"},  {114, "2027-03-04 05:06:07"},
                 {135, "YBNN"}, {139, k97_5}, {147, k97_25}, {157, "\x05"}, {321, "S_1"},
                 {372, "X_2"},  {434, "U7"},  {456, "OP9"},  {477, kNow},   {498, "OP9"},
                 {519, kNow},   {540, "4"}});
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
    ExpectBytes(TakeOrder(service.orders, api.contracts[1]),
                {{0, "SIG"},   {21, "EXA"},  {32, "F"},      {33, "FR"},    {44, "1509"}, {66, "N"},
                 {89, "N"},    {90, "100"},  {111, "2E0"},   {135, "NBNN"}, {139, k97_5}, {157, "\x05"},
                 {321, "S_1"}, {372, "X_2"}, {434, "U7"},    {456, "OP9"},  {477, kNow},  {498, "OP9"},
                 {519, kNow},  {540, "6"},   {541, k97_375}, {549, "\x05"}});
    ASSERT_EQ(service.fills.size(), 1u);
    ExpectBytes(service.fills[0], {{0, "SIG"},
                                   {21, "EXA"},
                                   {32, "F"},
                                   {33, "FR"},
                                   {44, "1509"},
                                   {66, "N"},
                                   {88, "100"},
                                   {109, "EBN"},
                                   {139, "M_3"},
                                   {190, kNow},
                                   {232, k97_375},
                                   {240, "\x05"},
                                   {245, "USD"},
                                   {256, "Y"},
                                   {268, k12_5},
                                   {303, "U7"},
                                   {332, "S_1"}});
}

TEST_F(OrderRequests, InputOfASpreadWithFills) {
    AddSpread('l', "EXA CS 1509 C3000/1512 C3000");
    OrderForm form = FilledEntry(OrderMode::Input, "EXA CS 1509 C3000/1512 C3000");
    form.direction = DirectionToText('S');
    Confirm(form);
    ExpectBytes(
        TakeOrder(service.orders, api.contracts.back()),
        {{0, "SIG"},    {21, "EXA"},  {32, "l"},     {33, "CS"},   {44, "1509"}, {55, "3000"},  {66, "C"},
         {67, "1512"},  {78, "3000"}, {89, "C"},     {90, "100"},  {111, "2E0"}, {135, "NSNN"}, {139, k97_5},
         {157, "\x05"}, {321, "S_1"}, {372, "X_2"},  {434, "U7"},  {456, "OP9"}, {477, kNow},   {498, "OP9"},
         {519, kNow},   {540, "6"},   {541, k97_25}, {549, "\x05"}});
    ASSERT_EQ(service.fills.size(), 2u);
    ExpectBytes(service.fills[0], {{0, "SIG"},
                                   {21, "EXA"},
                                   {32, "F"},
                                   {33, "LEG1"},
                                   {44, "1509"},
                                   {55, "3000"},
                                   {66, "C"},
                                   {88, "100"},
                                   {109, "ESN"},
                                   {139, "M_3_1"},
                                   {190, kNow},
                                   {232, k97_25},
                                   {240, "\x05"},
                                   {245, "USD"},
                                   {256, "N"},
                                   {303, "U7"},
                                   {332, "S_1"}});
    ExpectBytes(service.fills[1], {{0, "SIG"},
                                   {21, "EXB"},
                                   {32, "F"},
                                   {33, "LEG2"},
                                   {44, "1512"},
                                   {55, "3000"},
                                   {66, "C"},
                                   {88, "100"},
                                   {109, "EBN"},
                                   {139, "M_3_2"},
                                   {190, kNow},
                                   {232, k96_5},
                                   {240, "\x05"},
                                   {245, "USD"},
                                   {256, "N"},
                                   {303, "U7"},
                                   {332, "S_1"}});
}

TEST_F(OrderRequests, Modify) {
    Confirm(Correction(OrderMode::Modify));
    ExpectBytes(TakeOrder(service.orders, api.contracts[0]), {{0, "SIG"},
                                                              {21, "EXA"},
                                                              {32, "F"},
                                                              {33, "CM"},
                                                              {44, "1509"},
                                                              {66, "N"},
                                                              {89, "N"},
                                                              {90, "100"},
                                                              {111, "2E0"},
                                                              {135, "NBNN"},
                                                              {139, k97_5},
                                                              {157, "\x05"},
                                                              {270, "\x4d"},
                                                              {279, "kept text"},
                                                              {321, "S_1"},
                                                              {372, "X_2"},
                                                              {434, "U7"},
                                                              {456, "OP1"},
                                                              {477, "2026-01-02 03:04:05"},
                                                              {498, "OP9"},
                                                              {519, kNow},
                                                              {540, "4"},
                                                              {614, "Q"}});
}

TEST_F(OrderRequests, Move) {
    UserRecord target = user;
    target.accountNo.Set("200");
    api.users.push_back(&target);
    OrderForm form = Correction(OrderMode::Move);
    form.account = "200";
    Confirm(form);
    ExpectBytes(TakeOrder(service.orders, api.contracts[0]), {{0, "SIG"},
                                                              {21, "EXA"},
                                                              {32, "F"},
                                                              {33, "CM"},
                                                              {44, "1509"},
                                                              {66, "N"},
                                                              {89, "N"},
                                                              {90, "200"},
                                                              {111, "2E0"},
                                                              {135, "NBNN"},
                                                              {139, k97_5},
                                                              {157, "\x05"},
                                                              {270, "\x4d"},
                                                              {279, "kept text"},
                                                              {321, "S_1"},
                                                              {372, "X_2"},
                                                              {434, "U7"},
                                                              {456, "OP1"},
                                                              {477, "2026-01-02 03:04:05"},
                                                              {498, "OP9"},
                                                              {519, kNow},
                                                              {540, "4"},
                                                              {614, "Q"}});
}

TEST_F(OrderRequests, Exercise) {
    OrderForm form = Entry(OrderMode::Exercise, "EXA CA 240315 C3000");
    form.forwardContract = "240329";
    form.orderType = OrderTypeToText('5');
    form.orderPrice = {};
    Confirm(form);
    ExpectBytes(TakeOrder(service.exercises, api.contracts[4]), {{0, "SIG"},
                                                                 {21, "EXA"},
                                                                 {32, "O"},
                                                                 {33, "CA"},
                                                                 {44, "240315"},
                                                                 {55, "3000"},
                                                                 {66, "C"},
                                                                 {89, "N"},
                                                                 {90, "100"},
                                                                 {111, "5E0"},
                                                                 {135, "NBNN"},
                                                                 {157, "\x05"},
                                                                 {321, "S_1"},
                                                                 {372, "X_2"},
                                                                 {434, "U7"},
                                                                 {498, "OP9"},
                                                                 {519, kNow},
                                                                 {540, "4"}});
}

TEST_F(OrderRequests, CarryLegs) {
    OrderForm form = CarryEntry("240315", "240329");
    form.nearPositionPrice.whole = "2.25";
    form.forwardPositionPrice.whole = "12.5";
    Confirm(form);
    ASSERT_EQ(service.orders.size(), 2u);
    const OrderRecord nearOrder = service.orders[0];
    service.orders.erase(service.orders.begin());
    const ContractRecord* forward = api.contracts[4];
    EXPECT_TRUE(nearOrder.contract == forward) << "both legs carry the contract that was found last";
    OrderRecord near = nearOrder;
    near.contract = nullptr;
    ExpectBytes(near,
                {{0, "SIG"},     {21, "EXA"},  {32, "F"},     {33, "CA"},    {44, "240315"}, {66, "N"},
                 {89, "N"},      {90, "100"},  {111, "2C0"},  {135, "NBNN"}, {139, k97_25},  {157, "\x05"},
                 {321, "S_1_1"}, {372, "X_2"}, {434, "U7"},   {456, "OP9"},  {477, kNow},    {498, "OP9"},
                 {519, kNow},    {540, "6"},   {541, k97_25}, {549, "\x05"}});
    ExpectBytes(TakeOrder(service.orders, forward),
                {{0, "SIG"},     {21, "EXA"},  {32, "F"},    {33, "CA"},    {44, "240329"}, {66, "N"},
                 {89, "N"},      {90, "100"},  {111, "2C0"}, {135, "NSNN"}, {139, k96_5},   {157, "\x05"},
                 {321, "S_1_2"}, {372, "X_2"}, {434, "U7"},  {456, "OP9"},  {477, kNow},    {498, "OP9"},
                 {519, kNow},    {540, "6"},   {541, k96_5}, {549, "\x05"}});
    ASSERT_EQ(service.fills.size(), 2u);
    ExpectBytes(service.fills[0], {{0, "SIG"},
                                   {21, "EXA"},
                                   {32, "F"},
                                   {33, "CA"},
                                   {44, "240315"},
                                   {66, "N"},
                                   {88, "100"},
                                   {109, "CBN"},
                                   {139, "M_3_1"},
                                   {190, kNow},
                                   {232, k97_25},
                                   {240, "\x05"},
                                   {245, "USD"},
                                   {256, "Y"},
                                   {303, "U7"},
                                   {315, k2_25},
                                   {331, "\x01"},
                                   {332, "S_1_1"}});
    ExpectBytes(service.fills[1], {{0, "SIG"},
                                   {21, "EXA"},
                                   {32, "F"},
                                   {33, "CA"},
                                   {44, "240329"},
                                   {66, "N"},
                                   {88, "100"},
                                   {109, "CSN"},
                                   {139, "M_3_2"},
                                   {190, kNow},
                                   {232, k96_5},
                                   {240, "\x05"},
                                   {245, "USD"},
                                   {256, "Y"},
                                   {303, "U7"},
                                   {315, k12_5},
                                   {331, "\x01"},
                                   {332, "S_1_2"}});
}

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
