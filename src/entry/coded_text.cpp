#include "entry/coded_text.h"

#include <algorithm>

namespace {

bool IsSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

}  // namespace

std::size_t CodeLength(std::string_view line, const CodedTextFormat& format) {
    if (format.separator == 0) {
        return line.size();
    }
    // A blank is never a second byte, and without two-byte characters nothing has to be stepped over.
    if (format.separator == ' ' || !format.isLeadByte) {
        return std::min(line.find(format.separator), line.size());
    }
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == format.separator) {
            return i;
        }
        if (format.isLeadByte(static_cast<unsigned char>(line[i]))) {
            ++i;
        }
    }
    return line.size();
}

std::size_t CodeLength(std::wstring_view line, const CodedTextFormat& format) {
    if (format.separator == 0) {
        return line.size();
    }
    return std::min(line.find(static_cast<unsigned char>(format.separator)), line.size());
}

std::string_view NameOf(std::string_view line, const CodedTextFormat& format) {
    const std::size_t codeLength = CodeLength(line, format);
    std::string_view name = line.substr(std::min(codeLength + 1, line.size()));
    while (!name.empty() && IsSpace(name.front())) {
        name.remove_prefix(1);
    }
    return name;
}

AlignedLines AlignLines(std::vector<std::string> lines, const CodedTextFormat& format) {
    AlignedLines result;
    std::vector<std::size_t> codeLengths;
    codeLengths.reserve(lines.size());
    for (const std::string& line : lines) {
        codeLengths.push_back(CodeLength(line, format));
        result.longestCode = std::max(result.longestCode, codeLengths.back());
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::size_t nameLength = NameOf(lines[i], format).size();
        const std::size_t gap = nameLength > 0 ? result.longestCode - codeLengths[i] + 1 : 0;
        lines[i].replace(codeLengths[i], lines[i].size() - nameLength - codeLengths[i], gap,
                         format.separator);
        result.longestName = std::max(result.longestName, nameLength);
    }
    result.lines = std::move(lines);
    return result;
}

EditSelection SelectionAfterCompletion(const EditSelection& typed, int typedLength) {
    return typed.end < typedLength ? typed : EditSelection{typedLength, -1};
}

int DropDownWidth(int textWidth, std::size_t itemCount, std::size_t visibleItems,
                  const DropDownMetrics& metrics) {
    constexpr int kMargin = 2;
    return textWidth + 2 * metrics.border + (itemCount > visibleItems ? metrics.scrollBar : 0) + kMargin;
}
