#include "fill/fill_population.h"

#include "fill/fill_book.h"
#include "res/language.h"
#include "support/fixed_clock.h"

#include <gtest/gtest.h>

namespace {

class FillPopulation : public testing::Test {
protected:
    FillPopulation() {
        g_wResLanguage = kEnglish;
        book.priceText = std::string("97+3/8\0", 7);
    }

    // What is loaded, as one line.
    std::string Line(const FillRecord* fill, const OrderRecord* order) {
        FillForm form;
        form.fill = fill;
        form.order = order;
        EXPECT_TRUE(LoadRecord(form, TradeData(&book)));
        std::string line;
        for (const std::string& text :
             {form.fillSource, form.direction, form.openDirection, form.exchangeFillNo, form.account,
              form.accountNo, form.sign, form.exchange, form.commodity, form.contract, form.upper,
              form.systemNo, form.price.whole, form.price2.whole}) {
            line += text + "|";
        }
        line += form.commodityType;
        for (const int number : {form.fillQty, form.price.numerator, form.denominator, form.price2.numerator,
                                 form.denominator2, form.remainingOrderQty}) {
            line += " " + std::to_string(number);
        }
        return line;
    }

    FillBook book;
};

TEST_F(FillPopulation, LoadsAFillWithOrWithoutItsOrder) {
    FillRecord fill = book.FillOf("EXA CM 1509", 'C');
    const std::string head = "Carry|Sell|Buy|X9|10001|10001|SG|EXA|CM|1509|UP1|";
    EXPECT_EQ(Line(&fill, nullptr), head + "SYS7|97||F 4 3 8 0 8 0");
    fill.order = nullptr;
    EXPECT_EQ(Line(&fill, nullptr), head + "SYS-OF-FILL|97||F 4 3 8 0 8 0");
}

TEST_F(FillPopulation, LoadsWhatIsLeftOfAnOrder) {
    const std::string head = "Manual Order|Buy|Sell||10001|10001|SG|EXA|CM|1509";
    EXPECT_EQ(Line(nullptr, &book.order), head + "|UP2|SYS7|97||F 3 3 8 0 8 3");
    const OrderRecord spread = FillBook::OrderOf("EXA CM 1509/1512");
    EXPECT_EQ(Line(nullptr, &spread), head + "/1512|UP2|SYS7|97|97|m 3 3 8 3 8 3");
    book.priceText = std::string("97.25\0", 6);
    EXPECT_EQ(Line(nullptr, &spread), head + "/1512|UP2|SYS7|97.25|97.25|m 3 0 1 0 1 3");
}

TEST_F(FillPopulation, NumbersCarryTheClockAndAnOrderKeepsItsOwn) {
    const FixedClock clock;
    FillForm form;
    GenerateNumbers(form, clock.now);
    EXPECT_EQ(form.systemNo + " " + form.exchangeFillNo, "S_0304050607089 M_0304050607089");
    form = {};
    form.order = &book.order;
    GenerateNumbers(form, clock.now);
    EXPECT_EQ(form.systemNo + " " + form.exchangeFillNo, " M_0304050607089");
}

}  // namespace
