#pragma once

#include "shown_is_sent/reader.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <map>

// What the readers of both dialogs share.

inline constexpr const char* kClock = "0000-00-00 00:00:00";

inline std::string Trimmed(const std::string& text) {
    const auto from = text.find_first_not_of(' ');
    return from == std::string::npos ? "" : text.substr(from, text.find_last_not_of(' ') - from + 1);
}
inline std::string FirstWord(const std::string& text) {
    return text.substr(0, text.find(' '));
}
inline bool Alike(const std::string& a, const std::string& b) {
    return lstrcmpiA(a.c_str(), b.c_str()) == 0;
}
inline bool TwoLegs(char type) {
    return type && std::strchr("mcueldgr", type);
}
inline bool Filled(char state) {
    return state == '5' || state == '6' || state == 'A';
}
inline bool WholeTicks(double price, const CommodityRecord& commodity) {
    double whole = 0;
    const double rest =
        std::modf(std::fabs(price / (commodity.tickNumerator / commodity.tickDenominator)), &whole);
    return rest < 1e-5 || 1 - rest < 1e-5;
}

// A contract's key by its full text; false for a text that is none.
bool ReadContract(const std::string& text, ContractKey& key);
// Midnight of a prompt date "yymmdd" as far as it can be read; -1 for none at all.
long long PromptTime(const std::string& text);
inline int Days(const std::string& from, const std::string& to) {
    return static_cast<int>((PromptTime(to) - PromptTime(from)) / 86400.0);
}
inline char Reversed(char direction) {
    return direction == 'B' ? 'S' : direction == 'S' ? 'B' : direction;
}

template <typename Key>
void SetCommodity(Key& key, const std::string& sign, const std::string& exchange, char type,
                  const std::string& commodity) {
    key.sign.Set(sign);
    key.exchangeNo.Set(exchange);
    key.commodityType = type;
    key.commodityNo.Set(commodity);
}

class BothReaders : public Reader {
protected:
    BothReaders(const View& shown, World& host, const Texts& strings)
        : view(shown), world(host), texts(strings) {}

    // The code that a list of words shows: that of its line, or the only one whose word is the text, or that
    // of the record as long as the list shows what it showed at first.
    char Code(int id, const char* lines, char loaded) const;
    // At the opening, for every list of words.
    void Keep(int id) { m_first[id] = {view.Line(id), view.Text(id)}; }

    int Number(int id) const { return std::atoi(view.Text(id).c_str()); }
    double Price(int whole, int numerator, int denominator) const {
        return std::atof(view.Text(whole).c_str()) +
               Number(numerator) * 1.0 / std::atoi(view.Text(denominator).c_str());
    }
    bool Is3MDate(const CommodityRecord& commodity, const std::string& contractNo) const {
        return commodity.rollingCode == 'U' && world.threeMonthDate != "3M" &&
               world.threeMonthDate == contractNo;
    }
    // The legs of a key whose commodity is known.
    void Split(const ContractKey& key, SingleContractKey& first, SingleContractKey& second) const;

    const View view;
    World& world;
    const Texts texts;

private:
    std::map<int, std::pair<int, std::string>> m_first;
};
