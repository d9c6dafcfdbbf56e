#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// The packed records as data: where each named field lies, what it holds and which words its codes have. The
// journal, the explanations for people and the book file all read records through these tables.
enum class FieldKind { kText, kCode, kDouble, kUint32, kUint16, kPointer };

enum class Words {
    kNone,
    kOrderType,
    kSource,
    kValidity,
    kYesNo,
    kDirection,
    kState,
    kCommodityType,
    kOption,
    kCarryPair
};

// Fields that two runs of the same entry fill differently: a time, or a number made from the clock.
enum class ClockField { kNo, kTime, kNumber };

struct RecordField {
    std::string_view name;
    std::uint16_t offset;
    std::uint16_t width;
    FieldKind kind;
    Words words = Words::kNone;
    ClockField clock = ClockField::kNo;
};

struct RecordLayout {
    std::string_view name;  // "OrderRecord"
    std::size_t size;
    std::span<const RecordField> fields;  // ascending, without overlap
};

const RecordLayout& OrderLayout();
const RecordLayout& FillLayout();
// Null when no record has that name (as in "OrderRecord") or that size.
const RecordLayout* FindLayout(std::string_view name);
const RecordLayout* FindLayout(std::size_t size);
const RecordField* FindField(const RecordLayout& layout, std::string_view name);

// The English word of a code; empty when it has none.
std::string_view WordOf(Words words, char code);

// Ends every text field of the record with a zero, which cuts the last character of a full one.
void TerminateTexts(const RecordLayout& layout, void* record);
// Fills every text field to its last byte with characters, as a broken server might.
void UnterminateTexts(const RecordLayout& layout, void* record);
