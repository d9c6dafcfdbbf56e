#pragma once

// What an order dialog works at. The host gives the mode as a number; a number without a name here looks like
// Input and its confirm button sends nothing.
enum class OrderMode : int {
    Input = 0,         // a new order, with its fill when it has already traded
    Carry = 1,         // a nearby and a forward order and their fills
    Modify = 2,        // of an existing order
    RemoveFilled = 3,  // take back the fills of an existing order
    Move = 4,          // of an existing order to another account
    Exercise = 5,      // of an option position
};

// The modes that correct an order the server already has.
constexpr bool CorrectsOrder(OrderMode mode) {
    return mode == OrderMode::Modify || mode == OrderMode::RemoveFilled || mode == OrderMode::Move;
}
