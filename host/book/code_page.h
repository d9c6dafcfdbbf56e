#pragma once

#include <string>
#include <string_view>

// Texts on their way through the system's code pages (CP_ACP, CP_UTF8).
std::wstring FromCodePage(std::string_view text, unsigned codePage);
std::string ToCodePage(std::wstring_view wide, unsigned codePage);
