#include "trade/contract_text.h"

#include "trade/sample_book.h"

#include <gtest/gtest.h>

namespace {

std::string Fields(const ContractKey& key) {
    return key.sign.Str() + "," + key.exchangeNo.Str() + "," + key.commodityType + "," +
           key.commodityNo.Str() + "," + key.contractNo.Str() + "," + key.optionType + key.strikePrice.Str() +
           "," + key.contractNo2.Str() + "," + key.optionType2 + key.strikePrice2.Str();
}

// "" for a refused text.
std::string Parsed(std::string_view text) {
    ContractKey key{};
    return ParseContractText(text, key) ? Fields(key) : "";
}

class ContractTexts : public testing::Test {
protected:
    std::string Text(const ContractKey& key, bool shortForm, bool withName) {
        std::string text;
        EXPECT_TRUE(FormatContractText(key, text, shortForm, withName, trade));
        return text;
    }

    SampleBook book;
    TradeData trade{&book};
};

// Strikes compare as text; without a slash there is no second contract.
TEST_F(ContractTexts, AreReadByShapeAndWrittenBack) {
    struct {
        const char* text;
        const char* fields;     // sign, exchange, type, commodity, contract, option strike, second leg
        const char* shortText;  // null: the text is not what its key is written as
    } const rows[] = {
        // clang-format off
        {"EXA CM", ",EXA,G,CM,,N,,N", nullptr},
        {"EXA CM ", ",EXA,G,CM,,N,,N", ""},
        {"EXA CM(1)", ",EXA,Y,CM(1),,N,,N", nullptr},
        {"EXA CM(1) ", ",EXA,Y,CM(1),,N,,N", ""},
        {"EXA CM 1509", ",EXA,F,CM,1509,N,,N", "1509"},
        {"EXA CM(1) 1509", ",EXA,F,CM(1),1509,N,,N", "1509"},
        {"LME CA 3M", ",LME,F,CA,3M,N,,N", "3M"},
        {"EXA CM 1509/1512", ",EXA,m,CM,1509,N,1512,N", "1509/1512"},
        {"EXA CM 1509/1512/1601", ",EXA,m,CM,1509,N,1512/1601,N", "1509/1512/1601"},
        {"EXA CM /", ",EXA,m,CM,,N,,N", "/"},
        {"EXA CM&CN 1509", ",EXA,c,CM&CN,1509,N,1509,N", "1509"},
        {"EXA CM&CN 1509/1512", ",EXA,c,CM&CN,1509/1512,N,1509/1512,N", "1509/1512"},
        {"EXA CM 1509 C3000", ",EXA,O,CM,1509,C3000,,N", "1509 C3000"},
        {"EXA CM 1509 P3000 ", ",EXA,O,CM,1509,P3000,,N", nullptr},
        {"EXA CM 1509 X3000", ",EXA,O,CM,1509,N3000,,N", nullptr},
        {"EXA CM 1509 C", ",EXA,O,CM,1509,C,,N", "1509 C"},
        {"EXA CM 1509 C3000/1509 C3100", ",EXA,u,CM,1509,C3000,1509,C3100", "1509 C3000/1509 C3100"},
        {"EXA CM 1509 P3100/1509 P3000", ",EXA,e,CM,1509,P3100,1509,P3000", "1509 P3100/1509 P3000"},
        {"EXA CM 1509 C3000/1509 P3000", ",EXA,d,CM,1509,C3000,1509,P3000", "1509 C3000/1509 P3000"},
        {"EXA CM 1509 C3100/1509 P3000", ",EXA,g,CM,1509,C3100,1509,P3000", "1509 C3100/1509 P3000"},
        {"EXA CM 1509 C3000/1512 C3000", ",EXA,l,CM,1509,C3000,1512,C3000", "1509 C3000/1512 C3000"},
        {"EXA CM 1509 P3000/1512 P3000", ",EXA,r,CM,1509,P3000,1512,P3000", "1509 P3000/1512 P3000"},
        {"EXA CM 1509 C1000/1509 C900", ",EXA,u,CM,1509,C1000,1509,C900", "1509 C1000/1509 C900"},
        {"EXCHANGE10 COMMODIT10 CONTRACT10 CSTRIKE_010",
         ",EXCHANGE10,O,COMMODIT10,CONTRACT10,CSTRIKE_010,,N", "CONTRACT10 CSTRIKE_010"},
        // clang-format on
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Parsed(row.text), row.fields) << row.text;
        if (row.shortText) {
            ContractRecord& contract = book.AddContract(row.text);
            contract.contractName.Set("Copper");
            EXPECT_EQ(Text(contract.key, false, false), row.text);
            EXPECT_EQ(Text(contract.key, false, true), row.text) << "the full form never carries the name";
            EXPECT_EQ(Text(contract.key, true, false), row.shortText);
            EXPECT_EQ(Text(contract.key, true, true), std::string(row.shortText) + "\x01" + "Copper");
        }
    }
}

TEST(ContractText, RefusesAndCuts) {
    // clang-format off
    const char* const refused[] = {
        "EXA CM 1509 C900/1509 C1000", "EXA CM 1509 P3000/1509 P3100", "EXA CM 1509 C3000/1509 C3000",
        "EXA CM 1509 P3000/1509 P3000",
        "EXA CM 1509 P3000/1509 C3000", "EXA CM 1509 C3000/1509 P3100", "EXA CM 1509 X3000/1509 X3100",
        "EXA CM 1509 X3000/1512 X3000", "EXA CM 1509 C3000/1509 X3000", "EXA CM 1509 C3000/1512 C3100",
        "EXA CM 1509 C3000/1512 P3000", "EXA CM 1509 C3000 C3000", "", " ", "EXA", "EXA ", " EXA CM",
        "EXA  CM", "EXA CM  1509", "EXA CM  ", "A B C D E F", "A B C D E F ",
    };
    // clang-format on
    for (const char* text : refused) {
        EXPECT_EQ(Parsed(text), "") << text;
    }
    EXPECT_EQ(Parsed("EXCHANGE_ABC COMMODITY_ABC CONTRACT_AB/CONTRACT_CD"),
              ",EXCHANGE_A,m,COMMODITY_,CONTRACT_A,N,CONTRACT_C,N");
    EXPECT_EQ(Parsed(std::string_view("EXA CM 1509 x\0 y", 16)), ",EXA,O,CM,1509,N,,N") << "ends at a zero";
    EXPECT_EQ(Parsed(std::string_view("EXA CM 1509").substr(0, 9)), ",EXA,F,CM,15,N,,N");
}

TEST(ContractText, KeepsTheSignAndFillsFieldsToTheirEnd) {
    ContractKey key{};
    key.sign.Set("S1");
    ASSERT_TRUE(ParseContractText("EXA CM 1509/1512", key));
    EXPECT_EQ(key.sign, "S1");
    ContractKey expected{};
    auto* bytes = reinterpret_cast<char*>(&expected);
    std::memcpy(bytes, "S1", 2);
    std::memcpy(bytes + 21, "EXA", 3);
    bytes[32] = 'm';
    std::memcpy(bytes + 33, "CM", 2);
    std::memcpy(bytes + 44, "1509", 4);
    bytes[66] = 'N';
    std::memcpy(bytes + 67, "1512", 4);
    bytes[89] = 'N';
    EXPECT_EQ(std::memcmp(&key, &expected, 90), 0);
}

TEST_F(ContractTexts, OfAnUnknownContractHasNoNameAndOfAnUnknownTypeIsNone) {
    ContractKey key{};
    ASSERT_TRUE(ParseContractText("EXA CM 1509", key));
    EXPECT_EQ(Text(key, true, true), "1509");
    key = {};
    key.commodityType = 'U';
    std::string text = "before";
    EXPECT_TRUE(FormatContractText(key, text, true, true, trade));
    EXPECT_EQ(text, "before");
    key.commodityType = 'O';
    EXPECT_TRUE(FormatContractText(key, text, true, false, TradeData(nullptr)));
    EXPECT_EQ(text, " ") << "a missing option letter leaves no zero in the text";
    std::memset(&key, 'x', sizeof(key));
    key.commodityType = 'u';
    const std::string leg = std::string(11, 'x') + " x" + std::string(11, 'x');
    EXPECT_EQ(Text(key, true, true), leg + "/" + leg) << "fields without an end are cut";
}

TEST(ContractText, WithSignHasItsOwnTypes) {
    ContractKey key{};
    ASSERT_TRUE(ParseContractText("EXA CM 1509 C3000/1509 P3000", key));
    key.sign.Set("S1");
    for (const char type : std::string_view("FGYOmcueldgrU")) {
        key.commodityType = type;
        std::string text;
        EXPECT_TRUE(FormatContractWithSign(text, FirstLegOf(key)));
        const bool plain = std::string_view("FGY").find(type) != std::string_view::npos;
        EXPECT_EQ(text, type == 'O' ? "S1 EXA CM 1509 C3000" : plain ? "S1 EXA CM 1509" : "") << type;
    }
}

TEST(ContractText, LegsComeInTheOrderInWhichTheyAreQuoted) {
    SampleBook book("S1");
    book.AddExchange("EXA");
    CommodityRecord& commodity = book.AddPair('l', "SP", 1, 'O', "CB", "CC");
    commodity.relatedExchangeNo.Set("EXB");
    commodity.secondExchangeNo.Set("EXC");
    commodity.secondCommodityType = 'F';
    const ContractKey key = book.AddContract("EXA SP 1509 C3000/1512 C3000").key;
    const TradeData trade(&book);
    const auto text = [](const SingleContractKey& leg) {
        return leg.sign.Str() + " " + leg.exchangeNo.Str() + " " + leg.commodityType + leg.commodityNo.Str() +
               " " + leg.contractNo.Str() + leg.optionType + leg.strikePrice.Str();
    };
    SingleContractKey first{}, second{};
    for (const char order : {'0', '1', '2', '\0', 'x'}) {
        commodity.legOrder = order;
        EXPECT_EQ(IsFirstLegFirst(key, trade), order != '2');
        SplitContractLegs(key, first, second, trade);
        EXPECT_EQ(text(order == '2' ? second : first), "S1 EXB OCB 1509C3000") << order;
        EXPECT_EQ(text(order == '2' ? first : second), "S1 EXC FCC 1512C3000") << order;
    }
    book.commodities.clear();
    EXPECT_TRUE(IsFirstLegFirst(key, trade));
    first = second = {};
    SplitContractLegs(key, first, second, trade);
    EXPECT_TRUE(first.contractNo.Empty() && second.contractNo.Empty() && !second.optionType);
}

}  // namespace
