#pragma once

#include "book/record_fields.h"

#include <nlohmann/json.hpp>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

// Members in the order in which they were written, so that files read from top to bottom.
using Json = nlohmann::ordered_json;

// Every named field of the record by its name: texts and codes as text (an empty code as ""), numbers as
// numbers, a pointer as its value in hexadecimal. Bytes that have no name and are not 0 follow in "unnamed",
// by their offset, in hexadecimal.
Json RecordToJson(const RecordLayout& layout, const void* record);
// One of them.
Json FieldToJson(const RecordField& field, const void* record);

// Fills the fields that the object has; the others and all pointers are left alone. `others` are members of
// the object that are no fields. Throws std::invalid_argument with the reason for an unknown name, a wrong
// type, or a text that does not fit.
void RecordFromJson(const RecordLayout& layout, const Json& object, void* record,
                    std::initializer_list<std::string_view> others = {});

// One line of text; bytes that are no valid text become replacement characters.
std::string JsonText(const Json& value, int indent = -1);

std::string ToHex(const void* bytes, std::size_t size);
// Blanks and line ends are skipped; throws std::invalid_argument for anything else that is no digit pair.
std::vector<unsigned char> FromHex(std::string_view text);
