#include "entry/telling.h"

#include "res/string_table.h"

void Tell(IPrompt& prompt, const std::string& text, unsigned captionId) {
    if (prompt.DialogExists()) {
        prompt.Ask(text, ResString(captionId), PromptButtons::Ok);
    }
}

void Tell(IPrompt& prompt, unsigned textId, unsigned captionId) {
    Tell(prompt, ResString(textId), captionId);
}

bool Agrees(IPrompt& prompt, unsigned questionId) {
    return prompt.Ask(ResString(questionId), ResString(IDS_TIPS), PromptButtons::YesNo) ==
               PromptAnswer::Yes &&
           prompt.DialogExists();
}
