#include "order/order_checks.h"

#include "order/order_fixture.h"
#include "res/resource_ids.h"
#include "res/string_table.h"

namespace {

using Ids = std::vector<unsigned>;

std::string Joined(const Ids& ids) {
    std::string text;
    for (const unsigned id : ids) {
        text += ResString(id);
    }
    return text;
}

class OrderChecks : public OrderTest {};

constexpr const char* kPart = "Partially Filled";
constexpr const char* kPartCanceled = "Partial Canceled";

#define WITH(...) [](OrderForm& f) { __VA_ARGS__; }

TEST_F(OrderChecks, FindEveryFaultInTheOrderOfTheMessages) {
    using M = OrderMode;
    struct {
        const char* fault;
        OrderMode mode;
        void (*change)(OrderForm&);
        Ids errors;
    } const rows[] = {
        // clang-format off
        {"nothing wrong", M::Input, WITH(f.fillQty = 0), {}},
        {"an account", M::Input, WITH(f.account = ""), {10012}},
        {"the whole head", M::Input,
         WITH(f.account = f.upper = f.contractText = f.direction = f.commodityNo = ""),
         {10012, 10013, 10014, 10018, 10019}},
        {"an emptied contract edit", M::Input, WITH(f.contractText = " "), {10014, 10022}},
        {"an unknown direction is none", M::Input, WITH(f.direction = "X"), {10018}},
        {"an unlisted contract", M::Input, WITH(f.contractText = "EXA CM 1512"), {10022}},
        {"prices between ticks", M::Input, WITH(f.orderPrice.whole = "97.3", f.triggerPrice.whole = ".1"),
         {10020, 10021}},
        {"codes without a word", M::Input, WITH(f.orderType = f.orderState = f.source = f.validType = ""),
         {10028, 10029, 10030, 10031}},
        {"no price, no quantity", M::Input, WITH(f.orderPrice.whole = "0", f.orderQty = 0), {10032, 10033}},
        {"a market order has no price", M::Input, WITH(f.orderPrice.whole = "0", f.orderType = "Market"), {}},
        {"a limit stop wants both", M::Input, WITH(f.orderPrice.whole = "", f.orderType = "Limit stop"),
         {10032, 10034}},
        {"corrections want an order", M::Modify, WITH(f.fillQty = 0), {10035}},
        {"also a move", M::Move, WITH(f.fillQty = 0), {10035}},
        {"a filled order without fill", M::Modify, WITH(f.orderState = kPart, f.exchangeFillNo = ""),
         {10035, 10036, 10037, 10039}},
        {"more filled than ordered", M::Input, WITH(f.orderState = kPartCanceled, f.fillQty = 6), {10038}},
        {"all of it is not a part", M::Input, WITH(f.orderState = kPart, f.fillQty = 5), {10039}},
        {"a part is not all of it", M::Modify, WITH(f.orderState = "Filled", f.fillQty = 4), {10035, 10039}},
        {"a part without a fill state", M::Input, WITH(f.fillQty = 4), {10039}},
        {"a part", M::Input, WITH(f.orderState = kPartCanceled, f.fillQty = 4), {}},
        // clang-format on
    };
    for (const auto& row : rows) {
        OrderForm form = Entry(row.mode);
        row.change(form);
        EXPECT_EQ(FindOrderProblems(form, trade).errors, row.errors) << row.fault;
    }
}

TEST_F(OrderChecks, EntriesLoseTheBlanksAroundThem) {
    OrderForm form = FilledEntry();
    form.exchangeFillNo = " M 3 ";
    form.upper = " ";
    EXPECT_FALSE(CheckOrder(form, trade, prompt).passed);
    EXPECT_EQ(prompt.asked.at(0).text, ResString(IDS_UPPER_EMPTY));
    form.upper = " U7";
    EXPECT_TRUE(CheckOrder(form, trade, prompt).passed);
    EXPECT_EQ(form.upper, "U7");
    EXPECT_EQ(form.exchangeFillNo, "M 3");
}

TEST_F(OrderChecks, CarryAndExerciseNameASecondContract) {
    struct {
        const char* fault;
        OrderMode mode;
        const char *contract, *second, *threeMonthDate;
        Ids errors;
    } const rows[] = {
        {"carry", OrderMode::Carry, "240315", "240329", nullptr, {}},
        {"carry to 3M", OrderMode::Carry, "240315", "3M", "240613", {}},
        {"carry to an unknown 3M", OrderMode::Carry, "240315", "3M", nullptr, {}},
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
                                                      : Entry(row.mode, "EXA CO 240315 C3000");
        const std::string commodity = row.mode == OrderMode::Carry ? "EXA CA " : "EXA CO ";
        form.contractText = *row.contract ? commodity + row.contract : "";
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

    OrderForm exercise = Entry(OrderMode::Exercise, "EXA CO 240315 C3000");
    exercise.forwardContract = "240329";
    exercise.orderPrice.whole = "0.1";
    exercise.orderType = exercise.orderState = exercise.source = exercise.validType = "";
    exercise.orderQty = 0;
    EXPECT_EQ(FindOrderProblems(exercise, trade).errors, (Ids{10033}));
}

TEST_F(OrderChecks, PricesCountByCommodity) {
    AddSpread('m', "EXA SP 1509/1512");
    AddSpread('d', "EXA ST 1509 C3000/1509 P3000");
    struct {
        const char* contract;
        PriceRow price;
        int denominator;
        Ids errors;
    } const rows[] = {
        {"EXA SP 1509/1512", {"0", 0}, 1, {}},  // a spread may cost nothing
        {"EXA ST 1509 C3000/1509 P3000", {"0", 0}, 1, {10032, 10034}},
        {"EXA FR 1509", {"97", 3}, 8, {10034}},
        {"EXA FR 1509", {"97", 3}, 7, {10020, 10034}},
    };
    for (const auto& row : rows) {
        OrderForm form = Entry(OrderMode::Input, row.contract);
        form.orderType = "Limit stop";
        form.orderPrice = row.price;
        form.denominator = row.denominator;
        EXPECT_EQ(FindOrderProblems(form, trade).errors, row.errors) << row.contract;
    }
    EXPECT_EQ(FindOrderProblems(Entry(), TradeData(nullptr)).errors, (Ids{10019}));
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
        const char *contract, *price, *price2;
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

TEST_F(OrderChecks, TellWhatIsWrongInOneBox) {
    OrderForm form = Entry();
    form.account = "";
    form.orderQty = 0;
    EXPECT_FALSE(CheckOrder(form, trade, prompt).passed);
    EXPECT_EQ(prompt.asked[0].text, "Account can't be empty!\nOrderQty can't be zero!\n");
    EXPECT_EQ(prompt.asked[0].caption, "operation failed");
    EXPECT_EQ(prompt.asked[0].buttons, PromptButtons::Ok);

    form = Entry(OrderMode::Exercise, "EXA CO 240315 C3000");
    form.forwardContract = "3M";  // of an unknown date
    form.orderQty = 0;
    EXPECT_FALSE(CheckOrder(form, trade, prompt).passed);
    ASSERT_EQ(prompt.asked.size(), 2u);
    EXPECT_EQ(prompt.asked[1].text, ResString(10025));
    EXPECT_EQ(prompt.asked[1].caption, ResString(10114));
}

TEST_F(OrderChecks, WarningsPassWithOkAlone) {
    struct {
        PromptAnswer answer;
        bool stays, passed, focus;
    } const rows[] = {
        {PromptAnswer::Ok, true, true, false},     {PromptAnswer::Cancel, true, false, true},
        {PromptAnswer::None, true, false, true},   {PromptAnswer::Ok, false, false, false},
        {PromptAnswer::None, false, false, false},
    };
    for (const auto& row : rows) {
        OrderForm form = FilledEntry();
        form.fillQty = 0;  // a whole fill takes the order's
        form.fillPrice.whole = "97.3";
        prompt.answers = {row.answer};
        prompt.dialogExists = true;
        prompt.whileAsking = [&] { prompt.dialogExists = row.stays; };
        const OrderCheck check = CheckOrder(form, trade, prompt);
        EXPECT_EQ(check.passed, row.passed);
        EXPECT_EQ(form.fillQty, 5);
        EXPECT_EQ(check.focusFillPrice, row.focus);
        EXPECT_EQ(prompt.asked.back().text, Joined({10041, 10045}));
        EXPECT_EQ(prompt.asked.back().caption, ResString(10046));
        EXPECT_EQ(prompt.asked.back().buttons, PromptButtons::OkCancel);
    }
}

TEST_F(OrderChecks, ElectronicOrdersAreCorrectedWithConsent) {
    struct {
        OrderMode mode;
        char backOffice;
        PromptAnswer answer;
        bool asks, goesOn;
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

}  // namespace
