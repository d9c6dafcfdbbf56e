#include "fill/fill_population.h"

#include "fill/fill_book.h"
#include "res/language.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

class FillPopulation : public testing::Test {
protected:
    void SetUp() override {
        g_wResLanguage = kEnglish;
        order.key.sign.Set("SG");
        order.key.exchangeNo.Set("EXA");
        order.key.commodityType = 'F';
        order.key.commodityNo.Set("CM");
        order.key.contractNo.Set("1509");
        order.accountNo.Set("10001");
        order.orderSource = 'M';
        order.direction = 'S';
        order.orderQty = 5;
        order.fillQty = 2;
        order.orderNo = 4711;
        order.systemNo.Set("SYS-OF-ORDER");
        order.upperNo.Set("UP1");
        fill.key = FirstLegOf(order.key);
        fill.fillNo.Set("F77");
        fill.accountNo = order.accountNo;
        fill.fillSource = 'C';
        fill.direction = 'B';
        fill.exchangeFillNo.Set("X9");
        fill.fillQty = 4;
        fill.upperNo.Set("UP2");
        fill.order = &order;
        fill.systemNo.Set("SYS-OF-FILL");
        book.priceText = std::string("97+3/8\0", 7);
    }

    FillForm Loaded(const FillRecord* fromFill, const OrderRecord* fromOrder) {
        FillForm form;
        form.fill = fromFill;
        form.order = fromOrder;
        EXPECT_EQ(LoadRecord(form, TradeData(&book)), fromFill || fromOrder);
        return form;
    }

    FillBook book;
    OrderRecord order{};
    FillRecord fill{};
};

TEST_F(FillPopulation, LoadsAFill) {
    const FillForm form = Loaded(&fill, nullptr);
    EXPECT_EQ(form.fillSource, "Carry");
    EXPECT_EQ(form.direction, "Buy");
    EXPECT_EQ(form.openDirection, "Sell");
    EXPECT_EQ(form.fillQty, 4);
    EXPECT_EQ(form.exchangeFillNo, "X9");
    EXPECT_EQ(form.account + form.accountNo + form.sign, "1000110001SG");
    EXPECT_EQ(form.exchange + " " + form.commodityType + " " + form.commodity + " " + form.contract,
              "EXA F CM 1509");
    EXPECT_EQ(form.upper, "UP2");
    EXPECT_EQ(form.systemNo, "SYS-OF-ORDER");
    EXPECT_EQ(form.price.whole, "97");
    EXPECT_EQ(form.price.numerator, 3);
    EXPECT_EQ(form.denominator, 8);
    EXPECT_EQ(form.denominator2, 8);
    EXPECT_EQ(form.remainingOrderQty, 0);
}

TEST_F(FillPopulation, AFillWithoutItsOrderNamesTheSystemNumberItself) {
    fill.order = nullptr;
    EXPECT_EQ(Loaded(&fill, nullptr).systemNo, "SYS-OF-FILL");
}

TEST_F(FillPopulation, LoadsAnOrderWithWhatIsLeftOfIt) {
    const FillForm form = Loaded(nullptr, &order);
    EXPECT_EQ(form.fillSource, "Manual Order");
    EXPECT_EQ(form.direction, "Sell");
    EXPECT_EQ(form.fillQty, 3);
    EXPECT_EQ(form.remainingOrderQty, 3);
    EXPECT_EQ(form.systemNo, "SYS-OF-ORDER");
    EXPECT_EQ(form.upper, "UP1");
    EXPECT_EQ(form.contract, "1509");
    EXPECT_EQ(form.price2.whole, "");
}

TEST_F(FillPopulation, ACombinationOrderGivesBothPrices) {
    order.key.commodityType = 'm';
    order.key.contractNo2.Set("1512");
    const FillForm form = Loaded(nullptr, &order);
    EXPECT_EQ(form.contract, "1509/1512");
    EXPECT_EQ(form.price2.whole, "97");
    EXPECT_EQ(form.price2.numerator, 3);
}

TEST_F(FillPopulation, ADecimalPriceHasDenominatorOne) {
    book.priceText = std::string("97.25\0", 6);
    const FillForm form = Loaded(nullptr, &order);
    EXPECT_EQ(form.price.whole, "97.25");
    EXPECT_EQ(form.price.numerator, 0);
    EXPECT_EQ(form.denominator, 1);
}

TEST_F(FillPopulation, TitlesNameWhatTheModeWorksAt) {
    struct Row {
        int mode;
        const FillRecord* fill;
        const OrderRecord* order;
        const char* title;
        const char* caption;
    };
    for (const Row& row : {Row{0, nullptr, &order, "Input Filled - [OrderNo:4711]", "Input"},
                           Row{1, nullptr, &order, "Input Filled - [OrderNo:4711]", "Input"},
                           Row{0, &fill, nullptr, "", "Input"},  // the template's caption stays
                           Row{2, &fill, nullptr, "Modify Filled", "Modify"},
                           Row{3, &fill, nullptr, "Modify Filled - [FillNo:F77]", "Remove"},
                           Row{3, nullptr, &order, "Remove Filled - [OrderNo:%d]", "Remove"}}) {
        FillForm form;
        form.mode = row.mode;
        form.fill = row.fill;
        form.order = row.order;
        EXPECT_EQ(FillTitle(form), row.title);
        EXPECT_EQ(FillConfirmCaption(form.mode), row.caption);
    }
}

TEST_F(FillPopulation, NumbersCarryTheClockAndAnOrderKeepsItsOwn) {
    LocalMoment moment;
    moment.fields.tm_mon = 2;
    moment.fields.tm_mday = 17;
    moment.fields.tm_hour = 14;
    moment.fields.tm_min = 25;
    moment.fields.tm_sec = 30;
    moment.milliseconds = 7;
    FillForm form;
    GenerateNumbers(form, moment);
    EXPECT_EQ(form.systemNo + " " + form.exchangeFillNo, "S_0317142530007 M_0317142530007");
    form = {};
    form.order = &order;
    GenerateNumbers(form, moment);
    EXPECT_EQ(form.systemNo + " " + form.exchangeFillNo, " M_0317142530007");
}

TEST_F(FillPopulation, OffersItsListsInOrder) {
    EXPECT_THAT(DirectionItems(), testing::ElementsAre("Buy", "Sell"));
    EXPECT_THAT(FillSourceItems(), testing::ElementsAre("E-TRADE", "J-TRADE", "Proxy", "Manual Order",
                                                        "Program", "Delivery Exercise", "RTS"));
    EXPECT_EQ(DefaultExchange(FillForm(), TradeData(&book)), "EXF");
    book.exchanges = {nullptr, book.exchanges[0]};
    EXPECT_EQ(DefaultExchange(FillForm(), TradeData(&book)), "");
}

}  // namespace
