#include "order/order_submission.h"

#include "order/order_fixture.h"
#include "res/resource_ids.h"
#include "res/string_table.h"

namespace {

using enum OrderOutcome;
using enum PromptAnswer;

class OrderSubmission : public OrderTest {
protected:
    OrderOutcome Submit(const OrderForm& form, std::deque<PromptAnswer> answers = {},
                        std::deque<int> results = {}) {
        prompt.answers = std::move(answers);
        prompt.asked.clear();
        service.results = std::move(results);
        service.orders.clear();
        service.fills.clear();
        service.exercises.clear();
        service.deletedOrders.clear();
        return SubmitOrder(form, services);
    }
    // How many orders, fills, exercises and removals went out, and the texts of the boxes.
    std::string Happened() const {
        std::string text;
        for (const auto count : {service.orders.size(), service.fills.size(), service.exercises.size(),
                                 service.deletedOrders.size()}) {
            text += std::to_string(count);
        }
        for (const auto& box : prompt.asked) {
            text += "|" + box.text;
        }
        return text;
    }
    static std::string Expected(const char* sent, std::initializer_list<unsigned> boxes) {
        std::string text = sent;
        for (const unsigned id : boxes) {
            text += "|" + ResString(id);
        }
        return text;
    }
};

TEST_F(OrderSubmission, EachModeAsksTellsAndStopsAtItsFailures) {
    AddSpread('m', "EXA SA 1509/1512");
    using M = OrderMode;
    const char *plain = "EXA CM 1509", *spread = "EXA SA 1509/1512", *option = "EXA CO 240315 C3000";
    struct {
        M mode;
        const char* contract;
        std::deque<PromptAnswer> answers;
        std::deque<int> results;
        OrderOutcome outcome;
        const char* sent;  // orders, fills, exercises, removals
        std::initializer_list<unsigned> boxes;
    } const rows[] = {
        // clang-format off
        {M::Input, plain, {Yes}, {}, NextOrder, "1100", {IDS_ASK_NEXT_ORDER}},
        {M::Input, plain, {No}, {}, Close, "1100", {IDS_ASK_NEXT_ORDER}},
        {M::Input, plain, {None}, {}, Close, "1100", {IDS_ASK_NEXT_ORDER}},
        {M::Input, "EXA CM 1512", {}, {}, Stay, "0000", {IDS_NO_CONTRACT}},
        {M::Input, plain, {}, {1}, Stay, "1000", {IDS_SEND_INPUT_FAILED}},
        {M::Input, plain, {}, {0, 1}, Stay, "1100", {}},
        {M::Input, spread, {}, {0, 1, 0}, Close, "1200", {IDS_ASK_NEXT_ORDER}},
        {M::Input, spread, {}, {0, 0, 1}, Stay, "1200", {}},
        {M::Modify, plain, {}, {}, Close, "1000", {}},
        {M::Modify, plain, {}, {1}, Stay, "1000", {IDS_SEND_MODIFY_FAILED}},
        {M::RemoveFilled, plain, {}, {1}, Close, "0001", {}},
        {M::RemoveFilled, plain, {}, {0}, Stay, "0001", {IDS_SEND_REMOVE_FAILED}},
        {M::Move, plain, {}, {}, Close, "1000", {}},
        {M::Move, plain, {}, {1}, Stay, "1000", {}},
        {M{9}, plain, {}, {}, Close, "0000", {}},
        {M::Exercise, option, {}, {}, Close, "0010", {}},
        {M::Exercise, option, {}, {1}, Stay, "0010", {IDS_SEND_EXERCISE_FAILED}},
        // clang-format on
    };
    api.longQty = 5;
    ServerOrder().accountNo.Set("200");
    for (const auto& row : rows) {
        OrderForm form =
            row.mode == M::Exercise ? Entry(row.mode, option) : FilledEntry(row.mode, row.contract);
        form.forwardContract = "240329";
        form.original = CorrectsOrder(row.mode) ? &original : nullptr;
        SCOPED_TRACE(testing::Message() << static_cast<int>(row.mode) << ' ' << row.sent);
        EXPECT_EQ(Submit(form, row.answers, row.results), row.outcome);
        EXPECT_EQ(Happened(), Expected(row.sent, row.boxes));
    }
    original.accountNo.Set("100");
    EXPECT_EQ(Submit(Correction(M::Move)), Close);
    EXPECT_EQ(Happened(), Expected("0000", {IDS_SAME_ACCOUNT}));
    const OrderServices unserved{trade, TradeRequests(nullptr), prompt, pause, clock};
    EXPECT_EQ(SubmitOrder(Entry(), unserved), Stay);
}

TEST_F(OrderSubmission, FillsFollowTheirOrder) {
    struct {
        char spread;  // its type; 0: none
        const char* contract;
        char state;
        int fillQty;
    } const rows[] = {
        {0, "EXA CM 1509", '5', 2},
        {'m', "EXA SA 1509/1512", '6', 5},
        {'c', "EXA A&B 1509", 'A', 1},
        {'r', "EXA SR 1509 P3000/1512 P3000", '6', 5},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.contract);
        if (row.spread) {
            AddSpread(row.spread, row.contract);
        }
        pause.waits.clear();
        prompt.dialogExists = true;
        pause.whileWaiting = [&] {
            EXPECT_EQ(service.orders.size(), 1u) << "the order is out first";
            prompt.dialogExists = false;  // what is confirmed is finished without the dialog
        };
        OrderForm form = FilledEntry(OrderMode::Input, row.contract);
        form.orderState = row.state;
        form.fillQty = row.fillQty;
        EXPECT_EQ(Submit(form), Gone);
        EXPECT_EQ(Happened(), row.spread ? "1200" : "1100") << "nobody is left to ask";
        EXPECT_EQ(pause.waits, std::vector<int>{100});
        for (const FillRecord& fill : service.fills) {
            EXPECT_EQ(fill.fillQty + 0u, static_cast<unsigned>(row.fillQty));
        }
    }
}

TEST_F(OrderSubmission, WhatTheServerHasIsNotSentAgain) {
    OrderForm form = Correction(OrderMode::Input);
    api.orders = {&original};
    EXPECT_EQ(Submit(form, {Ok, Yes}), NextOrder);
    EXPECT_EQ(Happened(), Expected("0000", {IDS_ORDER_EXISTS, IDS_ASK_NEXT_ORDER}));

    // The host comes to know the order between the two look-ups.
    form = FilledEntry();
    for (const auto& [alreadyFilled, remaining] : {std::pair{5u, 0u}, {6u, 0u}, {2u, 3u}, {0u, 5u}}) {
        original.fillQty = alreadyFilled;
        original.orderNo = 0;
        service.orders.clear();
        service.fills.clear();
        prompt.asked.clear();
        api.orders.clear();
        api.whileAsked = [&, asked = 0]() mutable {
            if (asked++ == 1) {
                api.orders = {&original};
            }
        };
        const OrderRecord order = BuildOrder(form, api.contracts[0], TradeData(nullptr), clock.now);
        const InputResult result = SendInput(order, FillTermsOf(form), services);
        EXPECT_FALSE(result.failed);
        EXPECT_EQ(result.orderSent, remaining > 0);
        EXPECT_EQ(Happened(), remaining ? "1100" : Expected("0000", {IDS_ORDER_ALREADY_FILLED}));
        EXPECT_EQ(remaining ? service.fills.at(0).fillQty + 0u : 0u, remaining);
    }
}

TEST_F(OrderSubmission, AnUnknownSpreadCommoditySendsNothing) {
    AddSpread('m', "EXA SA 1509/1512");
    const OrderForm form = FilledEntry(OrderMode::Input, "EXA SA 1509/1512");
    const OrderRecord order = BuildOrder(form, api.contracts.back(), trade, clock.now);
    api.commodities.clear();
    EXPECT_TRUE(SendInput(order, FillTermsOf(form), services).failed);
    EXPECT_TRUE(service.orders.empty());
}

TEST_F(OrderSubmission, WhatWasCheckedIsSent) {
    OrderForm doubtful = FilledEntry();
    doubtful.fillPrice.whole = "97.3";
    prompt.whileAsking = [&] { doubtful.commodityNo = "FR"; };
    prompt.answers = {Ok, No};
    EXPECT_EQ(SubmitOrder(doubtful, services), Close);
    ASSERT_EQ(service.orders.size(), 1u);
    EXPECT_EQ(service.orders[0].key.commodityNo.Str(), "CM");
}

TEST_F(OrderSubmission, NothingIsSentThatWasNotConfirmed) {
    OrderForm doubtful = FilledEntry();
    doubtful.fillPrice.whole = "97.3";
    OrderForm exercise = Entry(OrderMode::Exercise, "EXA CO 240315 C3000");
    exercise.forwardContract = "240329";
    const auto go = [&] { prompt.dialogExists = false; };
    for (const auto& [form, answer, whileAsking, whileLookedUp] :
         {std::tuple{doubtful, Ok, std::function<void()>(go), std::function<void()>()},
          {exercise, Yes, go, {}},
          {Entry(), Yes, {}, go}}) {
        prompt.dialogExists = true;
        prompt.whileAsking = whileAsking;
        api.whileAsked = whileLookedUp;
        EXPECT_EQ(Submit(form, {answer}), Gone);
        EXPECT_EQ(Happened().substr(0, 4), "0000");
    }
}

TEST_F(OrderSubmission, ExerciseAsksWhenThePositionIsSmaller) {
    struct {
        char direction;
        std::uint32_t longQty, shortQty;
        PromptAnswer answer;
        bool asks, sent;
    } const rows[] = {
        {'B', 5, 0, None, false, true},
        {'B', 3, 9, Yes, true, true},
        {'S', 9, 4, No, true, false},
        {'B', 3, 9, None, true, false},
    };
    for (const auto& row : rows) {
        api.longQty = row.longQty;
        api.shortQty = row.shortQty;
        OrderForm form = Entry(OrderMode::Exercise, "EXA CO 240315 C3000");
        form.forwardContract = "240329";
        form.direction = row.direction;
        EXPECT_EQ(Submit(form, {row.answer}), row.sent ? Close : Stay);
        EXPECT_EQ(prompt.asked.size(), row.asks);
        EXPECT_EQ(service.exercises.size(), row.sent);
    }
}

}  // namespace
