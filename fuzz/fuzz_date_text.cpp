// A line with a format, the rest a text: the parser stays inside both, and dates in use are whole days.
#include "entry/date_text.h"
#include "fuzz/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const std::string format = input.TakeLine();
    const std::string text = input.TakeRest();

    std::tm fields{};
    const char* position = ParseDateTime(format.c_str(), text.c_str(), fields);
    Require(!position || (position >= text.c_str() && position <= text.c_str() + text.size()));
    Require(fields.tm_mon >= 0 && fields.tm_mon <= 11 && fields.tm_mday >= 0 && fields.tm_mday <= 31);
    Require(fields.tm_hour >= 0 && fields.tm_hour <= 23 && fields.tm_sec >= 0 && fields.tm_sec <= 61);
    Require(fields.tm_year >= -1900 && fields.tm_year <= 8099);

    Require(ParseTimeValue(text.c_str(), format.c_str()) >= -1);
    const std::int64_t date = ParseTimeValue(text.c_str(), kPromptDatePattern);
    const std::int64_t origin = ParseTimeValue("700102", kPromptDatePattern);
    Require(date == -1 || (date - origin) % 86400 == 0);
    return 0;
}
