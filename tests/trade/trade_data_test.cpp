#include "trade/trade_data.h"

#include "trade/fake_config.h"
#include "trade/fake_trade.h"
#include "trade/price_format.h"

#include <gtest/gtest.h>

namespace {

// A record whose every byte is 0xAA: no text field ends, whatever lies behind it.
template <typename Record>
Record Unterminated() {
    Record record;
    std::memset(&record, 0xAA, sizeof(record));
    return record;
}

ServerConfigRecord Config(const char* name, const char* address, std::uint32_t port) {
    ServerConfigRecord config{};
    config.name.Set(name);
    config.address.Set(address);
    config.port = port;
    return config;
}

class HostData : public testing::Test {
protected:
    FakeTradeApi api;
    TradeData trade{&api};
};

TEST(TradeData, WithoutATradeInterfaceNothingIsFound) {
    const TradeData trade(nullptr);
    EXPECT_TRUE(trade.Users("").empty());
    EXPECT_TRUE(trade.Contracts({}).empty());
    EXPECT_EQ(trade.SignEntryCount(""), 0u);
    EXPECT_EQ(trade.User("1", ""), nullptr);
    EXPECT_EQ(trade.Contract({}), nullptr);
    EXPECT_EQ(trade.Position("1", {}, 'B', "1"), nullptr);
    EXPECT_EQ(trade.PositionQty("1", {}).longQty, 0u);
    EXPECT_EQ(trade.PositionTotal("1", "", "", "", 'B'), 0u);
    EXPECT_EQ(trade.ThreeMonthContractNo(""), "3M");
    EXPECT_TRUE(trade.ServerConfigs().empty());
    EXPECT_FALSE(trade.ServerOf({}, {}).has_value());
    EXPECT_EQ(trade.FormatPrice(nullptr, 1.5), "1.5");
}

TEST_F(HostData, ListsSkipNullEntriesAndPassTheSign) {
    UserRecord first{}, second{};
    api.users = {nullptr, &first, nullptr, &second};
    api.signEntries = {&first, nullptr};
    EXPECT_EQ(trade.Users("S1"), (std::vector<const UserRecord*>{&first, &second}));
    EXPECT_EQ(api.log, "S1");
    EXPECT_EQ(trade.SignEntryCount(""), 2u);
}

TEST_F(HostData, PositionTotalCountsOnlyExactAgreementInAllFive) {
    PositionRecord right{};
    right.accountNo.Set("A1");
    right.key.exchangeNo.Set("EXA");
    right.key.commodityNo.Set("CM");
    right.key.contractNo.Set("1509");
    right.direction = 'B';
    right.openQty = 7;
    std::vector<PositionRecord> others(6, right);
    others[0].accountNo.Set("a1");
    others[1].key.exchangeNo.Set("EXB");
    others[2].key.commodityNo.Set("CMX");
    others[3].key.contractNo.Set("150");
    others[4].direction = 'S';
    others[5] = Unterminated<PositionRecord>();
    for (PositionRecord& other : others) {
        api.positions.push_back(&other);
    }
    PositionRecord again = right;
    again.openQty = 5;
    api.positions.insert(api.positions.end(), {&right, nullptr, &again});
    EXPECT_EQ(trade.PositionTotal("A1", "EXA", "CM", "1509", 'B'), 12u);
}

TEST_F(HostData, ShortTextsComeWithTheWholeFieldsMemory) {
    api.longQty = 3;
    api.shortQty = 4;
    const auto found = trade.PositionQty("A1", {});
    EXPECT_EQ(found.longQty, 3u);
    EXPECT_EQ(found.shortQty, 4u);
    EXPECT_EQ(api.log, std::string("A1") + std::string(19, '\0'));
}

TEST_F(HostData, ThreeMonthContractIsBoundedAndNeverEmpty) {
    const std::pair<const char*, const char*> rows[] = {
        {nullptr, "3M"}, {"", "3M"}, {"150320", "150320"}, {"150320150320150320", "1503201503"}};
    for (const auto& [answer, expected] : rows) {
        api.threeMonthContractNo = answer;
        EXPECT_EQ(trade.ThreeMonthContractNo("S"), expected);
    }
}

TEST_F(HostData, HostPriceTextIsReadBoundedAndFallsBack) {
    const ContractRecord record{};
    api.priceText = "97+3/8";
    EXPECT_EQ(trade.FormatPrice(&record, 97.375), "97+3/8");
    EXPECT_EQ(api.log, "0D");
    api.priceText.assign(500, '9');
    EXPECT_EQ(trade.FormatPrice(&record, 1), std::string(100, '9'));

    api.priceText.clear();
    CommodityRecord commodity{};
    commodity.tickDenominator = 8;
    EXPECT_EQ(trade.FormatPrice(&record, 97.375), "97.375") << "no such commodity";
    api.commodities = {&commodity};
    EXPECT_EQ(trade.FormatPrice(&record, 97.375), "97+3/8");
}

TEST(PriceFormat, HasTheHostsTextForms) {
    struct {
        double price;
        std::uint32_t denominator;
        const char* text;
    } const rows[] = {
        // clang-format off
        {97.25, 1, "97.25"}, {97, 0, "97"}, {100, 1, "100"}, {0, 1, "0"}, {0.1 + 0.2, 1, "0.3"},
        {-2.5, 1, "-2.5"}, {-1e-12, 1, "0"}, {1e-9, 1, "0.000000001"}, {97.375, 8, "97+3/8"},
        {97, 8, "97+0/8"}, {0, 4, "0+0/4"}, {97.99999999, 8, "98+0/8"}, {-0.25, 4, "-1+3/4"},
        {0.999, 320, "1+0/320"}, {1e15, 1, "1000000000000000"}, {1.0 / 0.0, 8, ""},
        // clang-format on
    };
    for (const auto& row : rows) {
        CommodityRecord commodity{};
        commodity.tickDenominator = row.denominator;
        EXPECT_EQ(FormatPriceText(row.price, &commodity), row.text) << row.price << " / " << row.denominator;
    }
}

TEST(ServerConfigs, AreCopiedAndReleasedWhateverTheAnswer) {
    FakeConfig config;
    config.configs = {Config("one", "10.0.0.1", 80), Config("two", "10.0.0.2", 81)};
    const TradeData trade(nullptr, &config);
    EXPECT_TRUE(trade.ServerConfigs().empty());
    EXPECT_EQ(config.released, 0) << "an answer without records holds nothing";
    config.count = 2;
    ASSERT_EQ(trade.ServerConfigs().size(), 2u);
    EXPECT_EQ(trade.ServerConfigs()[1].name, "two");
    EXPECT_EQ(config.released, 2);
    config.count = 0xFFFFFFFF;
    EXPECT_TRUE(trade.ServerConfigs().empty());
    config.count = 1;
    config.hasRecords = false;
    EXPECT_TRUE(trade.ServerConfigs().empty());
    EXPECT_EQ(config.released, 4);
    config.hasTable = false;
    EXPECT_TRUE(trade.ServerConfigs().empty());
}

TEST_F(HostData, TheAccountsServerIsMatchedByAddressAndPortAsOneText) {
    UserRecord user{};
    user.serverKey.Set("KEY");
    const std::vector<ServerConfigRecord> configs = {
        Config("longer", "10.0.0.1", 65536 + 8000), Config("other", "10.0.0.2", 8000),
        Config("hit", "10.0.0.1", 8000), Config("second hit", "10.0.0.1", 8000)};
    EXPECT_FALSE(trade.ServerOf(user, configs).has_value());
    ServerRecord server{};
    server.address.Set("10.0.0.1");
    server.port = 8000;
    api.server = &server;
    const auto found = trade.ServerOf(user, configs);
    EXPECT_EQ(api.log, "KEY");
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->name, "hit");
    server = Unterminated<ServerRecord>();
    EXPECT_FALSE(trade.ServerOf(Unterminated<UserRecord>(), configs).has_value());
}

TEST(Accounts, AreTradableOnlyThroughTheirGroup) {
    EXPECT_FALSE(IsTradable(nullptr));
    UserRecord user{};
    EXPECT_FALSE(IsTradable(&user));
    EXPECT_EQ(OperatorNo(&user), "");
    GroupRecord group{};
    user.group = &group;
    EXPECT_FALSE(IsTradable(&user));
    group.tradable = 'Y';
    EXPECT_TRUE(IsTradable(&user));
    std::memset(&group, 'x', sizeof(group));
    EXPECT_EQ(OperatorNo(&user), std::string(21, 'x'));
}

}  // namespace
