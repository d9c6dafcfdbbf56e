#pragma once

#include "shown_is_sent/hands.h"

#include <initializer_list>
#include <random>

// A dialog, and what is done with it. The same seed makes the same plan everywhere.
struct Plan : Opening {
    unsigned world = 0;   // how the host's data are
    unsigned record = 0;  // seed of the record
    std::vector<Step> steps = {};

    std::string Words() const;
};

// An entry as an operator makes it, with corrections, confirmed and confirmed again.
Plan MakeEntry(unsigned seed);
// Any dialog, and anything done with it.
Plan MakeMuddle(unsigned seed, int steps);

// Records that the host could hold.
void MakeOrder(World& world, std::mt19937& random);
void MakeFill(World& world, std::mt19937& random);

// Draws that are the same everywhere.
inline int Below(std::mt19937& random, int limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
}
inline bool OneIn(std::mt19937& random, int times) {
    return Below(random, times) == 0;
}
template <typename Value>
Value Any(std::mt19937& random, std::initializer_list<Value> values) {
    return values.begin()[Below(random, static_cast<int>(values.size()))];
}
