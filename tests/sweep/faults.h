#pragma once

#include <functional>
#include <string>
#include <utility>

// Where something may fail, each counted through a run: a call of the host's interfaces, a message box that
// stands open, an allocation of the module, and what else it asks of the system (windows, fonts, brushes,
// ...).
enum class Site { Call, Box, Memory, Resource };
inline constexpr int kSites = 4;

// What happens there instead. The first three are answers; with the others the call is answered as usual.
enum class Kind {
    Null,        // nothing found, an empty list, a refused request, no memory, no window
    Nulls,       // a list of null entries
    Wide,        // texts that fill their fields, without a terminator
    ParentGone,  // the host destroys the dialog's parent window
    Closed,      // the host closes the dialog
    Reopened,    // the host destroys the dialog and opens another
    Burst,       // another thread posts events
    None,
};
inline constexpr int kKinds = 7;

struct Fault {
    Site site;
    unsigned number;  // the first of these that it happens at, from 1
    Kind kind;
    bool forEver;  // at all further ones too
};

// Counts what may fail during a run, and says what is to.
class Faults {
public:
    std::function<void(Kind)> disturb;  // what is no answer
    std::string sites[kSites];          // of the run: a letter for each one (see Offers)
    unsigned happened = 0;
    std::string where;  // the operation that it happened in first

    void Begin(const Fault* fault) {
        m_fault = fault;
        happened = 0;
        where.clear();
        for (std::string& site : sites) {
            site.clear();
        }
        m_counting = true;
    }
    void End() { m_counting = false; }

    // Runs what is not of the run: nothing in it is counted or fails.
    template <typename Act>
    auto Aside(Act act) {
        struct Counting {
            bool& place;
            bool former = std::exchange(place, false);
            ~Counting() { place = former; }
        } const kept{m_counting};
        return act();
    }

    Kind At(Site site, char letter, const char* operation) {
        if (!m_counting) {
            return Kind::None;
        }
        std::string& seen = sites[static_cast<int>(site)];
        seen += letter;
        if (!m_fault || m_fault->site != site || seen.size() < m_fault->number ||
            (seen.size() > m_fault->number && !m_fault->forEver) || !Offers(letter, m_fault->kind)) {
            return Kind::None;
        }
        if (happened++ == 0) {
            where = operation;
        }
        if (m_fault->kind <= Kind::Wide) {
            return m_fault->kind;
        }
        Aside([&] { disturb(m_fault->kind); });
        return Kind::None;
    }
    // What may happen at a site: v tells nothing, r answers a record, l fills a list, p answers a service, q
    // is a request, b a box, s what the system makes.
    static bool Offers(char letter, Kind kind) {
        switch (kind) {
            case Kind::Null:
                return letter != 'v' && letter != 'b';
            case Kind::Nulls:
                return letter == 'l';
            case Kind::Wide:
                return letter == 'l' || letter == 'r';
            default:
                return letter != 's';
        }
    }

private:
    const Fault* m_fault = nullptr;
    bool m_counting = false;
};
inline Faults g_faults;
