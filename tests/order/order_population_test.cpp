#include "order/order_population.h"

#include "order/order_fixture.h"
#include "trade/fake_config.h"

#include <sstream>

namespace {

using Items = std::vector<std::string>;

class OrderPopulation : public OrderTest {
protected:
    OrderPopulation() {
        ServerConfigRecord& server = config.configs.emplace_back();
        server.name.Set("Main");
        server.address.Set("10.0.0.1");
        server.port = 80;
        config.count = 1;
        api.AddUpper("U7");
    }
    FakeConfig config;
    TradeData configured{&api, &config};
};

TEST_F(OrderPopulation, AccountsStandInOrderAndGiveTheirSign) {
    GroupRecord other = group;
    other.sign.Set("ANO");
    other.operatorNo.Set("OP2");
    GroupRecord closed = group;
    closed.tradable = 'N';
    user.group = &other;
    user.accountName.Set("First");
    api.AddUser("050").group = &closed;
    api.AddUser("060").group = nullptr;
    api.users.insert(api.users.begin(), {&api.AddUser("200", "Late"), nullptr});
    api.users.pop_back();
    ServerRecord server{};
    server.address.Set("10.0.0.1");
    server.port = 80;
    api.server = &server;

    OrderForm form;
    EXPECT_TRUE(ListAccounts(form, trade).empty()) << "no server is configured";
    form.accounts = ListAccounts(form, configured);
    ASSERT_EQ(form.accounts.size(), 2u);
    EXPECT_EQ(form.accounts[0].accountNo + form.accounts[0].accountName, "100First");
    EXPECT_EQ(form.accounts[0].serverName, "Main");
    EXPECT_EQ(form.accounts[0].operatorNo, "OP2");

    form.accounts.push_back({"200", "Other sign", "", "", "XYZ"});
    const struct {
        int index;
        const char* accountNo;
        const char* taken;
    } rows[] = {{1, "100", ""},  // a line of another row
                {3, "200", ""},       {-1, "", ""},
                {1, "200", "200SIG"}, {FindAccountRow(form, "20"), "20", "200SIG"},
                {0, "100", "100ANO"}, {2, "200", "200XYZ"}};
    for (const auto& row : rows) {
        TakeAccount(form, row.index, row.accountNo);
        EXPECT_EQ(form.account + form.sign, row.taken) << row.index;
    }
    EXPECT_EQ(FindAccountRow(form, "200"), 2) << "the account's own sign";
    EXPECT_EQ(FindAccountRow(form, "100"), 0);
    form.account = "100";
    EXPECT_EQ(FindAccountRow(form, "200"), 1);
    EXPECT_EQ(FindAccountRow(form, "100"), -1) << "not under the sign that it was loaded with";
}

TEST_F(OrderPopulation, AccountGateShutsListsAndAccount) {
    api.AddCurrency("CNY");
    api.AddCurrency("usd");
    struct {
        const char* account;
        char tradable, lock;
        bool hasGroup, open, mayChange;
    } const rows[] = {
        {"", 'N', 'c', true, true, true},     {"100", 'Y', 0, true, true, true},
        {"100", 'N', 0, true, false, true},   {"100", 'Y', 'c', true, true, false},
        {"100", 'Y', 0, false, false, false}, {"101", 'Y', 0, true, false, false},
    };
    for (const auto& row : rows) {
        group.tradable = row.tradable;
        group.accountLock = row.lock;
        user.group = row.hasGroup ? &group : nullptr;
        OrderForm form = Entry();
        form.account = row.account;
        EXPECT_EQ(MayChangeAccount(form, trade), row.mayChange) << row.account << row.tradable;
        EXPECT_EQ(PreferredCurrency(ListCurrencies(form, trade)), row.open ? "usd" : "");
        EXPECT_EQ(ListUppers(form, trade), row.open ? Items{"U7 Clearing"} : Items{});
        EXPECT_EQ(ListForwardContracts(form, trade).has_value(), row.open);
    }
}

TEST_F(OrderPopulation, SecondContractsAreTheCommoditysOwnOrTheUnderlyings) {
    api.contracts[3]->contractName.Set("March copper");
    OrderForm form = CarryEntry("240329", "");
    const auto forward = ListForwardContracts(form, trade);
    ASSERT_TRUE(forward);
    EXPECT_EQ(forward->at(1), "240315\1March copper");
    EXPECT_EQ(ContractNoOfLine(forward->at(1)), "240315");
    const Items futures = *forward;

    form = Entry(OrderMode::Exercise, "EXA CO 240315 C3000");
    EXPECT_EQ(*ListForwardContracts(form, trade), futures);
    form.commodityNo = "ZZ";
    EXPECT_TRUE(ListForwardContracts(form, trade)->empty());
    form.commodityNo = "";
    EXPECT_FALSE(ListForwardContracts(form, trade));
}

TEST_F(OrderPopulation, NewOrderHasDefaults) {
    OrderForm form;
    LoadRecord(form, trade);
    EXPECT_EQ((std::string{form.orderState, form.source, form.validType, form.orderType}), "4E02");
    EXPECT_EQ(form.upper, "U7");
    EXPECT_EQ(ShownContract(form), std::nullopt);
}

TEST_F(OrderPopulation, OriginalOrderIsTakenOver) {
    OrderForm form;
    form.original = &ServerOrder("EXA FR 1509");
    original.orderType = '4';
    original.orderState = 'A';
    original.orderSource = 'M';
    original.validType = '2';
    original.forcedClose = 'Y';
    original.fillQty = 4;
    original.validUntil.Set("2026-12-31 15:00:00");
    api.priceText = "97+3/8";
    LoadRecord(form, trade);
    const auto line = [&] {
        std::ostringstream text;
        for (const std::string& part :
             {form.account, form.sign, form.upper, form.systemNo, form.contractText, form.contractNo}) {
            text << part << '|';
        }
        text << form.orderType << form.orderState << form.source << form.validType << form.direction
             << form.forcedClose << form.orderQty << form.fillQty << '|' << form.validUntil.tm_mon << ' '
             << form.validUntil.tm_hour;
        for (const PriceRow* row : {&form.orderPrice, &form.triggerPrice, &form.fillPrice}) {
            text << '|' << row->whole << '+' << row->numerator << '/' << form.denominator;
        }
        return text.str();
    };
    const std::string start = "100|SIG|U7|S_OLD|EXA FR 1509|1509|4AM2S154|11 15";
    EXPECT_EQ(line(), start + "|97+3/8|97+3/8|97+3/8");
    api.priceText = "97.375";
    original.validUntil.Set("");
    LoadRecord(form, trade);
    EXPECT_EQ(line(), start + "|97.375+0/1|97.375+0/1|97.375+0/1") << "without a date the picker stays";
}

TEST_F(OrderPopulation, DenominatorIsTheOrderPricesUntilAnotherPriceNamesOne) {
    // A host that formats one price after the other.
    struct : FakeTradeApi {
        std::deque<std::string> texts;
        void FormatPrice(const void*, double, char* buffer, int, int, char) override {
            std::strcpy(buffer, texts.front().c_str());
            texts.pop_front();
        }
    } formatter;
    for (const auto& [texts, denominator] :
         {std::pair{std::deque<std::string>{"97+3/8", "96", "0"}, 8}, {{"97", "96+1/4", "0"}, 4}}) {
        formatter.texts = texts;
        OrderForm form = Correction(OrderMode::Modify);
        form.denominator = 32;
        LoadRecord(form, TradeData(&formatter));
        EXPECT_EQ(form.denominator, denominator);
    }
}

TEST_F(OrderPopulation, ShowsContractsOfEveryType) {
    for (const char* text : {"EXA CM ", "EXA CM(1) ", "EXA CM 1509/1512", "EXA CM&CN 1509",
                             "EXA CM 1509 C3000", "EXA CM 1509 C3100/1509 P3000"}) {
        OrderForm form;
        form.original = &ServerOrder(text);
        LoadRecord(form, trade);
        EXPECT_EQ(form.contractText, text);
        OrderForm typed = Entry(OrderMode::Input, "EXB ZZ 1601");
        EXPECT_TRUE(TakeContract(typed, text, trade));
        EXPECT_EQ(typed.contractText, text);
        EXPECT_EQ(ShownContract(typed), text);
        EXPECT_FALSE(TakeContract(typed, "EXA", trade));
        EXPECT_EQ(ShownContract(typed), text);
    }
}

TEST_F(OrderPopulation, NumbersCarryTheClock) {
    OrderForm form = Entry();
    GenerateNumbers(form, clock.now);
    EXPECT_EQ(form.systemNo, "S_0304050607089");
    EXPECT_EQ(form.exchangeFillNo, "M_0304050607089");
    form = Entry(OrderMode::Modify);
    GenerateNumbers(form, clock.now);
    EXPECT_EQ(form.systemNo + form.exchangeFillNo, "S_1M_0304050607089");
    form = Entry(OrderMode::Move);
    PrepareNextOrder(form, clock.now);
    EXPECT_EQ(form.systemNo + form.exchangeFillNo, "S_1M_3");
    EXPECT_EQ(form.orderQty, 0);
}

TEST_F(OrderPopulation, QuantitiesFollowEachOther) {
    EXPECT_EQ(FillQtyOfOrderQty(OrderMode::Input, '6', 7), 7);
    EXPECT_EQ(FillQtyOfOrderQty(OrderMode::Modify, '6', 7), std::nullopt);
    EXPECT_EQ(FillQtyOfOrderQty(OrderMode::Input, '5', 7), std::nullopt);
    EXPECT_TRUE(ForwardQtyFollows(OrderMode::Carry, 0));
    EXPECT_TRUE(ForwardQtyFollows(OrderMode::Input, '6'));
    EXPECT_FALSE(ForwardQtyFollows(OrderMode::Input, 'A'));
}

}  // namespace
