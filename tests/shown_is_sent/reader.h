#pragma once

#include "res/resource_ids.h"
#include "shown_is_sent/hands.h"

#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>

// The host's data, the module and its language.
struct Surroundings {
    World& world;
    HMODULE module;
    WORD language;
};

// Says from the windows of a dialog, the host's data and the record that the dialog was opened on what has to
// follow a confirm. It sees what an operator sees, and remembers what an operator remembers: which account
// was chosen last, which contract the dialog understood last.
class Reader {
public:
    virtual ~Reader() = default;
    // Right after the opening and after every step.
    virtual void Look() {}
    // Adds what follows to the sequel; whether the dialog closes then.
    virtual bool Foretell(Sequel& sequel) = 0;
    // What the windows show that cannot be true together; empty for nothing.
    virtual std::string Contradiction() const = 0;

protected:
    Reader(const View& shown, const Surroundings& surroundings)
        : view(shown), world(surroundings.world), around(surroundings) {}

    std::string Say(unsigned id) const { return ModuleString(around.module, id, around.language); }
    bool Tell(Sequel& out, unsigned text, unsigned caption = IDS_TIPS) const {
        out.Box(Say(text), Say(caption), "OK");
        return false;
    }
    bool Ask(Sequel& out, const std::string& text, unsigned caption, const char* buttons) const {
        return out.Box(text, Say(caption), buttons);
    }

    // The code that a list of words shows: that of the record as long as the list shows what it showed at the
    // opening, else that of its line or the only one whose word is the text. 0 for none.
    char Code(int id, const char* lines, char loaded) const;
    void Keep(int id) { m_first[id] = {view.Line(id), view.Text(id)}; }

    int Number(int id) const { return std::atoi(view.Text(id).c_str()); }
    double Price(int whole, int numerator, int denominator) const {
        return std::atof(view.Text(whole).c_str()) + Number(numerator) * 1.0 / Number(denominator);
    }
    bool Is3MDate(const CommodityRecord& commodity, const std::string& contractNo) const {
        return commodity.rollingCode == 'U' && world.threeMonthDate != "3M" &&
               world.threeMonthDate == contractNo;
    }
    // The fill of a contract, or those of its two legs one after the other, of which it becomes the second.
    bool SendLegs(Sequel& out, FillRecord& fill, const ContractKey& key, double price2) const;
    // Errors end a confirm, and so do warnings that are declined.
    bool Passes(Sequel& out, const std::string& errors, const std::string& warnings) const;
    // The first of these denominators that is not the commodity's, or numerator that it does not have.
    std::string Misfit(const CommodityRecord* commodity, const std::vector<int>& denominators,
                       const std::vector<int>& numerators) const;

    const View view;
    World& world;

private:
    const Surroundings around;
    std::map<int, std::pair<int, std::string>> m_first;
};

std::unique_ptr<Reader> OrderReader(const View& view, int mode, const OrderRecord* order,
                                    const Surroundings& surroundings);
std::unique_ptr<Reader> FillReader(const View& view, int mode, const OrderRecord* order,
                                   const FillRecord* fill, const Surroundings& surroundings);

// How an event differs from the expected one, clock digits aside: fields by name, offset and both values.
std::string Difference(const Event& expected, const Event& came);

// The commodity types of contracts of two legs.
inline constexpr const char* kTwoLegs = "mcueldgr";
// Stands for a time of the clock.
inline constexpr const char* kClock = "0000-00-00 00:00:00";

std::string Trimmed(const std::string& text);
inline std::string FirstWord(const std::string& text) {
    return text.substr(0, text.find(' '));
}
inline bool IsOneOf(char code, const char* codes) {
    return code && std::strchr(codes, code);
}
inline char Reversed(char direction) {
    return direction == 'B' ? 'S' : direction == 'S' ? 'B' : direction;
}
bool WholeTicks(double price, const CommodityRecord& commodity);
// A contract's key by its full text; false for a text that is none.
bool ReadContract(const std::string& text, ContractKey& key);
// The days between two prompt dates "yymmdd", as far as those can be read.
int Days(const std::string& from, const std::string& to);
