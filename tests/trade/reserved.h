#pragma once

// A slot that the module never calls.
#define RESERVED(slot) \
    void Reserved##slot() override {}
