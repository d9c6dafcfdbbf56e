#include "host/sample.h"
#include "services/position_filter.h"
#include "services/service_set.h"
#include "trade/data_container.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

class ServicesTest : public testing::Test {
protected:
    // The entries of a list query; a null one counts too.
    template <typename Query>
    std::vector<void*> List(Query query) {
        CDataContainer list;
        query(&list);
        std::vector<void*> records;
        for (std::uint32_t i = 0; i < list.Count(); ++i) {
            records.push_back(list.At(i));
        }
        return records;
    }
    std::size_t UserCount(const char* sign) {
        return List([&](IDataContainer* list) { Api().GetUsers(list, sign); }).size();
    }
    ITradeApi& Api() { return m_services.api; }

    std::unique_ptr<Book> m_book = Sample();
    ServiceSet m_services{*m_book, {}};
};

TEST_F(ServicesTest, AnEmptySignMeansAnyAndKeysAreReadAsTheModuleWritesThem) {
    EXPECT_EQ(UserCount(""), 12u);
    EXPECT_EQ(UserCount("COAST"), 3u);
    EXPECT_EQ(UserCount("NOWHERE"), 0u);
    EXPECT_TRUE(Api().GetUser("860001", ""));
    EXPECT_FALSE(Api().GetUser("860001", "HQ"));

    // Option types left 0, no sign, and a field with old text behind its terminator.
    ContractKey key{};
    std::memcpy(key.exchangeNo.chars, "HMX\0old", 8);
    key.commodityType = 'F';
    key.commodityNo.Set("CU");
    key.contractNo.Set("250318");
    ASSERT_TRUE(Api().GetContract(&key));
    EXPECT_EQ(Api().GetCommodity(&key)->rollingCode, 'U');
    key.sign.Set("OLD");
    EXPECT_EQ(Api().GetContract(&key)->key.sign.View(), "OLD");
    key.sign.Set("NOWHERE");
    EXPECT_FALSE(Api().GetContract(&key));
    EXPECT_EQ(List([&](IDataContainer* list) { Api().GetContracts(&key, list); }).size(), 0u);

    key.sign.Set("HQ");
    key.contractNo.Set("3M");
    std::uint32_t bought = 1;
    std::uint32_t sold = 1;
    const SingleContractKey leg = FirstLegOf(key);
    Api().GetPositionQty("800120", &leg, &bought, &sold, nullptr, nullptr);
    EXPECT_EQ(bought, 8u) << "3M counts as its date";
    EXPECT_EQ(sold, 0u);
    EXPECT_TRUE(Api().GetPosition("800120", &key, 'B', "9101.5"));
    EXPECT_FALSE(Api().GetPosition("800120", &key, 'B', "9101"));
    EXPECT_STREQ(Api().Get3MContractNo("HQ"), "250318");
    EXPECT_STREQ(Api().Get3MContractNo("OLD"), "3M");
    EXPECT_STREQ(Api().Get3MContractNo("NOWHERE"), "3M");
}

TEST_F(ServicesTest, NullArgumentsAreUnknownOnes) {
    EXPECT_FALSE(Api().GetUser(nullptr, nullptr));
    EXPECT_FALSE(Api().GetExchange(nullptr));
    EXPECT_FALSE(Api().GetCommodity(nullptr));
    EXPECT_FALSE(Api().GetContract(nullptr));
    EXPECT_FALSE(Api().GetPosition(nullptr, nullptr, 'B', nullptr));
    EXPECT_FALSE(Api().GetUserServer("HQ-A", nullptr));
    Api().GetPositionQty(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    Api().GetUsers(nullptr, nullptr);
    Api().GetContracts(nullptr, nullptr);
    Api().FormatPrice(nullptr, 1, nullptr, 0, 0, 'D');
    Api().RegisterSpi(nullptr);
    Api().UnregisterSpi(nullptr);
    EXPECT_FALSE(m_services.manager.GetPlugin(nullptr, "1.0.0.1"));
    EXPECT_FALSE(m_services.manager.GetPlugin("TradeApi", "1.0.0.2"));
    EXPECT_EQ(m_services.manager.GetPlugin("TradeApi", "1.0.0.1"),
              static_cast<ITradeService*>(&m_services.trade));
    EXPECT_NE(m_services.trade.SendOrder(nullptr), 0);
    EXPECT_NE(m_services.trade.SendFill(nullptr), 0);
    EXPECT_NE(m_services.trade.RemoveFill(nullptr, nullptr), 0);
    EXPECT_NE(m_services.trade.SendExercise(nullptr), 0);
    EXPECT_EQ(m_services.trade.DeleteOrder(0), 0) << "here zero is the failure";
    EXPECT_EQ(m_services.trade.DeleteOrder(1001), 1);
}

TEST_F(ServicesTest, PricesAreWrittenInBothNotationsAndCutToTheBuffer) {
    const ContractKey key = KeyOf("HQ", "BRX F CO 2503");
    char text[100] = "untouched";
    Api().FormatPrice(&key, 451.25, text, sizeof text, 0, 'D');
    EXPECT_STREQ(text, "451+2/8");
    Api().FormatPrice(&key, 451.25, text, sizeof text, 0, 'N');
    EXPECT_STREQ(text, "451.25");
    Api().FormatPrice(&key, 451.25, text, 4, 0, 'D');
    EXPECT_STREQ(text, "451");
}

TEST_F(ServicesTest, TheServerOfAnAccountIsAConfigurationByAddressAndPort) {
    UserRecord* user = Api().GetUser("800103", "HQ");
    ASSERT_TRUE(user);
    const ServerRecord* server = Api().GetUserServer(user->serverKey.chars, user);
    ASSERT_TRUE(server);
    ConfigQuery query{kConfigTradeServers, 0, nullptr};
    IConfigTable* table = m_services.config.GetConfigTable();
    ASSERT_EQ(table->Query(&query), 0);
    ASSERT_EQ(query.count, 3u);
    const auto* rows = static_cast<const ServerConfigRecord*>(query.records);
    EXPECT_EQ(rows[1].address.View(), server->address.View());
    EXPECT_EQ(rows[1].port + 0, server->port + 0u);
    table->Release(&query);
    EXPECT_EQ(m_services.config.Table().Outstanding(), 0u);
    query.requestType = 1;
    EXPECT_NE(table->Query(&query), 0);
}

TEST_F(ServicesTest, AFaultStrikesTheCallsItIsSetFor) {
    int slept = 0;
    int destroyed = 0;
    m_services.faults.sleep = [&](unsigned milliseconds) { slept += static_cast<int>(milliseconds); };
    m_services.faults.destroyParent = [&] { ++destroyed; };
    m_services.faults.Set("GetUser null at 2 for 1");
    EXPECT_TRUE(Api().GetUser("800101", "HQ"));
    EXPECT_FALSE(Api().GetUser("800101", "HQ"));
    EXPECT_TRUE(Api().GetUser("800101", "HQ"));
    m_services.faults.Set("GetUser slow 70 at 1 for 1");
    m_services.faults.Set("GetContract destroy-parent at 2");
    EXPECT_TRUE(Api().GetUser("800101", "HQ")) << "slow, but right";
    EXPECT_EQ(slept, 70);
    const ContractKey key = KeyOf("HQ", "NWX F WH 2505");
    for (int call = 0; call < 3; ++call) {
        EXPECT_TRUE(Api().GetContract(&key));
    }
    EXPECT_EQ(destroyed, 2);

    m_services.faults.Set("GetUsers empty");
    EXPECT_EQ(UserCount(""), 0u);
    m_services.faults.Set("GetUsers null");
    const auto users = List([&](IDataContainer* list) { Api().GetUsers(list, "COAST"); });
    ASSERT_EQ(users.size(), 4u);
    EXPECT_FALSE(users[0]);
    m_services.faults.Set("GetUser unterminated");
    const UserRecord* broken = Api().GetUser("800101", "HQ");
    ASSERT_TRUE(broken);
    EXPECT_EQ(broken->accountName.View().size(), 26u);
    EXPECT_EQ(broken->group->operatorNo.View().size(), 21u);
    m_services.faults.Clear();
    EXPECT_EQ(Api().GetUser("800101", "HQ")->accountNo.View(), "800101");

    const std::string before = BookText(*m_book);
    m_services.faults.Set("DeleteOrder fail");
    EXPECT_EQ(m_services.trade.DeleteOrder(1001), 0);
    EXPECT_TRUE(BookText(*m_book) == before);

    for (const char* bad : {"", "SendOrder", "SendOrders fail", "SendOrder explode", "SendOrder slow",
                            "SendOrder fail at", "SendOrder fail at 0", "SendOrder fail twice"}) {
        EXPECT_THROW(m_services.faults.Set(std::string_view(bad)), std::invalid_argument) << bad;
    }
}

TEST_F(ServicesTest, APositionFilterLeavesOutWhatDiffersInAnythingItGives) {
    PositionFilterRecord filter{};
    const auto matches = [&] {
        int count = 0;
        for (const PositionEntry& row : m_book->ledger.AllPositions().Rows()) {
            count += PositionMatches(filter, row);
        }
        return count;
    };
    const int all = matches();
    filter.accountNo.Set("800120");
    EXPECT_EQ(matches(), 4);
    filter.exchangeNo.Set("HMX");
    filter.commodityNo.Set("CU");
    EXPECT_EQ(matches(), 3);
    filter.contractNo.Set("241218");
    filter.direction = 'S';
    EXPECT_EQ(matches(), 2);
    filter.price = 9032;
    EXPECT_EQ(matches(), 1);
    filter.upperNo.Set("UP001");
    EXPECT_EQ(matches(), 0);
    m_services.trade.DeleteOrder(1001);
    filter = PositionFilterRecord{};
    EXPECT_EQ(matches(), all - 1) << "a closed row is not shown";
}

}  // namespace
