// The probe, loaded by the substitute terminal: nothing is found in it as it is, and every fault that it can
// be given is named.

#include "app/host_app.h"
#include "book/book_file.h"
#include "support/window_kit.h"

#include <commctrl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <functional>
#include <thread>

namespace {

using nlohmann::json;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

std::string Content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

const char kSample[] = "host/data/sample_book.json";

// The sample without the oddities that it has on purpose.
std::unique_ptr<Book> Flawless() {
    json book = json::parse(Content(kSample));
    for (json& account : book["accounts"]) {
        account.emplace("group", "hq-closed");
    }
    book["signs"][2]["threeMonthNo"] = "250319";
    book["serverConfigs"].push_back({{"name", "Old"}, {"address", "10.90.0.5"}, {"port", 7090}});
    return ReadBookText(book.dump(), "flawless");
}

const char kRequests[] =
    "# what a broker would try on a test server\r\n"
    "SendOrder sign=HQ accountNo=800101 upperNo=UP001 direction=B quantity=1 price=2514 contract=NWX WH 2505\r\n"
    "SendFill sign=HQ accountNo=800101 upperNo=UP001 direction=B quantity=1 price=2514 currencyNo=USD "
    "contract=NWX WH 2505\r\n"
    "RemoveFill fillNo=F00000002 accountNo=800102\r\n"
    "DeleteOrder orderNo=1001\r\n"
    "SendExercise sign=HQ accountNo=800103 upperNo=UP001 direction=B quantity=1 systemNo=S_PROBE2 "
    "contract=NWX WH 2505 C2500\r\n";

// A terminal that loads the probe and opens one dialog.
class Terminal {
public:
    explicit Terminal(std::unique_ptr<Book> opened, const char* requests = nullptr)
        : book(std::move(opened)), host(*book) {
        DeleteFileA(sendFile.c_str());
        DeleteFileA(report.c_str());
        if (requests) {
            std::ofstream(sendFile, std::ios::binary) << requests;
        }
    }
    ~Terminal() { DeleteFileA(sendFile.c_str()); }

    // "kind place: cases", one for each finding.
    std::vector<std::string> Look(int mode = 0, OrderRecord* record = nullptr) {
        host.Load(ProgramFolder() + "EmendoProbe.dll", 1033);
        oper = host.OpenOrderDialog(mode, record, owner.Get());
        return Reported();
    }
    std::vector<std::string> Reported() const {
        std::vector<std::string> found;
        const json written = json::parse(Content(report));
        for (const json& finding : written["findings"]) {
            std::string line =
                finding["kind"].get<std::string>() + " " + finding["place"].get<std::string>() + ":";
            for (const json& one : finding["cases"]) {
                line += " " + one.get<std::string>() + ";";
            }
            found.push_back(line);
        }
        return found;
    }

    const std::string sendFile = ProgramFolder() + "EmendoProbe.send";
    const std::string report = ProgramFolder() + "EmendoProbe.json";
    std::unique_ptr<Book> book;
    HostApp host;
    HostWindow owner;
    IEmendixOper* oper = nullptr;
};

TEST(Probe, FindsNothingInTheSubstituteTerminal) {
    Terminal terminal(Flawless(), kRequests);
    EXPECT_THAT(terminal.Look(), IsEmpty());
    ASSERT_TRUE(terminal.oper);
    EXPECT_TRUE(IsWindowVisible(terminal.oper->GetSafeHwnd()));
    EXPECT_EQ(terminal.host.Services().journal.Lines().size(), 5U);
    EXPECT_THAT(Content(ProgramFolder() + "EmendoProbe.txt"), HasSubstr("Nothing found."));
}

TEST(Probe, RemarksOnWhatTheSampleBookLacksAndSendsNothingUnasked) {
    Terminal terminal(ReadBookFile(kSample));
    EXPECT_THAT(terminal.Look(),
                UnorderedElementsAre("account-without-group UserRecord.group: 800198;",
                                     "server-not-configured GetUserServer: 10.90.0.5 port 7090;",
                                     "no-three-month-date Get3MContractNo: sign OLD: '3M';"));
    EXPECT_THAT(terminal.host.Services().journal.Lines(), IsEmpty());
}

TEST(Probe, NamesEveryFaultOfTheTerminal) {
    const std::pair<const char*, const char*> rows[] = {
        {"GetPlugin null", "missing-service GetPlugin: TradeApi 1.0.0.1; TradeList 1.0.0.1;"},
        {"GetPlugin null at 1 for 1", "missing-service GetPlugin: TradeApi 1.0.0.1;"},
        {"GetPlugin null at 2 for 1", "unused-service-missing GetPlugin: QuoteDataCenter 1.0.0.1;"},
        {"GetPlugin null at 3 for 1", "no-server-configurations GetPlugin: SysConfig 9.0.3.1;"},
        {"GetPlugin null at 8 for 1", "missing-service GetPlugin: TradeList 1.0.0.1;"},
        {"GetTradeApi null", "no-trade-interface GetTradeApi:"},
        {"SendOrder fail", "request-refused SendOrder: SendOrder sign=HQ"},
        {"DeleteOrder fail", "request-refused DeleteOrder: DeleteOrder orderNo=1001;"},
        {"SendFill fail", "request-refused SendFill:"},
        {"RemoveFill fail", "request-refused RemoveFill: RemoveFill fillNo=F00000002"},
        {"SendExercise fail", "request-refused SendExercise:"},
        {"RegisterSpi fail", "no-event RegisterSpi:"},
        {"GetUsers null", "null-entry GetUsers: entry 0 of 13;"},
        {"GetUsers empty", "empty-list GetUsers:"},
        {"GetUsers unterminated", "unterminated-text UserRecord.accountNo:"},
        {"GetUser null", "not-found-again GetUser: 800101 of HQ;"},
        {"GetUser unterminated", "unterminated-text GetUser: UserRecord.accountNo:"},
        {"GetUserServer null", "account-without-server GetUserServer: 800101 at server HQ-A;"},
        {"GetUserServer unterminated", "unterminated-text ServerRecord.address:"},
        {"GetConfigTable null", "no-server-configurations GetConfigTable:"},
        {"Query empty", "no-server-configurations Query: no rows;"},
        {"Query fail", "no-server-configurations Query: no rows;"},
        {"Query null", "bad-configuration Query: 1 rows without that many records;"},
        {"Query unterminated", "unterminated-text ServerConfigRecord.name:"},
        {"GetUppers null", "null-entry GetUppers:"},
        {"GetUppers empty", "empty-list GetUppers:"},
        {"GetUppers unterminated", "unterminated-text UpperRecord.upperNo:"},
        {"GetCurrencies null", "null-entry GetCurrencies:"},
        {"GetCurrencies empty", "empty-list GetCurrencies:"},
        {"GetCurrencies unterminated", "unterminated-text CurrencyRecord.currencyNo:"},
        {"ListSignEntries null", "null-entry ListSignEntries:"},
        {"ListSignEntries empty", "empty-list ListSignEntries:"},
        {"GetExchanges null", "null-entry GetExchanges:"},
        {"GetExchanges empty", "empty-list GetExchanges:"},
        {"GetExchanges unterminated", "unterminated-text ExchangeRecord.exchangeNo:"},
        {"GetCommodities null", "null-entry GetCommodities:"},
        {"GetCommodities empty", "empty-list GetCommodities:"},
        {"GetCommodities unterminated", "unterminated-text CommodityRecord.commodityNo:"},
        {"GetCommodity null", "not-found-again GetCommodity: HQ NWX F WH;"},
        {"GetCommodity unterminated", "unterminated-text GetCommodity: CommodityRecord.commodityNo:"},
        {"GetContracts null", "null-entry GetContracts:"},
        {"GetContracts empty", "empty-list GetContracts:"},
        {"GetContracts unterminated", "unterminated-text ContractRecord.key:"},
        {"GetContracts empty at 2 for 1", "unsteady-list GetContracts: HQ NWX F WH;"},
        {"GetUsers empty at 2 for 1", "unsteady-list GetUsers: 12 records, then 0, not the same ones;"},
        {"GetContract null", "not-found-again GetContract: HQ NWX F WH 2501"},
        {"GetContract unterminated", "unterminated-text GetContract: ContractRecord.key:"},
        {"Get3MContractNo null", "no-three-month-date Get3MContractNo: sign HQ: 'null';"},
        {"Get3MContractNo empty", "no-three-month-date Get3MContractNo: sign HQ: '';"},
        {"GetPositions null", "null-entry GetPositions:"},
        {"GetPositions unterminated", "unterminated-text PositionRecord.accountNo:"},
        {"GetPosition null", "not-found-again GetPosition: 800101"},
        {"GetPositionQty fail", "quantities-differ GetPositionQty: 800101"},
        {"FormatPrice fail", "price-not-written FormatPrice: HQ NWX F WH: 0;"},
        {"FormatPrice empty", "price-not-written FormatPrice:"},
        {"FormatPrice unterminated", "unterminated-text FormatPrice: no zero within the buffer;"},
        {"CreateListWindow null", "no-list-window CreateListWindow:"},
        {"Place fail", "list-window-misplaced Place: placed once: wanted 10,20 300 x 150,"},
        {"Place fail at 2", "list-window-misplaced Place: placed again: wanted 40,60 200 x 100,"},
        {"GetOrder null", "not-found-again GetOrder: order 1001;"},
        {"GetOrder unterminated", "unterminated-text GetOrder: OrderRecord.accountNo:"},
        {"GetUser slow 500 at 2 for 1", "slow-answer GetUser:"},
        {"SendOrder slow 500", "slow-answer SendOrder:"},
        {"GetUppers destroy-parent", "parent-destroyed GetUppers:"},
    };
    for (const auto& [fault, finding] : rows) {
        SCOPED_TRACE(fault);
        const std::string_view operation(fault);
        const bool sends = operation.starts_with("Send") || operation.starts_with("Delete") ||
                           operation.starts_with("Remove") || operation.starts_with("Register");
        Terminal terminal(Flawless(), sends ? kRequests : nullptr);
        terminal.host.Services().faults.Set(fault);
        constexpr int kModify = 2;
        EXPECT_THAT(terminal.Look(kModify, &terminal.book->ledger.FindOrder(1001)->record),
                    Contains(testing::StartsWith(finding)));
    }
}

// The one record of its kind that a row spoils.
CommodityRecord& Wheat(Book& book) {
    return book.catalogue.commodities.front().record;
}
ContractRecord& FirstContract(Book& book) {
    return book.catalogue.contracts.front().record;
}
UserRecord& FirstAccount(Book& book) {
    return book.catalogue.accounts.front().record;
}

TEST(Probe, NamesRecordsThatCannotBe) {
    static CommodityRecord another{};
    const std::pair<const char*, std::function<void(Book&)>> rows[] = {
        {"bad-code UserRecord.accountNo: 80 101;", [](Book& b) { FirstAccount(b).accountNo.Set("80 101"); }},
        {"unreadable-record UserRecord.group: 800101;",
         [](Book& b) { FirstAccount(b).group = reinterpret_cast<GroupRecord*>(0x10); }},
        {"no-account-usable UserRecord.group:",
         [](Book& b) {
             for (auto& account : b.catalogue.accounts) account.record.group = nullptr;
         }},
        {"unknown-type CommodityRecord.commodityType: HQ NWX x WH;",
         [](Book& b) { Wheat(b).commodityType = 'x'; }},
        {"bad-tick CommodityRecord.tickDenominator: HQ NWX F WH: 0;",
         [](Book& b) { Wheat(b).tickDenominator = 0; }},
        {"bad-tick CommodityRecord.tickNumerator: HQ NWX F WH: 0;",
         [](Book& b) { Wheat(b).tickNumerator = 0; }},
        {"no-commodity-pointer ContractRecord.commodity: HQ NWX F WH 2501",
         [](Book& b) { FirstContract(b).commodity = nullptr; }},
        {"foreign-record ContractRecord.commodity: HQ NWX F WH 2501",
         [](Book& b) { FirstContract(b).commodity = &another; }},
        {"ambiguous-contract ContractRecord.key: HQ NWX F WH 25 1",
         [](Book& b) { FirstContract(b).key.contractNo.Set("25 1"); }},
        {"missing-leg CommodityRecord.secondCommodityNo: HQ NWX m WH names HQ NWX F ZZ",
         [](Book& b) { b.catalogue.commodities[5].record.secondCommodityNo.Set("ZZ"); }},
        {"bad-three-month-date Get3MContractNo: sign HQ: '251399' is no date of the form yymmdd;",
         [](Book& b) { b.catalogue.signs.front().threeMonthNo = "251399"; }},
        {"bad-three-month-date Get3MContractNo: HQ HMX F CU has no contract 250320;",
         [](Book& b) { b.catalogue.signs.front().threeMonthNo = "250320"; }},
    };
    for (const auto& [finding, spoil] : rows) {
        Terminal terminal(Flawless());
        spoil(*terminal.book);
        EXPECT_THAT(terminal.Look(), Contains(testing::StartsWith(finding)));
    }
}

TEST(Probe, JudgesHowItIsCalled) {
    Terminal terminal(Flawless());
    EXPECT_THAT(terminal.Look(3), Contains("bad-opening OpenOrderDialog: mode 3 without a record;"));
    const HWND window = terminal.oper->GetSafeHwnd();
    const auto refresh = [&] {
        terminal.host.PumpUntilIdle();
        SendMessageA(window, WM_TIMER, 1, 0);
        return terminal.Reported();
    };
    terminal.host.OpenOrderDialog(7, nullptr, terminal.owner.Get());
    EXPECT_EQ(terminal.host.Module()->createPluginApi("1.0.0.2"), nullptr);
    terminal.host.Module()->onPluginLoad(1033);
    terminal.host.Module()->onPluginInit(&terminal.host.Services().manager);
    SendMessageA(GetDlgItem(window, 100), WM_KEYDOWN, VK_DOWN, 0);
    EXPECT_THAT(refresh(),
                testing::IsSupersetOf({
                    "bad-opening OpenOrderDialog: mode 3 without a record; mode 7;",
                    "other-version CreatePluginApi: asked for version 1.0.0.2;",
                    "key-not-offered IEmendixOper::PreTranslateMessage: a key arrived that was not "
                    "offered first;",
                }));

    terminal.host.Services().listeners.ForEach([](ITradeSpi& listener) {
        HWND target = nullptr;
        ASSERT_TRUE(listener.GetNotifyWnd(&target));
        PostMessageA(target, kWmTradeSpi, 0, 32 << 24);
        PostMessageA(target, kWmTradeSpi, 0, 99 << 24);
        listener.OnTradeNotify11(nullptr);
        std::thread([&] { listener.OnTradeNotify8(nullptr); }).join();
    });
    EXPECT_THAT(refresh(), testing::IsSupersetOf({
                               "bad-event-record WM_TRADESPI: a changed position without a readable record;",
                               "unknown-event WM_TRADESPI: event type 99;",
                               "direct-event ITradeSpi: 1 calls, though the events are to be posted;",
                               "event-on-other-thread ITradeSpi: 1 calls;",
                           }));
    terminal.host.Unload();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(terminal.host.Services().listeners.Count(), 0U);
}

// Every page that a finding names has the heading.
TEST(Probe, FindingsLeadToTheDocumentation) {
    const std::string source = Content("probe/findings.cpp");
    const std::string page = Content("docs/integrating.md");
    std::string headings;
    for (std::size_t at = page.find("\n## "); at != std::string::npos; at = page.find("\n## ", at + 1)) {
        std::string heading = page.substr(at + 4, page.find('\n', at + 1) - at - 4);
        for (char& c : heading) {
            c = c == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
        headings += "#" + heading + "\"";
    }
    int links = 0;
    for (std::size_t at = source.find("integrating.html#"); at != std::string::npos;
         at = source.find("integrating.html#", at + 1)) {
        const std::size_t hash = source.find('#', at);
        EXPECT_THAT(headings, HasSubstr(source.substr(hash, source.find('"', hash) + 1 - hash)));
        ++links;
    }
    EXPECT_GT(links, 40);
}

}  // namespace
