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

using OrderChecks = OrderTest;

constexpr char kPart = '5';
constexpr char kPartCanceled = 'A';

#define WITH(...) []([[maybe_unused]] OrderForm& f) { __VA_ARGS__; }

void Fill(OrderForm& form, const char* price, const char* price2) {
    form.orderState = '6';
    form.fillQty = form.orderQty;
    form.fillPrice.whole = price;
    form.fillPrice2.whole = price2;
}

TEST_F(OrderChecks, FindEveryFaultInTheOrderOfTheMessages) {
    using M = OrderMode;
    const char* const month = "EXA SP 1509/1512";
    const char* const straddle = "EXA ST 1509 C3000/1509 P3000";
    AddSpread('m', month);
    AddSpread('d', straddle);
    struct {
        const char* fault;
        OrderMode mode;
        const char* contract;  // null: the usual one of the mode
        void (*change)(OrderForm&);
        Ids errors, warnings = {};
    } const rows[] = {
        // clang-format off
        {"nothing wrong", M::Input, nullptr, WITH(f.fillQty = 0), {}},
        {"the whole head", M::Input, nullptr,
         WITH(f.account = f.upper = f.contractText = f.commodityNo = "", f.direction = 0),
         {10012, 10013, 10014, 10018, 10019}},
        {"an unlisted contract", M::Input, "EXA CM 1512", WITH(), {10022}},
        {"prices between ticks", M::Input, nullptr,
         WITH(f.orderPrice.whole = "97.3", f.triggerPrice.whole = ".1"), {10020, 10021}},
        {"no price, no quantity", M::Input, nullptr, WITH(f.orderPrice.whole = "0", f.orderQty = 0),
         {10032, 10033}},
        {"a limit stop wants both", M::Input, nullptr,
         WITH(f.orderPrice.whole = "", f.orderType = '4'), {10032, 10034}},
        {"a spread may cost nothing", M::Input, month,
         WITH(f.orderPrice.whole = "", f.orderType = '4'), {}},
        {"a straddle may not", M::Input, straddle,
         WITH(f.orderPrice.whole = "", f.orderType = '4'), {10032, 10034}},
        {"eighths are ticks", M::Input, "EXA FR 1509", WITH(f.orderPrice = {"97", 3}, f.denominator = 8), {}},
        {"sevenths are none", M::Input, "EXA FR 1509", WITH(f.orderPrice = {"97", 3}, f.denominator = 7),
         {10020}},
        {"a filled order without fill", M::Modify, nullptr,
         WITH(f.orderState = kPart, f.exchangeFillNo = ""), {10036, 10037, 10039}},
        {"more filled than ordered", M::Input, nullptr, WITH(f.orderState = kPartCanceled, f.fillQty = 6),
         {10038}},
        {"a part is not all of it", M::Modify, nullptr, WITH(f.orderState = '6', f.fillQty = 4),
         {10039}},
        {"a part without a fill state", M::Input, nullptr, WITH(f.fillQty = 1), {10039}},
        {"a part", M::Input, nullptr, WITH(f.orderState = kPartCanceled, f.fillQty = 4), {}, {10042}},
        {"a carry enters no order", M::Carry, nullptr,
         WITH(f.orderPrice.whole = "0.1", f.source = 0, f.fillQty = 9), {}},
        {"a carry is a fill", M::Carry, nullptr, WITH(f.exchangeFillNo = "", f.fillQty = 0), {10036, 10037}},
        {"an exercise has a quantity only", M::Exercise, nullptr,
         WITH(f.orderPrice.whole = "0.1", f.orderQty = 0,
              f.orderType = f.orderState = f.source = f.validType = 0), {10033}},
        {"a fill between ticks", M::Input, nullptr, WITH(Fill(f, "97.3", "0.1")), {}, {10041}},
        {"a fill on a tick", M::Input, nullptr, WITH(Fill(f, "97.25", "")), {}},
        {"both fills for nothing", M::Input, month, WITH(Fill(f, "0", "0")), {}, {10042, 10044}},
        {"a move has the first alone", M::Move, month, WITH(Fill(f, "0", "0")), {}, {10042}},
        // clang-format on
    };
    for (const auto& row : rows) {
        OrderForm form = row.mode == M::Carry ? CarryEntry("240315", "240329")
                         : row.mode == M::Exercise
                             ? Entry(M::Exercise, "EXA CO 240315 C3000")
                             : Entry(row.mode, row.contract ? row.contract : "EXA CM 1509");
        form.forwardContract = "240329";
        form.original = &ServerOrder();
        row.change(form);
        const OrderFindings findings = FindOrderProblems(form, trade);
        EXPECT_EQ(findings.errors, row.errors) << row.fault;
        EXPECT_EQ(findings.warnings, row.warnings) << row.fault;
    }
    EXPECT_EQ(FindOrderProblems(Entry(), TradeData(nullptr)).errors, (Ids{10019}));
}

TEST_F(OrderChecks, EntriesLoseTheBlanksAroundThem) {
    OrderForm form = FilledEntry();
    form.exchangeFillNo = " M 3 ";
    form.upper = " U7";
    EXPECT_TRUE(CheckOrder(form, trade, prompt).passed);
    EXPECT_EQ(form.upper + form.exchangeFillNo, "U7M 3");
}

TEST_F(OrderChecks, CarryAndExerciseNameASecondContract) {
    struct {
        const char* fault;
        OrderMode mode;
        const char *contract, *second, *threeMonthDate;
        Ids errors;
    } const rows[] = {
        {"carry to an unknown 3M", OrderMode::Carry, "240315", "3M", nullptr, {}},
        {"nothing given", OrderMode::Carry, "", "", nullptr, {10015, 10017, 10023, 10027}},
        {"unlisted dates", OrderMode::Carry, "240316", "240317", nullptr, {10023, 10027}},
        {"3M by its dates", OrderMode::Carry, "240613", "240613", "240613", {10024, 10024}},
        {"the name behind a chosen date", OrderMode::Carry, "240315", "240613\1Copper", "240613", {10024}},
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

TEST_F(OrderChecks, RemovedAndMovedOrdersIgnoreErrorsButNotAMissingContract) {
    for (const OrderMode mode : {OrderMode::RemoveFilled, OrderMode::Move}) {
        OrderForm form = Correction(mode);
        form.upper = "";
        form.orderType = 0;
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

TEST_F(OrderChecks, TellWhatIsWrongInOneBox) {
    OrderForm form = Entry(OrderMode::Exercise, "EXA CO 240315 C3000");
    form.account = "";
    form.orderQty = 0;
    form.forwardContract = "240329";
    EXPECT_FALSE(CheckOrder(form, trade, prompt).passed);
    form.forwardContract = "3M";  // of an unknown date, which is told alone
    EXPECT_FALSE(CheckOrder(form, trade, prompt).passed);
    ASSERT_EQ(prompt.asked.size(), 2u);
    EXPECT_EQ(prompt.asked[0].text, "Account can't be empty!\nOrderQty can't be zero!\n");
    EXPECT_EQ(prompt.asked[0].caption, "operation failed");
    EXPECT_EQ(prompt.asked[1].text, ResString(IDS_NO_UNDERLYING_DATE));
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
        {OrderMode::Input, 'N', PromptAnswer::None, false, true},
    };
    for (const auto& row : rows) {
        const OrderForm form = Correction(row.mode);
        original.backOffice = row.backOffice;
        prompt.answers = {row.answer};
        prompt.asked.clear();
        EXPECT_EQ(ConfirmElectronicOrder(form, prompt), row.goesOn);
        EXPECT_EQ(prompt.asked.size(), row.asks);
    }
}

}  // namespace
