#pragma once

#include <string>

enum class PromptButtons { Ok, OkCancel, YesNo };

// None: the question ended without an answer (its owner was destroyed, a quit is pending, the box could not
// be shown). It is never consent.
enum class PromptAnswer { None, Ok, Cancel, Yes, No };

// Asks the operator; the dialogs implement it with message boxes, tests with a script. Every call runs a
// message loop, during which the dialog may be destroyed: ask DialogExists before touching anything of it.
class IPrompt {
public:
    virtual PromptAnswer Ask(const std::string& text, const std::string& caption, PromptButtons buttons) = 0;
    // The coloured OK/Cancel question about an order that did not come from the back office.
    virtual PromptAnswer AskColoured(const std::string& text, const std::string& caption) = 0;
    virtual bool DialogExists() const = 0;

protected:
    ~IPrompt() = default;
};
