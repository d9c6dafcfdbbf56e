#pragma once

#include "framework/wnd.h"

#include <string>

// Binds `control` to the template's control on the first exchange.
void DDX_Control(CDataExchange* exchange, int id, CWnd& control);

void DDX_Text(CDataExchange* exchange, int id, std::string& value);
// Numbers are shown as "%d" and in their short form; an empty or unreadable text is 0, without a message.
void DDX_Text(CDataExchange* exchange, int id, int& value);
void DDX_Text(CDataExchange* exchange, int id, double& value);

// Selects the first item that begins with the text; shows the text itself when there is none. Reads the text
// shown.
void DDX_CBString(CDataExchange* exchange, int id, std::string& value);

void DDX_Check(CDataExchange* exchange, int id, int& value);

// Local date and time of a date-time picker; a picker without a value leaves `value` alone.
void DDX_DateTimeCtrl(CDataExchange* exchange, int id, SYSTEMTIME& value);
