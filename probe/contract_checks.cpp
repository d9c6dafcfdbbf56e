#include "entry/price_row.h"
#include "framework/format_text.h"
#include "probe/host_watch.h"
#include "probe/record_checks.h"
#include "trade/contract_text.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <map>

namespace {

constexpr std::string_view kKnownTypes = "GYFmcOuedglr";
constexpr std::uint32_t kGreatestDenominator = 1024;  // far beyond any that is traded

struct Counts {
    std::size_t commodities = 0;
    std::size_t contracts = 0;
};

template <typename Key>
bool SameKey(const Key& first, const Key& second) {
    return first.sign.View() == second.sign.View() && first.exchangeNo.View() == second.exchangeNo.View() &&
           first.commodityType == second.commodityType &&
           first.commodityNo.View() == second.commodityNo.View();
}

bool SameContract(const ContractKey& first, const ContractKey& second) {
    return SameKey(first, second) && first.contractNo.View() == second.contractNo.View() &&
           first.strikePrice.View() == second.strikePrice.View() &&
           first.contractNo2.View() == second.contractNo2.View() &&
           first.strikePrice2.View() == second.strikePrice2.View();
}

// The text that a dialog shows for a contract is what it reads the contract from again.
void CheckContractText(const Subject& subject, const ContractKey& key) {
    std::string text;
    FormatContractText(key, text, false, false, subject.data);
    ContractKey read{};
    std::string again;
    if (ParseContractText(text, read)) {
        read.sign = key.sign;
        read.commodityType = key.commodityType;
        FormatContractText(read, again, false, false, subject.data);
    }
    if (text.empty() || again != text) {
        subject.findings.Add(Kind::kAmbiguousContract, "ContractRecord.key",
                             NameOf(key) + " is written '" + text + "' and read as '" + again + "'");
    }
}

void CheckContract(const Subject& subject, const CommodityRecord& commodity, const ContractRecord& contract) {
    Findings& findings = subject.findings;
    CheckLegTexts(findings, contract.key, "ContractRecord.key");
    CheckText(findings, contract.contractName, Text::kName, "ContractRecord.contractName");
    const std::string name = NameOf(contract.key);
    const CommodityKey wanted = CommodityOf(commodity);
    if (!SameKey(CommodityOf(contract.key), wanted)) {
        findings.Add(Kind::kForeignRecord, "GetContracts", name + " under " + NameOf(wanted));
    }
    if (!contract.commodity) {
        findings.Add(Kind::kNoCommodityPointer, "ContractRecord.commodity", name);
    } else if (!Readable(contract.commodity, sizeof(CommodityRecord))) {
        findings.Add(Kind::kUnreadableRecord, "ContractRecord.commodity", name);
    } else if (!SameKey(CommodityOf(*contract.commodity), CommodityOf(contract.key))) {
        findings.Add(Kind::kForeignRecord, "ContractRecord.commodity",
                     name + " points to " + NameOf(CommodityOf(*contract.commodity)));
    }
    const ContractRecord* again = subject.data.Contract(contract.key);
    if (!again) {
        findings.Add(Kind::kNotFoundAgain, "GetContract", name);
    } else {
        CheckLegTexts(findings, again->key, "GetContract: ContractRecord.key");
        if (!SameContract(again->key, contract.key)) {
            findings.Add(Kind::kForeignRecord, "GetContract",
                         "asked for " + name + ", got " + NameOf(again->key));
        }
    }
    CheckContractText(subject, contract.key);
}

void CheckLeg(const Subject& subject, const CommodityRecord& commodity, const FixedText<11>& exchangeNo,
              char type, const FixedText<11>& commodityNo, const char* place) {
    CommodityKey key{commodity.sign, exchangeNo, type, commodityNo};
    if (!subject.data.Commodity(key)) {
        subject.findings.Add(
            Kind::kMissingLeg, place,
            NameOf(CommodityOf(commodity)) + " names " + NameOf(key) + ", which is not found");
    }
}

void CheckCommodity(const Subject& subject, const CommodityRecord& commodity) {
    Findings& findings = subject.findings;
    CheckText(findings, commodity.exchangeNo, Text::kCode, "CommodityRecord.exchangeNo");
    CheckText(findings, commodity.commodityNo, Text::kCode, "CommodityRecord.commodityNo");
    CheckText(findings, commodity.commodityName, Text::kName, "CommodityRecord.commodityName");
    const CommodityKey key = CommodityOf(commodity);
    const std::string name = NameOf(key);
    if (kKnownTypes.find(commodity.commodityType) == std::string_view::npos) {
        findings.Add(Kind::kUnknownType, "CommodityRecord.commodityType", name);
    }
    const double numerator = commodity.tickNumerator;
    const std::uint32_t denominator = commodity.tickDenominator;
    if (!(std::isfinite(numerator) && numerator > 0)) {
        findings.Add(Kind::kBadTick, "CommodityRecord.tickNumerator", name + FormatText(": %g", numerator));
    }
    if (denominator == 0 || denominator > kGreatestDenominator) {
        findings.Add(Kind::kBadTick, "CommodityRecord.tickDenominator",
                     name + FormatText(": %u", denominator));
    }
    const CommodityRecord* again = subject.data.Commodity(key);
    if (!again) {
        findings.Add(Kind::kNotFoundAgain, "GetCommodity", name);
    } else {
        CheckText(findings, again->commodityNo, Text::kCode, "GetCommodity: CommodityRecord.commodityNo");
        if (!SameKey(CommodityOf(*again), key)) {
            findings.Add(Kind::kForeignRecord, "GetCommodity",
                         "asked for " + name + ", got " + NameOf(CommodityOf(*again)));
        }
    }
    const char type = commodity.commodityType;
    if (type == CommodityType::kSpreadMonth || type == CommodityType::kSpreadCommodity) {
        CheckLeg(subject, commodity, commodity.secondExchangeNo, commodity.secondCommodityType,
                 commodity.secondCommodityNo, "CommodityRecord.secondCommodityNo");
    }
    if (type == CommodityType::kSpreadMonth || type == CommodityType::kSpreadCommodity ||
        type == CommodityType::kOption) {
        CheckLeg(subject, commodity, commodity.relatedExchangeNo, commodity.relatedCommodityType,
                 commodity.relatedCommodityNo, "CommodityRecord.relatedCommodityNo");
    }
}

// What the terminal writes, the dialogs must read as the same price.
void CheckPrices(const Subject& subject, const CommodityRecord& commodity, const void* recordWithKey) {
    const double tick = commodity.tickNumerator / (commodity.tickDenominator ? commodity.tickDenominator : 1);
    if (!(std::isfinite(tick) && tick > 0)) {
        return;
    }
    const std::string name = NameOf(CommodityOf(commodity));
    for (const int steps : {0, 1, 3, 1000, 12345, -5}) {
        const double price = steps * tick;
        char buffer[100] = "";
        subject.api.FormatPrice(recordWithKey, price, buffer, sizeof buffer, 0, 'D');
        const std::string text(buffer, strnlen(buffer, sizeof buffer));
        if (text.empty()) {
            subject.findings.Add(Kind::kPriceNotWritten, "FormatPrice", name + FormatText(": %g", price));
            return;
        }
        const SplitPrice split = SplitPriceText(text);
        const char* start = split.row.whole.c_str();
        char* end = nullptr;
        std::strtod(start, &end);
        const double read = PriceValue(split.row, split.denominator ? split.denominator : 1);
        if (end == start || *end || std::abs(read - price) > 1e-7 * (1 + std::abs(price))) {
            subject.findings.Add(
                Kind::kPriceNotRead, "FormatPrice",
                name + FormatText(": %.10g is written '%s' and read as %.10g", price, text.c_str(), read));
        }
    }
}

// The date that "3M" stands for under the sign; empty when there is none. Notes both what is missing and what
// is no date.
std::string ThreeMonthDate(const Subject& subject, const std::string& sign) {
    const char* text = subject.api.Get3MContractNo(sign.c_str());
    const std::string answer = text && Readable(text, 1) ? std::string(text, strnlen(text, 11)) : "null";
    const bool digits = answer.find_first_not_of("0123456789") == std::string::npos;
    const int month = digits && answer.size() == 6 ? std::stoi(answer.substr(2, 2)) : 0;
    const int day = digits && answer.size() == 6 ? std::stoi(answer.substr(4, 2)) : 0;
    if (!text || answer.empty() || answer == "3M") {
        subject.findings.Add(Kind::kNoThreeMonthDate, "Get3MContractNo",
                             "sign " + sign + ": '" + answer + "'");
        return {};
    }
    if (month < 1 || month > 12 || day < 1 || day > 31) {
        subject.findings.Add(Kind::kBadThreeMonthDate, "Get3MContractNo",
                             "sign " + sign + ": '" + answer + "' is no date of the form yymmdd");
        return {};
    }
    return answer;
}

class Signs {
public:
    explicit Signs(const Subject& subject) : m_subject(subject) {}
    // Asked once for each sign.
    const std::string& DateOf(const std::string& sign) {
        const auto found = m_dates.find(sign);
        return found != m_dates.end() ? found->second
                                      : m_dates.emplace(sign, ThreeMonthDate(m_subject, sign)).first->second;
    }

private:
    const Subject& m_subject;
    std::map<std::string, std::string> m_dates;
};

// A commodity with a rolling contract has one of the date for which it stands.
void CheckRolling(const Subject& subject, const CommodityRecord& commodity,
                  const std::vector<const ContractRecord*>& contracts, Signs& signs) {
    if (commodity.rollingCode != 'U' || commodity.commodityType != CommodityType::kFutures) {
        return;
    }
    const std::string& date = signs.DateOf(commodity.sign.Str());
    for (const ContractRecord* contract : contracts) {
        if (date.empty() || contract->key.contractNo.View() == date) {
            return;
        }
    }
    if (!date.empty()) {
        subject.findings.Add(Kind::kBadThreeMonthDate, "Get3MContractNo",
                             NameOf(CommodityOf(commodity)) + " has no contract " + date);
    }
}

void CheckCommodityAndContracts(const Subject& subject, const CommodityRecord& commodity, Signs& signs,
                                Counts& counts) {
    CheckCommodity(subject, commodity);
    const auto contracts = subject.data.Contracts(CommodityOf(commodity));
    if (subject.data.Contracts(CommodityOf(commodity)) != contracts) {
        subject.findings.Add(Kind::kUnsteadyList, "GetContracts", NameOf(CommodityOf(commodity)));
    }
    for (const ContractRecord* contract : contracts) {
        if (subject.OutOfTime("ContractRecord")) {
            return;
        }
        CheckContract(subject, commodity, *contract);
    }
    CheckPrices(subject, commodity,
                contracts.empty() ? static_cast<const void*>(&commodity) : contracts.front());
    CheckRolling(subject, commodity, contracts, signs);
    ++counts.commodities;
    counts.contracts += contracts.size();
}

}  // namespace

std::string CheckContracts(const Subject& subject) {
    Findings& findings = subject.findings;
    Signs signs(subject);
    Counts counts;
    const auto exchanges = subject.data.Exchanges("");
    if (subject.data.Exchanges("") != exchanges) {
        findings.Add(Kind::kUnsteadyList, "GetExchanges", "not the same records when read again");
    }
    for (const ExchangeRecord* exchange : exchanges) {
        CheckText(findings, exchange->sign, Text::kCodeOrEmpty, "ExchangeRecord.sign");
        CheckText(findings, exchange->exchangeNo, Text::kCode, "ExchangeRecord.exchangeNo");
        CheckText(findings, exchange->exchangeName, Text::kName, "ExchangeRecord.exchangeName");
        if (exchange->forwardMarket) {
            signs.DateOf(exchange->sign.Str());
        }
        const ExchangeKey key{exchange->sign, exchange->exchangeNo};
        const auto commodities = subject.data.Commodities(key);
        if (subject.data.Commodities(key) != commodities) {
            findings.Add(Kind::kUnsteadyList, "GetCommodities", exchange->exchangeNo.Str());
        }
        for (const CommodityRecord* commodity : commodities) {
            if (subject.OutOfTime("CommodityRecord")) {
                break;
            }
            if (commodity->exchangeNo.View() != exchange->exchangeNo.View() ||
                commodity->sign.View() != exchange->sign.View()) {
                findings.Add(Kind::kForeignRecord, "GetCommodities",
                             NameOf(CommodityOf(*commodity)) + " under " + exchange->exchangeNo.Str());
            }
            CheckCommodityAndContracts(subject, *commodity, signs, counts);
        }
    }
    const std::pair<const char*, std::size_t> lists[] = {{"GetExchanges", exchanges.size()},
                                                         {"GetCommodities", counts.commodities},
                                                         {"GetContracts", counts.contracts}};
    for (const auto& [place, count] : lists) {
        if (count == 0) {
            findings.Add(Kind::kEmptyList, place, "no records");
            break;  // what depends on it is empty as well
        }
    }
    return FormatText("%u exchanges, %u commodities, %u contracts", static_cast<unsigned>(exchanges.size()),
                      static_cast<unsigned>(counts.commodities), static_cast<unsigned>(counts.contracts));
}
