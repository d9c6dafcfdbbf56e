#pragma once

#include <optional>
#include <string_view>

// What scenarios call the controls of the module's dialogs, and the words of the codes that their lists show.

enum class DialogKind { kOrder, kFill };

// Which codes a list shows; their words are in the module's string table.
enum class CodeList { kNone, kDirection, kOrderState, kOrderType, kValidity, kSource };

struct NamedControl {
    int id;
    CodeList codes;
};

// "account", "order-price-numerator", or a number as "#1061". Empty when the dialog has no such control.
std::optional<NamedControl> FindControl(std::string_view name, DialogKind dialog);

// The string that a list of this kind shows for a code; 0 when the list has no such code.
unsigned StringOfCode(CodeList list, char code);
