#include "fill/fill_population.h"

#include "fill/fill_book.h"
#include "fill/fill_request.h"
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

    static std::string Price(const FillForm& form, const PriceRow& row) {
        return row.whole + "+" + std::to_string(row.numerator) + "/" + std::to_string(form.denominator);
    }
    // What is loaded, as one line.
    std::string Line(const FillRecord* fill, const OrderRecord* order) {
        FillForm form;
        form.fill = fill;
        form.order = order;
        EXPECT_TRUE(LoadRecord(form, TradeData(&book)));
        std::string line;
        for (const std::string& text :
             {std::string{form.source, form.direction, form.commodityType}, form.exchangeFillNo, form.account,
              form.accountNo, form.sign, form.exchangeNo, form.commodityNo, form.contractNo, form.upper,
              form.systemNo, Price(form, form.fillPrice), Price(form, form.fillPrice2)}) {
            line += text + "|";
        }
        return line + std::to_string(form.fillQty) + " of " + std::to_string(form.remainingOrderQty);
    }

    FillBook book;
};

TEST_F(FillPopulation, LoadsAFillWithOrWithoutItsOrder) {
    FillRecord fill = book.FillOf("EXA TR 1509", 'X');
    const std::string head = "XSF|X9|10001|10001|SG|EXA|TR|1509|UP1|";
    EXPECT_EQ(Line(&fill, nullptr), head + "SYS7|97+3/8|+0/8|4 of 0");
    fill.order = nullptr;
    EXPECT_EQ(Line(&fill, nullptr), head + "SYS-OF-FILL|97+3/8|+0/8|4 of 0");
    fill.fillSource = 'C';
    EXPECT_EQ(Line(&fill, nullptr), "CSF|X9|10001|10001|SG|EXF|TR|1509|UP1|SYS-OF-FILL|97+3/8|+0/8|4 of 0")
        << "a carry belongs on the forward market";
}

TEST_F(FillPopulation, LoadsWhatIsLeftOfAnOrder) {
    book.AddPair('m', "TR", 1, 'F', "TR", "TR").exchangeNo.Set("EXA");
    book.commodities.back()->tickDenominator = 8;
    const OrderRecord plain = FillBook::OrderOf("EXA TR 1509"),
                      spread = FillBook::OrderOf("EXA TR 1509/1512");
    const std::string rest = "||10001|10001|SG|EXA|TR|1509";
    EXPECT_EQ(Line(nullptr, &plain), "MBF" + rest + "|UP2|SYS7|97+3/8|+0/8|3 of 3");
    EXPECT_EQ(Line(nullptr, &spread), "MBm" + rest + "/1512|UP2|SYS7|97+3/8|97+3/8|3 of 3");
}

TEST_F(FillPopulation, TheKeyIsThatOfTheRecordInTheFormOfATextsKey) {
    for (const auto& [contract, second] : {std::pair{"EXA CM&DN 1509", "1509"}, {"EXA CM 1509", ""}}) {
        OrderRecord order = FillBook::OrderOf(contract);
        order.key.optionType = order.key.optionType2 = 0;
        order.key.contractNo2 = {};
        FillForm form;
        form.order = &order;
        LoadRecord(form, TradeData(&book));
        const ContractKey key = ContractKeyOf(form);
        EXPECT_EQ(std::string({key.optionType, key.optionType2}) + key.contractNo2.Str(),
                  std::string("NN") + second);
    }
}

// A dialog without a record has no sign, and a host may know no commodity without one.
TEST_F(FillPopulation, WithoutASignTheListKnowsTheCommodity) {
    struct : FillBook {
        CommodityRecord* GetCommodity(const void*) override { return nullptr; }
    } unsignedBook;
    FillForm form;
    form.exchangeNo = "EXA";
    form.commodityNo = "CM";
    for (const auto& [asked, found] : {std::pair{'F', 'F'}, {'m', 'm'}, {CommodityType::kUnknown, 'F'}}) {
        form.commodityType = asked;
        EXPECT_EQ(FindCommodity(form, TradeData(&unsignedBook))->commodityType, found);
    }
}

TEST_F(FillPopulation, APriceComesInTheFractionsOfItsCommodity) {
    struct {
        const char* written;
        std::uint32_t tickDenominator;  // 0: the commodity is not known
        const char* shown;
    } const rows[] = {
        {"97+3/8", 8, "97+3/8"}, {"97+3/4", 8, "97+6/8"},   {"97+4/8", 2, "97+1/2"},
        {"97+1/3", 8, "97+1/8"}, {"97.25", 8, "97.25+0/8"}, {"97+3/4", 1, "97.75+0/1"},
        {"97+0/4", 1, "97+0/1"}, {"97.25", 1, "97.25+0/1"}, {"97+3/4", 0, "97+3/4"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.written);
        OrderRecord order = FillBook::OrderOf(row.tickDenominator ? "EXA TR 1509" : "EXA XX 1509");
        book.commodities[2]->tickDenominator = row.tickDenominator;
        book.priceText = std::string(row.written) + '\0';
        FillForm form;
        form.order = &order;
        EXPECT_TRUE(LoadRecord(form, TradeData(&book)));
        EXPECT_EQ(Price(form, form.fillPrice), row.shown);
    }
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
