#pragma once

#include "shown_is_sent/hands.h"

#include <random>

// A dialog on a record, and what is done with it. The same seed makes the same plan everywhere.
struct Plan {
    bool fillDialog = false;
    int mode = 0;
    int recordKind = -1;  // kRecordKindOrder, kRecordKindFill, or none
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

// A shorter plan that still fails, with what it fails with. `play` returns that, empty when all is well.
std::string Shrink(Plan& plan, const std::function<std::string(const Plan&)>& play);
