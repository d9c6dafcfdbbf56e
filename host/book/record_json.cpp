#include "book/record_json.h"

#include "book/host_text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace {

template <typename T>
T ReadAt(const unsigned char* bytes) {
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

template <typename T>
void WriteAt(unsigned char* bytes, T value) {
    std::memcpy(bytes, &value, sizeof value);
}

void FieldFromJson(const RecordField& field, const Json& value, unsigned char* bytes) {
    const std::string name(field.name);
    if (field.kind == FieldKind::kText || field.kind == FieldKind::kCode) {
        if (!value.is_string()) {
            throw std::invalid_argument(name + " must be a text");
        }
        const std::string text = AnsiFromUtf8(value.get<std::string>());
        const std::size_t room = field.kind == FieldKind::kText ? field.width - 1 : 1;
        if (text.size() > room) {
            throw std::invalid_argument(name + " is longer than " + std::to_string(room));
        }
        std::memset(bytes, 0, field.width);
        std::memcpy(bytes, text.data(), text.size());
        return;
    }
    if (field.kind == FieldKind::kDouble) {
        if (!value.is_number()) {
            throw std::invalid_argument(name + " must be a number");
        }
        WriteAt(bytes, value.get<double>());
    } else if (field.kind != FieldKind::kPointer) {
        const std::uint64_t most = field.width == 2 ? 0xFFFF : 0xFFFFFFFF;
        if (!value.is_number_unsigned() || value.get<std::uint64_t>() > most) {
            throw std::invalid_argument(name + " must be a whole number of 0 to " + std::to_string(most));
        }
        const std::uint64_t number = value.get<std::uint64_t>();
        std::memcpy(bytes, &number, field.width);  // little-endian
    }
}

}  // namespace

Json FieldToJson(const RecordField& field, const void* record) {
    const auto* bytes = static_cast<const unsigned char*>(record) + field.offset;
    switch (field.kind) {
        case FieldKind::kText: {
            const void* end = std::memchr(bytes, 0, field.width);
            const std::size_t length = end ? static_cast<const unsigned char*>(end) - bytes : field.width;
            return Utf8FromAnsi({reinterpret_cast<const char*>(bytes), length});
        }
        case FieldKind::kCode:
            return *bytes == 0 ? std::string() : Utf8FromAnsi({reinterpret_cast<const char*>(bytes), 1});
        case FieldKind::kDouble: {
            const double value = ReadAt<double>(bytes);
            return std::isfinite(value) ? Json(value) : Json(ToHex(bytes, sizeof value));
        }
        case FieldKind::kUint32:
            return ReadAt<std::uint32_t>(bytes);
        case FieldKind::kUint16:
            return ReadAt<std::uint16_t>(bytes);
        case FieldKind::kPointer:
            break;
    }
    char text[16];
    std::snprintf(text, sizeof text, "0x%08x", static_cast<unsigned>(ReadAt<std::uint32_t>(bytes)));
    return text;
}

Json RecordToJson(const RecordLayout& layout, const void* record) {
    const auto* bytes = static_cast<const unsigned char*>(record);
    Json object = Json::object();
    Json unnamed = Json::object();
    std::size_t end = 0;
    const auto noteGap = [&](std::size_t from, std::size_t to) {
        for (std::size_t at = from; at < to; ++at) {
            if (bytes[at] != 0) {
                unnamed[std::to_string(from)] = ToHex(bytes + from, to - from);
                return;
            }
        }
    };
    for (const RecordField& field : layout.fields) {
        noteGap(end, field.offset);
        object[std::string(field.name)] = FieldToJson(field, record);
        end = field.offset + field.width;
    }
    noteGap(end, layout.size);
    if (!unnamed.empty()) {
        object["unnamed"] = std::move(unnamed);
    }
    return object;
}

void RecordFromJson(const RecordLayout& layout, const Json& object, void* record,
                    std::initializer_list<std::string_view> others) {
    for (const auto& [name, value] : object.items()) {
        if (std::find(others.begin(), others.end(), name) != others.end()) {
            continue;
        }
        const RecordField* field = FindField(layout, name);
        if (!field) {
            throw std::invalid_argument("'" + name + "' is no field of " + std::string(layout.name));
        }
        FieldFromJson(*field, value, static_cast<unsigned char*>(record) + field->offset);
    }
}

std::string JsonText(const Json& value, int indent) {
    return value.dump(indent, ' ', false, Json::error_handler_t::replace);
}

std::string ToHex(const void* bytes, std::size_t size) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    text.reserve(size * 2);
    for (std::size_t i = 0; i < size; ++i) {
        const unsigned char byte = static_cast<const unsigned char*>(bytes)[i];
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

std::vector<unsigned char> FromHex(std::string_view text) {
    std::vector<unsigned char> bytes;
    int high = -1;
    for (const char c : text) {
        if (c == ' ' || c == '\n' || c == '\r' || c == '\t') {
            continue;
        }
        const int digit = c >= '0' && c <= '9'   ? c - '0'
                          : c >= 'a' && c <= 'f' ? c - 'a' + 10
                          : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                                 : -1;
        if (digit < 0) {
            throw std::invalid_argument("not a hexadecimal text");
        }
        if (high < 0) {
            high = digit;
        } else {
            bytes.push_back(static_cast<unsigned char>(high * 16 + digit));
            high = -1;
        }
    }
    if (high >= 0) {
        throw std::invalid_argument("a hexadecimal text with half a byte");
    }
    return bytes;
}
