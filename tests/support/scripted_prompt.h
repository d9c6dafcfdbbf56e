#pragma once

#include "entry/prompt.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

// Answers questions in the order in which they were scripted and keeps what was asked. A question beyond the
// script is answered by None.
class ScriptedPrompt : public IPrompt {
public:
    struct Asked {
        std::string text;
        std::string caption;
        PromptButtons buttons;
        bool coloured;
    };
    std::deque<PromptAnswer> answers;
    std::vector<Asked> asked;
    bool dialogExists = true;
    std::function<void()> whileAsking;  // what happens behind an open question

    PromptAnswer Ask(const std::string& text, const std::string& caption, PromptButtons buttons) override {
        return Answer({text, caption, buttons, false});
    }
    PromptAnswer AskColoured(const std::string& text, const std::string& caption) override {
        return Answer({text, caption, PromptButtons::OkCancel, true});
    }
    bool DialogExists() const override { return dialogExists; }

private:
    PromptAnswer Answer(Asked question) {
        asked.push_back(std::move(question));
        if (whileAsking) {
            whileAsking();
        }
        if (answers.empty()) {
            return PromptAnswer::None;
        }
        const PromptAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }
};
