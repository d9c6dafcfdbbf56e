#include "entry/date_text.h"

#include "entry/time_zone.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace {

constexpr std::int64_t kSecondsPerDay = 86400;
constexpr std::size_t kMaxParsedText = 259;
constexpr int kTmYearBase = 1900;
constexpr std::string_view kRollingDate = "3M";

// Times are 64-bit in both builds; the 32-bit C libraries have their own names for that.
#ifdef _WIN32
using Time = __time64_t;
std::tm* LocalTime(const Time* time) {
    return _localtime64(time);
}
Time MakeTime(std::tm* fields) {
    return _mktime64(fields);
}
#else
using Time = std::time_t;
static_assert(sizeof(Time) == 8, "to be compiled for 64-bit times");
std::tm* LocalTime(const Time* time) {
    return std::localtime(time);
}
Time MakeTime(std::tm* fields) {
    return std::mktime(fields);
}
#endif

class MachineClock final : public IClock {
public:
    LocalMoment Now() const override {
        using namespace std::chrono;
        const auto sinceEpoch = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
        const Time seconds = static_cast<Time>(sinceEpoch / 1000);
        LocalMoment now;
        if (const std::tm* fields = LocalTime(&seconds)) {
            now.fields = *fields;
        }
        now.milliseconds = static_cast<int>(sinceEpoch % 1000);
        return now;
    }
};

char LowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// English whatever the interface language; an abbreviation is the first three letters.
constexpr const char* kWeekdays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                     "Thursday", "Friday", "Saturday"};
constexpr const char* kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                                   "July",    "August",   "September", "October", "November", "December"};
constexpr std::size_t kAbbreviation = 3;

// A directive that reads one number into one field.
struct NumberDirective {
    char directive;
    unsigned low;
    unsigned high;
    int std::tm::*field;  // null: the number is read and dropped
    int offset;           // added to the number
};
constexpr NumberDirective kNumberDirectives[] = {
    {'d', 1, 31, &std::tm::tm_mday, 0},
    {'e', 1, 31, &std::tm::tm_mday, 0},
    {'H', 0, 23, &std::tm::tm_hour, 0},
    {'k', 0, 23, &std::tm::tm_hour, 0},
    {'j', 1, 366, &std::tm::tm_yday, -1},
    {'M', 0, 59, &std::tm::tm_min, 0},
    {'m', 1, 12, &std::tm::tm_mon, -1},
    {'S', 0, 61, &std::tm::tm_sec, 0},
    {'U', 0, 53, nullptr, 0},
    {'W', 0, 53, nullptr, 0},
    {'w', 0, 6, &std::tm::tm_wday, 0},
    {'Y', 0, 9999, &std::tm::tm_year, -kTmYearBase},
};

// A directive that stands for a longer format.
struct CompositeDirective {
    char directive;
    const char* format;
};
constexpr CompositeDirective kCompositeDirectives[] = {
    {'c', "%x %X"}, {'D', "%m/%d/%y"},    {'x', "%m/%d/%y"}, {'F', "%Y-%m-%d"},
    {'R', "%H:%M"}, {'r', "%I:%M:%S %p"}, {'T', "%H:%M:%S"}, {'X', "%H:%M:%S"},
};

// Reads a text along a format. Every step returns false when the text does not suit.
class DateTimeParser {
public:
    DateTimeParser(const char* text, std::tm& fields) : m_text(text), m_fields(fields) {}

    const char* Position() const { return m_text; }

    bool Read(const char* format) {
        while (*format) {
            const char c = *format++;
            if (IsSpace(c)) {
                SkipSpace();
            } else if (c != '%') {
                if (*m_text != c) {
                    return false;
                }
                ++m_text;
            } else {
                while (*format == 'E' || *format == 'O') {
                    ++format;
                }
                if (!*format || !ReadDirective(*format++)) {
                    return false;
                }
            }
        }
        return true;
    }

private:
    bool ReadDirective(char directive) {
        for (const NumberDirective& row : kNumberDirectives) {
            if (row.directive == directive) {
                return ReadNumberField(row);
            }
        }
        for (const CompositeDirective& row : kCompositeDirectives) {
            if (row.directive == directive) {
                return Read(row.format);
            }
        }
        switch (directive) {
            case '%':
                return ReadWord("%");
            case 'a':
            case 'A':
                return ReadName(kWeekdays, m_fields.tm_wday);
            case 'b':
            case 'B':
            case 'h':
                return ReadName(kMonths, m_fields.tm_mon);
            case 'C':
                return ReadYearPart(m_century);
            case 'y':
                return ReadYearPart(m_yearOfCentury);
            case 'I':
            case 'l':
                return ReadOfCycle(12, m_fields.tm_hour);
            case 'p':
                return ReadDayHalf();
            case 'u':
                return ReadOfCycle(7, m_fields.tm_wday);
            case 'n':
            case 't':
                SkipSpace();
                return true;
            case 'Z':
                return ReadWord(TimeZoneName(false));
            case 'z':
                return ReadWord(TimeZoneName(true));
            default:
                return false;
        }
    }

    void SkipSpace() {
        while (IsSpace(*m_text)) {
            ++m_text;
        }
    }

    // Takes as many digits as a number up to `high` can have, so that adjoining numbers come apart.
    bool ReadNumber(unsigned low, unsigned high, int& number) {
        unsigned value = 0;
        unsigned digitsLeft = high;
        if (*m_text < '0' || *m_text > '9') {
            return false;
        }
        do {
            value = value * 10 + static_cast<unsigned>(*m_text++ - '0');
            digitsLeft /= 10;
        } while (value * 10 <= high && digitsLeft && *m_text >= '0' && *m_text <= '9');
        if (value < low || value > high) {
            return false;
        }
        number = static_cast<int>(value);
        return true;
    }

    bool ReadNumberField(const NumberDirective& row) {
        int number = 0;
        if (!ReadNumber(row.low, row.high, number)) {
            return false;
        }
        if (row.field) {
            m_fields.*row.field = number + row.offset;
        }
        return true;
    }

    bool ReadWord(std::string_view word) {
        for (std::size_t i = 0; i < word.size(); ++i) {
            if (LowerCase(m_text[i]) != LowerCase(word[i])) {
                return false;  // also at the text's end: no word holds a zero
            }
        }
        m_text += word.size();
        return true;
    }

    template <std::size_t Count>
    bool ReadName(const char* const (&names)[Count], int& field) {
        for (std::size_t i = 0; i < Count; ++i) {
            const std::string_view name = names[i];
            if (ReadWord(name) || ReadWord(name.substr(0, kAbbreviation))) {
                field = static_cast<int>(i);
                return true;
            }
        }
        return false;
    }

    // A century or a year of one.
    bool ReadYearPart(int& part) {
        if (!ReadNumber(0, 99, part)) {
            return false;
        }
        if (m_century >= 0) {
            m_fields.tm_year = m_century * 100 + std::max(m_yearOfCentury, 0) - kTmYearBase;
        } else {
            m_fields.tm_year = m_yearOfCentury < 69 ? m_yearOfCentury + 100 : m_yearOfCentury;
        }
        return true;
    }

    // From 1 to the length of the cycle, whose last number stands for 0.
    bool ReadOfCycle(int length, int& field) {
        int number = 0;
        if (!ReadNumber(1, static_cast<unsigned>(length), number)) {
            return false;
        }
        field = number % length;
        return true;
    }

    bool ReadDayHalf() {
        if (m_fields.tm_hour > 11) {
            return false;
        }
        const bool afternoon = ReadWord("PM");
        m_fields.tm_hour += afternoon ? 12 : 0;
        return afternoon || ReadWord("AM");
    }

    const char* m_text;
    std::tm& m_fields;
    int m_century = -1;  // -1: none was read
    int m_yearOfCentury = -1;
};

std::string WithMilliseconds(const char* pattern, int milliseconds) {
    char digits[16];
    std::snprintf(digits, sizeof(digits), "%03d", milliseconds);
    std::string text = pattern;
    for (std::size_t at = text.find("%s"); at != std::string::npos; at = text.find("%s", at)) {
        text.replace(at, 2, digits);
        at += std::string_view(digits).size();
    }
    return text;
}

}  // namespace

const IClock& SystemClock() {
    static const MachineClock clock;
    return clock;
}

void FormatLocalTime(const char* pattern, char* buffer, std::size_t bufferSize, const LocalMoment& moment) {
    if (bufferSize == 0) {
        return;
    }
    const std::string filled = WithMilliseconds(pattern, moment.milliseconds);
    if (std::strftime(buffer, bufferSize, filled.c_str(), &moment.fields) == 0) {
        buffer[0] = 0;
    }
}

void FormatLocalTime(const char* pattern, char* buffer, std::size_t bufferSize) {
    FormatLocalTime(pattern, buffer, bufferSize, SystemClock().Now());
}

std::string FormatLocalTime(const char* pattern, const LocalMoment& moment) {
    char buffer[256];
    FormatLocalTime(pattern, buffer, sizeof(buffer), moment);
    return buffer;
}

const char* ParseDateTime(const char* format, const char* text, std::tm& fields) {
    DateTimeParser parser(text, fields);
    return parser.Read(format) ? parser.Position() : nullptr;
}

bool ParseDateTimeFields(const char* text, const char* format, std::tm& fields) {
    const std::string bounded(text ? text : "", text ? strnlen(text, kMaxParsedText) : 0);
    fields = {};
    if (bounded != kRollingDate) {
        ParseDateTime(format, bounded.c_str(), fields);
    }
    return true;
}

std::int64_t ParseTimeValue(const char* text, const char* format) {
    std::tm fields;
    ParseDateTimeFields(text, format, fields);
    const Time time = MakeTime(&fields);
    return time < 0 ? -1 : time;
}

int DaysBetween(std::int64_t from, std::int64_t to) {
    return static_cast<int>((to - from) / kSecondsPerDay);
}
