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

// What was loaded, as one line.
std::string Line(const FillForm& form) {
    std::string line;
    for (const std::string& text : {form.fillSource,
                                    form.direction,
                                    form.openDirection,
                                    std::to_string(form.fillQty),
                                    form.exchangeFillNo,
                                    form.account,
                                    form.accountNo,
                                    form.sign,
                                    form.exchange,
                                    std::string(1, form.commodityType),
                                    form.commodity,
                                    form.contract,
                                    form.upper,
                                    form.systemNo,
                                    form.price.whole,
                                    std::to_string(form.price.numerator),
                                    std::to_string(form.denominator),
                                    form.price2.whole,
                                    std::to_string(form.price2.numerator),
                                    std::to_string(form.denominator2),
                                    std::to_string(form.remainingOrderQty)}) {
        line += text + "|";
    }
    return line;
}

TEST_F(FillPopulation, LoadsAFillWithOrWithoutItsOrder) {
    EXPECT_EQ(Line(Loaded(&fill, nullptr)),
              "Carry|Buy|Sell|4|X9|10001|10001|SG|EXA|F|CM|1509|UP2|SYS-OF-ORDER|97|3|8||0|8|0|");
    fill.order = nullptr;
    EXPECT_EQ(Loaded(&fill, nullptr).systemNo, "SYS-OF-FILL");
}

TEST_F(FillPopulation, LoadsWhatIsLeftOfAnOrder) {
    EXPECT_EQ(Line(Loaded(nullptr, &order)),
              "Manual Order|Sell|Buy|3||10001|10001|SG|EXA|F|CM|1509|UP1|SYS-OF-ORDER|97|3|8||0|8|3|");
    order.key.commodityType = 'm';
    order.key.contractNo2.Set("1512");
    EXPECT_EQ(Line(Loaded(nullptr, &order)),
              "Manual Order|Sell|Buy|3||10001|10001|SG|EXA|m|CM|1509/1512|UP1|SYS-OF-ORDER|97|3|8|97|3|8|3|");
    book.priceText = std::string("97.25\0", 6);
    EXPECT_EQ(
        Line(Loaded(nullptr, &order)),
        "Manual Order|Sell|Buy|3||10001|10001|SG|EXA|m|CM|1509/1512|UP1|SYS-OF-ORDER|97.25|0|1|97.25|0|1|3|");
}

TEST_F(FillPopulation, NumbersCarryTheClockAndAnOrderKeepsItsOwn) {
    LocalMoment moment;
    ParseDateTimeFields("03-17 14:25:30", "%m-%d %H:%M:%S", moment.fields);
    moment.milliseconds = 7;
    FillForm form;
    GenerateNumbers(form, moment);
    EXPECT_EQ(form.systemNo + " " + form.exchangeFillNo, "S_0317142530007 M_0317142530007");
    form = {};
    form.order = &order;
    GenerateNumbers(form, moment);
    EXPECT_EQ(form.systemNo + " " + form.exchangeFillNo, " M_0317142530007");
}

}  // namespace
