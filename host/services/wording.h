#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

// The host's own words in the language of the module. Code has them in English; a text that is not in the
// table stays English. Everything is UTF-8.

// 2052, 1028, anything else is English. Set when a module is loaded; English before.
void SpeakLanguage(std::uint16_t language);

// `text` with each "%1", "%2", ... replaced by the argument of that number.
std::string Say(std::string_view text, std::initializer_list<std::string> arguments = {});
// For a menu: the letter behind "&" stays its key, in Chinese in brackets behind the word.
std::string SayMenu(std::string_view text);
