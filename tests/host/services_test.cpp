#include "host/sample.h"
#include "services/position_filter.h"
#include "services/service_set.h"
#include "trade/data_container.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <tuple>

namespace {

class ServicesTest : public testing::Test {
protected:
    std::uint32_t UserCount(const char* sign) {
        CDataContainer list;
        api.GetUsers(&list, sign);
        return list.Count();
    }

    std::unique_ptr<Book> book = Sample();
    ServiceSet services{*book, {}};
    HostTradeApi& api = services.api;
    FaultPlan& faults = services.faults;
};

TEST_F(ServicesTest, AnEmptySignMeansAnyAndKeysAreReadAsTheModuleWritesThem) {
    EXPECT_EQ(UserCount(""), 12u);
    EXPECT_EQ(UserCount("COAST"), 3u);
    EXPECT_EQ(UserCount("NOWHERE"), 0u);
    EXPECT_TRUE(api.GetUser("860001", ""));
    EXPECT_FALSE(api.GetUser("860001", "HQ"));

    // Option types left 0, no sign, and a field with old text behind its terminator.
    ContractKey key = KeyOf("", "HMX F CU 250318");
    key.optionType = key.optionType2 = 0;
    std::memcpy(key.exchangeNo.chars, "HMX\0old", 8);
    ASSERT_TRUE(api.GetContract(&key));
    EXPECT_EQ(api.GetCommodity(&key)->rollingCode, 'U');
    key.sign.Set("OLD");
    EXPECT_EQ(api.GetContract(&key)->key.sign.View(), "OLD");
    key.sign.Set("NOWHERE");
    EXPECT_FALSE(api.GetContract(&key));
    CDataContainer none;
    api.GetContracts(&key, &none);
    EXPECT_EQ(none.Count(), 0u);

    key = KeyOf("HQ", "HMX F CU 3M");
    const SingleContractKey leg = FirstLegOf(key);
    std::uint32_t bought = 1;
    std::uint32_t sold = 1;
    api.GetPositionQty("800120", &leg, &bought, &sold, nullptr, nullptr);
    EXPECT_EQ(bought, 8u) << "3M counts as its date";
    EXPECT_EQ(sold, 0u);
    EXPECT_TRUE(api.GetPosition("800120", &key, 'B', "9101.5"));
    EXPECT_FALSE(api.GetPosition("800120", &key, 'B', "9101"));
    EXPECT_STREQ(api.Get3MContractNo("HQ"), "250318");
    EXPECT_STREQ(api.Get3MContractNo("NOWHERE"), "3M");
}

TEST_F(ServicesTest, NullArgumentsAreUnknownOnes) {
    EXPECT_FALSE(api.GetUser(nullptr, nullptr));
    EXPECT_FALSE(api.GetExchange(nullptr));
    EXPECT_FALSE(api.GetCommodity(nullptr));
    EXPECT_FALSE(api.GetContract(nullptr));
    EXPECT_FALSE(api.GetPosition(nullptr, nullptr, 'B', nullptr));
    EXPECT_FALSE(api.GetUserServer("HQ-A", nullptr));
    api.GetPositionQty(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    api.GetUsers(nullptr, nullptr);
    api.GetContracts(nullptr, nullptr);
    api.FormatPrice(nullptr, 1, nullptr, 0, 0, 'D');
    api.RegisterSpi(nullptr);
    api.UnregisterSpi(nullptr);
    HostTradeService& trade = services.trade;
    EXPECT_FALSE(services.manager.GetPlugin(nullptr, "1.0.0.1"));
    EXPECT_FALSE(services.manager.GetPlugin("TradeApi", "1.0.0.2"));
    EXPECT_EQ(services.manager.GetPlugin("TradeApi", "1.0.0.1"), static_cast<ITradeService*>(&trade));
    EXPECT_NE(trade.SendOrder(nullptr), 0);
    EXPECT_NE(trade.SendFill(nullptr), 0);
    EXPECT_NE(trade.RemoveFill(nullptr, nullptr), 0);
    EXPECT_NE(trade.SendExercise(nullptr), 0);
    EXPECT_EQ(trade.DeleteOrder(0), 0) << "here zero is the failure";
    EXPECT_EQ(trade.DeleteOrder(1001), 1);
}

TEST_F(ServicesTest, PricesAreWrittenInBothNotationsAndCutToTheBuffer) {
    const ContractKey key = KeyOf("HQ", "BRX F CO 2503");
    const std::tuple<int, char, const char*> rows[] = {
        {100, 'D', "451+2/8"}, {100, 'N', "451.25"}, {4, 'D', "451"}};
    for (const auto& [size, notation, expected] : rows) {
        char text[100] = "untouched";
        api.FormatPrice(&key, 451.25, text, size, 0, notation);
        EXPECT_STREQ(text, expected);
    }
}

TEST_F(ServicesTest, TheServerOfAnAccountIsAConfigurationByAddressAndPort) {
    UserRecord* user = api.GetUser("800103", "HQ");
    const ServerRecord* server = api.GetUserServer(user->serverKey.chars, user);
    ASSERT_TRUE(server);
    ConfigQuery query{kConfigTradeServers, 0, nullptr};
    HostConfigTable& table = services.config.Table();
    ASSERT_EQ(table.Query(&query), 0);
    ASSERT_EQ(query.count, 3u);
    const ServerConfigRecord& config = static_cast<const ServerConfigRecord*>(query.records)[1];
    EXPECT_EQ(config.address.View(), server->address.View());
    EXPECT_EQ(+config.port, +server->port);
    table.Release(&query);
    EXPECT_EQ(table.Outstanding(), 0u);
    query.requestType = 1;
    EXPECT_NE(table.Query(&query), 0);
}

TEST_F(ServicesTest, AFaultStrikesTheCallsItIsSetFor) {
    int slept = 0;
    int destroyed = 0;
    faults.sleep = [&](unsigned milliseconds) { slept += static_cast<int>(milliseconds); };
    faults.destroyParent = [&] { ++destroyed; };
    const std::pair<const char*, const char*> rows[] = {{"GetUser null at 2 for 1", "+-+"},
                                                        {"GetUser fail at 2", "+--"},
                                                        {"GetUser slow 70 for 2", "+++"},
                                                        {"GetUser destroy-parent at 3", "+++"}};
    for (const auto& [fault, expected] : rows) {
        faults.Clear();
        faults.Set(std::string_view(fault));
        std::string answers;  // to the calls after it was set
        for (int call = 0; call < 3; ++call) {
            answers += api.GetUser("800101", "HQ") ? '+' : '-';
        }
        EXPECT_EQ(answers, expected) << fault;
    }
    EXPECT_EQ(slept, 140);
    EXPECT_EQ(destroyed, 1);

    faults.Set("GetUsers empty");
    EXPECT_EQ(UserCount(""), 0u);
    faults.Set("GetUsers null");
    CDataContainer users;
    api.GetUsers(&users, "COAST");
    ASSERT_EQ(users.Count(), 4u);
    EXPECT_FALSE(users.At(0));
    faults.Set("GetUser unterminated");
    const UserRecord* broken = api.GetUser("800101", "HQ");
    ASSERT_TRUE(broken);
    EXPECT_EQ(broken->accountName.View().size(), 26u);
    EXPECT_EQ(broken->group->operatorNo.View().size(), 21u);
    faults.Clear();
    EXPECT_EQ(api.GetUser("800101", "HQ")->accountNo.View(), "800101") << "only a copy was broken";

    const std::string before = BookText(*book);
    faults.Set("DeleteOrder fail");
    EXPECT_EQ(services.trade.DeleteOrder(1001), 0);
    EXPECT_TRUE(BookText(*book) == before);
    for (const char* bad : {"", "SendOrder", "SendOrders fail", "SendOrder explode", "SendOrder slow",
                            "SendOrder fail at", "SendOrder fail at 0", "SendOrder fail twice"}) {
        EXPECT_THROW(faults.Set(std::string_view(bad)), std::invalid_argument) << bad;
    }
}

TEST_F(ServicesTest, APositionFilterLeavesOutWhatDiffersInAnythingItGives) {
    PositionFilterRecord filter{};
    const auto matches = [&] {
        const auto& rows = book->ledger.AllPositions().Rows();
        return std::count_if(rows.begin(), rows.end(),
                             [&](const PositionEntry& row) { return PositionMatches(filter, row); });
    };
    const auto all = matches();
    filter.accountNo.Set("800120");
    EXPECT_EQ(matches(), 4);
    filter.exchangeNo.Set("HMX");
    filter.commodityNo.Set("CU");
    EXPECT_EQ(matches(), 3);
    filter.contractNo.Set("241218");
    EXPECT_EQ(matches(), 2);
    filter.price = 9032;
    EXPECT_EQ(matches(), 1);
    filter.direction = 'B';
    EXPECT_EQ(matches(), 0);
    filter.direction = 'S';
    EXPECT_EQ(matches(), 1);
    filter.upperNo.Set("UP001");
    EXPECT_EQ(matches(), 0);
    services.trade.DeleteOrder(1001);
    filter = PositionFilterRecord{};
    EXPECT_EQ(matches(), all - 1) << "a closed row is not shown";
}

}  // namespace
