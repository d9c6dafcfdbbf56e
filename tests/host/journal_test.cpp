#include "host/sample.h"
#include "services/explain.h"
#include "services/service_set.h"

#include <gtest/gtest.h>

namespace {

// An order, a removal that is refused, and the order's fill, as made at a time.
ExplainInput JournalOf(double price, const std::string& stamp, const char* time = "2024-03-17 14:25:30") {
    const std::unique_ptr<Book> book = Sample();
    ServiceSet services(*book, {});
    OrderRecord order = MakeOrder("800101", "NWX F WH 2505", 'B', price, 3, "S_" + stamp + "_1");
    order.inputTime.Set(time);
    order.reserved165[4] = '\x7f';
    order.contract = book->catalogue.FindContract(order.key);
    services.trade.SendOrder(&order);
    services.trade.DeleteOrder(77);
    FillRecord fill = MakeFill(order);
    fill.carryPair = 1;
    services.trade.SendFill(&fill);
    std::string text;
    for (const std::string& line : services.journal.Lines()) {
        text += line + '\n';
    }
    return {"journal", text, {}};
}

TEST(JournalTest, ALineHoldsFieldsBytesResultAndChanges) {
    const std::string journal = JournalOf(2511, "0317142530123").content;
    const Json line = Json::parse(journal.substr(0, journal.find('\n')));
    EXPECT_EQ(line["operation"], "SendOrder");
    EXPECT_EQ(line["result"], 0);
    EXPECT_EQ(line["fields"]["contractNo2"], "");
    Json fields = line["fields"];
    EXPECT_EQ(fields["unnamed"].size(), 1u);
    fields.erase("unnamed");
    const std::vector<unsigned char> bytes = FromHex(line["bytes"].get<std::string>());
    ASSERT_EQ(bytes.size(), sizeof(OrderRecord));
    OrderRecord decoded{};
    RecordFromJson(OrderLayout(), fields, &decoded);
    decoded.reserved165[4] = '\x7f';
    std::memcpy(&decoded.contract, bytes.data() + offsetof(OrderRecord, contract), sizeof decoded.contract);
    EXPECT_EQ(std::memcmp(&decoded, bytes.data(), sizeof decoded), 0) << "fields and bytes say the same";
    ASSERT_EQ(line["changed"].size(), 1u);
    EXPECT_EQ(line["changed"][0]["id"], "1009");
}

TEST(JournalTest, AnExplanationNamesEveryFieldAndCode) {
    const std::string text = Explain(JournalOf(2511, "0317142530123"));
    for (const char* part :
         {"SendOrder -> 0", "direction             'B' buy", "orderType             '2' limit",
          "orderPrice            2511.0", "bytes from 165: 000000007f", "empty or 0: strikePrice",
          "DeleteOrder -> 0 (order 77 does not exist)", "SendFill -> 0",
          "carryPair             byte 1 carry leg", "added fill F00000006",
          "changed position 800101 NWX F WH 2505"}) {
        EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
    }
    const FillRecord fill = MakeFill(MakeOrder("1", "NWX F WH 2505", 'S', 5, 2, "S"));
    const std::string raw(reinterpret_cast<const char*>(&fill), sizeof fill);
    EXPECT_NE(Explain({"raw", raw, {}}).find("direction             'S' sell"), std::string::npos);
    EXPECT_EQ(Explain({"raw", ToHex(raw.data(), raw.size()), {}}), Explain({"raw", raw, {}}));
    for (const ExplainInput& bad : {ExplainInput{"raw", raw, "OrderRecord"},
                                    {"raw", raw.substr(1), {}},
                                    {"journal", "{\"time\": 1}\n", {}}}) {
        EXPECT_THROW(Explain(bad), std::invalid_argument) << bad.content.size();
    }
}

TEST(JournalTest, AComparisonIgnoresTheClockOnlyWhenAsked) {
    const ExplainInput first = JournalOf(2511, "0317142530123");
    const ExplainInput later = JournalOf(2511, "0318090000001", "2024-03-18 09:00:00");
    EXPECT_EQ(CompareRecords(first, later, true), "");
    EXPECT_NE(CompareRecords(first, later, false).find("request 1: inputTime"), std::string::npos);
    EXPECT_EQ(CompareRecords(first, JournalOf(2512, "0317142530123"), true),
              "request 1: orderPrice: 2511.0 | 2512.0\nrequest 3: fillPrice: 2511.0 | 2512.0\n");
    const std::string suffix = CompareRecords(first, JournalOf(2511, "0318090000001_2"), true);
    EXPECT_NE(suffix.find("systemNo: S_#_1 | S_#_2_1"), std::string::npos) << suffix;
}

}  // namespace
