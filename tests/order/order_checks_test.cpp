#include "order/order_checks.h"

#include "order/order_fixture.h"
#include "res/resource_ids.h"
#include "res/string_table.h"

namespace {

using Ids = std::vector<unsigned>;
using Change = void (*)(OrderForm&);

std::string Joined(const Ids& ids) {
    std::string text;
    for (const unsigned id : ids) {
        text += ResString(id);
    }
    return text;
}

class OrderChecks : public OrderTest {};

TEST_F(OrderChecks, FindEveryFaultInTheOrderOfTheMessages) {
    struct {
        const char* fault;
        OrderMode mode;
        Change change;
        Ids errors;
    } const rows[] = {
        {"nothing wrong", OrderMode::Input, [](OrderForm&) {}, {}},
        {"blanks count as empty", OrderMode::Input, [](OrderForm& f) { f.account = "  "; }, {10012}},
        {"the whole head",
         OrderMode::Input,
         [](OrderForm& f) { f.account = f.upper = f.contractText = f.direction = f.commodityNo = ""; },
         {10012, 10013, 10014, 10018, 10019}},
        {"an emptied contract edit",
         OrderMode::Input,
         [](OrderForm& f) { f.contractText = " "; },
         {10014, 10022}},
        {"an unknown direction is none", OrderMode::Input, [](OrderForm& f) { f.direction = "X"; }, {10018}},
        {"an unlisted contract",
         OrderMode::Input,
         [](OrderForm& f) { f.contractText = "EXA CM 1512"; },
         {10022}},
        {"prices between ticks",
         OrderMode::Input,
         [](OrderForm& f) { f.orderPrice.whole = "97.3", f.triggerPrice.whole = ".1"; },
         {10020, 10021}},
        {"codes without a word",
         OrderMode::Input,
         [](OrderForm& f) { f.orderType = f.orderState = f.source = f.validType = ""; },
         {10028, 10029, 10030, 10031}},
        {"no limit price, no quantity",
         OrderMode::Input,
         [](OrderForm& f) { f.orderPrice.whole = "0", f.orderQty = 0; },
         {10032, 10033}},
        {"a market order has no price",
         OrderMode::Input,
         [](OrderForm& f) { f.orderPrice.whole = "0", f.orderType = OrderTypeToText('1'); },
         {}},
        {"a limit stop wants both prices",
         OrderMode::Input,
         [](OrderForm& f) { f.orderPrice.whole = "", f.orderType = OrderTypeToText('4'); },
         {10032, 10034}},
        {"corrections want an order", OrderMode::Modify, [](OrderForm&) {}, {10035}},
        {"also a move", OrderMode::Move, [](OrderForm&) {}, {10035}},
        {"a filled order without fill",
         OrderMode::Modify,
         [](OrderForm& f) { f.orderState = OrderStateToText('5'), f.exchangeFillNo = " "; },
         {10035, 10036, 10037, 10039}},
        {"more filled than ordered",
         OrderMode::Input,
         [](OrderForm& f) { f.orderState = OrderStateToText('A'), f.fillQty = 6; },
         {10038}},
        {"all of it is not a part",
         OrderMode::Input,
         [](OrderForm& f) { f.orderState = OrderStateToText('5'), f.fillQty = 5; },
         {10039}},
        {"a part is not all of it",
         OrderMode::Modify,
         [](OrderForm& f) { f.orderState = OrderStateToText('6'), f.fillQty = 4; },
         {10035, 10039}},
        {"a part without a fill state", OrderMode::Input, [](OrderForm& f) { f.fillQty = 4; }, {10039}},
        {"a part",
         OrderMode::Input,
         [](OrderForm& f) { f.orderState = OrderStateToText('A'), f.fillQty = 4, f.fillPrice.whole = "1"; },
         {}},
    };
    for (const auto& row : rows) {
        OrderForm form = Entry(row.mode);
        row.change(form);
        EXPECT_EQ(FindOrderProblems(form, trade).errors, row.errors) << row.fault;
    }
}

TEST_F(OrderChecks, CarryAndExerciseNameASecondContract) {
    struct {
        const char* fault;
        OrderMode mode;
        const char* contract;
        const char* second;
        const char* threeMonthDate;
        Ids errors;
    } const rows[] = {
        {"carry", OrderMode::Carry, "240315", "240329", nullptr, {}},
        {"carry to 3M", OrderMode::Carry, "240315", "3M", "240613", {}},
        {"nothing given", OrderMode::Carry, "", "", nullptr, {10015, 10017, 10023, 10027}},
        {"unlisted dates", OrderMode::Carry, "240316", "240317", nullptr, {10023, 10027}},
        {"3M by its dates", OrderMode::Carry, "240613", "240613", "240613", {10024, 10024}},
        {"the name behind a chosen date", OrderMode::Carry, "240315", "240613\1Copper", "240613", {10024}},
        {"exercise", OrderMode::Exercise, "240315 C3000", "240329", nullptr, {}},
        {"exercise of 3M", OrderMode::Exercise, "240315 C3000", "3M", "240613", {}},
        {"no underlying", OrderMode::Exercise, "240315 C3000", "", nullptr, {10016, 10026}},
        {"unlisted contracts", OrderMode::Exercise, "240315 C9", "240317", nullptr, {10022, 10026}},
        {"underlying by the date of 3M", OrderMode::Exercise, "240315 C3000", "240613", "240613", {10024}},
    };
    for (const auto& row : rows) {
        api.threeMonthContractNo = row.threeMonthDate;
        OrderForm form = row.mode == OrderMode::Carry ? CarryEntry("240315", row.second)
                                                      : Entry(row.mode, "EXA CA 240315 C3000");
        form.contractText = *row.contract ? "EXA CA " + std::string(row.contract) : "";
        form.forwardContract = row.second;
        const OrderFindings findings = FindOrderProblems(form, trade);
        EXPECT_EQ(findings.errors, row.errors) << row.fault;
        if (row.errors.empty()) {
            ASSERT_NE(findings.contract, nullptr) << row.fault;
            EXPECT_EQ(findings.contract->key.commodityType, 'F') << row.fault << ": the second contract";
        }
    }
}

TEST_F(OrderChecks, CarryAndExerciseSkipWhatTheyDoNotEnter) {
    OrderForm carry = CarryEntry("240315", "240329");
    carry.orderPrice.whole = "0.1";  // hidden rows
    carry.source = "";
    carry.fillQty = 9;
    EXPECT_EQ(FindOrderProblems(carry, trade).errors, Ids{});
    carry.exchangeFillNo = "";
    carry.fillQty = 0;
    EXPECT_EQ(FindOrderProblems(carry, trade).errors, (Ids{10036, 10037}));

    OrderForm exercise = Entry(OrderMode::Exercise, "EXA CA 240315 C3000");
    exercise.forwardContract = "240329";
    exercise.orderPrice.whole = "0.1";
    exercise.orderType = exercise.orderState = exercise.source = exercise.validType = "";
    exercise.orderQty = 0;
    EXPECT_EQ(FindOrderProblems(exercise, trade).errors, (Ids{10033}));
}

TEST_F(OrderChecks, SpreadsMayCostNothing) {
    AddSpread('m', "EXA SP 1509/1512");
    AddSpread('d', "EXA ST 1509 C3000/1509 P3000");
    OrderForm spread = Entry(OrderMode::Input, "EXA SP 1509/1512");
    spread.orderType = OrderTypeToText('4');
    spread.orderPrice.whole = "0";
    EXPECT_EQ(FindOrderProblems(spread, trade).errors, Ids{});
    OrderForm straddle = Entry(OrderMode::Input, "EXA ST 1509 C3000/1509 P3000");
    straddle.orderPrice.whole = "0";
    EXPECT_EQ(FindOrderProblems(straddle, trade).errors, (Ids{10032}));
}

TEST_F(OrderChecks, FractionsCountByTheirDenominator) {
    OrderForm form = Entry(OrderMode::Input, "EXA FR 1509");
    form.orderPrice = {"97", 3};
    form.denominator = 8;
    EXPECT_EQ(FindOrderProblems(form, trade).errors, Ids{});
    form.denominator = 7;
    EXPECT_EQ(FindOrderProblems(form, trade).errors, (Ids{10020}));
}

TEST_F(OrderChecks, RemovedAndMovedOrdersIgnoreErrorsButNotAMissingContract) {
    for (const OrderMode mode : {OrderMode::RemoveFilled, OrderMode::Move}) {
        OrderForm form = Correction(mode);
        form.upper = form.orderType = "";
        EXPECT_TRUE(CheckOrder(form, trade, prompt).passed);
        form.contractText = "EXA CM 1512";
        EXPECT_FALSE(CheckOrder(form, trade, prompt).passed);
        EXPECT_TRUE(prompt.asked.empty()) << "nothing to tell";
        original.orderNo = 0;
        EXPECT_FALSE(CheckOrder(form, trade, prompt).passed);
        EXPECT_EQ(prompt.asked.back().text, Joined({10013, 10022, 10028}));
        prompt.asked.clear();
    }
}

TEST_F(OrderChecks, WarnOfFillPrices) {
    AddSpread('m', "EXA SP 1509/1512");
    struct {
        OrderMode mode;
        const char* contract;
        const char* price;
        const char* price2;
        Ids warnings;
    } const rows[] = {
        {OrderMode::Input, "EXA CM 1509", "97.3", "0.1", {10041}},
        {OrderMode::Input, "EXA CM 1509", "", "", {10042}},
        {OrderMode::Input, "EXA SP 1509/1512", "0.1", "0.2", {10041, 10043}},
        {OrderMode::Input, "EXA SP 1509/1512", "0", "0", {10042, 10044}},
        {OrderMode::Move, "EXA SP 1509/1512", "0", "0", {10042}},
        {OrderMode::Input, "EXA CM 1509", "97.25", "", {}},
    };
    for (const auto& row : rows) {
        OrderForm form = FilledEntry(row.mode, row.contract);
        form.original = Correction(row.mode).original;
        form.fillPrice.whole = row.price;
        form.fillPrice2.whole = row.price2;
        EXPECT_EQ(FindOrderProblems(form, trade).warnings, row.warnings) << row.contract << ' ' << row.price;
    }
}

TEST_F(OrderChecks, TellErrorsInOneBox) {
    OrderForm form = Entry();
    form.account = "";
    form.orderQty = 0;
    EXPECT_FALSE(CheckOrder(form, trade, prompt).passed);
    ASSERT_EQ(prompt.asked.size(), 1u);
    EXPECT_EQ(prompt.asked[0].text, "Account can't be empty!\nOrderQty can't be zero!\n");
    EXPECT_EQ(prompt.asked[0].caption, "operation failed");
    EXPECT_EQ(prompt.asked[0].buttons, PromptButtons::Ok);
}

TEST_F(OrderChecks, UnknownThreeMonthDateStopsAnExercise) {
    OrderForm form = Entry(OrderMode::Exercise, "EXA CA 240315 C3000");
    form.forwardContract = "3M";
    form.orderQty = 0;
    EXPECT_FALSE(CheckOrder(form, trade, prompt).passed);
    ASSERT_EQ(prompt.asked.size(), 1u);
    EXPECT_EQ(prompt.asked[0].text, ResString(10025));
    EXPECT_EQ(prompt.asked[0].caption, ResString(10114));
}

TEST_F(OrderChecks, WarningsPassWithOkAlone) {
    struct {
        PromptAnswer answer;
        bool stays;
        bool passed;
        bool focus;
    } const rows[] = {
        {PromptAnswer::Ok, true, true, false},     {PromptAnswer::Cancel, true, false, true},
        {PromptAnswer::None, true, false, true},   {PromptAnswer::Ok, false, false, false},
        {PromptAnswer::None, false, false, false},
    };
    for (const auto& row : rows) {
        OrderForm form = FilledEntry();
        form.fillPrice.whole = "97.3";
        prompt.answers = {row.answer};
        prompt.dialogExists = true;
        prompt.whileAsking = [&] { prompt.dialogExists = row.stays; };
        const OrderCheck check = CheckOrder(form, trade, prompt);
        EXPECT_EQ(check.passed, row.passed);
        EXPECT_EQ(check.focusFillPrice, row.focus);
        EXPECT_EQ(prompt.asked.back().text, Joined({10041, 10045}));
        EXPECT_EQ(prompt.asked.back().caption, ResString(10046));
        EXPECT_EQ(prompt.asked.back().buttons, PromptButtons::OkCancel);
    }
}

TEST_F(OrderChecks, WholeFillOfANewOrderTakesItsQuantity) {
    OrderForm form = FilledEntry();
    form.fillQty = 0;
    EXPECT_TRUE(CheckOrder(form, trade, prompt).passed);
    EXPECT_EQ(form.fillQty, 5);
}

TEST_F(OrderChecks, ElectronicOrdersAreCorrectedWithConsent) {
    struct {
        OrderMode mode;
        char backOffice;
        PromptAnswer answer;
        bool asks;
        bool goesOn;
    } const rows[] = {
        {OrderMode::Modify, 'Y', PromptAnswer::None, false, true},
        {OrderMode::Modify, 'N', PromptAnswer::Ok, true, true},
        {OrderMode::RemoveFilled, '\0', PromptAnswer::Cancel, true, false},
        {OrderMode::Move, 'N', PromptAnswer::None, true, false},
        {OrderMode::Input, 'N', PromptAnswer::None, false, true},
    };
    for (const auto& row : rows) {
        const OrderForm form = Correction(row.mode);
        original.backOffice = row.backOffice;
        prompt.answers = {row.answer};
        prompt.asked.clear();
        EXPECT_EQ(ConfirmElectronicOrder(form, prompt), row.goesOn);
        ASSERT_EQ(prompt.asked.size(), row.asks ? 1u : 0u);
        if (row.asks) {
            EXPECT_TRUE(prompt.asked[0].coloured);
            EXPECT_EQ(prompt.asked[0].text, ResString(10047));
            EXPECT_EQ(prompt.asked[0].caption, ResString(10046));
        }
    }
}

TEST_F(OrderChecks, WithoutAHostNothingIsFound) {
    const TradeData none(nullptr);
    EXPECT_EQ(FindOrderProblems(Entry(), none).errors, (Ids{10019}));
}

}  // namespace
