#include "entry/date_text.h"

#include "entry/time_zone.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// Runs with a time zone of its own, in the form that both C libraries read.
class TimeZone {
public:
    explicit TimeZone(const char* zone) { Set(zone); }
    ~TimeZone() { Set(""); }

private:
    static void Set(const char* zone) {
#ifdef _WIN32
        _putenv_s("TZ", zone);
        _tzset();
#else
        *zone ? setenv("TZ", zone, 1) : unsetenv("TZ");
        tzset();
#endif
    }
};

TEST(DateText, FormatsMillisecondsWhereverTheyStand) {
    LocalMoment moment;
    ASSERT_TRUE(ParseDateTimeFields("2015-03-17 14:25:30", kRecordTimePattern, moment.fields));
    moment.milliseconds = 7;
    for (const auto& [pattern, text] : {std::pair{"%m%d%H%M%S%s", "0317142530007"},
                                        {"S_%s", "S_007"},
                                        {"%s%s-%Y", "007007-2015"},
                                        {kRecordTimePattern, "2015-03-17 14:25:30"},
                                        {"", ""}}) {
        EXPECT_EQ(FormatLocalTime(pattern, moment), text);
    }
    char buffer[8] = "xxxxxxx";
    FormatLocalTime("%Y%m%d", buffer, 8, moment);
    EXPECT_STREQ(buffer, "") << "eight characters and the end do not fit";
    FormatLocalTime("%y%m%d", buffer, 7, moment);
    EXPECT_STREQ(buffer, "150317");
    FormatLocalTime("%y", buffer, 0, moment);
    EXPECT_STREQ(buffer, "150317");
}

TEST(DateText, TheMachinesClockGivesAMomentOfToday) {
    const LocalMoment now = SystemClock().Now();
    EXPECT_GE(now.fields.tm_year, 115);
    EXPECT_TRUE(now.milliseconds >= 0 && now.milliseconds < 1000);
}

// The fields that were set, each behind a letter of its own.
std::string Fields(const std::tm& tm) {
    std::string text;
    const char* letter = "SMHdmYwj";
    for (const int field :
         {tm.tm_sec, tm.tm_min, tm.tm_hour, tm.tm_mday, tm.tm_mon, tm.tm_year, tm.tm_wday, tm.tm_yday}) {
        text += field == -1 ? "" : *letter + std::to_string(field);
        ++letter;
    }
    return text;
}

TEST(DateText, ReadsEveryDirective) {
    struct {
        const char *format, *text;
        const char* rest;    // null: the text does not suit
        const char* fields;  // what was read until then
    } const rows[] = {
        // clang-format off
        {"%Y-%m-%d %H:%M:%S", "2015-03-20 09:05:00", "", "S0M5H9d20m2Y115"},
        {"%y%m%d", "150320xyz", "xyz", "d20m2Y115"}, {"%y%m%d", "151320", nullptr, "Y115"},
        {"%y%m%d", "3M", nullptr, "Y103"}, {"", "abc", "abc", ""}, {"a%%b", "a%b", "", ""},
        {"%a", "sUNdays", "s", "w0"}, {"%A", "Satur", "ur", "w6"}, {"%A", "Sa", nullptr, ""},
        {"%b", "MAY", "", "m4"}, {"%h", "Sept", "t", "m8"}, {"%B", "December", "", "m11"},
        {"%C", "20", "", "Y100"}, {"%C%y", "1969", "", "Y69"}, {"%C%y", "1915", "", "Y15"},
        {"%y%C", "1519", "", "Y15"}, {"%y", "68", "", "Y168"}, {"%y", "69", "", "Y69"},
        {"%c", "03/20/15 09:05:01", "", "S1M5H9d20m2Y115"}, {"%D", "12/31/99", "", "d31m11Y99"},
        {"%x", "2/29/16", "", "d29m1Y116"}, {"%d", "32", nullptr, ""}, {"%d", "4x", "x", "d4"},
        {"%d", "0", nullptr, ""}, {"%e", "311", "1", "d31"}, {"%d", "45", "5", "d4"},
        {"%F", "1970-01-01", "", "d1m0Y70"}, {"%H", "23", "", "H23"}, {"%k", "24", nullptr, ""},
        {"%I", "12", "", "H0"}, {"%l", "0", nullptr, ""}, {"%j", "366", "", "j365"},
        {"%j", "0", nullptr, ""}, {"%M", "59", "", "M59"}, {"%M", "60", "0", "M6"}, {"%m", "12", "", "m11"},
        {"a%n%tb", "a \t\nb", "", ""}, {"a b", "ab", "", ""}, {"%I%p", "1pm", "", "H13"},
        {"%I %p", "12 AM", "", "H0"}, {"%H%p", "12PM", nullptr, "H12"}, {"%H%p", "11XM", nullptr, "H11"},
        {"%R", "7:08", "", "M8H7"}, {"%r", "12:30:15 PM", "", "S15M30H12"}, {"%S", "61", "", "S61"},
        {"%T", "23:59:59", "", "S59M59H23"}, {"%X", "1:2:3", "", "S3M2H1"}, {"%U%W", "5353", "", ""},
        {"%U", "54", nullptr, ""}, {"%u", "7", "", "w0"}, {"%u", "8", nullptr, ""}, {"%w", "6", "", "w6"},
        {"%Y", "9999", "", "Y8099"}, {"%Y", "15", "", "Y-1885"}, {"%Ey%Om", "1503", "", "m2Y115"},
        {"%EOEd", "9", "", "d9"}, {"%q", "q", nullptr, ""}, {"%", "%", nullptr, ""},
        {"%E", "%", nullptr, ""},
        // clang-format on
    };
    for (const auto& row : rows) {
        std::tm fields;
        std::memset(&fields, -1, sizeof fields);
        const char* rest = ParseDateTime(row.format, row.text, fields);
        EXPECT_EQ(rest ? rest : "(fails)", std::string(row.rest ? row.rest : "(fails)"))
            << row.format << " on " << row.text;
        EXPECT_EQ(Fields(fields), row.fields) << row.format << " on " << row.text;
        EXPECT_EQ(fields.tm_isdst, -1);
    }
}

TEST(DateText, ReadsTheNamesOfTheTimeZone) {
    const TimeZone zone("EST5EDT");
    std::tm fields{};
    for (const bool daylight : {false, true}) {
        std::string text = TimeZoneName(daylight) + "!";
        ASSERT_GT(text.size(), 1u);
        text[0] = static_cast<char>(text[0] ^ 0x20);
        const char* rest = ParseDateTime(daylight ? "%z" : "%Z", text.c_str(), fields);
        ASSERT_NE(rest, nullptr) << text;
        EXPECT_STREQ(rest, "!");
        EXPECT_EQ(ParseDateTime(daylight ? "%z" : "%Z", "nowhere", fields), nullptr);
    }
}

TEST(DateText, AFailureIsHiddenAndLongTextsAreCut) {
    const std::string padded = std::string(255, ' ') + "2015";
    const std::string tooLong = " " + padded;
    const struct {
        const char *text, *pattern;
        int year;
    } rows[] = {
        {"1513", kPromptDatePattern, 115},  // what was read stays
        {"3M", kPromptDatePattern, 0},        {nullptr, kPromptDatePattern, 0},
        {padded.c_str(), " %Y", 115},  // 259 characters are read
        {tooLong.c_str(), " %Y", 201 - 1900},
    };
    std::tm fields;
    for (const auto& row : rows) {
        EXPECT_TRUE(ParseDateTimeFields(row.text, row.pattern, fields));
        EXPECT_EQ(fields.tm_year, row.year) << (row.text ? row.text : "null");
    }
}

TEST(DateText, TimeValuesAreLocalMidnights) {
    struct {
        const char *zone, *text;
        std::int64_t value;
    } const rows[] = {
        // clang-format off
        {"UTC0", "150320", 1426809600}, {"CST-8", "150320", 1426780800}, {"UTC0", "160229", 1456704000},
        {"UTC0", "150229", 1425168000},  // becomes 1 March
        {"UTC0", "151231", 1451520000}, {"UTC0", "681231", 3124137600},  // behind the end of 32-bit times
        {"UTC0", "700101", 0}, {"UTC0", "690101", -1}, {"UTC0", "3M", -1}, {"UTC0", "", -1},
        {"UTC0", "150320 and more", 1426809600},
        // Daylight saving time is never assumed: a summer day starts an hour later by the clock.
        {"EST5EDT", "150120", 1421730000}, {"EST5EDT", "150720", 1437368400},
        // clang-format on
    };
    for (const auto& row : rows) {
        const TimeZone zone(row.zone);
        EXPECT_EQ(ParseTimeValue(row.text, kPromptDatePattern), row.value) << row.text << " in " << row.zone;
    }
}

TEST(DateText, DaysBetweenPromptDatesAreWholeAcrossDaylightChanges) {
    struct {
        const char *from, *to;
        int days;
    } const rows[] = {
        {"150301", "150401", 31}, {"151001", "151201", 61},   {"160228", "160301", 2},
        {"150228", "150301", 1},  {"151231", "160101", 1},    {"150320", "150320", 0},
        {"150321", "150320", -1}, {"150720", "150120", -181},
    };
    for (const char* name : {"UTC0", "EST5EDT", "CST-8"}) {
        const TimeZone zone(name);
        for (const auto& row : rows) {
            const std::int64_t from = ParseTimeValue(row.from, kPromptDatePattern);
            EXPECT_EQ(DaysBetween(from, ParseTimeValue(row.to, kPromptDatePattern)), row.days)
                << row.from << " to " << row.to << " in " << name;
        }
    }
    EXPECT_EQ(DaysBetween(0, 86399), 0);
    EXPECT_EQ(DaysBetween(86399, 0), 0) << "truncated toward zero";
}

}  // namespace
