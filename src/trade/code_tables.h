#pragma once

#include <string>
#include <string_view>
#include <vector>

// One-character codes of the host's records and their words in the current language (8-bit text in the ANSI
// code page). To text: a code without a word gives a text of the code itself, 0 the empty text. From text: 0
// when no word equals the text.
std::string OrderStateToText(char code);
char OrderStateFromText(std::string_view text);
std::string OrderTypeToText(char code);
char OrderTypeFromText(std::string_view text);
// Validity (time in force): the long text is shown, the short text is its part before the first blank.
std::string ValidTypeToText(char code);
std::string ValidTypeToLongText(char code);
char ValidTypeFromText(std::string_view shortText);
std::string DirectionToText(char code);
char DirectionFromText(std::string_view text);
// Order source, also the source of a fill. The pair with All knows 'A' too.
std::string OrderSourceToText(char code);
char OrderSourceFromText(std::string_view text);
std::string OrderSourceToTextWithAll(char code);
char OrderSourceFromTextWithAll(std::string_view text);

// 'S' for 'B', 'B' for 'S', any other code unchanged.
char OppositeDirection(char direction);
// True for the commodity types whose contracts have two legs.
bool IsTwoLegType(char commodityType);
char FlagToYN(bool flag);
bool YNToFlag(char code);

// The words of an enumeration that a list offers: its line i stands for codes[i].
struct CodeList {
    std::string_view codes;
    std::string (*toText)(char code);
    char (*fromText)(std::string_view text);

    std::vector<std::string> Words() const;
};

// Equal but for the case of Latin letters. The second byte of a double-byte character may look like a letter,
// and is none.
bool EqualIgnoringCase(std::string_view a, std::string_view b);
