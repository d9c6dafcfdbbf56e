#pragma once

#include "controls/x_combo_box.h"
#include "framework/data_exchange.h"
#include "trade/code_tables.h"

#include <cstdint>
#include <string>

// The exchange of the dialogs' own kinds of values. Into the control a selection is reported as every other;
// a value that was shown and is not touched comes out as it went in, whatever the control can show of it.

// A list of words. Into the control: the code's line by its place, so that equal words do not matter; a code
// without a line stands there as its text. Out of it: the code of the selected line, else what the text says;
// 0 for an empty or unknown text.
void DDX_Code(CDataExchange* exchange, CxComboBox& combo, const CodeList& list, char& code);

// A list of coded lines. Into the control: the line of this very code (the one that is shown already, when
// several have it); without one the text of the code. Out of it: the code of the line that is shown, in the
// letters of the line, else the text without blanks at its ends.
void DDX_CodedText(CDataExchange* exchange, CxComboBox& combo, std::string& code);

void DDX_Flag(CDataExchange* exchange, int id, bool& flag);

// A whole number, read by ReadInteger.
void DDX_Number(CDataExchange* exchange, int id, std::int32_t& number);
