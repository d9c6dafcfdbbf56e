#pragma once

#include "shown_is_sent/hands.h"

#include <random>

// A dialog on a record, and what is done with it. The same seed makes the same plan everywhere.
struct Plan {
    bool fillDialog = false;
    int mode = 0;
    int recordKind = -1;  // 0 an order, 2 a fill, -1 nothing
    unsigned world = 0;   // how the host's data are
    unsigned record = 0;  // seed of the record
    std::vector<Step> steps;

    std::string Words() const;
};

Plan MakePlan(unsigned seed);
// One thing that may be done with the dialog at any time.
Step AnyStep(bool fillDialog, std::mt19937& random);

// A record that the host could hold.
void MakeOrder(World& world, std::mt19937& random);
void MakeFill(World& world, std::mt19937& random);
