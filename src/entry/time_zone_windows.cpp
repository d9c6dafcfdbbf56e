#include "entry/time_zone.h"

#include <windows.h>

std::string TimeZoneName(bool ofDaylightTime) {
    TIME_ZONE_INFORMATION zone{};
    GetTimeZoneInformation(&zone);
    const wchar_t* name = ofDaylightTime ? zone.DaylightName : zone.StandardName;
    char text[4 * sizeof(zone.StandardName)] = {};
    WideCharToMultiByte(CP_ACP, 0, name, -1, text, sizeof(text), nullptr, nullptr);
    return text;
}
