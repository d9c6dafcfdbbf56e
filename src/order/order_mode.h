#pragma once

#include <string>

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

struct OrderModeTraits {
    OrderMode mode;
    int templateId;
    unsigned titleId;    // string with the number and the account of the original order; 0: the template's
    unsigned confirmId;  // 0: the template's, or the carry's own words
    int focusId;         // control that has the focus first; 0: as the template gives it
};

// The traits of Input for a number without a name.
const OrderModeTraits& TraitsOf(OrderMode mode);

struct OrderRecord;
// Title of the dialog; empty: the template's caption stays. `original` may be null.
std::string OrderTitle(OrderMode mode, const OrderRecord* original);
// Caption of the confirm button when the dialog opens; empty: the template's.
std::string ConfirmText(OrderMode mode);
// Caption of the confirm button once a direction was chosen, 0 for none.
std::string ConfirmTextForDirection(OrderMode mode, char direction);
