#pragma once

#include "entry/date_text.h"

// A clock that stands.
struct FixedClock : IClock {
    LocalMoment now;

    explicit FixedClock(const char* time = "2026-03-04 05:06:07", int milliseconds = 89) {
        ParseDateTimeFields(time, kRecordTimePattern, now.fields);
        now.milliseconds = milliseconds;
    }
    LocalMoment Now() const override { return now; }
};
