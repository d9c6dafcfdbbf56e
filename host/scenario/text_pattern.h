#pragma once

#include <string>
#include <string_view>

// A text that a scenario expects, in which kAnything stands for any run of characters.
constexpr char kAnything = '\x01';

bool Matches(std::string_view text, std::string_view pattern);

// Each '*' means anything.
std::string PatternFromWildcards(std::string_view text);
// Each placeholder ("%s", "%d", "%.2f") means anything.
std::string PatternFromFormat(std::string_view format);
// For messages: as a person would write it.
std::string ShowPattern(std::string_view pattern);
