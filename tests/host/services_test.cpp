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

TEST_F(ServicesTest, AMissingRecordAndAnotherFillNumberAreRefused) {
    HostTradeService& trade = services.trade;
    EXPECT_FALSE(services.manager.GetPlugin("TradeApi", "1.0.0.2"));
    EXPECT_NE(trade.SendOrder(nullptr), 0);
    EXPECT_NE(trade.SendFill(nullptr), 0);
    EXPECT_NE(trade.SendExercise(nullptr), 0);
    EXPECT_EQ(trade.DeleteOrder(0), 0) << "here zero is the failure";
    EXPECT_EQ(trade.DeleteOrder(1002), 1);
    FillRecord fill = book->ledger.FindFill("F00000001")->record;
    fill.fillNo.Set("F00000003");
    EXPECT_NE(trade.RemoveFill("F00000001", &fill), 0);
    fill.fillNo.Set("F00000001");
    EXPECT_EQ(trade.RemoveFill("F00000001", &fill), 0);
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
    const std::pair<void (*)(PositionFilterRecord&), int> rows[] = {
        {[](PositionFilterRecord& to) { to.accountNo.Set("800120"); }, 4},
        {[](PositionFilterRecord& to) { to.exchangeNo.Set("HMX"); }, 4},
        {[](PositionFilterRecord& to) { to.commodityNo.Set("CU"); }, 3},
        {[](PositionFilterRecord& to) { to.contractNo.Set("241218"); }, 2},
        {[](PositionFilterRecord& to) { to.price = 9032; }, 1},
        {[](PositionFilterRecord& to) { to.direction = 'B'; }, 0},
        {[](PositionFilterRecord& to) { to.direction = 'S'; }, 1},
        {[](PositionFilterRecord& to) { to.upperNo.Set("UP001"); }, 0},
    };
    for (const auto& [narrow, expected] : rows) {
        narrow(filter);
        const auto& all = book->ledger.AllPositions().Rows();
        EXPECT_EQ(std::count_if(all.begin(), all.end(),
                                [&](const PositionEntry& row) { return PositionMatches(filter, row); }),
                  expected);
    }
    PositionEntry closed{};
    EXPECT_FALSE(PositionMatches(PositionFilterRecord{}, closed));
}

}  // namespace
