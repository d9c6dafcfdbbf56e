#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Lines of a code, a separator and a name ("SHFE Shanghai Futures Exchange"), as the coded lists hold them.
// Texts are 8-bit in the system's ANSI code page, lengths in bytes, which are also the columns of its fonts.

// True for the first byte of a two-byte character; null means that the code page has none. The second byte
// can equal a separator such as '|' and is no separator then.
using LeadByteTest = bool (*)(unsigned char byte);

// How lines are split. Separator 0: there is none, the whole line is the code.
struct CodedTextFormat {
    char separator = ' ';
    LeadByteTest isLeadByte = nullptr;
};

// Length of the code: up to the first separator, or all of the line. Never inside a two-byte character.
std::size_t CodeLength(std::string_view line, const CodedTextFormat& format);
std::size_t CodeLength(std::wstring_view line, const CodedTextFormat& format);

inline std::string_view CodeOf(std::string_view line, const CodedTextFormat& format) {
    return line.substr(0, CodeLength(line, format));
}
// What stands behind the separator, without leading white space; empty without a separator.
std::string_view NameOf(std::string_view line, const CodedTextFormat& format);

// The same lines with their names in one column, at least one separator behind the longest code.
struct AlignedLines {
    std::vector<std::string> lines;
    std::size_t longestCode = 0;
    std::size_t longestName = 0;
};
AlignedLines AlignLines(std::vector<std::string> lines, const CodedTextFormat& format);

// A selection of an edit control, in the edit's own units.
struct EditSelection {
    int start = 0;
    int end = 0;
    friend bool operator==(const EditSelection&, const EditSelection&) = default;
};

// What is selected after a text of `typedLength` was completed: the completed rest, from the typed text to
// the end (-1), unless the caret stood inside the typed text, which then stays as it was.
EditSelection SelectionAfterCompletion(const EditSelection& typed, int typedLength);

// Width in pixels of a drop-down list whose widest line is `textWidth` wide.
struct DropDownMetrics {
    int border = 0;
    int scrollBar = 0;
};
int DropDownWidth(int textWidth, std::size_t itemCount, std::size_t visibleItems,
                  const DropDownMetrics& metrics);
