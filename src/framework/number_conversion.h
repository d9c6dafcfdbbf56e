#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Numbers of texts and texts of numbers, the same in every locale and under every floating-point setting of
// the host. They go through the C library, which is in the module anyway: the tables of std::from_chars and
// std::to_chars for doubles would be a fifth of it.

// The decimal number that a text begins with: a sign, digits with a point among them, an exponent. 0 when
// there is none or it is out of range. `rest` is what follows it, the whole text when there is none.
double ReadDecimal(std::string_view text, std::string_view& rest);

// The number that a text is, blanks at its ends aside; 0 when it is none. Every quantity and numerator that
// is entered is read by ReadInteger.
double ReadWholeDecimal(std::string_view text);
std::int32_t ReadInteger(std::string_view text);

// A finite number with so many decimals, fewer when the last are zeros: "-97.25".
std::string WriteDecimal(double value, int decimals);

// A number in fifteen digits at most: "97.25", "1e-05", "nan".
std::string WriteShort(double value);

// The power of ten of the first of so many digits: 1 for 97.25, 2 for 99.96 in three digits.
int DecimalExponent(double value, int digits);
