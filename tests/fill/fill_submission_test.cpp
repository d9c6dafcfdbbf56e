#include "fill/fill_submission.h"

#include "fill/fill_book.h"
#include "res/language.h"
#include "res/resource_ids.h"
#include "res/string_table.h"
#include "support/scripted_prompt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Named stretches of a record; later ones overwrite earlier ones, every byte without a stretch is zero.
struct Stretch {
    std::size_t offset;
    std::string bytes;
};
using Stretches = std::vector<Stretch>;

Stretches operator+(Stretches stretches, const Stretches& more) {
    stretches.insert(stretches.end(), more.begin(), more.end());
    return stretches;
}

std::string Raw(double value) {
    return std::string(reinterpret_cast<const char*>(&value), sizeof(value));
}

std::string BytesOf(const FillRecord& fill) {
    return std::string(reinterpret_cast<const char*>(&fill), sizeof(fill));
}

// The record of EnteredForm for one leg, with the changes of one request on top.
std::string EnteredRecord(const Stretches& leg, const Stretches& changes) {
    const Stretches entered = {{0, "SG"},
                               {88, "10001"},
                               {109, "E"},
                               {110, "B"},
                               {111, "N"},
                               {139, "M_0317142530123"},
                               {190, "2026-03-17 14:25:30"},
                               {232, Raw(97.0)},
                               {240, std::string("\x03\0\0\0", 4)},
                               {245, "USD"},
                               {268, Raw(2.5)},
                               {303, "UP1"},
                               {332, "SYS7"}};
    std::string record(383, '\0');
    for (const Stretch& stretch : leg + entered + changes) {
        record.replace(stretch.offset, stretch.bytes.size(), stretch.bytes);
    }
    return record;
}

Stretches Leg(const char* exchange, const char* type, const char* commodity, const char* contract,
              const char* strike = "", const char* option = "N") {
    return {{21, exchange}, {32, type}, {33, commodity}, {44, contract}, {55, strike}, {66, option}};
}

struct FixedClock : IClock {
    LocalMoment Now() const override {
        LocalMoment moment;
        moment.fields.tm_year = 126;
        moment.fields.tm_mon = 2;
        moment.fields.tm_mday = 17;
        moment.fields.tm_hour = 14;
        moment.fields.tm_min = 25;
        moment.fields.tm_sec = 30;
        return moment;
    }
};

class FillSubmission : public testing::Test {
protected:
    void SetUp() override {
        g_wResLanguage = kEnglish;
        book.longQty = book.shortQty = 9;
    }

    FillOutcome Submit(const FillForm& form) {
        return SubmitFill(form, {TradeData(&book), TradeRequests(&service), prompt, clock});
    }
    std::vector<std::string> Sent() const {
        std::vector<std::string> records;
        for (const FillRecord& fill : service.fills) {
            records.push_back(BytesOf(fill));
        }
        return records;
    }
    // Submits with scripted results of the sends; the number of messages about them.
    void ExpectAfterResults(const FillForm& form, std::deque<int> results, FillOutcome outcome,
                            std::size_t messages) {
        service.fills.clear();
        prompt.asked.clear();
        service.results = results;
        EXPECT_EQ(Submit(form), outcome);
        EXPECT_EQ(service.fills.size(), 2u);
        EXPECT_EQ(prompt.asked.size(), messages);
        for (const ScriptedPrompt::Asked& message : prompt.asked) {
            EXPECT_EQ(message.text, "Input order to return failed!");
        }
    }

    FillBook book;
    FakeTradeService service;
    ScriptedPrompt prompt;
    FixedClock clock;
};

FillForm PlainForm() {
    return EnteredForm("EXA", 'F', "CM", "1509");
}

FillForm CarryForm() {
    FillForm form = EnteredForm("EXF", 'F', "CA", "150320");
    form.fillSource = "Carry";
    form.openContract = "150618";
    return form;
}

FillForm With(FillForm form, const std::function<void(FillForm&)>& change) {
    change(form);
    return form;
}

TEST_F(FillSubmission, PlainFillWithAndWithoutFee) {
    FillForm form = EnteredForm("EXA", 'F', "TR", "1509");
    form.price.numerator = 3;
    form.denominator = 8;
    EXPECT_EQ(Submit(form), FillOutcome::Close);
    form.feeGiven = true;
    EXPECT_EQ(Submit(form), FillOutcome::Close);
    const Stretches leg = Leg("EXA", "F", "TR", "1509");
    EXPECT_THAT(Sent(), ElementsAre(EnteredRecord(leg, {{232, Raw(97.375)}, {256, "N"}}),
                                    EnteredRecord(leg, {{232, Raw(97.375)}, {256, "Y"}})));
    EXPECT_THAT(prompt.asked, IsEmpty());
}

TEST_F(FillSubmission, TextsLongerThanTheirFieldsAreCut) {
    FillForm form = PlainForm();
    form.account = std::string(30, 'a');
    form.exchangeFillNo = std::string(60, 'm');
    form.systemNo = std::string(60, 's');
    form.upper = std::string(20, 'u');
    Submit(form);
    EXPECT_THAT(Sent(),
                ElementsAre(EnteredRecord(Leg("EXA", "F", "CM", "1509"), {{88, std::string(20, 'a')},
                                                                          {139, std::string(50, 'm')},
                                                                          {256, "N"},
                                                                          {303, std::string(10, 'u')},
                                                                          {332, std::string(50, 's')}})));
}

TEST_F(FillSubmission, CombinationGoesOutAsTwoLegs) {
    struct Row {
        const char* fault;
        char type;
        const char* commodity;
        const char* contract;
        char legOrder;
        Stretches first, second;
    };
    const Stretches cm1509 = Leg("EXA", "F", "CM", "1509");
    const Stretches cm1512 = Leg("EXA", "F", "CM", "1512");
    const Row rows[] = {
        {"month spread", 'm', "CM", "1509/1512", '0', cm1509, cm1512},
        {"second leg quoted first", 'm', "CM", "1509/1512", '2', cm1512, cm1509},
        {"commodity pair", 'c', "CM&DN", "1509", '0', cm1509, Leg("EXA", "F", "DN", "1509")},
        {"option pair keeps strikes and letters", 'u', "OP", "1509 C3000/1509 C3100", '0',
         Leg("EXA", "O", "OP", "1509", "3000", "C"), Leg("EXA", "O", "OP", "1509", "3100", "C")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.fault);
        service.fills.clear();
        book.Commodity(row.type, row.commodity).legOrder = row.legOrder;
        EXPECT_EQ(Submit(EnteredForm("EXA", row.type, row.commodity, row.contract)), FillOutcome::Close);
        EXPECT_THAT(Sent(),
                    ElementsAre(EnteredRecord(row.first, {{139, "M_0317142530123_1"}, {256, "N"}}),
                                EnteredRecord(
                                    row.second,
                                    {{110, "S"}, {139, "M_0317142530123_2"}, {232, Raw(98.0)}, {256, "N"}})));
    }
}

TEST_F(FillSubmission, OfTwoLegsTheLastDecides) {
    const FillForm form = EnteredForm("EXA", 'm', "CM", "1509/1512");
    ExpectAfterResults(form, {1, 0}, FillOutcome::Close, 0);
    ExpectAfterResults(form, {0, 1}, FillOutcome::Stay, 1);
    ExpectAfterResults(form, {-1, -1}, FillOutcome::Stay, 1);
}

TEST_F(FillSubmission, CarryPairClosesAndOpens) {
    FillForm form = CarryForm();
    form.feeGiven = true;
    EXPECT_EQ(Submit(form), FillOutcome::Close);
    form.feeGiven = false;
    form.direction = "Sell";
    EXPECT_EQ(Submit(form), FillOutcome::Close);
    const Stretches close = Leg("EXF", "F", "CA", "150320");
    const Stretches open = Leg("EXF", "F", "CA", "150618");
    const Stretches asClose = {{109, "C"}, {256, "Y"}, {268, Raw(0)}, {331, "Y"}};
    const Stretches asOpen = {{67, "~"}, {109, "C"}, {232, Raw(98.0)}, {331, "Y"}, {332, "SYS7~"}};
    EXPECT_THAT(Sent(), ElementsAre(EnteredRecord(close, asClose),
                                    EnteredRecord(open, asOpen + Stretches{{110, "S"}, {256, "Y"}}),
                                    EnteredRecord(close, asClose + Stretches{{110, "S"}}),
                                    EnteredRecord(open, asOpen + Stretches{{256, "N"}, {268, Raw(0)}})));
}

TEST_F(FillSubmission, EachCarryLegTellsItsOwnFailure) {
    ExpectAfterResults(CarryForm(), {1, 0}, FillOutcome::Close, 1);
    ExpectAfterResults(CarryForm(), {0, 1}, FillOutcome::Stay, 1);
    ExpectAfterResults(CarryForm(), {1, 1}, FillOutcome::Stay, 2);
}

TEST_F(FillSubmission, RemovalNamesTheLoadedFill) {
    FillRecord loaded{};
    loaded.fillNo.Set("F77");
    FillForm form = PlainForm();
    form.mode = FillMode::kRemove;
    form.fill = &loaded;
    EXPECT_EQ(Submit(form), FillOutcome::Close);
    ASSERT_EQ(service.removedFills.size(), 1u);
    EXPECT_EQ(BytesOf(service.removedFills[0]), EnteredRecord(Leg("EXA", "F", "CM", "1509"), {{67, "F77"}}));
    EXPECT_THAT(service.removedFillNos, ElementsAre("F77"));
    EXPECT_TRUE(service.removedByOwnField);
    service.results = {1};
    EXPECT_EQ(Submit(form), FillOutcome::Stay);
    ASSERT_EQ(prompt.asked.size(), 1u);
    EXPECT_EQ(prompt.asked[0].text, "Remove order to return failed!");
    EXPECT_THAT(Sent(), IsEmpty());
}

// One press of OK: what is asked, in which order, and what comes of the answers.
struct PressRow {
    const char* fault;
    FillForm form;
    std::vector<PromptAnswer> answers;
    FillOutcome outcome;
    std::size_t sent;
    std::vector<std::string> asked;  // caption and text
};

TEST_F(FillSubmission, MessagesAndQuestionsInTheirOrder) {
    using enum PromptAnswer;
    book.threeMonthContractNo = "150618";
    const std::string failed = "operation failed|";
    const std::string zero =
        "Operational quaification|Fill Price is zero;\n"
        "\n\t\tAre you sure to down to this order?";
    const std::string notTicks =
        "Operational quaification|Fill Price can't be divided exactly by tick;\n"
        "\n\t\tAre you sure to down to this order?";
    const std::string above =
        "Tips|FillQty cann't be greater than OrderQty,do you want to modify this order?";
    const FillForm tooMuch = With(PlainForm(), [](FillForm& form) { form.fillQty = 5; });
    const FillForm zeroPrice = With(PlainForm(), [](FillForm& form) { form.price.whole = ""; });
    const FillForm spread = EnteredForm("EXA", 'm', "CM", "1509/1512");
    const PressRow rows[] = {
        {"all mistakes in one box",
         With(PlainForm(), [](FillForm& form) { form.commodity = "XX", form.fillQty = 0; }),
         {Ok},
         FillOutcome::Stay,
         0,
         {failed + "Commodity does not exist!\nFillQty must be greater than zero\n"}},
        {"malformed contract",
         With(PlainForm(), [](FillForm& form) { form.contract = " 1509"; }),
         {Ok},
         FillOutcome::Stay,
         0,
         {failed + "Contract can't be empty!\n"}},
        {"date of 3M",
         EnteredForm("EXF", 'F', "CA", "150618"),
         {Ok},
         FillOutcome::Stay,
         0,
         {failed + "Can't input 3M Expiry date!\n"}},
        {"3M itself", EnteredForm("EXF", 'F', "CA", "3M"), {}, FillOutcome::Close, 1, {}},
        {"zero is on the tick", zeroPrice, {Cancel}, FillOutcome::StayWithPrice, 0, {zero}},
        {"off the tick",
         With(PlainForm(), [](FillForm& form) { form.price.whole = "97.5"; }),
         {Ok},
         FillOutcome::Close,
         1,
         {notTicks}},
        {"doubts come before the quantity question",
         With(zeroPrice, [](FillForm& form) { form.fillQty = 5; }),
         {Ok, Yes},
         FillOutcome::Close,
         1,
         {zero, above}},
        {"more than is left", tooMuch, {No}, FillOutcome::Stay, 0, {above}},
        {"no answer is no consent", tooMuch, {None}, FillOutcome::Stay, 0, {above}},
        {"OK is no answer to a yes-no question", tooMuch, {Ok}, FillOutcome::Stay, 0, {above}},
        {"no answer removes no doubt", zeroPrice, {None}, FillOutcome::Stay, 0, {zero}},
        {"modify sends nothing",
         With(PlainForm(), [](FillForm& form) { form.mode = 2; }),
         {Ok},
         FillOutcome::Stay,
         0,
         {"Tips|Correct order to return failed!"}},
        {"removal is checked too",
         With(PlainForm(), [](FillForm& form) { form.mode = 3, form.commodityType = 'O'; }),
         {Ok},
         FillOutcome::Stay,
         0,
         {failed + "Commodity does not exist!\n"}},
        {"a dialog without a record knows no commodity type",
         With(PlainForm(), [](FillForm& form) { form.commodityType = 'U'; }),
         {},
         FillOutcome::Close,
         1,
         {}},
        {"carry of a spread",
         With(spread, [](FillForm& form) { form.fillSource = "Carry"; }),
         {Ok},
         FillOutcome::Stay,
         0,
         {"Input failed!|Unsupported carry of spread contract!"}},
        {"same date",
         With(CarryForm(), [](FillForm& form) { form.openContract = "150320"; }),
         {Ok},
         FillOutcome::Stay,
         0,
         {"Tips|Close contract and open contract cannot be the same value!"}},
        {"open before close",
         With(CarryForm(), [](FillForm& form) { form.openContract = "150318"; }),
         {Ok},
         FillOutcome::Stay,
         0,
         {"Tips|Close contractand open contract input order is wrong!"}},
        {"the other input modes have no open contract",
         With(CarryForm(), [](FillForm& form) { form.mode = 1, form.openContract = ""; }),
         {Ok},
         FillOutcome::Stay,
         0,
         {"Tips|Close contractand open contract input order is wrong!"}},
    };
    for (const PressRow& row : rows) {
        SCOPED_TRACE(row.fault);
        service.fills.clear();
        prompt.asked.clear();
        prompt.answers.assign(row.answers.begin(), row.answers.end());
        EXPECT_EQ(Submit(row.form), row.outcome);
        EXPECT_EQ(service.fills.size(), row.sent);
        std::vector<std::string> asked;
        for (const ScriptedPrompt::Asked& question : prompt.asked) {
            asked.push_back(question.caption + "|" + question.text);
        }
        EXPECT_EQ(asked, row.asked);
    }
}

TEST_F(FillSubmission, CarryNeedsAPositionOnTheOtherSide) {
    struct Row {
        std::uint16_t language;
        int directionId;
        std::uint32_t longQty, shortQty;
        const char* text;
    };
    const Row rows[] = {
        {kEnglish, IDS_DIRECTION_BUY, 9, 0,
         "Sell position of close contract SG EXF CA 150320 does not exist!"},
        {kEnglish, IDS_DIRECTION_SELL, 0, 9,
         "Buy position of close contract SG EXF CA 150320 does not exist!"},
        {kSimplifiedChinese, IDS_DIRECTION_BUY, 9, 0, "平仓合约SG EXF CA 150320的卖出持仓不存在！"},
        {kTraditionalChinese, IDS_DIRECTION_SELL, 0, 9, "平倉合約SG EXF CA 150320的買入持倉不存在！"},
    };
    for (const Row& row : rows) {
        g_wResLanguage = row.language;
        book.longQty = row.longQty;
        book.shortQty = row.shortQty;
        FillForm form = CarryForm();
        form.direction = ResString(row.directionId);
        form.fillSource = ResString(IDS_SOURCE_CARRY);
        EXPECT_EQ(Submit(form), FillOutcome::Stay);
        EXPECT_EQ(prompt.asked.back().text, row.text);
        EXPECT_THAT(Sent(), IsEmpty());
    }
}

TEST_F(FillSubmission, NothingIsSentOnceTheDialogIsGone) {
    prompt.whileAsking = [this] { prompt.dialogExists = false; };
    const FillForm above = With(PlainForm(), [](FillForm& form) { form.fillQty = 5; });
    const FillForm doubtful = With(PlainForm(), [](FillForm& form) { form.price.whole = "0"; });
    const FillForm wrong = With(PlainForm(), [](FillForm& form) { form.fillQty = 0; });
    for (const FillForm& form : {above, doubtful, wrong}) {
        prompt.dialogExists = true;
        prompt.answers = {form.fillQty == 5 ? PromptAnswer::Yes : PromptAnswer::Ok};
        EXPECT_EQ(Submit(form), FillOutcome::Gone);
        EXPECT_THAT(Sent(), IsEmpty());
    }
    // The message about the close leg takes the dialog away: the open leg stays unsent.
    prompt.dialogExists = true;
    service.results = {1};
    EXPECT_EQ(Submit(CarryForm()), FillOutcome::Gone);
    EXPECT_EQ(service.fills.size(), 1u);
}

TEST_F(FillSubmission, WithoutServicesNothingIsFoundAndNothingIsSent) {
    EXPECT_EQ(SubmitFill(PlainForm(), {TradeData(nullptr), TradeRequests(nullptr), prompt, clock}),
              FillOutcome::Stay);
    EXPECT_EQ(SubmitFill(PlainForm(), {TradeData(&book), TradeRequests(nullptr), prompt, clock}),
              FillOutcome::Stay);
    ASSERT_EQ(prompt.asked.size(), 2u);
    EXPECT_EQ(prompt.asked[0].text, "Commodity does not exist!\n");
    EXPECT_EQ(prompt.asked[1].text, "Input order to return failed!");
}

}  // namespace
