// The number test against its regular expressions; the helpers over any doubles.
#include "entry/number_text.h"
#include "framework/number_conversion.h"
#include "fuzz/fuzz_input.h"

#include <cmath>
#include <regex>

namespace {

// As the expressions say that define it, in the length that their matcher bears.
bool LooksLikeNumber(const std::string& text, bool integerOnly, bool negativeAllowed) {
    static const std::regex patterns[2][2] = {
        {std::regex(R"(^(\d+)?(\.)?(\d+)?$)"), std::regex(R"(^(-)?(\d+)?(\.)?(\d+)?$)")},
        {std::regex(R"(^(\d+)?$)"), std::regex(R"(^(-)?(\d+)?$)")},
    };
    return text.size() <= kMaxNumberText && std::regex_match(text, patterns[integerOnly][negativeAllowed]);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const auto flags = input.Take<std::uint8_t>();
    if (flags & 4) {
        const auto value = input.Take<double>();
        const auto tick = input.Take<double>();
        RoundHalfAwayFromZero(value);
        RoundToTick(value, tick);
        IsWholeTicks(value, tick, kTickTolerance);
        const auto whole = input.Take<std::int32_t>();
        const auto wholeTick = input.Take<std::int32_t>();
        Require(wholeTick == 0 || std::int64_t{TruncToTick(whole, wholeTick)} % wholeTick == 0);
        return 0;
    }
    const std::string text = input.TakeRest();
    const bool integerOnly = flags & 1;
    const bool negativeAllowed = flags & 2;
    Require(IsNumberText(text, integerOnly, negativeAllowed) ==
            LooksLikeNumber(text, integerOnly, negativeAllowed));
    Require(std::isfinite(ToDouble(text)));
    const std::int32_t number = ReadInteger(text);
    Require(ReadInteger(std::to_string(number)) == number);
    return 0;
}
