#pragma once

// What a layout wants of one control; Keep leaves that side of it as it is.
enum class Wanted { Keep, No, Yes };

struct ControlState {
    int id;
    Wanted shown = Wanted::Keep;
    Wanted enabled = Wanted::Keep;
};

constexpr Wanted WantedIf(bool condition) {
    return condition ? Wanted::Yes : Wanted::No;
}
