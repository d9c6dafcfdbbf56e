#include "order/order_submission.h"

#include "order/order_fixture.h"
#include "res/resource_ids.h"
#include "res/string_table.h"

namespace {

using enum OrderOutcome;
using enum PromptAnswer;

// The ids of text and caption of every box that was shown.
using Boxes = std::vector<std::pair<unsigned, unsigned>>;

class OrderSubmission : public OrderTest {
protected:
    OrderOutcome Submit(OrderForm form, std::deque<PromptAnswer> answers = {}, std::deque<int> results = {}) {
        prompt.answers = std::move(answers);
        prompt.asked.clear();
        service.results = std::move(results);
        service.orders.clear();
        service.fills.clear();
        service.exercises.clear();
        service.deletedOrders.clear();
        return SubmitOrder(form, services);
    }
    void ExpectBoxes(const Boxes& boxes) {
        ASSERT_EQ(prompt.asked.size(), boxes.size());
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            EXPECT_EQ(prompt.asked[i].text, ResString(boxes[i].first));
            EXPECT_EQ(prompt.asked[i].caption, ResString(boxes[i].second));
        }
    }
};

TEST_F(OrderSubmission, InputAsksForTheNextOrder) {
    struct {
        PromptAnswer answer;
        bool stays;
        OrderOutcome outcome;
    } const rows[] = {
        {Yes, true, NextOrder}, {No, true, Close},   {None, true, Close},
        {Yes, false, Gone},     {None, false, Gone},
    };
    for (const auto& row : rows) {
        prompt.dialogExists = true;
        prompt.whileAsking = [&] { prompt.dialogExists = row.stays; };
        EXPECT_EQ(Submit(Entry(), {row.answer}), row.outcome);
        EXPECT_EQ(service.orders.size(), 1u);
        ExpectBoxes({{10115, 10114}});
        EXPECT_EQ(prompt.asked[0].buttons, PromptButtons::YesNo);
    }
    EXPECT_TRUE(pause.waits.empty()) << "no fill to wait for";
}

TEST_F(OrderSubmission, FillsFollowTheirOrder) {
    struct {
        char spread;  // its type; 0: none
        const char* contract;
        char state;
        int fillQty;
    } const rows[] = {
        {0, "EXA CM 1509", '6', 5},
        {0, "EXA CM 1509", '5', 2},
        {'m', "EXA SA 1509/1512", '6', 5},
        {'c', "EXA A&B 1509", 'A', 1},
        {'r', "EXA SR 1509 P3000/1512 P3000", '6', 5},
    };
    for (const auto& row : rows) {
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
        EXPECT_TRUE(prompt.asked.empty()) << "nobody is left to ask";
        ASSERT_EQ(service.fills.size(), row.spread ? 2u : 1u) << row.contract;
        EXPECT_EQ(pause.waits, std::vector<int>{100});
        for (const FillRecord& fill : service.fills) {
            EXPECT_EQ(fill.fillQty + 0u, static_cast<unsigned>(row.fillQty)) << row.contract;
            EXPECT_EQ(fill.carryPair, 0);
        }
    }
}

TEST_F(OrderSubmission, InputStopsAtEachFailure) {
    AddSpread('m', "EXA SA 1509/1512");
    struct {
        const char* step;
        const char* contract;
        std::deque<int> results;
        OrderOutcome outcome;
        std::size_t orders, fills;
        Boxes boxes;
    } const rows[] = {
        {"faulty entry", "EXA CM 1512", {}, Stay, 0, 0, {{10022, 10040}}},
        {"order", "EXA CM 1509", {1}, Stay, 1, 0, {{10056, 10114}}},
        {"fill", "EXA CM 1509", {0, 1}, Stay, 1, 1, {}},
        {"first leg", "EXA SA 1509/1512", {0, 1, 0}, Close, 1, 2, {{10115, 10114}}},
        {"second leg decides", "EXA SA 1509/1512", {0, 0, 1}, Stay, 1, 2, {}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Submit(FilledEntry(OrderMode::Input, row.contract), {}, row.results), row.outcome)
            << row.step;
        EXPECT_EQ(service.orders.size(), row.orders) << row.step;
        EXPECT_EQ(service.fills.size(), row.fills) << row.step;
        ExpectBoxes(row.boxes);
    }
    OrderForm form = Entry();
    const OrderServices unserved{trade, TradeRequests(nullptr), prompt, pause, clock};
    EXPECT_EQ(SubmitOrder(form, unserved), Stay);
}

TEST_F(OrderSubmission, WhatTheServerHasIsNotSentAgain) {
    OrderForm form = Correction(OrderMode::Input);
    api.orders = {&original};
    EXPECT_EQ(Submit(form, {Ok, Yes}), NextOrder);
    ExpectBoxes({{10052, 10053}, {10115, 10114}});
    EXPECT_TRUE(service.orders.empty());

    // The host comes to know the order between the two look-ups.
    form = FilledEntry();
    for (const auto& [alreadyFilled, sent, remaining] :
         {std::tuple{5u, 0u, 0u}, {6u, 0u, 0u}, {2u, 1u, 3u}, {0u, 1u, 5u}}) {
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
        EXPECT_EQ(result.orderSent, sent == 1);
        EXPECT_EQ(service.orders.size(), sent);
        ExpectBoxes(sent ? Boxes{} : Boxes{{10055, 10053}});
        ASSERT_EQ(service.fills.size(), sent);
        if (sent) {
            EXPECT_EQ(service.fills[0].fillQty + 0u, remaining);
        }
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
    prompt.whileAsking = [&] { prompt.dialogExists = false; };
    OrderForm doubtful = FilledEntry();
    doubtful.fillPrice.whole = "97.3";
    EXPECT_EQ(Submit(doubtful, {Ok}), Gone);
    EXPECT_TRUE(service.orders.empty());

    prompt.dialogExists = true;
    OrderForm exercise = Entry(OrderMode::Exercise, "EXA CO 240315 C3000");
    exercise.forwardContract = "240329";
    EXPECT_EQ(Submit(exercise, {Yes}), Gone);
    EXPECT_TRUE(service.exercises.empty());

    prompt.dialogExists = true;
    api.whileAsked = prompt.whileAsking;
    EXPECT_EQ(Submit(Entry()), Gone);
    EXPECT_TRUE(service.orders.empty());
}

TEST_F(OrderSubmission, Corrections) {
    struct {
        OrderMode mode;
        const char* account;
        std::deque<int> results;
        OrderOutcome outcome;
        std::size_t orders, removals;
        Boxes boxes;
    } const rows[] = {
        {OrderMode::Modify, "100", {}, Close, 1, 0, {}},
        {OrderMode::Modify, "100", {1}, Stay, 1, 0, {{10057, 10114}}},
        {OrderMode::RemoveFilled, "100", {1}, Close, 0, 1, {}},
        {OrderMode::RemoveFilled, "100", {0}, Stay, 0, 1, {{10058, 10114}}},
        {OrderMode::Move, "100", {}, Close, 0, 0, {{10059, 10060}}},
        {OrderMode::Move, "200", {}, Close, 1, 0, {}},
        {OrderMode::Move, "200", {1}, Stay, 1, 0, {}},
        {static_cast<OrderMode>(9), "100", {}, Close, 0, 0, {}},
    };
    for (const auto& row : rows) {
        OrderForm form = Correction(row.mode);
        form.account = row.account;
        EXPECT_EQ(Submit(form, {}, row.results), row.outcome) << static_cast<int>(row.mode);
        EXPECT_EQ(service.orders.size(), row.orders);
        EXPECT_EQ(service.deletedOrders, std::vector<std::uint32_t>(row.removals, 77));
        ExpectBoxes(row.boxes);
    }
}

TEST_F(OrderSubmission, ExerciseAsksWhenThePositionIsSmaller) {
    struct {
        char direction;
        std::uint32_t longQty, shortQty;
        std::deque<PromptAnswer> answers;
        std::deque<int> results;
        OrderOutcome outcome;
        std::size_t sent;
        Boxes boxes;
    } const rows[] = {
        {'B', 5, 0, {}, {}, Close, 1, {}},
        {'B', 3, 9, {Yes}, {}, Close, 1, {{10116, 10114}}},
        {'S', 9, 4, {No}, {}, Stay, 0, {{10116, 10114}}},
        {'B', 9, 9, {}, {1}, Stay, 1, {{10061, 10114}}},
    };
    for (const auto& row : rows) {
        api.longQty = row.longQty;
        api.shortQty = row.shortQty;
        OrderForm form = Entry(OrderMode::Exercise, "EXA CO 240315 C3000");
        form.forwardContract = "240329";
        form.direction = row.direction;
        EXPECT_EQ(Submit(form, row.answers, row.results), row.outcome);
        EXPECT_EQ(service.exercises.size(), row.sent);
        ExpectBoxes(row.boxes);
    }
}

}  // namespace
