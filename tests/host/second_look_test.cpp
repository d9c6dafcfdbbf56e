#include "review/second_look.h"
#include "host/sample.h"
#include "services/service_set.h"

#include <gtest/gtest.h>

namespace {

constexpr char kMay[] = "NWX F WH 2505";
constexpr char kJanuary[] = "NWX F WH 2501";

// A request as it goes through the services, seconds after the first one, and what is to be remarked on it.
// The remark is a part of the text; "" means that there is none.
struct Step {
    int second;
    const char* contract;
    char direction;
    double price;
    std::uint32_t qty;
    const char* remark;
    const char* account = "800101";
    char orderType = '2';
    bool withFill = false;
};

struct Case {
    const char* fault;
    std::vector<Step> steps;
};

const Case kCases[] = {
    {"the same order twice within two minutes",
     {{0, kMay, 'B', 2514, 5, ""}, {120, kMay, 'B', 2514, 5, "the same was entered 120 s before"}}},
    {"later it is another order", {{0, kMay, 'B', 2514, 5, ""}, {121, kMay, 'B', 2514, 5, ""}}},
    {"each of the five counts",
     {{0, kMay, 'B', 2514, 5, ""},
      {1, kMay, 'S', 2514, 5, ""},
      {2, kMay, 'B', 2515, 5, ""},
      {3, kMay, 'B', 2514, 6, ""},
      {4, kMay, 'B', 2514, 5, "", "800102"}}},
    {"a refused request is no first one, and not remarked on",
     {{0, kMay, 'B', 2514, 0, ""}, {1, kMay, 'B', 2514, 5, ""}, {2, kMay, 'B', 5214, 0, ""}}},
    {"a slip of one digit in the price",
     {{0, kMay, 'B', 2541, 5, ""}, {1, kMay, 'B', 5214, 5, "price 5214 is far from the last, 2514"}}},
    {"a market order has no price", {{0, kMay, 'B', 0, 5, "", "800101", '1'}}},
    {"a price without a last one cannot be far", {{0, kJanuary, 'B', 1, 5, ""}}},
    {"a fill is compared with the fill before it, not with itself",
     {{0, kMay, 'B', 2514, 5, "", "800101", '2', true},
      {1, kMay, 'B', 2900, 4, "price 2900 is far from the last, 2514", "800101", '2', true}}},
    {"two zeros too many",
     {{0, kJanuary, 'B', 2500, 5, ""},
      {300, kJanuary, 'B', 2500, 6, ""},
      {600, kJanuary, 'B', 2500, 500, "quantity 500 is far above the usual"}}},
    {"two orders before are no habit",
     {{0, kJanuary, 'B', 2500, 1, "", "800121"}, {300, kJanuary, 'B', 2500, 500, "", "800121"}}},
    {"both legs of a listed spread, entered one by one",
     {{0, kJanuary, 'B', 2500, 7, ""}, {30, kMay, 'S', 2514, 7, "looks like the spread NWX m WH 2501/2505"}}},
    {"legs on one side, or of different size, are no spread",
     {{0, kJanuary, 'B', 2500, 7, ""}, {1, kMay, 'B', 2514, 7, ""}, {2, kMay, 'S', 2514, 8, ""}}},
};

// A fresh book whose requests are looked at; second and shown prices are what the look is told.
struct Looked {
    Looked() {
        services.journal.review = [this](const JournalEntry& entry) {
            return look.Look(entry, second, shown);
        };
    }
    Json Remarks() const {
        return Json::parse(services.journal.Lines().back()).value("remarks", Json::array());
    }

    std::unique_ptr<Book> book = Sample();
    ServiceSet services{*book, {}};
    SecondLook look{*book};
    int second = 0;
    std::vector<ShownPrice> shown;
};

TEST(SecondLookTest, RemarksOnLikelyMistakes) {
    for (const Case& testCase : kCases) {
        SCOPED_TRACE(testCase.fault);
        Looked looked;
        for (const Step& step : testCase.steps) {
            looked.second = step.second;
            OrderRecord order = MakeOrder(step.account, step.contract, step.direction, step.price, step.qty,
                                          "S_look" + std::to_string(step.second));
            order.orderType = step.orderType;
            looked.services.trade.SendOrder(&order);
            if (step.withFill) {
                FillRecord fill = MakeFill(order);
                ASSERT_EQ(looked.services.trade.SendFill(&fill), 0);
            }
            const Json remarks = looked.Remarks();
            EXPECT_EQ(remarks.size(), *step.remark ? 1u : 0u) << step.second << ": " << remarks;
            EXPECT_NE(remarks.dump().find(step.remark), std::string::npos) << step.second << ": " << remarks;
        }
    }
}

// Doubts about one entry alone. `change` makes it of a working limit order of 7 at 2500, or of order 1001,
// which was filled at 2514.
struct Doubt {
    const char* fault;
    void (*change)(OrderRecord& order);
    std::vector<ShownPrice> shown;
    std::string remark;
    bool modify = false;
};

const Doubt kEntries[] = {
    {"a typing error after the state put the order price into the fill price",
     [](OrderRecord& order) { order.fillPrice = 2050; },
     {{"fill price", "2050", "", "1", false}},
     "fill price 2050 differs from the order price 2500"},
    {"the price of a stop order's fill cannot be compared",
     [](OrderRecord& order) {
         order.orderType = '3';
         order.orderPrice = 0;
         order.triggerPrice = 2490;
     },
     {},
     ""},
    {"a stop at 0",
     [](OrderRecord& order) { order.orderType = '4'; },
     {},
     "a stop order with trigger price 0"},
    {"9 eighths",
     [](OrderRecord&) {},
     {{"order price", "2499", "8", "8", false}, {"trigger price", "0", "7", "8", false}},
     "numerator 8 of the order price is not below its denominator 8"},
    {"a position chosen by its box alone",
     [](OrderRecord&) {},
     {{"near position price", "2400", "", "1", true}, {"forward position price", "", "", "1", true}},
     "a position is chosen without a forward position price"},
    {"the fill price of a modified order that nobody looked at",
     [](OrderRecord& order) { order.orderPrice = order.fillPrice = 2520; },
     {{"fill price", "2520", "", "1", false}},
     "fill price 2520 is that of the order, which was filled at 2514",
     true},
    {"typed, it is what the operator wants",
     [](OrderRecord& order) { order.orderPrice = 2520; },
     {{"fill price", "2514", "", "1", false}},
     "",
     true},
    {"a move leaves the price alone", [](OrderRecord& order) { order.fillPrice = 2520; }, {}, "", true},
};

TEST(SecondLookTest, RemarksOnDoubtfulEntries) {
    for (const Doubt& row : kEntries) {
        SCOPED_TRACE(row.fault);
        Looked looked;
        looked.shown = row.shown;
        OrderRecord order = row.modify ? looked.book->ledger.FindOrder(1001)->record
                                       : MakeOrder("800101", kJanuary, 'B', 2500, 7, "S_doubt");
        if (!row.modify) {
            order.orderState = '6';
            order.fillPrice = 2500;
            order.fillQty = 7;
        }
        row.change(order);
        ASSERT_EQ(looked.services.trade.SendOrder(&order), 0);
        const Json none = Json::array();
        EXPECT_EQ(looked.Remarks(), row.remark.empty() ? none : Json::array({row.remark}));
    }
}

}  // namespace
