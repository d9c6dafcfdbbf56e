#pragma once

#include "framework/dialog.h"

// Creates the dialog's window from the template `id` in the language of the module, with the initial list
// texts that the template has in that same language, if any. False when there is no such template or the
// window could not be created; see CDialog::CreateIndirect for what is left then.
bool CreateFromResources(CDialog& dialog, unsigned id, HWND parent);
