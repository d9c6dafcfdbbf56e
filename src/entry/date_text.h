#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>

// A moment of local time: broken-down fields and milliseconds.
struct LocalMoment {
    std::tm fields{};
    int milliseconds = 0;
};

class IClock {
public:
    virtual LocalMoment Now() const = 0;

protected:
    ~IClock() = default;
};

// The machine's own clock.
const IClock& SystemClock();

inline constexpr const char* kRecordTimePattern = "%Y-%m-%d %H:%M:%S";
inline constexpr const char* kPromptDatePattern = "%y%m%d";

// strftime over the moment, with every "%s" of the pattern replaced by the milliseconds as three digits. At
// most `bufferSize` bytes are written, the terminator included.
void FormatLocalTime(const char* pattern, char* buffer, std::size_t bufferSize, const LocalMoment& moment);
void FormatLocalTime(const char* pattern, char* buffer, std::size_t bufferSize);  // now
std::string FormatLocalTime(const char* pattern, const LocalMoment& moment);

// A strptime-style parser. Returns the position behind the consumed text, null on failure; fields that were
// set before a failure keep their values.
const char* ParseDateTime(const char* format, const char* text, std::tm& fields);
// Zeroes the fields, parses at most 259 characters of the text, returns true whatever came of it. The rolling
// date "3M" is no date: nothing is read of it.
bool ParseDateTimeFields(const char* text, const char* format, std::tm& fields);
// The text as local time in seconds since 1970, daylight saving never applied; -1 when the fields give no
// representable time, also for one before 1970.
std::int64_t ParseTimeValue(const char* text, const char* format);
// Whole days from one prompt date to another, truncated toward zero.
int DaysBetween(std::int64_t from, std::int64_t to);
