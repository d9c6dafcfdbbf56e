#include "book/large_book.h"
#include "book/price_format.h"
#include "host/sample.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <tuple>

namespace {

// The text with one part of it replaced; both parts are written with ' for ".
std::string Replaced(std::string text, std::string what, std::string by) {
    std::replace(what.begin(), what.end(), '\'', '"');
    std::replace(by.begin(), by.end(), '\'', '"');
    const std::size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos) << what;
    return at == std::string::npos ? text : text.replace(at, what.size(), by);
}

TEST(BookFileTest, ABadBookIsRefusedWithPlaceAndReason) {
    using Text = const char*;
    const std::tuple<Text, Text, Text, Text> rows[] = {
        {"'format'", "'fromat'", "/", "'format' is missing"},
        {"emendo-book-1", "emendo-book-2", "/", "no book of format"},
        {"'servers': [", "'servers': [,", "line 8, column 14", "unexpected"},
        {"'port': 7001", "'port': 70010", "/servers/0/port", "whole number"},
        {"'group': 'hq-desk'", "'group': 'hq-dusk'", "/accounts/0", "group 'hq-dusk'"},
        {"'accountNo': '800102'", "'accountNo': '800101'", "/accounts/1", "declared twice"},
        {"'800101'", "'800101800101800101800101'", "/accounts/0/accountNo", "longer than 20"},
        {"'UP001'", "'\u4e0a\u624b'", "/uppers/0/upperNo", "no code may have"},
        {"'tickNumerator': 1,", "'tickNumerator': 0,", "/exchanges/0/commodities/0", "tick above 0"},
        {"r': 8", "r': -8", "/exchanges/1/commodities/0/tickDenominator", "whole number"},
        {"'legOrder': '0'", "'legOder': '0'", "/exchanges/0/commodities/0", "'legOder' is not known"},
        {"'commodityType': 'F'", "'commodityType': 'Q'", "/exchanges/0/commodities/0", "unknown type"},
        {"0/2503 C2500'", "0/2503 C2400'", "/exchanges/0/commodities/9/contracts/0", "no contract of"},
        {"'2503', '2505'", "'2503', '2503'", "/exchanges/0/commodities/0/contracts/2", "declared twice"},
        {"'F', 'commodityNo': 'WH'}", "'F', 'commodityNo': 'WX'}", "/exchanges", "'WX' that is not"},
        {"2505', 'direction'", "2599', 'direction'", "/positions/0/contract", "not declared"},
        {"'openQty': 12", "'openQty': 0", "/positions/0/openQty", "whole number"},
        {"'orderNo': 1002, 'orderType'", "'orderNo': 1001, 'orderType'", "/orders/1", "used twice"},
        {"'orderQty': 5", "'orderQty': 4", "/fills/0", "beyond its quantity"},
        {"'fillQty': 5", "'fillQty': 0", "/fills/0", "no quantity"},
        {"'restState': '4'", "'restState': '6'", "/orders/0", "restState"},
        {"'orderNo': 1001, 'sequence'", "'orderNo': 1999, 'sequence'", "/fills/0", "1999 does not exist"},
        {"{'order': 1009", "{'order': 1008", "/nextNumbers", "not above order 1008"},
        {"'fill': 6", "'fill': 5", "/nextNumbers", "not above fill"},
    };
    std::ifstream file(kSampleBook, std::ios::binary);
    const std::string sample(std::istreambuf_iterator<char>(file), {});
    for (const auto& [what, by, place, reason] : rows) {
        SCOPED_TRACE(by);
        try {
            ReadBookText(Replaced(sample, what, by), "book.json");
            ADD_FAILURE() << "was accepted";
        } catch (const BookFileError& error) {
            EXPECT_EQ(error.file, "book.json");
            EXPECT_EQ(error.place, place) << error.what();
            EXPECT_NE(error.reason.find(reason), std::string::npos) << error.what();
        }
    }
    EXPECT_THROW(ReadBookFile("no/such/book.json"), BookFileError);
    EXPECT_THROW(ReadBookText("", "book.json"), BookFileError);
}

TEST(BookFileTest, ASavedBookIsTheSameBookAndReplacesTheOldOneWhole) {
    const std::unique_ptr<Book> book = Sample();
    const std::string path = testing::TempDir() + "emendo_book_test.json";
    for (const std::uint32_t deleted : {1001, 1002}) {
        WriteBookFile(*book, path);
        EXPECT_TRUE(BookText(*ReadBookFile(path)) == BookText(*book)) << deleted;
        EXPECT_FALSE(std::ifstream(path + ".new").is_open()) << "the draft is gone";
        ASSERT_TRUE(book->ledger.DeleteOrder(deleted).Accepted());
    }
    EXPECT_THROW(WriteBookFile(*book, "no/such/folder/book.json"), BookFileError);
    std::remove(path.c_str());
}

TEST(BookFileTest, ALargeBookIsSoundAndItsRecordsStayWhereTheyAre) {
    const std::unique_ptr<Book> book = MakeLargeBook(200, 3, 40, 2000);
    const ContractKey anySign = KeyOf("", "X1 F C7 00023");
    ContractRecord* contract = book->catalogue.FindContract(anySign);
    ASSERT_TRUE(contract);
    EXPECT_EQ(contract->commodity->commodityNo.View(), "C7");
    EXPECT_EQ(book->catalogue.ContractsOf(CommodityOf(anySign)).size(), 50u);
    EXPECT_TRUE(BookText(*ReadBookText(BookText(*book), "large")) == BookText(*book));
    book->catalogue.AddContract(KeyOf(contract->key.sign.Str(), "X1 F C7 NEW"), "");
    EXPECT_EQ(book->catalogue.FindContract(anySign), contract);
}

TEST(PriceFormatTest, PricesInTheNotationOfTheCommodity) {
    const std::tuple<double, std::uint32_t, double, const char*> rows[] = {
        {1, 1, 97, "97"},
        {0.5, 1, 97, "97.0"},
        {0.005, 1, 104.215, "104.215"},
        {1, 1, 97.25, "97.25"},
        {0.1, 1, 0.1 * 3, "0.3"},
        {2, 8, 97.375, "97+3/8"},
        {1, 4, -1.25, "-2+3/4"},
        {1, 8, 97.9999999999, "98"},
        {1, 8, 97.251, "97.251"},
        {1, 3, 10 + 2 / 3.0, "10+2/3"},
        {1, 1, -0.0, "0"},
    };
    for (const auto& [tick, denominator, price, text] : rows) {
        CommodityRecord commodity{};
        commodity.tickNumerator = tick;
        commodity.tickDenominator = denominator;
        EXPECT_EQ(PriceText(price, &commodity), text);
        EXPECT_NEAR(ReadPriceText(text).value_or(-1), price, 1e-9) << text;
    }
    for (const char* bad : {"", "x", "97+", "97+3", "97+3/", "97+3/0", "97+/8", "+", "1e999", "97 "}) {
        EXPECT_FALSE(ReadPriceText(bad)) << bad;
    }
}

}  // namespace
