#pragma once

#include "framework/call_note.h"

#include <cstring>

// Gives a variable another value until the end of the scope, however it is left.
template <typename Value>
class ScopedValue {
    static_assert(sizeof(Value) <= sizeof(std::intptr_t));

public:
    ScopedValue(Value& variable, Value meanwhile) : m_note(&variable, &PutBack, Pack(variable)) {
        variable = meanwhile;
    }

private:
    static std::intptr_t Pack(const Value& value) {
        std::intptr_t packed = 0;
        std::memcpy(&packed, &value, sizeof(value));
        return packed;
    }
    static void PutBack(void* variable, std::intptr_t former) {
        std::memcpy(variable, &former, sizeof(Value));
    }

    CallNote m_note;
};
