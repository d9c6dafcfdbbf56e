#include "shown_is_sent/reader.h"

#include "trade/contract_text.h"

#include <cctype>
#include <ctime>

namespace {

// The words that stand for codes: their strings follow one another.
struct WordRow {
    int comboId;
    unsigned firstString;
    const char* codes;
};
constexpr WordRow kWordRows[] = {
    {IDC_DIRECTION, 10070, "BSA"},          {IDC_ORDER_STATE, 10075, "0B1D478A9563"},
    {IDC_SOURCE, 10087, "PMCSD"},           {IDC_SOURCE, 10117, "EJR"},
    {IDC_ORDER_TYPE, 10093, "214378569AB"}, {IDC_VALID_TYPE, 10104, "43012"}};

bool IsDigit(char character) {
    return std::isdigit(static_cast<unsigned char>(character)) != 0;
}

// Two digits at the position, which moves on; -1 when they are not within the bounds.
int TwoDigits(const std::string& text, std::size_t& at, int least, int most) {
    int value = at < text.size() && IsDigit(text[at]) ? text[at++] - '0' : -1;
    if (value >= 0 && value * 10 <= most && at < text.size() && IsDigit(text[at])) {
        value = value * 10 + text[at++] - '0';
    }
    return value < least || value > most ? -1 : value;
}

// Midnight of the date, of what could be read of it; -1 for nothing.
long long PromptTime(const std::string& text) {
    std::tm fields{};
    std::size_t at = 0;
    const int year = text == "3M" ? -1 : TwoDigits(text, at, 0, 99);
    const int month = year < 0 ? -1 : TwoDigits(text, at, 1, 12);
    const int day = month < 0 ? -1 : TwoDigits(text, at, 1, 31);
    fields.tm_year = year < 0 ? 0 : year < 69 ? year + 100 : year;
    fields.tm_mon = month < 0 ? 0 : month - 1;
    fields.tm_mday = day < 0 ? 0 : day;
    return std::mktime(&fields);
}

std::string Value(const RecordField& field, const std::string& bytes) {
    const char* at = bytes.data() + field.offset;
    if (field.kind == FieldKind::kDouble) {
        double number = 0;
        std::memcpy(&number, at, sizeof number);
        char text[40];
        std::snprintf(text, sizeof text, "%.17g", number);
        return text;
    }
    if (field.kind == FieldKind::kUint32 || field.kind == FieldKind::kPointer) {
        unsigned number = 0;
        std::memcpy(&number, at, sizeof number);
        return std::to_string(number);
    }
    return '"' + std::string(at, strnlen(at, field.width)) + '"';
}

}  // namespace

std::string Trimmed(const std::string& text) {
    const auto from = text.find_first_not_of(' ');
    return from == std::string::npos ? "" : text.substr(from, text.find_last_not_of(' ') - from + 1);
}

bool WholeTicks(double price, const CommodityRecord& commodity) {
    double whole = 0;
    const double ticks = price / (commodity.tickNumerator / commodity.tickDenominator);
    const double rest = std::modf(std::fabs(ticks), &whole);
    return rest < 1e-5 || 1 - rest < 1e-5;
}

bool ReadContract(const std::string& text, ContractKey& key) {
    ContractKey read{};
    const bool readable = ParseContractText(text, read);
    key = readable ? read : key;
    return readable;
}

int Days(const std::string& from, const std::string& to) {
    return static_cast<int>((PromptTime(to) - PromptTime(from)) / 86400.0);
}

char Reader::Code(int id, const char* lines, char loaded) const {
    const int line = view.Line(id);
    const std::string text = view.Text(id);
    const auto first = m_first.find(id);
    if (loaded && first != m_first.end() && first->second == std::pair(line, text)) {
        return loaded;
    }
    if (line >= 0 && line < static_cast<int>(std::strlen(lines))) {
        return lines[line];
    }
    std::string found;
    for (const WordRow& words : kWordRows) {
        const bool ofList = words.comboId == (id == IDC_FILL_SOURCE ? IDC_SOURCE : id);
        for (unsigned i = 0; ofList && words.codes[i]; ++i) {
            if (Say(words.firstString + i) == (id == IDC_VALID_TYPE ? FirstWord(text) : text)) {
                found += words.codes[i];
            }
        }
    }
    return found.size() == 1 ? found[0] : 0;
}

bool Reader::SendLegs(Sequel& out, FillRecord& fill, const ContractKey& key, double price2) const {
    if (IsOneOf(key.commodityType, kTwoLegs)) {
        const CommodityRecord& pair = *world.GetCommodity(&key);
        SingleContractKey first = {key.sign,
                                   pair.relatedExchangeNo,
                                   pair.relatedCommodityType,
                                   pair.relatedCommodityNo,
                                   key.contractNo,
                                   key.strikePrice,
                                   key.optionType};
        SingleContractKey second = {
            key.sign,        pair.secondExchangeNo, pair.secondCommodityType, pair.secondCommodityNo,
            key.contractNo2, key.strikePrice2,      key.optionType2};
        if (pair.legOrder == '2') {
            std::swap(first, second);
        }
        const std::string number = fill.exchangeFillNo.Str();
        fill.key = first;
        fill.exchangeFillNo.Set(number + "_1");
        out.Send("SendFill", fill);
        fill.key = second;
        fill.exchangeFillNo.Set(number + "_2");
        fill.fillPrice = price2;
        fill.direction = Reversed(fill.direction);
    }
    return out.Send("SendFill", fill);
}

bool Reader::Passes(Sequel& out, const std::string& errors, const std::string& warnings) const {
    if (!errors.empty()) {
        return Ask(out, errors, IDS_OPERATION_FAILED, "OK") && false;
    }
    return warnings.empty() ||
           Ask(out, warnings + Say(IDS_CONFIRM_WARNINGS), IDS_CONFIRM_CAPTION, "OK/Cancel");
}

std::string Reader::Misfit(const CommodityRecord* commodity, const std::vector<int>& denominators,
                           const std::vector<int>& numerators) const {
    const int own = commodity ? static_cast<int>(commodity->tickDenominator) : 0;
    for (const int id : denominators) {
        if (own && Number(id) != own) {
            return "denominator #" + std::to_string(id) + " is not the commodity's\n";
        }
    }
    for (const int id : numerators) {
        if (own == 1 && Number(id) != 0) {
            return "numerator #" + std::to_string(id) + " without fractions\n";
        }
    }
    return {};
}

std::string Difference(const Event& expected, const Event& came) {
    const std::string& a = expected.bytes;
    const std::string& b = came.bytes;
    if (expected.what != came.what || a.size() != b.size()) {
        return "expected " + expected.what + "\n    came " + came.what + "\n";
    }
    std::string text;
    const auto note = [&](const std::string& name, const std::string& wanted, const std::string& sent) {
        text += came.what + ": " + name + ": expected " + wanted + ", sent " + sent + "\n";
    };
    const RecordLayout* layout = FindLayout(b.size());
    for (std::size_t i = 0; i < b.size(); ++i) {
        const RecordField* field = nullptr;
        for (std::size_t j = 0; layout && j < layout->fields.size(); ++j) {
            const RecordField& each = layout->fields[j];
            field = i >= each.offset && i < std::size_t{each.offset} + each.width ? &each : field;
        }
        const bool clock =
            field && a.compare(field->offset, 10, kClock, 10) == 0 && IsDigit(a[i]) && IsDigit(b[i]);
        if (a[i] == b[i] || clock) {
            continue;
        }
        if (field) {
            note(std::string(field->name) + " at " + std::to_string(field->offset), Value(*field, a),
                 Value(*field, b));
            i = std::size_t{field->offset} + field->width - 1;
        } else {
            note("byte " + std::to_string(i), std::to_string(a[i]), std::to_string(b[i]));
        }
    }
    return text;
}
