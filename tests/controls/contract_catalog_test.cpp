#include "controls/contract_catalog.h"

#include "tests/controls/sample_contracts.h"

#include <gtest/gtest.h>

namespace {

TEST(ContractCatalog, ListsOnlyWhatHasContractsInItsOrder) {
    SampleContracts book;
    book.AddUsualBook();
    EXPECT_EQ(Outline(BuildCatalog(TradeData(&book.api), "", false)),
              "EXA[Exchange A]|EXA \n"
              " CM[Goods]|CM G\n"
              " CM[Copper]|CM F\n"
              " CMO[Options]|CMO O\n"
              "  CMO 1509|CMO 1509\n"
              "  CMO 1512|CMO 1512\n"
              " CMD[Straddles]|CMD d\n"
              "  CMD 1509|CMD 1509\n"
              "LMX[Metal]|LMX \n"
              " CA[Copper]|CA F\n");
    EXPECT_EQ(Outline(BuildCatalog(TradeData(&book.api), "", true)), "LMX[Metal]|LMX \n CA[Copper]|CA F\n");
    EXPECT_TRUE(BuildCatalog(TradeData(nullptr), "", false).empty());
}

TEST(ContractCatalog, TakesTheSignFromTheFirstCommodityWithContracts) {
    SampleContracts book;
    book.AddExchange("EXA", "A");
    book.AddCommodity('F', "AA", "No contracts");
    book.AddCommodity('F', "BB", "Second");
    ContractRecord& contract = book.AddContract("1509");
    for (FixedText<21>* sign : {&book.api.commodities.front()->sign, &book.api.commodities.back()->sign,
                                &contract.key.sign, &book.api.exchanges.back()->sign}) {
        sign->Set("S1");
    }
    const auto catalog = BuildCatalog(TradeData(&book.api), "", false);
    ASSERT_EQ(catalog.size(), 1u);
    EXPECT_EQ(catalog[0].data, "EXA S1");
}

TEST(ContractCatalog, OrdersTheProductsBehindTheirBase) {
    CommodityRecord commodity{};
    commodity.commodityNo.Set("OWN");
    commodity.relatedCommodityNo.Set("LEG");
    commodity.secondCommodityNo.Set("TWO");
    const std::pair<char, const char*> rows[] = {
        {'G', "OWN$1"}, {'F', "OWN$2"}, {'m', "LEG$3"}, {'c', "LEGTWO$4"}, {'O', "LEG$5"}, {'u', "LEG$6"},
        {'e', "LEG$7"}, {'d', "LEG$8"}, {'g', "LEG$9"}, {'Y', ""},         {'l', ""}};
    for (const auto& [type, key] : rows) {
        commodity.commodityType = type;
        EXPECT_EQ(CommodityOrderKey(commodity), key) << type;
    }
}

TEST(ContractCatalog, ClicksSendContractTexts) {
    const struct {
        std::vector<std::string_view> path;
        const char *treeText, *cell, *listText, *sign;
    } rows[] = {
        {{"EXA S1"}, "EXA ", "", "EXA  ", "S1"},
        {{"EXA "}, "EXA ", "x", "EXA  x", ""},
        {{"EXA"}, "EXA ", "x", "EXA  x", ""},
        {{"CM F", "EXA S 1"}, "EXA CM", "1509", "EXA CM 1509", "S 1"},
        {{"LONGERTHAN10 F", "EXA S1"}, "EXA LONGERTHAN", "1509", "EXA LONGERTHAN 1509", "S1"},
        {{"CM O", "EXA S1"}, "EXA CM ", "", "EXA CM  ", "S1"},
        {{"CM 1509", "CM O", "EXA S1"}, "EXA CM 1509", "C3000", "EXA CM 1509 C3000", "S1"},
        {{"CM 1509", "CM d", "EXA S1"}, "EXA CM", "C30/P30", "EXA CM 1509 C30/1509 P30", "S1"},
        {{"CM 1509", "CM u", "EXA S1"}, "EXA CM", "", "EXA CM 1509 /1509 ", "S1"},
        {{}, " ", "", "  ", ""},
    };
    for (const auto& row : rows) {
        const ContractChoice choice = ReadChoice(row.path);
        EXPECT_EQ(TreeClickText(choice), row.treeText);
        EXPECT_EQ(ListClickText(choice, row.cell), row.listText);
        EXPECT_EQ(choice.sign, row.sign) << row.treeText;
    }
}

std::string Cells(const ContractRows& rows, char type, int column) {
    std::string cells;
    for (std::size_t row = 0; row < rows.Count(type); ++row) {
        cells += rows.Text(type, row, column) + ";";
    }
    return cells;
}

TEST(ContractRows, ShowContractsOrStrikesOfTheChoice) {
    SampleContracts book;
    book.AddUsualBook();
    const TradeData trade(&book.api);
    ContractRows rows;
    const auto load = [&](std::vector<std::string_view> path) { return rows.Load(ReadChoice(path), trade); };

    EXPECT_TRUE(load({"CM F", "EXA "}));
    EXPECT_EQ(Cells(rows, 'F', 0), "1509;1512;");
    EXPECT_TRUE(load({"CMO 1512", "CMO O", "EXA "}));
    EXPECT_EQ(Cells(rows, 'O', 0), "C1000;C900;") << "as text, without doubles";
    EXPECT_EQ(Cells(rows, 'O', 1), "P1000;P900;");
    EXPECT_EQ(rows.Text('O', 0, 2), "N1000");
    EXPECT_EQ(rows.Text('O', 2, 0), "");
    EXPECT_TRUE(load({"CMD 1509", "CMD d", "EXA "}));
    EXPECT_EQ(Cells(rows, 'd', 0), "C3000/P3000;");
    EXPECT_FALSE(load({"CMO O", "EXA "})) << "an option commodity lists nothing by itself";
    EXPECT_EQ(rows.Count('O') + rows.Count('F'), 0u);
    EXPECT_TRUE(load({"EXA "}));
    EXPECT_EQ(rows.Count(0), 0u);
}

}  // namespace
