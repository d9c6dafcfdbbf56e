#include "entry/time_zone.h"

#include <ctime>

std::string TimeZoneName(bool ofDaylightTime) {
    tzset();
    return tzname[ofDaylightTime];
}
