#include "services/explain.h"

#include "book/host_text.h"
#include "book/record_json.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

namespace {

// One request of a journal, or one record by itself.
struct Request {
    std::string title;
    const RecordLayout* layout = nullptr;
    std::vector<unsigned char> bytes;
    Json line;  // null for a record by itself
};

constexpr std::size_t kNameWidth = 22;

const RecordLayout& LayoutFor(const ExplainInput& input, std::size_t size) {
    const RecordLayout* layout = input.record ? FindLayout(*input.record) : FindLayout(size);
    if (!layout) {
        throw std::invalid_argument(
            input.name + ": no record " +
            (input.record ? "'" + *input.record + "'" : "of " + std::to_string(size) + " bytes"));
    }
    if (layout->size != size) {
        throw std::invalid_argument(input.name + ": " + std::string(layout->name) + " has " +
                                    std::to_string(layout->size) + " bytes, not " + std::to_string(size));
    }
    return *layout;
}

Request ReadJournalLine(const ExplainInput& input, const std::string& text, int number) {
    const std::string place = input.name + ": line " + std::to_string(number) + ": ";
    Request request;
    try {
        request.line = Json::parse(text);
        request.title = request.line.at("time").get<std::string>() + "  " +
                        request.line.at("operation").get<std::string>();
        if (request.line.contains("bytes")) {
            const auto record = request.line.at("record").get<std::string>();
            request.layout = FindLayout(record);
            request.bytes = FromHex(request.line.at("bytes").get<std::string>());
            if (!request.layout || request.layout->size != request.bytes.size()) {
                throw std::invalid_argument("the bytes are no " + record);
            }
        }
    } catch (const std::exception& reason) {
        throw std::invalid_argument(place + reason.what());
    }
    return request;
}

std::vector<Request> ReadRequests(const ExplainInput& input) {
    std::vector<Request> requests;
    const std::size_t start = input.content.find_first_not_of(" \t\r\n");
    if (start != std::string::npos && input.content[start] == '{') {
        int number = 0;
        for (std::size_t from = 0; from < input.content.size();) {
            const std::size_t end = std::min(input.content.find('\n', from), input.content.size());
            const std::string line = input.content.substr(from, end - from);
            from = end + 1;
            ++number;
            if (line.find_first_not_of(" \t\r") != std::string::npos) {
                requests.push_back(ReadJournalLine(input, line, number));
            }
        }
        return requests;
    }
    Request request;
    request.title = input.name;
    const bool hex = std::all_of(input.content.begin(), input.content.end(),
                                 [](unsigned char c) { return std::isxdigit(c) || std::isspace(c); });
    request.bytes =
        hex ? FromHex(input.content) : std::vector<unsigned char>(input.content.begin(), input.content.end());
    request.layout = &LayoutFor(input, request.bytes.size());
    requests.push_back(std::move(request));
    return requests;
}

std::string ValueText(const RecordField& field, const Json& value) {
    if (!value.is_string()) {
        return value.dump();
    }
    const auto text = value.get<std::string>();
    if (field.kind != FieldKind::kCode || text.empty()) {
        return text;
    }
    const std::string word(WordOf(field.words, text[0]));
    const bool printable = static_cast<unsigned char>(text[0]) >= ' ';
    const std::string shown = printable ? "'" + text + "'" : "byte " + std::to_string(text[0]);
    return word.empty() ? shown : shown + " " + word;
}

bool IsEmpty(const RecordField& field, const Json& value) {
    return value == "" || value == 0 || value == 0.0 ||
           (field.kind == FieldKind::kPointer && value == "0x00000000");
}

void ExplainRecord(const Request& request, std::string& text) {
    const Json fields = RecordToJson(*request.layout, request.bytes.data());
    std::string empty;
    for (const RecordField& field : request.layout->fields) {
        const std::string name(field.name);
        const Json& value = fields[name];
        if (IsEmpty(field, value)) {
            empty += (empty.empty() ? "" : ", ") + name;
            continue;
        }
        text += "    " + name + std::string(kNameWidth - std::min(kNameWidth - 1, name.size()), ' ') +
                ValueText(field, value) + '\n';
    }
    if (fields.contains("unnamed")) {
        for (const auto& [offset, hex] : fields["unnamed"].items()) {
            text += "    bytes from " + offset + ": " + hex.get<std::string>() + '\n';
        }
    }
    if (!empty.empty()) {
        text += "    empty or 0: " + empty + '\n';
    }
}

bool AllDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

// The text without what the clock put into it: a whole time, or the 13 digits of a stamp inside a number.
std::string WithoutClock(ClockField clock, std::string text) {
    constexpr std::size_t kStamp = 13;  // month, day, hour, minute, second, milliseconds
    if (clock == ClockField::kTime) {
        return text.empty() ? text : "(a time)";
    }
    for (std::size_t at = 0; at + kStamp <= text.size(); ++at) {
        if (AllDigits(std::string_view(text).substr(at, kStamp))) {
            return text.replace(at, kStamp, "#");
        }
    }
    return text;
}

void CompareFields(const std::string& title, const Request& a, const Request& b, bool ignoreClock,
                   std::string& differences) {
    const Json left = RecordToJson(*a.layout, a.bytes.data());
    const Json right = RecordToJson(*b.layout, b.bytes.data());
    for (const RecordField& field : a.layout->fields) {
        const std::string name(field.name);
        if (field.kind == FieldKind::kPointer) {
            continue;
        }
        std::string first = ValueText(field, left[name]);
        std::string second = ValueText(field, right[name]);
        if (ignoreClock && field.clock != ClockField::kNo) {
            first = WithoutClock(field.clock, first);
            second = WithoutClock(field.clock, second);
        }
        if (first != second) {
            differences += title + ": " + name + ": " + first + " | " + second + '\n';
        }
    }
    const Json none = Json::object();
    const Json& leftGaps = left.contains("unnamed") ? left["unnamed"] : none;
    const Json& rightGaps = right.contains("unnamed") ? right["unnamed"] : none;
    if (leftGaps != rightGaps) {
        differences += title + ": bytes without a name: " + leftGaps.dump() + " | " + rightGaps.dump() + '\n';
    }
}

}  // namespace

std::string Explain(const ExplainInput& input) {
    std::string text;
    for (const Request& request : ReadRequests(input)) {
        text += request.title;
        if (!request.line.is_null()) {
            text += " -> " + request.line.value("result", Json()).dump();
            if (request.line.contains("note")) {
                text += " (" + request.line["note"].get<std::string>() + ")";
            }
        }
        text += '\n';
        for (const char* argument : {"orderNo", "fillNoArgument"}) {
            if (request.line.is_object() && request.line.contains(argument)) {
                text += "    " + std::string(argument) + " " + request.line[argument].dump() + '\n';
            }
        }
        if (request.layout) {
            text += "  " + std::string(request.layout->name) + '\n';
            ExplainRecord(request, text);
        }
        if (request.line.is_object()) {
            for (const Json& remark : request.line.value("remarks", Json::array())) {
                text += "  remark: " + remark.get<std::string>() + '\n';
            }
            for (const Json& change : request.line.value("changed", Json::array())) {
                text += "  " + change.value("what", "") + ' ' + change.value("kind", "") + ' ' +
                        change.value("id", "") + ": " + change.value("text", "") + '\n';
            }
        }
    }
    return text;
}

std::string CompareRecords(const ExplainInput& first, const ExplainInput& second, bool ignoreClock) {
    const std::vector<Request> a = ReadRequests(first);
    const std::vector<Request> b = ReadRequests(second);
    std::string differences;
    if (a.size() != b.size()) {
        differences = std::to_string(a.size()) + " requests | " + std::to_string(b.size()) + " requests\n";
    }
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        std::string title = "request " + std::to_string(i + 1);
        for (const char* member : {"operation", "orderNo", "fillNoArgument", "result"}) {
            const Json left = a[i].line.is_object() ? a[i].line.value(member, Json()) : Json();
            const Json right = b[i].line.is_object() ? b[i].line.value(member, Json()) : Json();
            if (left != right) {
                differences += title + ": " + member + ": " + left.dump() + " | " + right.dump() + '\n';
            }
        }
        if (a[i].layout != b[i].layout) {
            differences += title + ": another record\n";
        } else if (a[i].layout) {
            CompareFields(title, a[i], b[i], ignoreClock, differences);
        }
    }
    return differences;
}
