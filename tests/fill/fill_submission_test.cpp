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
    // clang-format off
    const Stretches entered = {
        {0, "SG"}, {88, "10001"}, {109, "E"}, {110, "B"}, {111, "N"}, {139, "M_0317142530123"},
        {190, "2026-03-17 14:25:30"}, {232, Raw(97.0)}, {240, std::string("\x03\0\0\0", 4)}, {245, "USD"},
        {268, Raw(2.5)}, {303, "UP1"}, {332, "SYS7"},
    };
    // clang-format on
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
        ParseDateTimeFields("2026-03-17 14:25:30", kRecordTimePattern, moment.fields);
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

TEST_F(FillSubmission, OfTwoLegsTheLastDecidesAndEachHalfOfACarryTellsItsFailure) {
    struct Row {
        FillForm form;
        std::deque<int> results;
        FillOutcome outcome;
        std::size_t messages;
    };
    const FillForm spread = EnteredForm("EXA", 'm', "CM", "1509/1512");
    for (const Row& row :
         {Row{spread, {1, 0}, FillOutcome::Close, 0}, Row{spread, {0, 1}, FillOutcome::Stay, 1},
          Row{spread, {-1, -1}, FillOutcome::Stay, 1}, Row{CarryForm(), {1, 0}, FillOutcome::Close, 1},
          Row{CarryForm(), {0, 1}, FillOutcome::Stay, 1}, Row{CarryForm(), {1, 1}, FillOutcome::Stay, 2}}) {
        service.fills.clear();
        prompt.asked.clear();
        service.results = row.results;
        EXPECT_EQ(Submit(row.form), row.outcome);
        EXPECT_EQ(service.fills.size(), 2u);
        EXPECT_EQ(prompt.asked.size(), row.messages);
    }
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

TEST_F(FillSubmission, RemovalNamesTheLoadedFill) {
    FillForm form = PlainForm();
    form.mode = FillMode::kRemove;
    form.fillNo.Set("F77");
    EXPECT_EQ(Submit(form), FillOutcome::Close);
    ASSERT_EQ(service.removedFills.size(), 1u);
    EXPECT_EQ(BytesOf(service.removedFills[0]), EnteredRecord(Leg("EXA", "F", "CM", "1509"), {{67, "F77"}}));
    EXPECT_THAT(service.removedFillNos, ElementsAre("F77"));
    EXPECT_TRUE(service.removedByOwnField);
    service.results = {1};
    EXPECT_EQ(Submit(form), FillOutcome::Stay);
    EXPECT_EQ(prompt.asked.at(0).text, "Remove order to return failed!");
    EXPECT_THAT(Sent(), IsEmpty());
}

// One press of OK: what is asked, in which order, and what comes of the answers.
struct PressRow {
    const char* fault;
    FillForm form;
    std::vector<PromptAnswer> answers;
    FillOutcome outcome;
    std::size_t sent;
    std::vector<std::vector<int>> asked;  // of each box the text ids: caption, then the lines
};

TEST_F(FillSubmission, MessagesAndQuestionsInTheirOrder) {
    using enum PromptAnswer;
    using enum FillOutcome;
    book.threeMonthContractNo = "150618";
    const FillForm plain = PlainForm();
    const FillForm spread = EnteredForm("EXA", 'm', "CM", "1509/1512");
    const FillForm tooMuch = With(plain, [](auto& f) { f.fillQty = 5; });
    const FillForm zeroPrice = With(plain, [](auto& f) { f.price.whole = ""; });
    const std::vector<int> zero = {10046, 10042, 10045}, above = {10114, 10120};
    // clang-format off
    const PressRow rows[] = {
        {"all mistakes in one box", With(plain, [](auto& f) { f.commodity = "XX", f.fillQty = 0; }),
         {Ok}, Stay, 0, {{10040, 10019, 10037}}},
        {"malformed contract", With(plain, [](auto& f) { f.contract = " 1509"; }),
         {Ok}, Stay, 0, {{10040, 10014}}},
        {"one leg of a combination", With(spread, [](auto& f) { f.contract = "1509"; }),
         {Ok}, Stay, 0, {{10040, 10014}}},
        {"a combination of a plain one", With(plain, [](auto& f) { f.contract = "1509/1512"; }),
         {Ok}, Stay, 0, {{10040, 10014}}},
        {"date of 3M", EnteredForm("EXF", 'F', "CA", "150618"), {Ok}, Stay, 0, {{10040, 10024}}},
        {"3M itself", EnteredForm("EXF", 'F', "CA", "3M"), {}, Close, 1, {}},
        {"zero is on the tick", zeroPrice, {Cancel}, StayWithPrice, 0, {zero}},
        {"off the tick", With(plain, [](auto& f) { f.price.whole = "97.5"; }),
         {Ok}, Close, 1, {{10046, 10066, 10045}}},
        {"doubts come first", With(zeroPrice, [](auto& f) { f.fillQty = 5; }),
         {Ok, Yes}, Close, 1, {zero, above}},
        {"more than is left", tooMuch, {No}, Stay, 0, {above}},
        {"no answer is no consent", tooMuch, {None}, Stay, 0, {above}},
        {"OK does not answer yes or no", tooMuch, {Ok}, Stay, 0, {above}},
        {"no answer removes no doubt", zeroPrice, {None}, Stay, 0, {zero}},
        {"modify sends nothing", With(plain, [](auto& f) { f.mode = 2; }), {Ok}, Stay, 0, {{10114, 10057}}},
        {"removal is checked too", With(plain, [](auto& f) { f.mode = 3, f.commodityType = 'O'; }),
         {Ok}, Stay, 0, {{10040, 10019}}},
        {"no record, no type", With(plain, [](auto& f) { f.commodityType = 'U'; }), {}, Close, 1, {}},
        {"carry of a spread", With(spread, [](auto& f) { f.fillSource = "Carry"; }),
         {Ok}, Stay, 0, {{10053, 10054}}},
        {"same date", With(CarryForm(), [](auto& f) { f.openContract = "150320"; }),
         {Ok}, Stay, 0, {{10114, 10067}}},
        {"open before close", With(CarryForm(), [](auto& f) { f.openContract = "150318"; }),
         {Ok}, Stay, 0, {{10114, 10068}}},
        {"other modes have no open contract", With(CarryForm(), [](auto& f) { f.mode = 1, f.openContract = ""; }),
         {Ok}, Stay, 0, {{10114, 10068}}},
    };
    // clang-format on
    for (const PressRow& row : rows) {
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
}

TEST_F(FillSubmission, CarryNeedsAPositionOnTheOtherSide) {
    struct Row {
        std::uint16_t language;
        int directionId;
        std::uint32_t longQty, shortQty;
        const char* text;
    };
    // clang-format off
    const Row rows[] = {
        {kEnglish, IDS_DIRECTION_BUY, 9, 0,
         "Sell position of close contract SG EXF CA 150320 does not exist!"},
        {kEnglish, IDS_DIRECTION_SELL, 0, 9,
         "Buy position of close contract SG EXF CA 150320 does not exist!"},
        {kSimplifiedChinese, IDS_DIRECTION_BUY, 9, 0, "平仓合约SG EXF CA 150320的卖出持仓不存在！"},
        {kTraditionalChinese, IDS_DIRECTION_SELL, 0, 9, "平倉合約SG EXF CA 150320的買入持倉不存在！"},
    };
    // clang-format on
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

}  // namespace
