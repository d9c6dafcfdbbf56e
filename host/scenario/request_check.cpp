#include "scenario/request_check.h"

#include "scenario/text_pattern.h"

#include <charconv>
#include <stdexcept>

namespace {

bool SameNumber(const Json& value, const std::string& expected) {
    char* end = nullptr;
    const double number = std::strtod(expected.c_str(), &end);
    return !expected.empty() && *end == 0 && value.get<double>() == number;
}

std::string CheckField(const Json& fields, const Word& word) {
    const std::size_t equals = word.text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw std::invalid_argument("'" + word.text + "' is no FIELD=VALUE");
    }
    const std::string name = word.text.substr(0, equals);
    const std::string expected = word.text.substr(equals + 1);
    if (!fields.contains(name)) {
        throw std::invalid_argument("the request has no field '" + name + "'");
    }
    const Json& value = fields[name];
    const bool same = value.is_number() ? SameNumber(value, expected)
                                        : value.is_string() && Matches(value.get_ref<const std::string&>(),
                                                                       PatternFromWildcards(expected));
    return same ? "" : name + " is " + JsonText(value) + ", expected " + expected;
}

std::string CheckBytes(const Json& request, const std::string& expected) {
    std::size_t offset = 0;
    const char* const begin = expected.data();
    const char* const end = begin + expected.size();
    const auto [colon, error] = std::from_chars(begin, end, offset);
    if (error != std::errc() || colon == end || *colon != ':') {
        throw std::invalid_argument("'" + expected + "' is no OFFSET:HEX");
    }
    const std::vector<unsigned char> bytes = FromHex({colon + 1, end});
    const std::string wanted = ToHex(bytes.data(), bytes.size());
    const std::string all = request.value("bytes", "");
    if (offset * 2 + wanted.size() > all.size()) {
        return "the record ends before byte " + std::to_string(offset + bytes.size());
    }
    const std::string found = all.substr(offset * 2, wanted.size());
    return found == wanted ? ""
                           : "bytes at " + std::to_string(offset) + " are " + found + ", expected " + wanted;
}

}  // namespace

std::string CheckFields(const Json& fields, std::span<const Word> expected) {
    for (const Word& word : expected) {
        if (std::string difference = CheckField(fields, word); !difference.empty()) {
            return difference;
        }
    }
    return {};
}

std::string CheckRequest(const Json& request, std::span<const Word> expected) {
    // What a request carries beside its record ("orderNo" of a removal) reads like its fields.
    Json fields = request;
    if (request.contains("fields")) {
        fields.update(request["fields"]);
    }
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const bool bytes = !expected[i].quoted && expected[i].text == "bytes";
        if (bytes && i + 1 == expected.size()) {
            throw std::invalid_argument("OFFSET:HEX is missing behind 'bytes'");
        }
        const std::string difference =
            bytes ? CheckBytes(request, expected[++i].text) : CheckField(fields, expected[i]);
        if (!difference.empty()) {
            return difference;
        }
    }
    return {};
}
