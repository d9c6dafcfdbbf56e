// The number test against a plain walk over the characters; the helpers over any doubles.
#include "controls/number_text.h"
#include "fuzz/fuzz_input.h"

#include <cmath>

namespace {

bool LooksLikeNumber(std::string_view text, bool integerOnly, bool negativeAllowed) {
    int points = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '.' && !integerOnly && ++points == 1) {
            continue;
        }
        if (!(c >= '0' && c <= '9') && !(c == '-' && i == 0 && negativeAllowed)) {
            return false;
        }
    }
    return text.size() <= kMaxNumberText;
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
    const std::int32_t number = ToInt(text);
    Require(ToInt(std::to_string(number)) == number);
    return 0;
}
