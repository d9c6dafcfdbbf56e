#include "trade/contract_text.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace {

constexpr char kNoOption = 'N';
constexpr std::size_t kMaxParts = 5;

// The parts of a contract text, between its blanks. Nothing for an empty part, also one between two blanks in
// a row, and for too many. One blank at the end makes no further part; a zero ends the text.
std::vector<std::string_view> SplitAtBlanks(std::string_view text) {
    std::vector<std::string_view> parts;
    text = text.substr(0, text.find('\0'));
    while (!text.empty()) {
        const std::size_t length = std::min(text.find(' '), text.size());
        if (length == 0 || parts.size() == kMaxParts) {
            return {};
        }
        parts.push_back(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return parts;
}

// As much as a field of a key takes.
std::string_view Cut(std::string_view text) {
    return text.substr(0, decltype(ContractKey::contractNo)::kWidth - 1);
}

char OptionLetter(std::string_view optionText) {
    const char letter = optionText[0];
    return letter == 'C' || letter == 'P' ? letter : kNoOption;
}

void ReadContractPart(std::string_view commodity, std::string_view text, ContractKey& key) {
    const std::size_t slash = text.find('/');
    if (commodity.find('&') != std::string_view::npos) {
        key.commodityType = CommodityType::kSpreadCommodity;
        key.contractNo.Set(text);
        key.contractNo2.Set(text);
    } else if (slash == std::string_view::npos) {
        key.commodityType = CommodityType::kFutures;
        key.contractNo.Set(text);
    } else {
        key.commodityType = CommodityType::kSpreadMonth;
        key.contractNo.Set(text.substr(0, slash));
        key.contractNo2.Set(text.substr(slash + 1));
    }
}

struct OptionLeg {
    std::string_view contractNo;
    char type;
    std::string_view strike;
};

constexpr char kNoPair = 0;

// The type of an option pair. Strikes compare as text.
char OptionPairType(const OptionLeg& first, const OptionLeg& second) {
    const int strikes = Cut(first.strike).compare(Cut(second.strike));
    const bool sameContract = Cut(first.contractNo) == Cut(second.contractNo);
    const bool calls = first.type == 'C' && second.type == 'C';
    const bool puts = first.type == 'P' && second.type == 'P';
    if (!sameContract) {
        return strikes != 0 ? kNoPair
               : calls      ? CommodityType::kCalendarCall
               : puts       ? CommodityType::kCalendarPut
                            : kNoPair;
    }
    if (calls || puts) {
        return calls && strikes < 0  ? CommodityType::kBullVertical
               : puts && strikes > 0 ? CommodityType::kBearVertical
                                     : kNoPair;
    }
    if (first.type != 'C' || second.type != 'P' || strikes < 0) {
        return kNoPair;
    }
    return strikes == 0 ? CommodityType::kStraddle : CommodityType::kStrangle;
}

// "1509", "C3000/1509", "P3000".
bool ReadOptionPair(std::string_view contractNo, std::string_view middle, std::string_view last,
                    ContractKey& key) {
    OptionLeg first{contractNo, OptionLetter(middle), key.strikePrice.View()};
    OptionLeg second{key.contractNo2.View(), OptionLetter(last), last.substr(1)};
    const std::string_view rest = middle.substr(1);
    if (const std::size_t slash = rest.find('/'); slash != std::string_view::npos) {
        first.strike = rest.substr(0, slash);
        second.contractNo = rest.substr(slash + 1);
        key.strikePrice.Set(first.strike);
        key.contractNo2.Set(second.contractNo);
    }
    key.contractNo.Set(contractNo);
    key.strikePrice2.Set(second.strike);
    key.optionType = first.type;
    key.optionType2 = second.type;
    key.commodityType = OptionPairType(first, second);
    return key.commodityType != kNoPair;
}

std::string OptionText(char letter, const FixedText<11>& strike) {
    return (letter ? std::string(1, letter) : std::string()) + strike.Str();
}

// Nothing for a type that has no text.
std::optional<std::string> ContractPart(const ContractKey& key) {
    switch (key.commodityType) {
        case CommodityType::kGoods:
        case CommodityType::kGoodsDeferred:
        case CommodityType::kFutures:
        case CommodityType::kSpreadCommodity:
            return key.contractNo.Str();
        case CommodityType::kSpreadMonth:
            return key.contractNo.Str() + '/' + key.contractNo2.Str();
        case CommodityType::kOption:
            return key.contractNo.Str() + ' ' + OptionText(key.optionType, key.strikePrice);
        case CommodityType::kBullVertical:
        case CommodityType::kBearVertical:
        case CommodityType::kStraddle:
        case CommodityType::kStrangle:
        case CommodityType::kCalendarCall:
        case CommodityType::kCalendarPut:
            return key.contractNo.Str() + ' ' + OptionText(key.optionType, key.strikePrice) + '/' +
                   key.contractNo2.Str() + ' ' + OptionText(key.optionType2, key.strikePrice2);
        default:
            return std::nullopt;
    }
}

SingleContractKey FirstLeg(const ContractKey& key, const CommodityRecord& commodity) {
    return {key.sign,
            commodity.relatedExchangeNo,
            commodity.relatedCommodityType,
            commodity.relatedCommodityNo,
            key.contractNo,
            key.strikePrice,
            key.optionType};
}

SingleContractKey SecondLeg(const ContractKey& key, const CommodityRecord& commodity) {
    return {key.sign,
            commodity.secondExchangeNo,
            commodity.secondCommodityType,
            commodity.secondCommodityNo,
            key.contractNo2,
            key.strikePrice2,
            key.optionType2};
}

bool QuotesSecondLegFirst(const CommodityRecord& commodity) {
    return commodity.legOrder == '2';
}

}  // namespace

bool ParseContractText(std::string_view text, ContractKey& key) {
    const std::vector<std::string_view> parts = SplitAtBlanks(text);
    if (parts.size() < 2) {
        return false;
    }
    key.exchangeNo.Set(parts[0]);
    key.commodityNo.Set(parts[1]);
    key.optionType = key.optionType2 = kNoOption;
    switch (parts.size()) {
        case 2:
            key.commodityType = parts[1].find('(') != std::string_view::npos ? CommodityType::kGoodsDeferred
                                                                             : CommodityType::kGoods;
            return true;
        case 3:
            ReadContractPart(parts[1], parts[2], key);
            return true;
        case 4:
            key.commodityType = CommodityType::kOption;
            key.contractNo.Set(parts[2]);
            key.optionType = OptionLetter(parts[3]);
            key.strikePrice.Set(parts[3].substr(1));
            return true;
        default:
            return ReadOptionPair(parts[2], parts[3], parts[4], key);
    }
}

bool FormatContractText(const ContractKey& key, std::string& text, bool shortForm, bool withName,
                        const TradeData& trade) {
    std::optional<std::string> part = ContractPart(key);
    if (!part) {
        return true;
    }
    if (!shortForm) {
        text = key.exchangeNo.Str() + ' ' + key.commodityNo.Str() + ' ' + *part;
        return true;
    }
    text = *std::move(part);
    if (const ContractRecord* contract = withName ? trade.Contract(key) : nullptr) {
        text += NameSeparator + contract->contractName.Str();
    }
    return true;
}

bool FormatContractWithSign(std::string& text, const SingleContractKey& key) {
    const std::string common = key.sign.Str() + ' ' + key.exchangeNo.Str() + ' ' + key.commodityNo.Str() +
                               ' ' + key.contractNo.Str();
    switch (key.commodityType) {
        case CommodityType::kOption:
            text = common + ' ' + OptionText(key.optionType, key.strikePrice);
            break;
        case CommodityType::kFutures:
        case CommodityType::kGoods:
        case CommodityType::kGoodsDeferred:
            text = common;
            break;
        default:
            break;
    }
    return true;
}

bool IsFirstLegFirst(const ContractKey& key, const TradeData& trade) {
    const CommodityRecord* commodity = trade.Commodity(CommodityOf(key));
    return !commodity || !QuotesSecondLegFirst(*commodity);
}

void SplitContractLegs(const ContractKey& key, SingleContractKey& first, SingleContractKey& second,
                       const TradeData& trade) {
    const CommodityRecord* commodity = trade.Commodity(CommodityOf(key));
    if (!commodity) {
        return;
    }
    const bool swapped = QuotesSecondLegFirst(*commodity);
    (swapped ? second : first) = FirstLeg(key, *commodity);
    (swapped ? first : second) = SecondLeg(key, *commodity);
}
