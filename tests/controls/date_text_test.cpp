#include "controls/date_text.h"

#include "controls/time_zone.h"

#include <gtest/gtest.h>

#include <cstdlib>
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
    EXPECT_EQ(FormatLocalTime("%m%d%H%M%S%s", moment), "0317142530007");
    EXPECT_EQ(FormatLocalTime("S_%s", moment), "S_007");
    EXPECT_EQ(FormatLocalTime("%s%s-%Y", moment), "007007-2015");
    EXPECT_EQ(FormatLocalTime(kRecordTimePattern, moment), "2015-03-17 14:25:30");
    EXPECT_EQ(FormatLocalTime("", moment), "");

    char buffer[8] = "xxxxxxx";
    FormatLocalTime("%Y%m%d", buffer, 8, moment);
    EXPECT_STREQ(buffer, "") << "eight characters and the end do not fit";
    FormatLocalTime("%y%m%d", buffer, 7, moment);
    EXPECT_STREQ(buffer, "150317");
    buffer[0] = 'x';
    FormatLocalTime("%y", buffer, 0, moment);
    EXPECT_EQ(buffer[0], 'x');
}

TEST(DateText, TheMachinesClockGivesAMomentOfToday) {
    const LocalMoment now = SystemClock().Now();
    EXPECT_GE(now.fields.tm_year, 115);
    EXPECT_GE(now.fields.tm_mday, 1);
    EXPECT_TRUE(now.milliseconds >= 0 && now.milliseconds < 1000);
}

// The fields start at -1, so that what a directive leaves alone shows.
std::string Fields(const std::tm& tm) {
    std::string text;
    for (const int field : {tm.tm_year, tm.tm_mon, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec, tm.tm_wday,
                            tm.tm_yday, tm.tm_isdst}) {
        text += (text.empty() ? "" : " ") + (field == -1 ? std::string("_") : std::to_string(field));
    }
    return text;
}

TEST(DateText, ReadsEveryDirective) {
    struct {
        const char* format;
        const char* text;
        const char* rest;    // null: the text does not suit
        const char* fields;  // year month day hour minute second weekday day-of-year daylight
    } const rows[] = {
        {"%Y-%m-%d %H:%M:%S", "2015-03-20 09:05:00", "", "115 2 20 9 5 0 _ _ _"},
        {"%y%m%d", "150320", "", "115 2 20 _ _ _ _ _ _"},
        {"%y%m%d", "150320xyz", "xyz", "115 2 20 _ _ _ _ _ _"},
        {"%y%m%d", "15", nullptr, "115 _ _ _ _ _ _ _ _"},
        {"%y%m%d", "151320", nullptr, "115 _ _ _ _ _ _ _ _"},
        {"%y%m%d", "3M", nullptr, "103 _ _ _ _ _ _ _ _"},
        {"", "abc", "abc", "_ _ _ _ _ _ _ _ _"},
        {"a%%b", "a%b", "", "_ _ _ _ _ _ _ _ _"},
        {"a", "A", nullptr, "_ _ _ _ _ _ _ _ _"},
        {"%a", "sUNdays", "s", "_ _ _ _ _ _ 0 _ _"},
        {"%A", "Satur", "ur", "_ _ _ _ _ _ 6 _ _"},
        {"%A", "Sa", nullptr, "_ _ _ _ _ _ _ _ _"},
        {"%b", "MAY", "", "_ 4 _ _ _ _ _ _ _"},
        {"%h", "Sept", "t", "_ 8 _ _ _ _ _ _ _"},
        {"%B", "December", "", "_ 11 _ _ _ _ _ _ _"},
        {"%C", "20", "", "100 _ _ _ _ _ _ _ _"},
        {"%C%y", "1969", "", "69 _ _ _ _ _ _ _ _"},
        {"%C%y", "1915", "", "15 _ _ _ _ _ _ _ _"},
        {"%y%C", "1519", "", "15 _ _ _ _ _ _ _ _"},
        {"%y", "68", "", "168 _ _ _ _ _ _ _ _"},
        {"%y", "69", "", "69 _ _ _ _ _ _ _ _"},
        {"%c", "03/20/15 09:05:01", "", "115 2 20 9 5 1 _ _ _"},
        {"%D", "12/31/99", "", "99 11 31 _ _ _ _ _ _"},
        {"%x", "2/29/16", "", "116 1 29 _ _ _ _ _ _"},
        {"%d", "32", nullptr, "_ _ _ _ _ _ _ _ _"},
        {"%d", "4x", "x", "_ _ 4 _ _ _ _ _ _"},
        {"%d", "0", nullptr, "_ _ _ _ _ _ _ _ _"},
        {"%d", " 4", nullptr, "_ _ _ _ _ _ _ _ _"},
        {"%e", "311", "1", "_ _ 31 _ _ _ _ _ _"},
        {"%d", "45", "5", "_ _ 4 _ _ _ _ _ _"},
        {"%F", "1970-01-01", "", "70 0 1 _ _ _ _ _ _"},
        {"%H", "23", "", "_ _ _ 23 _ _ _ _ _"},
        {"%k", "24", nullptr, "_ _ _ _ _ _ _ _ _"},
        {"%I", "12", "", "_ _ _ 0 _ _ _ _ _"},
        {"%l", "0", nullptr, "_ _ _ _ _ _ _ _ _"},
        {"%j", "366", "", "_ _ _ _ _ _ _ 365 _"},
        {"%j", "0", nullptr, "_ _ _ _ _ _ _ _ _"},
        {"%M", "59", "", "_ _ _ _ 59 _ _ _ _"},
        {"%M", "60", "0", "_ _ _ _ 6 _ _ _ _"},
        {"%m", "12", "", "_ 11 _ _ _ _ _ _ _"},
        {"a%n%tb", "a \t\nb", "", "_ _ _ _ _ _ _ _ _"},
        {"a b", "ab", "", "_ _ _ _ _ _ _ _ _"},
        {"%I%p", "1pm", "", "_ _ _ 13 _ _ _ _ _"},
        {"%I %p", "12 AM", "", "_ _ _ 0 _ _ _ _ _"},
        {"%H%p", "12PM", nullptr, "_ _ _ 12 _ _ _ _ _"},
        {"%H%p", "11XM", nullptr, "_ _ _ 11 _ _ _ _ _"},
        {"%R", "7:08", "", "_ _ _ 7 8 _ _ _ _"},
        {"%r", "12:30:15 PM", "", "_ _ _ 12 30 15 _ _ _"},
        {"%S", "61", "", "_ _ _ _ _ 61 _ _ _"},
        {"%T", "23:59:59", "", "_ _ _ 23 59 59 _ _ _"},
        {"%X", "1:2:3", "", "_ _ _ 1 2 3 _ _ _"},
        {"%U%W", "5353", "", "_ _ _ _ _ _ _ _ _"},
        {"%U", "54", nullptr, "_ _ _ _ _ _ _ _ _"},
        {"%u", "7", "", "_ _ _ _ _ _ 0 _ _"},
        {"%u", "8", nullptr, "_ _ _ _ _ _ _ _ _"},
        {"%w", "6", "", "_ _ _ _ _ _ 6 _ _"},
        {"%Y", "9999", "", "8099 _ _ _ _ _ _ _ _"},
        {"%Y", "15", "", "-1885 _ _ _ _ _ _ _ _"},
        {"%Ey%Om", "1503", "", "115 2 _ _ _ _ _ _ _"},
        {"%EOEd", "9", "", "_ _ 9 _ _ _ _ _ _"},
        {"%q", "q", nullptr, "_ _ _ _ _ _ _ _ _"},
        {"%", "%", nullptr, "_ _ _ _ _ _ _ _ _"},
        {"%E", "%", nullptr, "_ _ _ _ _ _ _ _ _"},
    };
    for (const auto& row : rows) {
        std::tm fields{};
        fields.tm_year = fields.tm_mon = fields.tm_mday = fields.tm_hour = fields.tm_min = fields.tm_sec =
            fields.tm_wday = fields.tm_yday = fields.tm_isdst = -1;
        const char* rest = ParseDateTime(row.format, row.text, fields);
        EXPECT_EQ(rest ? rest : "(fails)", std::string(row.rest ? row.rest : "(fails)"))
            << row.format << " on " << row.text;
        EXPECT_EQ(Fields(fields), row.fields) << row.format << " on " << row.text;
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
    std::tm fields;
    EXPECT_TRUE(ParseDateTimeFields("1513", kPromptDatePattern, fields));
    EXPECT_EQ(fields.tm_year, 115) << "what was read stays";
    EXPECT_TRUE(ParseDateTimeFields("3M", kPromptDatePattern, fields));
    EXPECT_EQ(fields.tm_year, 0);
    EXPECT_TRUE(ParseDateTimeFields(nullptr, "%d", fields));
    EXPECT_EQ(fields.tm_mday, 0);
    const std::string padded = std::string(255, ' ') + "2015";
    ParseDateTimeFields(padded.c_str(), " %Y", fields);
    EXPECT_EQ(fields.tm_year, 115) << "259 characters are read";
    ParseDateTimeFields((" " + padded).c_str(), " %Y", fields);
    EXPECT_EQ(fields.tm_year, 201 - 1900) << "and no more";
}

TEST(DateText, TimeValuesAreLocalMidnights) {
    struct {
        const char* zone;
        const char* text;
        std::int64_t value;
    } const rows[] = {
        {"UTC0", "150320", 1426809600},
        {"CST-8", "150320", 1426780800},
        {"UTC0", "160229", 1456704000},
        {"UTC0", "150229", 1425168000},  // becomes 1 March
        {"UTC0", "151231", 1451520000},
        {"UTC0", "681231", 3124137600},  // behind the end of 32-bit times
        {"UTC0", "700101", 0},
        {"UTC0", "690101", -1},
        {"UTC0", "3M", -1},
        {"UTC0", "", -1},
        {"UTC0", "150320 and more", 1426809600},
        // Daylight saving time is never assumed: a summer day starts an hour later by the clock.
        {"EST5EDT", "150120", 1421730000},
        {"EST5EDT", "150720", 1437368400},
    };
    for (const auto& row : rows) {
        const TimeZone zone(row.zone);
        EXPECT_EQ(ParseTimeValue(row.text, kPromptDatePattern), row.value) << row.text << " in " << row.zone;
    }
}

TEST(DateText, DaysBetweenPromptDatesAreWholeAcrossDaylightChanges) {
    struct {
        const char* from;
        const char* to;
        int days;
    } const rows[] = {
        {"150301", "150401", 31}, {"151001", "151201", 61},   {"160228", "160301", 2},
        {"150228", "150301", 1},  {"151231", "160101", 1},    {"150320", "150320", 0},
        {"150321", "150320", -1}, {"150720", "150120", -181},
    };
    for (const char* name : {"UTC0", "EST5EDT", "CST-8"}) {
        const TimeZone zone(name);
        for (const auto& row : rows) {
            EXPECT_EQ(DaysBetween(ParseTimeValue(row.from, kPromptDatePattern),
                                  ParseTimeValue(row.to, kPromptDatePattern)),
                      row.days)
                << row.from << " to " << row.to << " in " << name;
        }
    }
    EXPECT_EQ(DaysBetween(0, 86399), 0);
    EXPECT_EQ(DaysBetween(86399, 0), 0) << "truncated toward zero";
}

}  // namespace
