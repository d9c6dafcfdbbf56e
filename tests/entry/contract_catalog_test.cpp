#include "entry/contract_catalog.h"

#include "tests/entry/sample_contracts.h"

#include <gtest/gtest.h>

namespace {

TEST(ContractCatalog, ListsOnlyWhatHasContractsInItsOrder) {
    SampleContracts book;
    book.AddUsualBook();
    EXPECT_EQ(Outline(BuildCatalog(TradeData(&book), "", false)),
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
    EXPECT_EQ(Outline(BuildCatalog(TradeData(&book), "", true)), "LMX[Metal]|LMX \n CA[Copper]|CA F\n");
    EXPECT_TRUE(BuildCatalog(TradeData(nullptr), "", false).empty());
}

TEST(ContractCatalog, TakesTheSignFromTheFirstCommodityWithContracts) {
    SampleContracts book;
    book.group.sign.Set("S1");
    book.AddExchange("EXA", "A");
    book.AddCommodity('F', "AA", "No contracts");
    book.AddCommodity('F', "BB", "Second");
    book.AddContract("1509");
    EXPECT_EQ(Outline(BuildCatalog(TradeData(&book), "", false)), "EXA[A]|EXA S1\n BB[Second]|BB F\n");
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

TEST(ContractCatalog, FindsWhatATextNames) {
    SampleContracts book;
    book.AddUsualBook();
    book.AddCommodity('O', "CA", "Options on copper", "CA");
    book.AddContract("1509 C900");
    const std::vector<CatalogNode> catalog = BuildCatalog(TradeData(&book), "", false);
    const struct {
        const char* text;
        const char* path;  // of the texts
    } rows[] = {
        {"LMX CA 1509", "LMX[Metal]/CA[Copper]/"},  // the future, though the option has this series
        {"LMX CA 1509 C900", "LMX[Metal]/CA[Options on copper]/CA 1509/"},
        {"LMX CA 1509 P9", "LMX[Metal]/CA[Options on copper]/CA 1509/"},
        {"LMX CA", "LMX[Metal]/CA[Copper]/"},
        {"EXA CMO 1512", "EXA[Exchange A]/CMO[Options]/CMO 1512/"},
        {"EXA CMO 1601 C1", "EXA[Exchange A]/CMO[Options]/"},
        {"EXA cm 1509", "EXA[Exchange A]/"},
        {"EXA  1509", "EXA[Exchange A]/"},
        {"EX", ""},
        {"", ""},
    };
    for (const auto& row : rows) {
        std::string path;
        const std::vector<CatalogNode>* nodes = &catalog;
        for (const std::size_t index : FindInCatalog(catalog, row.text)) {
            path += nodes->at(index).text + "/";
            nodes = &nodes->at(index).children;
        }
        EXPECT_EQ(path, row.path) << row.text;
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

TEST(ContractRows, ShowContractsOrStrikesOfTheChoice) {
    using Path = std::vector<std::string_view>;
    const Path options{"CMO 1512", "CMO O", "EXA "}, anyOption{"CMO O", "EXA "};
    const struct {
        Path path;
        bool loads;
        char type;
        int column;
        const char* cells;  // and a blank one behind the last row
    } rows[] = {
        {{"CM F", "EXA "}, true, 'F', 0, "1509;1512;;"},
        {options, true, 'O', 0, "C1000;C900;;"},  // as text, without doubles
        {options, true, 'O', 1, "P1000;P900;;"},
        {options, true, 'O', 2, "N1000;N900;;"},
        {anyOption, false, 'O', 0, ";"},  // an option commodity lists nothing by itself
        {anyOption, false, 'F', 0, ";"},
        {{"CMD 1509", "CMD d", "EXA "}, true, 'd', 0, "C3000/P3000;;"},
        {{"EXA "}, true, 0, 0, ";"},
    };
    SampleContracts book;
    book.AddUsualBook();
    ContractRows shown;
    for (const auto& row : rows) {
        EXPECT_EQ(shown.Load(ReadChoice(row.path), TradeData(&book)), row.loads) << row.cells;
        std::string cells;
        for (std::size_t i = 0; i <= shown.Count(row.type); ++i) {
            cells += shown.Text(row.type, i, row.column) + ";";
        }
        EXPECT_EQ(cells, row.cells);
    }
}

}  // namespace
