#pragma once

#include "entry/prompt.h"
#include "framework/wnd.h"

// Asks in message boxes owned by a dialog, which may be destroyed meanwhile.
class DialogPrompt final : public IPrompt {
public:
    explicit DialogPrompt(const CWnd& dialog) : m_owner(dialog.m_hWnd), m_watch(&dialog) {}

    PromptAnswer Ask(const std::string& text, const std::string& caption, PromptButtons buttons) override;
    PromptAnswer AskColoured(const std::string& text, const std::string& caption) override;
    bool DialogExists() const override { return m_watch.WindowAlive(); }

private:
    // None when the dialog or the thread ended meanwhile, whatever button the box names.
    PromptAnswer AnswerOf(int pressed) const;

    HWND m_owner;
    WindowWatch m_watch;
};
