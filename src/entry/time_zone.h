#pragma once

#include <string>

// The local time zone's standard or daylight name as the system calls it, in the ANSI code page.
std::string TimeZoneName(bool ofDaylightTime);
