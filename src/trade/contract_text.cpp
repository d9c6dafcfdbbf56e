#include "trade/contract_text.h"

#include <algorithm>
#include <array>

namespace {

constexpr char kNoOption = 'N';
constexpr std::size_t kMaxParts = 5;

// A contract text at its blanks. An empty part, also one of two blanks in a row, makes the count 0, and so do
// too many parts; one blank at the end does not.
struct Parts {
    std::array<std::string_view, kMaxParts> part;
    std::size_t count = 0;
};

Parts SplitAtBlanks(std::string_view text) {
    Parts parts;
    const char* start = text.data();
    const char* const end = start + std::min(text.size(), text.find('\0'));
    while (start != end) {
        const char* stop = start;
        while (stop != end && *stop != ' ') {
            ++stop;
        }
        if (stop == start || parts.count == kMaxParts) {
            return {};
        }
        parts.part[parts.count++] = {start, static_cast<std::size_t>(stop - start)};
        start = stop == end ? end : stop + 1;
    }
    return parts;
}

bool Contains(std::string_view text, char wanted) {
    return text.find(wanted) != std::string_view::npos;
}

char OptionLetter(std::string_view optionText) {
    const char letter = optionText[0];
    return letter == 'C' || letter == 'P' ? letter : kNoOption;
}

void ReadContractPart(std::string_view commodity, std::string_view text, ContractKey& key) {
    const std::size_t slash = text.find('/');
    if (Contains(commodity, '&')) {
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

// The type of an option pair, 0 when the legs make none. Strikes compare as text.
char OptionPairType(const ContractKey& key) {
    const int strikes = key.strikePrice.View().compare(key.strikePrice2.View());
    const bool sameContract = key.contractNo.View() == key.contractNo2.View();
    const char first = key.optionType;
    const char second = key.optionType2;
    if (sameContract && first == second) {
        return first == 'P' && strikes > 0   ? CommodityType::kBearVertical
               : first == 'C' && strikes < 0 ? CommodityType::kBullVertical
                                             : '\0';
    }
    if (sameContract) {
        return first != 'C' || second != 'P' || strikes < 0 ? '\0'
               : strikes == 0                               ? CommodityType::kStraddle
                                                            : CommodityType::kStrangle;
    }
    if (strikes != 0 || first != second) {
        return 0;
    }
    return first == 'P' ? CommodityType::kCalendarPut : first == 'C' ? CommodityType::kCalendarCall : '\0';
}

// "C3000/1509" and "P3000".
bool ReadOptionPair(std::string_view firstLeg, std::string_view secondLeg, ContractKey& key) {
    key.optionType = OptionLetter(firstLeg);
    const std::string_view rest = firstLeg.substr(1);
    if (const std::size_t slash = rest.find('/'); slash != std::string_view::npos) {
        key.strikePrice.Set(rest.substr(0, slash));
        key.contractNo2.Set(rest.substr(slash + 1));
    }
    key.optionType2 = OptionLetter(secondLeg);
    key.strikePrice2.Set(secondLeg.substr(1));
    const char type = OptionPairType(key);
    key.commodityType = type;
    return type != 0;
}

void AppendChar(std::string& text, char c) {
    if (c) {
        text += c;
    }
}

template <typename Contract, typename Strike>
void AppendOptionLeg(std::string& text, const Contract& contractNo, char optionType, const Strike& strike) {
    text += contractNo.View();
    text += ' ';
    AppendChar(text, optionType);
    text += strike.View();
}

// Appends the contract part; false for a type that has no text.
bool AppendContractPart(std::string& text, const ContractKey& key) {
    switch (key.commodityType) {
        case CommodityType::kGoods:
        case CommodityType::kGoodsDeferred:
        case CommodityType::kFutures:
        case CommodityType::kSpreadCommodity:
            text += key.contractNo.View();
            return true;
        case CommodityType::kSpreadMonth:
            text += key.contractNo.View();
            text += '/';
            text += key.contractNo2.View();
            return true;
        case CommodityType::kOption:
            AppendOptionLeg(text, key.contractNo, key.optionType, key.strikePrice);
            return true;
        case CommodityType::kBullVertical:
        case CommodityType::kBearVertical:
        case CommodityType::kStraddle:
        case CommodityType::kStrangle:
        case CommodityType::kCalendarCall:
        case CommodityType::kCalendarPut:
            AppendOptionLeg(text, key.contractNo, key.optionType, key.strikePrice);
            text += '/';
            AppendOptionLeg(text, key.contractNo2, key.optionType2, key.strikePrice2);
            return true;
        default:
            return false;
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
    const Parts parts = SplitAtBlanks(text);
    const auto& part = parts.part;
    if (parts.count < 2) {
        return false;
    }
    key.exchangeNo.Set(part[0]);
    key.commodityNo.Set(part[1]);
    key.optionType = key.optionType2 = kNoOption;
    switch (parts.count) {
        case 2:
            key.commodityType =
                Contains(part[1], '(') ? CommodityType::kGoodsDeferred : CommodityType::kGoods;
            return true;
        case 3:
            ReadContractPart(part[1], part[2], key);
            return true;
        case 4:
            key.commodityType = CommodityType::kOption;
            key.contractNo.Set(part[2]);
            key.optionType = OptionLetter(part[3]);
            key.strikePrice.Set(part[3].substr(1));
            return true;
        default:
            key.contractNo.Set(part[2]);
            return ReadOptionPair(part[3], part[4], key);
    }
}

bool FormatContractText(const ContractKey& key, std::string& text, bool shortForm, bool withName,
                        const TradeData& trade) {
    std::string written;
    if (!shortForm) {
        written += key.exchangeNo.View();
        written += ' ';
        written += key.commodityNo.View();
        written += ' ';
    }
    if (!AppendContractPart(written, key)) {
        return true;
    }
    if (const ContractRecord* contract = shortForm && withName ? trade.Contract(key) : nullptr) {
        written += NameSeparator;
        written += contract->contractName.View();
    }
    text = std::move(written);
    return true;
}

bool FormatContractWithSign(std::string& text, const SingleContractKey& key) {
    const char type = key.commodityType;
    if (type != CommodityType::kFutures && type != CommodityType::kGoods &&
        type != CommodityType::kGoodsDeferred && type != CommodityType::kOption) {
        return true;
    }
    std::string written;
    written += key.sign.View();
    written += ' ';
    written += key.exchangeNo.View();
    written += ' ';
    written += key.commodityNo.View();
    written += ' ';
    if (type == CommodityType::kOption) {
        AppendOptionLeg(written, key.contractNo, key.optionType, key.strikePrice);
    } else {
        written += key.contractNo.View();
    }
    text = std::move(written);
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
