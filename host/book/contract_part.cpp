#include "book/contract_part.h"

#include <array>

namespace {

constexpr std::string_view kTypes = "GYFmcOuedglr";
constexpr std::string_view kTwoLegTypes = "mcuedglr";

// How the two options of a pair relate; strikes compare as text.
struct PairShape {
    char type;
    bool sameContract;
    char firstOption;
    char secondOption;
    int strikeOrder;  // sign of first strike compared with second
};
constexpr std::array<PairShape, 6> kPairShapes{{
    {CommodityType::kBullVertical, true, 'C', 'C', -1},
    {CommodityType::kBearVertical, true, 'P', 'P', 1},
    {CommodityType::kStraddle, true, 'C', 'P', 0},
    {CommodityType::kStrangle, true, 'C', 'P', 1},
    {CommodityType::kCalendarCall, false, 'C', 'C', 0},
    {CommodityType::kCalendarPut, false, 'P', 'P', 0},
}};

template <std::size_t Width>
bool SetCode(FixedText<Width>& field, std::string_view code) {
    field.Set(code);
    return code.size() < Width && code.find(' ') == std::string_view::npos;
}

bool SplitAt(std::string_view text, char separator, std::string_view& before, std::string_view& after) {
    const std::size_t at = text.find(separator);
    if (at == std::string_view::npos) {
        return false;
    }
    before = text.substr(0, at);
    after = text.substr(at + 1);
    return true;
}

// "2501 C3000"
bool ReadOption(std::string_view text, FixedText<11>& contractNo, char& optionType, FixedText<11>& strike) {
    std::string_view contract, option;
    if (!SplitAt(text, ' ', contract, option) || contract.empty() || option.size() < 2 ||
        (option[0] != 'C' && option[0] != 'P')) {
        return false;
    }
    optionType = option[0];
    return SetCode(contractNo, contract) && SetCode(strike, option.substr(1));
}

bool ReadOptionPair(char type, std::string_view text, ContractKey& key) {
    std::string_view first, second;
    if (!SplitAt(text, '/', first, second) ||
        !ReadOption(first, key.contractNo, key.optionType, key.strikePrice) ||
        !ReadOption(second, key.contractNo2, key.optionType2, key.strikePrice2)) {
        return false;
    }
    const int order = key.strikePrice.View().compare(key.strikePrice2.View());
    for (const PairShape& shape : kPairShapes) {
        if (shape.type == type) {
            return (key.contractNo.View() == key.contractNo2.View()) == shape.sameContract &&
                   key.optionType == shape.firstOption && key.optionType2 == shape.secondOption &&
                   (order > 0) - (order < 0) == shape.strikeOrder;
        }
    }
    return false;
}

std::string OptionText(const FixedText<11>& contractNo, char optionType, const FixedText<11>& strike) {
    return contractNo.Str() + ' ' + optionType + strike.Str();
}

template <typename Key>
std::string NameWithPart(const Key& key) {
    std::string name = key.exchangeNo.Str() + ' ' + key.commodityType + ' ' + key.commodityNo.Str();
    const std::string part = ContractPart(key);
    return part.empty() ? name : name + ' ' + part;
}

}  // namespace

bool IsKnownCommodityType(char commodityType) {
    return commodityType != 0 && kTypes.find(commodityType) != std::string_view::npos;
}

bool HasTwoLegs(char commodityType) {
    return commodityType != 0 && kTwoLegTypes.find(commodityType) != std::string_view::npos;
}

bool ReadContractPart(char commodityType, std::string_view text, ContractKey& key) {
    key.optionType = key.optionType2 = 'N';
    switch (commodityType) {
        case CommodityType::kGoods:
        case CommodityType::kGoodsDeferred:
            return SetCode(key.contractNo, text);
        case CommodityType::kFutures:
            return !text.empty() && text.find('/') == std::string_view::npos && SetCode(key.contractNo, text);
        case CommodityType::kSpreadCommodity:
            return !text.empty() && SetCode(key.contractNo, text) && SetCode(key.contractNo2, text);
        case CommodityType::kSpreadMonth: {
            std::string_view first, second;
            return SplitAt(text, '/', first, second) && !first.empty() && !second.empty() &&
                   SetCode(key.contractNo, first) && SetCode(key.contractNo2, second);
        }
        case CommodityType::kOption:
            return ReadOption(text, key.contractNo, key.optionType, key.strikePrice);
        default:
            return ReadOptionPair(commodityType, text, key);
    }
}

std::string ContractPart(const ContractKey& key) {
    switch (key.commodityType) {
        case CommodityType::kGoods:
        case CommodityType::kGoodsDeferred:
        case CommodityType::kFutures:
        case CommodityType::kSpreadCommodity:
            return key.contractNo.Str();
        case CommodityType::kSpreadMonth:
            return key.contractNo.Str() + '/' + key.contractNo2.Str();
        case CommodityType::kOption:
            return OptionText(key.contractNo, key.optionType, key.strikePrice);
        default:
            return OptionText(key.contractNo, key.optionType, key.strikePrice) + '/' +
                   OptionText(key.contractNo2, key.optionType2, key.strikePrice2);
    }
}

std::string ContractPart(const SingleContractKey& leg) {
    return leg.commodityType == CommodityType::kOption
               ? OptionText(leg.contractNo, leg.optionType, leg.strikePrice)
               : leg.contractNo.Str();
}

std::string ContractName(const ContractKey& key) {
    return NameWithPart(key);
}

std::string ContractName(const SingleContractKey& leg) {
    return NameWithPart(leg);
}

bool ReadContractName(std::string_view text, ContractKey& key) {
    std::string_view exchange, type, commodity, part;
    if (!SplitAt(text, ' ', exchange, text) || !SplitAt(text, ' ', type, text) || type.size() != 1) {
        return false;
    }
    if (!SplitAt(text, ' ', commodity, part)) {
        commodity = text;
    }
    key.commodityType = type[0];
    return !exchange.empty() && !commodity.empty() && IsKnownCommodityType(type[0]) &&
           SetCode(key.exchangeNo, exchange) && SetCode(key.commodityNo, commodity) &&
           ReadContractPart(type[0], part, key);
}
