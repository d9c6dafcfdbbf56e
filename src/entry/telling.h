#pragma once

#include "entry/prompt.h"
#include "res/resource_ids.h"

// Shows a text, or a message of the string table, with an OK button. Nothing once the dialog is gone.
void Tell(IPrompt& prompt, const std::string& text, unsigned captionId = IDS_TIPS);
void Tell(IPrompt& prompt, unsigned textId, unsigned captionId = IDS_TIPS);

// Asks a question of the string table. True when the operator agreed and the dialog is still there.
bool Agrees(IPrompt& prompt, unsigned questionId);
