#include "controls/dialog_prompt.h"

#include "controls/message_box.h"

namespace {

UINT BoxStyle(PromptButtons buttons) {
    switch (buttons) {
        case PromptButtons::OkCancel:
            return MB_OKCANCEL;
        case PromptButtons::YesNo:
            return MB_YESNO;
        default:
            return MB_OK;
    }
}

// A box that ends because the thread is to quit returns a button that nobody pressed.
bool QuitIsPending() {
    MSG message;
    return PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE) != FALSE;
}

constexpr COLORREF kWarningText = RGB(0, 0, 0);
constexpr COLORREF kWarningBackground = RGB(255, 199, 206);

}  // namespace

PromptAnswer DialogPrompt::AnswerOf(int pressed) const {
    if (!DialogExists() || QuitIsPending()) {
        return PromptAnswer::None;
    }
    switch (pressed) {
        case IDOK:
            return PromptAnswer::Ok;
        case IDCANCEL:
            return PromptAnswer::Cancel;
        case IDYES:
            return PromptAnswer::Yes;
        case IDNO:
            return PromptAnswer::No;
        default:
            return PromptAnswer::None;
    }
}

PromptAnswer DialogPrompt::Ask(const std::string& text, const std::string& caption, PromptButtons buttons) {
    if (!DialogExists()) {
        return PromptAnswer::None;
    }
    return AnswerOf(MessageBoxA(m_owner, text.c_str(), caption.c_str(), BoxStyle(buttons)));
}

PromptAnswer DialogPrompt::AskColoured(const std::string& text, const std::string& caption) {
    if (!DialogExists()) {
        return PromptAnswer::None;
    }
    return AnswerOf(XMessageBox(m_owner, text, caption, MB_OKCANCEL | kXmbBuiltInCaptions,
                                {kWarningText, kWarningBackground}));
}
