#include "fill/fill_submission.h"

#include "fill/fill_book.h"
#include "fill/fill_request.h"
#include "res/language.h"
#include "res/resource_ids.h"
#include "res/string_table.h"
#include "support/fake_requests.h"
#include "support/fixed_clock.h"
#include "support/record_bytes.h"
#include "support/scripted_prompt.h"

namespace {

std::string Raw(double value) {
    return std::string(reinterpret_cast<const char*>(&value), sizeof(value));
}

// What the records of an entered form have in common.
const Bytes kEntered = {
    {0, "SG"},      {88, "10001"}, {109, "EBN"}, {139, "M_3"},    {190, "2026-03-04 05:06:07"},
    {232, Raw(97)}, {240, "\3"},   {245, "USD"}, {268, Raw(2.5)}, {303, "UP1"},
    {332, "SYS7"}};

Bytes Leg(const char* exchange, const char* type, const char* commodity, const char* contract,
          const char* strike = "", const char* option = "N") {
    return {{21, exchange}, {32, type}, {33, commodity}, {44, contract}, {55, strike}, {66, option}};
}

class FillSubmission : public testing::Test {
protected:
    FillSubmission() { g_wResLanguage = kEnglish; }

    FillOutcome Submit(const FillForm& form) {
        return SubmitFill(form, {TradeData(&book), TradeRequests(&service), prompt, clock});
    }
    // Each record by its leg and what it has of its own.
    void ExpectSent(const std::vector<Bytes>& records) {
        ASSERT_EQ(service.fills.size(), records.size());
        for (std::size_t i = 0; i < records.size(); ++i) {
            SCOPED_TRACE(i);
            ExpectBytes(service.fills[i], kEntered + records[i]);
        }
    }

    FillBook book;
    FakeTradeService service;
    ScriptedPrompt prompt;
    FixedClock clock;
};

// What an operator has entered for one contract, prices 97 and 98.
FillForm EnteredForm(const std::string& contract) {
    ContractKey key{};
    EXPECT_TRUE(ParseContractText(contract, key));
    FillForm form;
    form.account = form.accountNo = "10001";
    form.sign = "SG";
    form.upper = "UP1";
    form.systemNo = "SYS7";
    form.exchangeFillNo = "M_3";
    form.exchangeNo = key.exchangeNo.Str();
    form.commodityNo = key.commodityNo.Str();
    form.commodityType = key.commodityType;
    form.contractNo = contract.substr(contract.find(' ', 4) + 1);
    form.fillQty = form.remainingOrderQty = 3;
    form.fillPrice.whole = "97";
    form.fillPrice2.whole = "98";
    form.currency = "USD";
    form.source = 'E';
    form.direction = 'B';
    form.fee = 2.5;
    return form;
}

FillForm PlainForm() {
    return EnteredForm("EXA CM 1509");
}

FillForm SpreadForm() {
    return EnteredForm("EXA CM 1509/1512");
}

FillForm CarryForm() {
    FillForm form = EnteredForm("EXF CA 150320");
    form.source = 'C';
    form.openContract = "150618";
    return form;
}

FillForm With(FillForm form, const std::function<void(FillForm&)>& change) {
    change(form);
    return form;
}

TEST_F(FillSubmission, PlainFillWithAndWithoutFee) {
    FillForm form = EnteredForm("EXA TR 1509");
    form.fillPrice.numerator = 3;
    form.denominator = 8;
    EXPECT_EQ(Submit(form), FillOutcome::Close);
    form.feeGiven = true;
    form.denominator = 1;
    EXPECT_EQ(Submit(form), FillOutcome::Close);
    const Bytes leg = Leg("EXA", "F", "TR", "1509");
    ExpectSent({leg + Bytes{{232, Raw(97.375)}, {256, "N"}}, leg + Bytes{{256, "Y"}}});
    EXPECT_TRUE(prompt.asked.empty());
}

TEST_F(FillSubmission, CombinationGoesOutAsTwoLegs) {
    const Bytes cm1509 = Leg("EXA", "F", "CM", "1509");
    const Bytes cm1512 = Leg("EXA", "F", "CM", "1512");
    struct {
        const char* fault;
        const char* contract;
        char legOrder;
        Bytes first, second;
    } const rows[] = {
        {"month spread", "EXA CM 1509/1512", '0', cm1509, cm1512},
        {"second leg quoted first", "EXA CM 1509/1512", '2', cm1512, cm1509},
        {"commodity pair", "EXA CM&DN 1509", '0', cm1509, Leg("EXA", "F", "DN", "1509")},
        {"option pair keeps strikes and letters", "EXA OP 1509 C3000/1509 C3100", '0',
         Leg("EXA", "O", "OP", "1509", "3000", "C"), Leg("EXA", "O", "OP", "1509", "3100", "C")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.fault);
        service.fills.clear();
        const FillForm form = EnteredForm(row.contract);
        const CommodityKey key = CommodityKeyOf(form);
        book.GetCommodity(&key)->legOrder = row.legOrder;
        EXPECT_EQ(Submit(form), FillOutcome::Close);
        ExpectSent({row.first + Bytes{{139, "M_3_1"}, {256, "N"}},
                    row.second + Bytes{{110, "S"}, {139, "M_3_2"}, {232, Raw(98)}, {256, "N"}}});
    }
}

TEST_F(FillSubmission, OfTwoLegsTheLastDecidesAndEachHalfOfACarryTellsItsFailure) {
    struct {
        bool carry;
        std::deque<int> results;
        FillOutcome outcome;
        std::size_t messages;
    } const rows[] = {
        {false, {1, 0}, FillOutcome::Close, 0},  {false, {0, 1}, FillOutcome::Stay, 1},
        {false, {-1, -1}, FillOutcome::Stay, 1}, {true, {1, 0}, FillOutcome::Close, 1},
        {true, {0, 1}, FillOutcome::Stay, 1},    {true, {1, 1}, FillOutcome::Stay, 2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.results) + (row.carry ? " carry" : " spread"));
        service.fills.clear();
        prompt.asked.clear();
        service.results = row.results;
        EXPECT_EQ(Submit(row.carry ? CarryForm() : SpreadForm()), row.outcome);
        EXPECT_EQ(service.fills.size(), 2u);
        EXPECT_EQ(prompt.asked.size(), row.messages);
    }
}

TEST_F(FillSubmission, CarryPairClosesAndOpens) {
    FillForm form = CarryForm();
    form.feeGiven = true;
    EXPECT_EQ(Submit(form), FillOutcome::Close);
    form.feeGiven = false;
    form.direction = 'S';
    EXPECT_EQ(Submit(form), FillOutcome::Close);
    const Bytes close =
        Leg("EXF", "F", "CA", "150320") + Bytes{{109, "C"}, {256, "Y"}, {268, Raw(0)}, {331, "Y"}};
    const Bytes open = Leg("EXF", "F", "CA", "150618") +
                       Bytes{{67, "~"}, {109, "C"}, {232, Raw(98)}, {331, "Y"}, {332, "SYS7~"}};
    ExpectSent({close, open + Bytes{{110, "S"}, {256, "Y"}}, close + Bytes{{110, "S"}},
                open + Bytes{{256, "N"}, {268, Raw(0)}}});
}

TEST_F(FillSubmission, RemovalNamesTheLoadedFill) {
    FillForm form = PlainForm();
    form.mode = FillMode::Remove;
    form.fillNo.Set("F77");
    EXPECT_EQ(Submit(form), FillOutcome::Close);
    ASSERT_EQ(service.removedFills.size(), 1u);
    ExpectBytes(service.removedFills[0], kEntered + Leg("EXA", "F", "CM", "1509") + Bytes{{67, "F77"}});
    EXPECT_EQ(service.removedFillNos, std::vector<std::string>{"F77"});
    EXPECT_TRUE(service.removedByOwnField);
    service.results = {1};
    EXPECT_EQ(Submit(form), FillOutcome::Stay);
    EXPECT_EQ(prompt.asked.at(0).text, "Remove order to return failed!");
    EXPECT_TRUE(service.fills.empty());
}

TEST_F(FillSubmission, MessagesAndQuestionsInTheirOrder) {
    using enum PromptAnswer;
    using enum FillOutcome;
    book.threeMonthContractNo = "150618";
    const FillForm plain = PlainForm();
    const FillForm spread = SpreadForm();
    const FillForm tooMuch = With(plain, [](auto& f) { f.fillQty = 5; });
    const FillForm zeroPrice = With(plain, [](auto& f) { f.fillPrice.whole = ""; });
    const std::vector<int> zero = {10046, 10042, 10045}, above = {10114, 10120};
    struct {
        const char* fault;
        FillForm form;
        std::vector<PromptAnswer> answers;
        FillOutcome outcome;
        std::size_t sent;
        std::vector<std::vector<int>> asked;  // of each box the text ids: caption, then the lines
    } const rows[] = {
        // clang-format off
        {"all mistakes in one box",
         With(plain, [](auto& f) { f.commodityNo = "XX", f.fillQty = f.direction = f.source = 0; }),
         {Ok}, Stay, 0, {{10040, 10019, 10037, 10018, 10030}}},
        {"date of 3M", EnteredForm("EXF CA 150618"), {Ok}, Stay, 0, {{10040, 10024}}},
        {"zero is on the tick", zeroPrice, {Cancel}, StayWithPrice, 0, {zero}},
        {"off the tick", With(plain, [](auto& f) { f.fillPrice.whole = "97.5"; }),
         {Ok}, Close, 1, {{10046, 10066, 10045}}},
        {"more than is left", tooMuch, {No}, Stay, 0, {above}},
        {"no answer is no consent", tooMuch, {None}, Stay, 0, {above}},
        {"modify sends nothing", With(plain, [](auto& f) { f.mode = FillMode::Modify; }), {Ok}, Stay, 0, {{10114, 10057}}},
        {"carry of a spread", With(spread, [](auto& f) { f.source = 'C'; }),
         {Ok}, Stay, 0, {{10053, 10054}}},
        {"same date", With(CarryForm(), [](auto& f) { f.openContract = "150320"; }),
         {Ok}, Stay, 0, {{10114, 10067}}},
        {"open before close", With(CarryForm(), [](auto& f) { f.openContract = "150319"; }),
         {Ok}, Stay, 0, {{10114, 10068}}},
        {"other modes have no open contract",
         With(CarryForm(), [](auto& f) { f.mode = FillMode{1}, f.openContract = ""; }),
         {Ok}, Stay, 0, {{10114, 10068}}},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.fault);
        service.fills.clear();
        prompt.asked.clear();
        prompt.answers.assign(row.answers.begin(), row.answers.end());
        EXPECT_EQ(Submit(row.form), row.outcome);
        EXPECT_EQ(service.fills.size(), row.sent);
        ASSERT_EQ(prompt.asked.size(), row.asked.size());
        for (std::size_t i = 0; i < row.asked.size(); ++i) {
            std::string text;
            for (std::size_t line = 1; line < row.asked[i].size(); ++line) {
                text += ResString(row.asked[i][line]);
            }
            EXPECT_EQ(prompt.asked[i].caption, ResString(row.asked[i][0]));
            EXPECT_EQ(prompt.asked[i].text, text);
        }
    }
    book.threeMonthContractNo = nullptr;
    EXPECT_EQ(Submit(EnteredForm("EXF CA 3M")), Close) << "its date is not known";
}

TEST_F(FillSubmission, AContractHasTheShapeOfItsCommodity) {
    struct {
        const char* contract;
        char type;
        bool taken;
    } const rows[] = {
        {"EXA SH 1509/1512", 'F', false}, {"EXA SH 1509 C3000", 'F', false},
        {"EXA SH 1509", 'O', false},      {"EXA SH 1509 C3000", 'u', false},
        {"EXA SH 1509/1512", 'x', false}, {"EXA SH 1509 P3100/1509 P3000", 'u', false},
        {"EXA SH ", 'G', true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.contract) + row.type);
        book.AddPair(row.type, "SH", 1, 'F', "CM", "CM").exchangeNo.Set("EXA");
        book.AddContract(row.contract);
        FillForm form = EnteredForm(row.contract);
        form.commodityType = row.type;
        EXPECT_EQ(Submit(form), row.taken ? FillOutcome::Close : FillOutcome::Stay);
        EXPECT_EQ(service.fills.size(), row.taken ? 1u : 0u);
        service.fills.clear();
        form.mode = FillMode::Remove;
        EXPECT_EQ(Submit(form), FillOutcome::Close) << "of a fill that is there already";
    }
}

TEST_F(FillSubmission, CarryNeedsAPositionOnTheOtherSide) {
    const std::tuple<std::uint16_t, char, const char*> rows[] = {
        {kEnglish, 'B', "Sell position of close contract SG EXF CA 150320 does not exist!"},
        {kEnglish, 'S', "Buy position of close contract SG EXF CA 150320 does not exist!"},
        {kSimplifiedChinese, 'B', "平仓合约SG EXF CA 150320的卖出持仓不存在！"},
    };
    for (const auto& [language, direction, text] : rows) {
        g_wResLanguage = language;
        FillForm form = CarryForm();
        form.direction = direction;
        book.longQty = direction == 'B' ? 9 : 0;
        book.shortQty = direction == 'B' ? 0 : 9;
        EXPECT_EQ(Submit(form), FillOutcome::Stay);
        EXPECT_EQ(prompt.asked.back().text, text);
        EXPECT_TRUE(service.fills.empty());
    }
}

TEST_F(FillSubmission, NothingIsSentOnceTheDialogIsGone) {
    prompt.whileAsking = [this] { prompt.dialogExists = false; };
    const std::pair<FillForm, PromptAnswer> rows[] = {
        {With(PlainForm(), [](auto& f) { f.fillQty = 5; }), PromptAnswer::Yes},
        {With(PlainForm(), [](auto& f) { f.fillPrice.whole = "0"; }), PromptAnswer::Ok},
        {With(PlainForm(), [](auto& f) { f.fillQty = 0; }), PromptAnswer::Ok}};
    for (const auto& [form, answer] : rows) {
        prompt.dialogExists = true;
        prompt.answers = {answer};
        EXPECT_EQ(Submit(form), FillOutcome::Gone);
        EXPECT_TRUE(service.fills.empty());
    }
    // The message about the close leg takes the dialog away: the open leg stays unsent.
    prompt.dialogExists = true;
    service.results = {1};
    EXPECT_EQ(Submit(CarryForm()), FillOutcome::Gone);
    EXPECT_EQ(service.fills.size(), 1u);
}

}  // namespace
