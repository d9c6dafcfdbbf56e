#include "trade/code_tables.h"

#include "res/language.h"
#include "res/resource_ids.h"
#include "res/string_table.h"

#include <array>
#include <optional>
#include <span>

namespace {

// One word of an enumeration. The rows of a table stand in the order in which a text is compared with them;
// the first row of a code is the one that the code turns into.
struct CodeWord {
    char code;
    unsigned textId;
    bool ignoreCase = false;  // of Latin letters
};

constexpr CodeWord kOrderStates[] = {
    {'0', IDS_STATE_SENDED},           {'B', IDS_STATE_REJECTED},         {'1', IDS_STATE_ACCEPTED},
    {'D', IDS_STATE_SUSPENDED},        {'4', IDS_STATE_WORKING},          {'7', IDS_STATE_CANCELING},
    {'8', IDS_STATE_MODIFYING},        {'A', IDS_STATE_PARTIAL_CANCELED}, {'9', IDS_STATE_CANCELED},
    {'5', IDS_STATE_PARTIALLY_FILLED}, {'6', IDS_STATE_FILLED},           {'3', IDS_STATE_EXECUTED},
};
constexpr CodeWord kOrderTypes[] = {
    {'2', IDS_TYPE_LIMIT},   {'1', IDS_TYPE_MARKET}, {'4', IDS_TYPE_LIMIT_STOP}, {'3', IDS_TYPE_STOP_LOSS},
    {'7', IDS_TYPE_ENQUIRY}, {'8', IDS_TYPE_OFFER},  {'5', IDS_TYPE_EXERCISE},   {'6', IDS_TYPE_ABSTAIN},
    {'9', IDS_TYPE_ICE},     {'A', IDS_TYPE_GHOST},  {'B', IDS_TYPE_SWAPS},
};
constexpr CodeWord kValidTypes[] = {
    {'4', IDS_VALID_FOK}, {'3', IDS_VALID_IOC}, {'0', IDS_VALID_GFD},
    {'1', IDS_VALID_GTC}, {'2', IDS_VALID_GTD},
};
constexpr CodeWord kLongValidTypes[] = {
    {'4', IDS_VALID_FOK_LONG}, {'3', IDS_VALID_IOC_LONG}, {'0', IDS_VALID_GFD_LONG},
    {'1', IDS_VALID_GTC_LONG}, {'2', IDS_VALID_GTD_LONG},
};
constexpr CodeWord kDirections[] = {
    {'B', IDS_DIRECTION_BUY},         {'B', IDS_DIRECTION_BUY_PADDED}, {'S', IDS_DIRECTION_SELL},
    {'S', IDS_DIRECTION_SELL_PADDED}, {'A', IDS_DIRECTION_DOUBLE},
};
constexpr CodeWord kOrderSources[] = {
    {'E', IDS_SOURCE_E_TRADE, true},     {'P', IDS_SOURCE_PROXY},
    {'J', IDS_SOURCE_J_TRADE, true},     {'M', IDS_SOURCE_MANUAL},
    {'C', IDS_SOURCE_CARRY, true},       {'S', IDS_SOURCE_PROGRAM},
    {'D', IDS_SOURCE_DELIVERY_EXERCISE}, {'A', IDS_ALL, true},
    {'R', IDS_SOURCE_RTS, true},
};
constexpr char kAllSources = 'A';

// The words of all tables in the current language, read from the resources once per language.
const std::string& Word(unsigned textId) {
    constexpr unsigned first = IDS_DIRECTION_BUY;
    constexpr unsigned last = IDS_SOURCE_RTS;
    static std::array<std::string, last - first + 1> words;
    static std::optional<std::uint16_t> language;
    if (language != g_wResLanguage) {
        for (unsigned id = first; id <= last; ++id) {
            LoadResString(words[id - first], id);
        }
        language = g_wResLanguage;
    }
    return words[textId - first];
}

char UpperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::string ToText(std::span<const CodeWord> table, char code) {
    for (const CodeWord& row : table) {
        if (row.code == code) {
            return Word(row.textId);
        }
    }
    return code ? std::string(1, code) : std::string();
}

// A word that is missing from the resources is empty; an empty text is nobody's word. Neither is a text that
// stands for two codes: a system without the characters of a language shows every word of it as "??".
char FromText(std::span<const CodeWord> table, std::string_view text, char except = 0) {
    char found = 0;
    for (const CodeWord& row : table) {
        const std::string& word = Word(row.textId);
        const bool equal = row.ignoreCase ? EqualIgnoringCase(word, text) : word == text;
        if (text.empty() || row.code == except || row.code == found || !equal) {
            continue;
        }
        if (found) {
            return 0;
        }
        found = row.code;
    }
    return found;
}

}  // namespace

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    bool afterLeadByte = false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i] && (afterLeadByte || UpperCase(a[i]) != UpperCase(b[i]))) {
            return false;
        }
        afterLeadByte = !afterLeadByte && static_cast<unsigned char>(a[i]) > 0x80;
    }
    return true;
}

std::string OrderStateToText(char code) {
    return ToText(kOrderStates, code);
}

char OrderStateFromText(std::string_view text) {
    return FromText(kOrderStates, text);
}

std::string OrderTypeToText(char code) {
    return ToText(kOrderTypes, code);
}

char OrderTypeFromText(std::string_view text) {
    return FromText(kOrderTypes, text);
}

std::string ValidTypeToText(char code) {
    return ToText(kValidTypes, code);
}

std::string ValidTypeToLongText(char code) {
    return ToText(kLongValidTypes, code);
}

char ValidTypeFromText(std::string_view shortText) {
    return FromText(kValidTypes, shortText);
}

std::string DirectionToText(char code) {
    return ToText(kDirections, code);
}

char DirectionFromText(std::string_view text) {
    return FromText(kDirections, text);
}

std::string OrderSourceToText(char code) {
    return ToText(code == kAllSources ? std::span<const CodeWord>() : kOrderSources, code);
}

char OrderSourceFromText(std::string_view text) {
    return FromText(kOrderSources, text, kAllSources);
}

std::string OrderSourceToTextWithAll(char code) {
    return ToText(kOrderSources, code);
}

char OrderSourceFromTextWithAll(std::string_view text) {
    return FromText(kOrderSources, text);
}

char OppositeDirection(char direction) {
    return direction == 'B' ? 'S' : direction == 'S' ? 'B' : direction;
}

bool IsTwoLegType(char commodityType) {
    return commodityType && std::string_view("mcuelrdg").find(commodityType) != std::string_view::npos;
}

char FlagToYN(bool flag) {
    return flag ? 'Y' : 'N';
}

bool YNToFlag(char code) {
    return code == 'Y';
}

std::vector<std::string> CodeList::Words() const {
    std::vector<std::string> words;
    for (const char code : codes) {
        words.push_back(toText(code));
    }
    return words;
}
