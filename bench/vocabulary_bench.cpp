// What the vocabulary costs, against the least that the same work can cost, in one run.

#include "bench/stopwatch.h"
#include "entry/number_text.h"
#include "res/language.h"
#include "trade/code_tables.h"
#include "trade/contract_text.h"

#include <cstring>

namespace {

constexpr const char* kTexts[] = {
    "EXA CM 1509",
    "EXA CM 1509/1512",
    "EXA CM 1509 C3000",
    "EXA CM 1509 C3000/1512 C3000",
};

// The text copied and its separators found.
struct Scanned {
    char copy[64];
    std::size_t separators[8];
    std::size_t count = 0;
};
void CopyAndScan(std::string_view text, Scanned& scanned) {
    std::memcpy(scanned.copy, text.data(), text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (scanned.copy[i] == ' ' || scanned.copy[i] == '/') {
            scanned.separators[scanned.count++] = i;
        }
    }
}

void MeasureParsing(Report& report) {
    for (const std::string_view text : kTexts) {
        const double yardstick = NanosecondsOf([&] {
            Keep(text);
            Scanned scanned;
            CopyAndScan(text, scanned);
            Keep(scanned);
        });
        ContractKey key{};
        const double parse = NanosecondsOf([&] {
            Keep(text);
            Keep(ParseContractText(text, key));
            Keep(key);
        });
        report.Ratio((std::string("parse ") + std::string(text)).c_str(), parse, yardstick, 10);
    }
}

void PrintKey(const ContractKey& key, char* buffer, std::size_t size) {
    const char* exchange = key.exchangeNo.chars;
    const char* commodity = key.commodityNo.chars;
    switch (key.commodityType) {
        case CommodityType::kFutures:
            std::snprintf(buffer, size, "%s %s %s", exchange, commodity, key.contractNo.chars);
            break;
        case CommodityType::kSpreadMonth:
            std::snprintf(buffer, size, "%s %s %s/%s", exchange, commodity, key.contractNo.chars,
                          key.contractNo2.chars);
            break;
        case CommodityType::kOption:
            std::snprintf(buffer, size, "%s %s %s %c%s", exchange, commodity, key.contractNo.chars,
                          key.optionType, key.strikePrice.chars);
            break;
        default:
            std::snprintf(buffer, size, "%s %s %s %c%s/%s %c%s", exchange, commodity, key.contractNo.chars,
                          key.optionType, key.strikePrice.chars, key.contractNo2.chars, key.optionType2,
                          key.strikePrice2.chars);
    }
}

void MeasureFormatting(Report& report) {
    const TradeData noTrade(nullptr);
    for (const char* text : kTexts) {
        ContractKey key{};
        ParseContractText(text, key);
        char buffer[128];
        const double yardstick = NanosecondsOf([&] {
            PrintKey(key, buffer, sizeof(buffer));
            Keep(buffer);
        });
        std::string formatted;
        const double format = NanosecondsOf([&] {
            FormatContractText(key, formatted, false, false, noTrade);
            Keep(formatted);
        });
        report.Ratio((std::string("format ") + text).c_str(), format, yardstick, 10);
    }
}

void MeasureNumberTest(Report& report) {
    for (const std::string_view text : {"97.25", "-1234567.125", "12x"}) {
        const double test = NanosecondsOf([&] { Keep(IsNumberText(text, false, true)); });
        report.Absolute((std::string("number test ") + std::string(text)).c_str(), test, 2000);
    }
}

void MeasureCodes(Report& report) {
    g_wResLanguage = kSimplifiedChinese;
    const struct {
        const char* name;
        char code;
        std::string (*toText)(char);
        char (*fromText)(std::string_view);
    } rows[] = {
        {"order state and back", '3', OrderStateToText, OrderStateFromText},
        {"order type and back", 'B', OrderTypeToText, OrderTypeFromText},
        {"order source and back", 'R', OrderSourceToText, OrderSourceFromText},
    };
    for (const auto& row : rows) {
        const double both = NanosecondsOf([&] { Keep(row.fromText(row.toText(row.code))); });
        report.Absolute(row.name, both, 1000);
    }
}

}  // namespace

int main() {
    Report report;
    MeasureParsing(report);
    MeasureFormatting(report);
    MeasureNumberTest(report);
    MeasureCodes(report);
    return report.Missed();
}
