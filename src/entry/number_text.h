#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// The longest text that an edit of a number takes; a longer one is no number.
inline constexpr std::size_t kMaxNumberText = 64;

// True when the text is what may stand in a number edit while it is typed: digits with at most one point ("",
// ".", "5." included), only digits when `integerOnly`, an optional leading minus when `negativeAllowed`.
bool IsNumberText(std::string_view text, bool integerOnly, bool negativeAllowed);

// The number at the start of a text, after blanks, with any sign, up to what does not belong to it: 0 when
// there is none. As atof, but the point is a point in every locale, and a number too large gives 0. Whole
// parts of prices are read by this, whole numbers by ReadInteger.
double ToDouble(std::string_view text);

// Limited to 32 bits.
std::int32_t RoundHalfAwayFromZero(double x);
// The nearest multiple of the tick, halves away from zero; the value itself for tick 0.
double RoundToTick(double value, double tick);
// The multiple of the tick towards zero; the value itself for tick 0.
std::int32_t TruncToTick(std::int32_t value, std::int32_t tick);

inline constexpr double kTickTolerance = 1e-5;
// True when |price / tick| is a whole number within the tolerance; a tick of 0, or of no value (0 by 0),
// suits every price.
bool IsWholeTicks(double price, double tick, double tolerance);
