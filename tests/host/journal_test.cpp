#include "host/sample.h"
#include "services/explain.h"
#include "services/service_set.h"

#include <gtest/gtest.h>

namespace {

std::string JournalOf(double price, const char* stamp, const char* time) {
    const std::unique_ptr<Book> book = Sample();
    ServiceSet services(*book, {});
    OrderRecord order = MakeOrder("800101", "NWX F WH 2505", 'B', price, 3, std::string("S_") + stamp + "_1");
    order.inputTime.Set(time);
    order.reserved165[4] = '\x7f';
    order.contract = book->catalogue.FindContract(order.key);
    services.trade.SendOrder(&order);
    services.trade.DeleteOrder(77);
    FillRecord fill = MakeFill(order, FirstLegOf(order.key), 'B', price, 3);
    fill.carryPair = 1;
    services.trade.SendFill(&fill);
    std::string text;
    for (const std::string& line : services.journal.Lines()) {
        text += line + '\n';
    }
    return text;
}

TEST(JournalTest, ALineHoldsFieldsBytesResultAndChanges) {
    const std::string journal = JournalOf(2511, "0317142530123", "2024-03-17 14:25:30");
    const Json line = Json::parse(journal.substr(0, journal.find('\n')));
    EXPECT_EQ(line["operation"], "SendOrder");
    EXPECT_EQ(line["result"], 0);
    EXPECT_EQ(line["fields"]["orderPrice"], 2511.0);
    EXPECT_EQ(line["fields"]["contractNo2"], "");
    EXPECT_EQ(line["fields"]["unnamed"].size(), 1u);
    const std::vector<unsigned char> bytes = FromHex(line["bytes"].get<std::string>());
    ASSERT_EQ(bytes.size(), sizeof(OrderRecord));
    OrderRecord decoded{};
    Json fields = line["fields"];
    fields.erase("unnamed");
    RecordFromJson(OrderLayout(), fields, &decoded);
    decoded.reserved165[4] = '\x7f';
    std::memcpy(&decoded.contract, bytes.data() + offsetof(OrderRecord, contract), sizeof decoded.contract);
    EXPECT_EQ(std::memcmp(&decoded, bytes.data(), sizeof decoded), 0) << "fields and bytes say the same";
    ASSERT_EQ(line["changed"].size(), 1u);
    EXPECT_EQ(line["changed"][0]["id"], "1009");
}

TEST(JournalTest, AnExplanationNamesEveryFieldAndCode) {
    const std::string text =
        Explain({"journal", JournalOf(2511, "0317142530123", "2024-03-17 14:25:30"), {}});
    for (const char* part :
         {"SendOrder -> 0", "direction             'B' buy", "orderType             '2' limit",
          "orderPrice            2511.0", "bytes from 165: 000000007f", "empty or 0: strikePrice",
          "DeleteOrder -> 0 (order 77 does not exist)", "SendFill -> 0",
          "carryPair             byte 1 carry leg", "added fill F00000006",
          "changed position 800101 NWX F WH 2505"}) {
        EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
    }
    const FillRecord fill = MakeFill(MakeOrder("1", "NWX F WH 2505", 'B', 1, 1, "S"), {}, 'S', 5, 2);
    const std::string raw(reinterpret_cast<const char*>(&fill), sizeof fill);
    EXPECT_NE(Explain({"raw", raw, {}}).find("direction             'S' sell"), std::string::npos);
    EXPECT_EQ(Explain({"raw", ToHex(raw.data(), raw.size()), {}}), Explain({"raw", raw, {}}));
    EXPECT_THROW(Explain({"raw", raw, "OrderRecord"}), std::invalid_argument);
    EXPECT_THROW(Explain({"raw", raw.substr(1), {}}), std::invalid_argument);
    EXPECT_THROW(Explain({"journal", "{\"time\": 1}\n", {}}), std::invalid_argument);
}

TEST(JournalTest, AComparisonIgnoresTheClockOnlyWhenAsked) {
    const ExplainInput first{"a", JournalOf(2511, "0317142530123", "2024-03-17 14:25:30"), {}};
    const ExplainInput later{"b", JournalOf(2511, "0318090000001", "2024-03-18 09:00:00"), {}};
    const ExplainInput other{"c", JournalOf(2512, "0317142530123", "2024-03-17 14:25:30"), {}};
    ExplainInput suffix = first;
    suffix.name = "d";
    suffix.content = JournalOf(2511, "0318090000001_2", "2024-03-18 09:00:00");
    EXPECT_EQ(CompareRecords(first, later, true), "");
    EXPECT_NE(CompareRecords(first, later, false).find("request 1: inputTime"), std::string::npos);
    EXPECT_EQ(CompareRecords(first, other, true),
              "request 1: orderPrice: 2511.0 | 2512.0\nrequest 3: fillPrice: 2511.0 | 2512.0\n");
    EXPECT_NE(CompareRecords(first, suffix, true).find("systemNo: S_#_1 | S_#_2_1"), std::string::npos);
}

}  // namespace
