#include "order/carry_positions.h"
#include "order/carry_submission.h"

#include "order/order_fixture.h"
#include "order/order_submission.h"
#include "res/string_table.h"
#include "support/record_bytes.h"

namespace {

class Carry : public OrderTest {
protected:
    // Fee flag and fee of the forward fill; text and caption of the box when nothing was sent.
    std::string ForwardFee(const OrderForm& form) {
        service.fills.clear();
        prompt.asked.clear();
        SubmitCarry(form, BuildOrder(form, api.contracts[0], trade, clock.now), services);
        if (service.fills.size() != 2) {
            EXPECT_TRUE(service.fills.empty());
            return prompt.asked.back().text + "|" + prompt.asked.back().caption;
        }
        return service.fills[1].feeGiven + std::to_string(static_cast<int>(service.fills[1].fee));
    }
    PositionRecord MakePosition(const char* contractNo, char direction, double price, std::uint32_t openQty) {
        PositionRecord position{};
        position.accountNo.Set("100");
        position.key.exchangeNo.Set("EXA");
        position.key.commodityNo.Set("CA");
        position.key.contractNo.Set(contractNo);
        position.direction = direction;
        position.price = price;
        position.openQty = openQty;
        return position;
    }
};

TEST_F(Carry, DatesDecideTheForwardFee) {
    struct {
        const char* near;
        const char* forward;
        const char* threeMonthDate;
        const char* fee;  // typed; null: the box is not ticked
        std::string expected;
    } const rows[] = {
        {"240315", "240329", nullptr, nullptr, "Y0"},
        {"240315", "240330", nullptr, nullptr, "N0"},
        {"240222", "240307", nullptr, nullptr, "Y0"},
        {"240315", "3M", "240613", nullptr, "N0"},
        {"240601", "3M", "240613", nullptr, "Y0"},
        {"240315", "240329", nullptr, "7", "Y7"},
        {"240315", "240330", nullptr, "", "Y0"},
        {"240315", "240315", nullptr, nullptr, ResString(10049) + "|" + ResString(10050)},
        {"240329", "240315", nullptr, nullptr, ResString(10051) + "|" + ResString(10050)},
        {"240315", "3M", nullptr, nullptr, ResString(10048) + "|" + ResString(10114)},
        // A fee settles the fee, but the order of the dates stays unknown.
        {"240315", "3M", nullptr, "7", ResString(10051) + "|" + ResString(10050)},
    };
    for (const auto& row : rows) {
        api.threeMonthContractNo = row.threeMonthDate;
        OrderForm form = CarryEntry(row.near, row.forward);
        form.feeGiven = row.fee;
        form.fee = row.fee ? row.fee : "9";
        EXPECT_EQ(ForwardFee(form), row.expected) << row.near << ' ' << row.forward;
    }
}

TEST_F(Carry, DialogGoneBetweenTheLegs) {
    OrderForm form = CarryEntry("240315", "240329");
    pause.whileWaiting = [&] { prompt.dialogExists = false; };
    EXPECT_EQ(SubmitOrder(form, services), OrderOutcome::Gone);
    EXPECT_EQ(service.fills.size(), 2u) << "half a carry would be an open position";

    prompt.dialogExists = true;
    service.orders.clear();
    service.results = {1};
    prompt.whileAsking = [&] { prompt.dialogExists = false; };
    EXPECT_EQ(SubmitOrder(form, services), OrderOutcome::Gone);
    EXPECT_EQ(service.orders.size(), 1u) << "nothing was traded yet, nothing follows";
}

TEST_F(Carry, SpreadsAreRefused) {
    AddSpread('m', "EXA SA 240315/240329");
    OrderForm carry = FilledEntry(OrderMode::Carry, "EXA SA 240315/240329");
    carry.forwardContract = "240613";
    const OrderRecord order = BuildOrder(carry, api.contracts.back(), trade, clock.now);
    EXPECT_EQ(SubmitCarry(carry, order, services), CarryResult::Done) << "refused, not failed";
    EXPECT_TRUE(service.orders.empty());
}

TEST_F(Carry, FiltersShowWhatTheLegsClose) {
    api.AddExchange("FWD").forwardMarket = 1;
    api.threeMonthContractNo = "240613";
    OrderForm form = CarryEntry("240315", "3M");
    form.nearPositionPrice = {"2", 1};
    form.denominator = 4;
    using namespace std::string_literals;
    const PositionFilters filters = FiltersOf(form, trade);
    ExpectBytes(filters.near, {{0, "100"},
                               {63, "FWD"},
                               {84, "CA"},
                               {106, "240315"},
                               {157, "S"},
                               {160, "U7"},
                               {256, "\0\0\0\0\0\0\x02\x40"s}});
    ExpectBytes(filters.forward,
                {{0, "100"}, {63, "FWD"}, {84, "CA"}, {106, "240613"}, {157, "B"}, {160, "U7"}});
    api.exchanges = {};
    EXPECT_EQ(FiltersOf(form, trade).near.exchangeNo, "EXA");
}

TEST_F(Carry, QuantitiesAreSummedLookedUpOrReported) {
    PositionRecord nearLow = MakePosition("240315", 'S', 10, 3);
    PositionRecord nearHigh = MakePosition("240315", 'S', 11, 4);
    PositionRecord forward = MakePosition("240329", 'B', 12, 5);
    PositionRecord otherAccount = MakePosition("240315", 'S', 10, 99);
    otherAccount.accountNo.Set("1001");
    PositionRecord otherCommodity = nearLow;
    otherCommodity.key.commodityNo.Set("CB");
    api.positions = {&nearLow, &nearHigh, &forward, &otherAccount};
    api.position = &nearHigh;
    using Qty = std::optional<std::uint32_t>;
    struct {
        const char* what;
        PriceRow near, ahead;
        const PositionRecord* changed;
        Qty nearQty, forwardQty;
    } const rows[] = {
        {"sums", {}, {}, nullptr, 7, 5},
        {"a chosen near price", {"11", 0}, {}, nullptr, 4, 5},
        {"chosen prices", {"11", 0}, {"12", 0}, nullptr, 4, 4},
        {"the near position changed", {"10", 0}, {}, &nearLow, 3, {}},
        {"at another price", {"10", 0}, {}, &nearHigh, {}, {}},
        {"of another account", {"10", 0}, {}, &otherAccount, {}, {}},
        {"of another commodity", {"10", 0}, {}, &otherCommodity, {}, {}},
        {"the forward position changed", {"10", 0}, {"12", 0}, &forward, {}, 5},
        {"at another forward price", {"10", 0}, {"13", 0}, &forward, {}, {}},
    };
    for (const auto& row : rows) {
        OrderForm form = CarryEntry("240315", "240329");
        form.nearPositionPrice = row.near;
        form.forwardPositionPrice = row.ahead;
        const PositionQuantities found = QuantitiesOf(form, trade, row.changed);
        EXPECT_EQ(found.near, row.nearQty) << row.what;
        EXPECT_EQ(found.forward, row.forwardQty) << row.what;
    }
    OrderForm form = CarryEntry("240315", "240329");
    form.forwardPositionPrice = {"97", 3};
    form.denominator = 8;
    QuantitiesOf(form, trade, nullptr);
    EXPECT_EQ(api.log, "100B97+3/8");
    api.position = nullptr;
    EXPECT_EQ(QuantitiesOf(form, trade, nullptr).forward, Qty(0));
    EXPECT_EQ(QuantitiesOf(OrderForm{}, TradeData(nullptr), nullptr).near, Qty(0));
}

TEST_F(Carry, FeeTextNamesTheDifference) {
    struct {
        const char* near;
        const char* forward;
        const char* text;
    } const rows[] = {
        {"2010.5", "2000", "10.50  forward discount"},
        {"2000", "2010.5", "10.50  forward premium"},
        {"2000", "2000", "Cover fee"},
        {"2000.001", "2000", "0.00  forward discount"},
    };
    for (const auto& row : rows) {
        OrderForm form;
        form.fillPrice.whole = row.near;
        form.fillPrice2.whole = row.forward;
        EXPECT_EQ(CarryFeeText(form), row.text);
    }
    api.priceText = "97+3/8";
    const PriceRow picked = PickedPrice(MakePosition("240315", 'S', 97.375, 1), 1, trade);
    EXPECT_EQ(picked.whole, "97");
    EXPECT_EQ(picked.numerator, 3);
    const PixelRect place =
        PositionListPlace({10, 85, 50, 97}, {60, 85, 90, 97}, {209, 85, 299, 97}, {7, 171, 300, 172});
    EXPECT_EQ(place.left * 1000 + place.top, 10105);
    EXPECT_EQ(place.right * 1000 + place.bottom, 299163);
}

}  // namespace
