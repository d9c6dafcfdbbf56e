#include "trade/contract_text.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace {

constexpr char kNoOption = 'N';
constexpr std::size_t kMaxParts = 5;

// The parts of a contract text, between its blanks.
struct Parts {
    std::array<std::string_view, kMaxParts> part;
    std::size_t count = 0;

    bool Add(const char* start, const char* stop) {
        if (start == stop || count == kMaxParts) {
            return false;
        }
        part[count++] = {start, static_cast<std::size_t>(stop - start)};
        return true;
    }
};

// False for an empty part, also one between two blanks in a row, and for too many. One blank at the end makes
// no further part; a zero ends the text.
bool SplitAtBlanks(std::string_view text, Parts& parts) {
    const char* start = text.data();
    const char* const end = start + text.size();
    const char* stop = start;
    for (; stop != end && *stop; ++stop) {
        if (*stop == ' ') {
            if (!parts.Add(start, stop)) {
                return false;
            }
            start = stop + 1;
        }
    }
    return start == stop || parts.Add(start, stop);
}

// The codes of a key share one width. What is copied here holds no zero and is short, so the fields are set
// with a few moves in place of the calls that an arbitrary text needs.
using Field = FixedText<11>;

std::string_view Cut(std::string_view text) {
    return text.substr(0, Field::kWidth - 1);
}

void Set(Field& field, std::string_view text) {
    const char* from = text.data();
    const std::size_t length = Cut(text).size();
    const auto copyEnds = [&](auto chunk) {
        std::memcpy(field.chars, from, sizeof(chunk));
        std::memcpy(field.chars + length - sizeof(chunk), from + length - sizeof(chunk), sizeof(chunk));
    };
    std::memset(field.chars, 0, sizeof(field.chars));
    if (length >= sizeof(std::uint64_t)) {
        copyEnds(std::uint64_t{});
    } else if (length >= sizeof(std::uint32_t)) {
        copyEnds(std::uint32_t{});
    } else {
        for (std::size_t i = 0; i < length; ++i) {
            field.chars[i] = from[i];
        }
    }
}

std::size_t Find(std::string_view text, char wanted) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == wanted) {
            return i;
        }
    }
    return std::string_view::npos;
}

bool Contains(std::string_view text, char wanted) {
    return Find(text, wanted) != std::string_view::npos;
}

char OptionLetter(std::string_view optionText) {
    const char letter = optionText[0];
    return letter == 'C' || letter == 'P' ? letter : kNoOption;
}

void ReadContractPart(std::string_view commodity, std::string_view text, ContractKey& key) {
    const std::size_t slash = Find(text, '/');
    if (Contains(commodity, '&')) {
        key.commodityType = CommodityType::kSpreadCommodity;
        Set(key.contractNo, text);
        Set(key.contractNo2, text);
    } else if (slash == std::string_view::npos) {
        key.commodityType = CommodityType::kFutures;
        Set(key.contractNo, text);
    } else {
        key.commodityType = CommodityType::kSpreadMonth;
        Set(key.contractNo, text.substr(0, slash));
        Set(key.contractNo2, text.substr(slash + 1));
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
    if (const std::size_t slash = Find(rest, '/'); slash != std::string_view::npos) {
        first.strike = rest.substr(0, slash);
        second.contractNo = rest.substr(slash + 1);
        Set(key.strikePrice, first.strike);
        Set(key.contractNo2, second.contractNo);
    }
    Set(key.contractNo, contractNo);
    Set(key.strikePrice2, second.strike);
    key.optionType = first.type;
    key.optionType2 = second.type;
    key.commodityType = OptionPairType(first, second);
    return key.commodityType != kNoPair;
}

// A text of a key while it is written: fields are bounded, so it needs no memory of its own to grow in.
class KeyText {
public:
    template <std::size_t Width>
    KeyText& operator<<(const FixedText<Width>& field) {
        for (std::size_t i = 0; i < Width && field.chars[i]; ++i) {
            m_chars[m_size++] = field.chars[i];
        }
        return *this;
    }
    KeyText& operator<<(char c) {
        if (c) {  // a missing option letter
            m_chars[m_size++] = c;
        }
        return *this;
    }
    std::string_view View() const { return {m_chars, m_size}; }

private:
    char m_chars[256];
    std::size_t m_size = 0;
    static_assert(sizeof(m_chars) > sizeof(ContractKey) + sizeof(ContractRecord::contractName) + 10);
};

// Writes the contract part; false for a type that has no text.
bool WriteContractPart(KeyText& text, const ContractKey& key) {
    switch (key.commodityType) {
        case CommodityType::kGoods:
        case CommodityType::kGoodsDeferred:
        case CommodityType::kFutures:
        case CommodityType::kSpreadCommodity:
            text << key.contractNo;
            return true;
        case CommodityType::kSpreadMonth:
            text << key.contractNo << '/' << key.contractNo2;
            return true;
        case CommodityType::kOption:
            text << key.contractNo << ' ' << key.optionType << key.strikePrice;
            return true;
        case CommodityType::kBullVertical:
        case CommodityType::kBearVertical:
        case CommodityType::kStraddle:
        case CommodityType::kStrangle:
        case CommodityType::kCalendarCall:
        case CommodityType::kCalendarPut:
            text << key.contractNo << ' ' << key.optionType << key.strikePrice << '/' << key.contractNo2
                 << ' ' << key.optionType2 << key.strikePrice2;
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
    Parts parts;
    if (!SplitAtBlanks(text, parts) || parts.count < 2) {
        return false;
    }
    const auto& part = parts.part;
    Set(key.exchangeNo, part[0]);
    Set(key.commodityNo, part[1]);
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
            Set(key.contractNo, part[2]);
            key.optionType = OptionLetter(part[3]);
            Set(key.strikePrice, part[3].substr(1));
            return true;
        default:
            return ReadOptionPair(part[2], part[3], part[4], key);
    }
}

bool FormatContractText(const ContractKey& key, std::string& text, bool shortForm, bool withName,
                        const TradeData& trade) {
    KeyText written;
    if (!shortForm) {
        written << key.exchangeNo << ' ' << key.commodityNo << ' ';
    }
    if (!WriteContractPart(written, key)) {
        return true;
    }
    if (const ContractRecord* contract = shortForm && withName ? trade.Contract(key) : nullptr) {
        written << NameSeparator << contract->contractName;
    }
    text = written.View();
    return true;
}

bool FormatContractWithSign(std::string& text, const SingleContractKey& key) {
    KeyText written;
    written << key.sign << ' ' << key.exchangeNo << ' ' << key.commodityNo << ' ' << key.contractNo;
    switch (key.commodityType) {
        case CommodityType::kOption:
            written << ' ' << key.optionType << key.strikePrice;
            break;
        case CommodityType::kFutures:
        case CommodityType::kGoods:
        case CommodityType::kGoodsDeferred:
            break;
        default:
            return true;
    }
    text = written.View();
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
