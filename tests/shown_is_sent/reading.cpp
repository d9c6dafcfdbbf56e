#include "shown_is_sent/reading.h"

#include <cctype>
#include <utility>

namespace {

// The strings of the words that stand for codes, per list.
struct Word {
    int id;  // of the combo box
    char code;
    unsigned text;
};
constexpr Word kWords[] = {
    {1052, 'B', 10070}, {1052, 'S', 10071}, {1052, 'A', 10072}, {1053, '1', 10094}, {1053, '2', 10093},
    {1053, '3', 10096}, {1053, '4', 10095}, {1053, '5', 10099}, {1053, '6', 10100}, {1053, '7', 10097},
    {1053, '8', 10098}, {1053, '9', 10101}, {1053, 'A', 10102}, {1053, 'B', 10103}, {1040, '0', 10075},
    {1040, '1', 10077}, {1040, '3', 10086}, {1040, '4', 10079}, {1040, '5', 10084}, {1040, '6', 10085},
    {1040, '7', 10080}, {1040, '8', 10081}, {1040, '9', 10083}, {1040, 'A', 10082}, {1040, 'B', 10076},
    {1040, 'D', 10078}, {1114, '0', 10106}, {1114, '1', 10107}, {1114, '2', 10108}, {1114, '3', 10105},
    {1114, '4', 10104}, {1126, 'C', 10089}, {1126, 'D', 10091}, {1126, 'E', 10117}, {1126, 'J', 10118},
    {1126, 'M', 10088}, {1126, 'P', 10087}, {1126, 'R', 10119}, {1126, 'S', 10090},
};
constexpr int kFillSource = 1158;
constexpr int kSource = 1126;
constexpr int kValidType = 1114;

}  // namespace

std::string Texts::operator()(unsigned id) const {
    const HRSRC found = FindResourceExW(m_module, MAKEINTRESOURCEW(6) /* string table */,
                                        MAKEINTRESOURCEW(id / 16 + 1), m_language);
    const auto* entry = static_cast<const wchar_t*>(LockResource(LoadResource(m_module, found)));
    for (unsigned skipped = 0; skipped < id % 16; ++skipped) {
        entry += 1 + *entry;
    }
    char text[4096] = "";
    WideCharToMultiByte(CP_ACP, 0, entry + 1, *entry, text, sizeof text - 1, nullptr, nullptr);
    return text;
}

bool ReadContract(const std::string& text, ContractKey& key) {
    std::vector<std::string> parts;
    for (std::size_t at = 0; at < text.size();) {
        const auto blank = text.find(' ', at);
        parts.push_back(text.substr(at, blank - at));
        at = blank == std::string::npos ? text.size() : blank + 1;
    }
    if (parts.size() < 2 || parts.size() > 5 || std::find(parts.begin(), parts.end(), "") != parts.end()) {
        return false;
    }
    key = {};
    key.exchangeNo.Set(parts[0]);
    key.commodityNo.Set(parts[1]);
    key.optionType = key.optionType2 = 'N';
    const auto side = [](const std::string& part) {
        return part[0] == 'C' || part[0] == 'P' ? part[0] : 'N';
    };
    if (parts.size() == 2) {
        key.commodityType = parts[1].find('(') == std::string::npos ? 'G' : 'Y';
        return true;
    }
    key.contractNo.Set(parts[2]);
    const auto slash = parts.back().find('/');
    if (parts.size() == 3) {
        key.commodityType = 'F';
        if (parts[1].find('&') != std::string::npos) {
            key.commodityType = 'c';
            key.contractNo2.Set(parts[2]);
        } else if (slash != std::string::npos) {
            key.commodityType = 'm';
            key.contractNo.Set(parts[2].substr(0, slash));
            key.contractNo2.Set(parts[2].substr(slash + 1));
        }
        return true;
    }
    key.optionType = side(parts[3]);
    if (parts.size() == 4) {
        key.commodityType = 'O';
        key.strikePrice.Set(parts[3].substr(1));
        return true;
    }
    const std::string middle = parts[3].substr(1);
    if (const auto cut = middle.find('/'); cut != std::string::npos) {
        key.strikePrice.Set(middle.substr(0, cut));
        key.contractNo2.Set(middle.substr(cut + 1));
    }
    key.optionType2 = side(parts[4]);
    key.strikePrice2.Set(parts[4].substr(1));
    const int strikes = key.strikePrice.View().compare(key.strikePrice2.View());
    const std::string sides = {key.optionType, key.optionType2};
    if (key.contractNo.View() == key.contractNo2.View()) {
        key.commodityType = sides == "PP" && strikes > 0    ? 'e'
                            : sides == "CC" && strikes < 0  ? 'u'
                            : sides == "CP" && strikes == 0 ? 'd'
                            : sides == "CP" && strikes > 0  ? 'g'
                                                            : 0;
    } else {
        key.commodityType = strikes ? 0 : sides == "PP" ? 'r' : sides == "CC" ? 'l' : 0;
    }
    return key.commodityType != 0;
}

long long PromptTime(const std::string& text) {
    if (text == "3M") {
        return -1;
    }
    std::tm fields{};
    std::size_t at = 0;
    const auto two = [&](int least, int most) {
        int value = -1;
        for (int digits = 0;
             digits < 2 && at < text.size() && std::isdigit(static_cast<unsigned char>(text[at])) &&
             (digits == 0 || value * 10 <= most);
             ++digits) {
            value = (digits ? value * 10 : 0) + (text[at++] - '0');
        }
        return value < least || value > most ? -1 : value;
    };
    if (const int year = two(0, 99); year >= 0) {
        fields.tm_year = year < 69 ? year + 100 : year;
        if (const int month = two(1, 12); month >= 0) {
            fields.tm_mon = month - 1;
            if (const int day = two(1, 31); day >= 0) {
                fields.tm_mday = day;
            }
        }
    }
    return std::mktime(&fields);
}

char BothReaders::Code(int id, const char* lines, char loaded) const {
    const int line = view.Line(id);
    const std::string text = view.Text(id);
    const auto first = m_first.find(id);
    if (loaded && first != m_first.end() && first->second == std::pair(line, text)) {
        return loaded;
    }
    if (line >= 0 && line < static_cast<int>(std::strlen(lines))) {
        return lines[line];
    }
    const std::string word = id == kValidType ? FirstWord(text) : text;
    char code = 0;
    for (const Word& each : kWords) {
        if (each.id == (id == kFillSource ? kSource : id) && texts(each.text) == word) {
            if (code) {
                return 0;
            }
            code = each.code;
        }
    }
    return code;
}

void BothReaders::Split(const ContractKey& key, SingleContractKey& first, SingleContractKey& second) const {
    const CommodityRecord& commodity = *world.GetCommodity(&key);
    const auto leg = [&](bool second_) {
        SingleContractKey one{};
        one.sign = key.sign;
        one.exchangeNo = second_ ? commodity.secondExchangeNo : commodity.relatedExchangeNo;
        one.commodityType = second_ ? commodity.secondCommodityType : commodity.relatedCommodityType;
        one.commodityNo = second_ ? commodity.secondCommodityNo : commodity.relatedCommodityNo;
        one.contractNo = second_ ? key.contractNo2 : key.contractNo;
        one.strikePrice = second_ ? key.strikePrice2 : key.strikePrice;
        one.optionType = second_ ? key.optionType2 : key.optionType;
        return one;
    };
    const bool turned = commodity.legOrder == '2';
    first = leg(turned);
    second = leg(!turned);
}

// --- differences ---

namespace {

struct Field {
    const char* name;
    std::size_t offset, size;
    char kind;  // t text, c clock, d double, u number
};
constexpr Field kOrderFields[] = {{"sign", 0, 21, 't'},
                                  {"exchange", 21, 11, 't'},
                                  {"commodity type", 32, 1, 't'},
                                  {"commodity", 33, 11, 't'},
                                  {"contract", 44, 11, 't'},
                                  {"strike", 55, 11, 't'},
                                  {"option type", 66, 1, 't'},
                                  {"contract 2", 67, 11, 't'},
                                  {"strike 2", 78, 11, 't'},
                                  {"option type 2", 89, 1, 't'},
                                  {"account", 90, 21, 't'},
                                  {"order type", 111, 1, 't'},
                                  {"source", 112, 1, 't'},
                                  {"validity", 113, 1, 't'},
                                  {"valid until", 114, 21, 't'},
                                  {"forced close", 135, 1, 't'},
                                  {"direction", 136, 1, 't'},
                                  {"order price", 139, 8, 'd'},
                                  {"trigger price", 147, 8, 'd'},
                                  {"order quantity", 157, 4, 'u'},
                                  {"order number", 270, 4, 'u'},
                                  {"text 279", 279, 21, 't'},
                                  {"system number", 321, 51, 't'},
                                  {"exchange system number", 372, 51, 't'},
                                  {"upper", 434, 11, 't'},
                                  {"input operator", 456, 21, 't'},
                                  {"input time", 477, 21, 'c'},
                                  {"update operator", 498, 21, 't'},
                                  {"update time", 519, 21, 'c'},
                                  {"state", 540, 1, 't'},
                                  {"fill price", 541, 8, 'd'},
                                  {"fill quantity", 549, 4, 'u'},
                                  {"flag 614", 614, 1, 't'},
                                  {"contract record", 669, 4, 'u'}};
constexpr Field kFillFields[] = {
    {"sign", 0, 21, 't'},           {"exchange", 21, 11, 't'},    {"commodity type", 32, 1, 't'},
    {"commodity", 33, 11, 't'},     {"contract", 44, 11, 't'},    {"strike", 55, 11, 't'},
    {"option type", 66, 1, 't'},    {"fill number", 67, 21, 't'}, {"account", 88, 21, 't'},
    {"source", 109, 1, 't'},        {"direction", 110, 1, 't'},   {"exchange fill number", 139, 51, 't'},
    {"fill time", 190, 21, 'c'},    {"fill price", 232, 8, 'd'},  {"fill quantity", 240, 4, 'u'},
    {"currency", 245, 11, 't'},     {"fee given", 256, 1, 't'},   {"fee", 268, 8, 'd'},
    {"upper", 303, 11, 't'},        {"close price", 315, 8, 'd'}, {"carry pair", 331, 1, 't'},
    {"system number", 332, 51, 't'}};

std::string Value(const Field& field, const std::string& bytes) {
    const char* at = bytes.data() + field.offset;
    if (field.kind == 'd') {
        double number = 0;
        std::memcpy(&number, at, sizeof number);
        char text[40];
        std::snprintf(text, sizeof text, "%.17g", number);
        return text;
    }
    if (field.kind == 'u') {
        unsigned number = 0;
        std::memcpy(&number, at, sizeof number);
        return std::to_string(number);
    }
    return "\"" + std::string(at, strnlen(at, field.size)) + "\"";
}

// Two times that only the clock tells apart.
bool SameButTheClock(const char* a, const char* b, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) {
        const bool digits =
            std::isdigit(static_cast<unsigned char>(a[i])) && std::isdigit(static_cast<unsigned char>(b[i]));
        if (!digits && a[i] != b[i]) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::string Difference(const Event& expected, const Event& sent) {
    if (expected.what != sent.what || expected.bytes.size() != sent.bytes.size()) {
        return "expected " + expected.what + "\n    came     " + sent.what + "\n";
    }
    const bool order = sent.bytes.size() == sizeof(OrderRecord);
    const bool fill = sent.bytes.size() == sizeof(FillRecord);
    const Field* field = order ? std::begin(kOrderFields) : std::begin(kFillFields);
    const Field* end = order ? std::end(kOrderFields) : fill ? std::end(kFillFields) : field;
    std::string text;
    std::vector<bool> named(sent.bytes.size());
    for (; field != end; ++field) {
        const char* wanted = expected.bytes.data() + field->offset;
        const char* came = sent.bytes.data() + field->offset;
        std::fill_n(named.begin() + static_cast<int>(field->offset), field->size, true);
        if (field->kind == 'c' ? !SameButTheClock(wanted, came, field->size)
                               : std::memcmp(wanted, came, field->size) != 0) {
            text += sent.what + ": " + field->name + " at " + std::to_string(field->offset) + ": expected " +
                    Value(*field, expected.bytes) + ", sent " + Value(*field, sent.bytes) + "\n";
        }
    }
    for (std::size_t i = 0; i < named.size(); ++i) {
        if (!named[i] && expected.bytes[i] != sent.bytes[i]) {
            text += sent.what + ": byte at " + std::to_string(i) + ": expected " +
                    std::to_string(expected.bytes[i]) + ", sent " + std::to_string(sent.bytes[i]) + "\n";
        }
    }
    return text;
}
