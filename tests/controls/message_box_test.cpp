#include "controls/message_box.h"

#include "controls/dialog_prompt.h"
#include "controls/message_box_layout.h"
#include "framework/owned_handle.h"
#include "framework/window_helpers.h"
#include "support/message_box_script.h"
#include "support/window_kit.h"

#include <gtest/gtest.h>

#include <array>

namespace {

constexpr XMessageBoxParameters kRed{RGB(0, 0, 0), RGB(255, 199, 206)};
constexpr UINT kStyle = MB_OKCANCEL | kXmbBuiltInCaptions | kXmbNoSound;
constexpr int kMessageId = 1001;

struct MessageBoxes : testing::Test {
    HostWindow host;

    // Opens the box over the host window and runs `act` in its message loop.
    int Show(const std::function<void(HWND)>& act, const std::string& text = "text",
             const std::string& caption = "caption") {
        const MessageBoxScript script({{text, caption, 0, act}});
        return XMessageBox(host.Get(), text, caption, kStyle, kRed);
    }
};

void HoldControl(bool held) {
    std::array<BYTE, 256> state{};
    state[VK_CONTROL] = held ? 0x80 : 0;
    SetKeyboardState(state.data());
}

void CopyAndCancel(HWND box) {
    HoldControl(true);
    PostMessageA(GetDlgItem(box, IDOK), WM_KEYDOWN, 'C', 1);
    PostMessageA(box, WM_COMMAND, IDCANCEL, 0);
}

std::string ClipboardText() {
    HoldControl(false);
    OpenClipboard(nullptr);
    const HANDLE data = GetClipboardData(CF_TEXT);
    const std::string text = data ? static_cast<const char*>(GlobalLock(data)) : "";
    CloseClipboard();
    return text;
}

TEST_F(MessageBoxes, EndsWithTheButtonOrKeyPressed) {
    const struct {
        const char* what;
        int button;  // that the message goes to; 0 for the box
        UINT message;
        WPARAM key;
        int result;
    } rows[] = {
        {"Ok", IDOK, BM_CLICK, 0, IDOK},
        {"Cancel", IDCANCEL, BM_CLICK, 0, IDCANCEL},
        {"Enter", IDOK, WM_KEYDOWN, VK_RETURN, IDOK},
        {"Escape", IDOK, WM_KEYDOWN, VK_ESCAPE, IDCANCEL},
        {"close box", 0, WM_CLOSE, 0, IDCANCEL},
    };
    for (const auto& row : rows) {
        const auto act = [&](HWND box) {
            PostMessageA(row.button ? GetDlgItem(box, row.button) : box, row.message, row.key, 1);
        };
        EXPECT_EQ(Show(act), row.result) << row.what;
        EXPECT_TRUE(IsWindowEnabled(host.Get())) << row.what;
    }
}

TEST_F(MessageBoxes, TheSpaceBarPressesNothing) {
    const auto act = [](HWND box) {
        for (const UINT message : {WM_KEYDOWN, WM_KEYUP}) {
            PostMessageA(GetFocus(), message, VK_SPACE, 1);
        }
        PostMessageA(box, WM_CLOSE, 0, 0);
    };
    EXPECT_EQ(Show(act), IDCANCEL);
}

TEST_F(MessageBoxes, LooksAsAsked) {
    Show([&](HWND box) {
        EXPECT_FALSE(IsWindowEnabled(host.Get()));
        EXPECT_EQ(GetWindow(box, GW_OWNER), host.Get());
        constexpr LONG addedBySystem = WS_CLIPSIBLINGS | DS_3DLOOK;
        EXPECT_EQ(GetWindowLongA(box, GWL_STYLE) & ~addedBySystem, static_cast<LONG>(0x90C80880));
        EXPECT_EQ(TextOf(GetDlgItem(box, IDOK)), "&Ok");
        EXPECT_EQ(TextOf(GetDlgItem(box, IDCANCEL)), "Cancel");
        EXPECT_EQ(GetFocus(), GetDlgItem(box, IDOK));
        EXPECT_EQ(LOWORD(SendMessageA(box, DM_GETDEFID, 0, 0)), IDOK);

        const WindowDc dc(box);
        const LRESULT brush = SendMessageA(box, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc.Get()),
                                           reinterpret_cast<LPARAM>(GetDlgItem(box, kMessageId)));
        LOGBRUSH description{};
        GetObjectA(reinterpret_cast<HBRUSH>(brush), sizeof(description), &description);
        EXPECT_EQ(description.lbColor, 0x00CEC7FFU);
        EXPECT_EQ(GetTextColor(dc.Get()), 0U);
        EXPECT_EQ(GetBkColor(dc.Get()), 0x00CEC7FFU);
        PostMessageA(box, WM_COMMAND, IDOK, 0);
    });
}

TEST_F(MessageBoxes, ControlCCopiesTheWholeBox) {
    const std::string line = "---------------------------\r\n";
    for (const auto& [message, copied] :
         {std::pair<std::string, std::string>{"Modify\r\nit?", "Modify\r\nit?"},
          {std::string(5000, 'm'), std::string(4000, 'm')}}) {
        EXPECT_EQ(Show(&CopyAndCancel, message, "Question"), IDCANCEL);
        EXPECT_EQ(ClipboardText(),
                  line + "Question\r\n" + line + copied + "\r\n" + line + "Ok   Cancel   \r\n" + line);
    }
    Show(&CopyAndCancel, std::string(4500, 'm'), std::string(6000, 'c'));
    EXPECT_EQ(ClipboardText().size(), 8191U);
}

TEST_F(MessageBoxes, QuitEndsTheBoxAndStaysPending) {
    EXPECT_EQ(Show([](HWND) { PostQuitMessage(77); }), IDCANCEL);
    MSG quit{};
    ASSERT_TRUE(PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(quit.wParam, 77U);
}

TEST_F(MessageBoxes, NotShownOrLosingItsOwnerIsNoConsent) {
    EXPECT_EQ(XMessageBox(reinterpret_cast<HWND>(0x1234), "text", "caption", kStyle, kRed), IDCANCEL);
    EXPECT_EQ(Show([&](HWND) { host.Destroy(); }), IDCANCEL);
}

TEST(MessageBoxLayouts, RowsOfFigures) {
    const struct {
        const char* what;
        bool version6;
        SIZE measured;
        std::vector<int> captions;
        std::vector<LONG>
            figures;  // client size, height of the message's area; message, first and last button
    } rows[] = {
        // clang-format off
        {"the row is centred under a long text", true, {400, 32}, {20, 40},
         {444, 143, 93, 16, 32, 428, 93, 121, 103, 209, 133, 235, 103, 323, 133}},
        {"before version 6", false, {400, 32}, {20, 40},
         {428, 118, 70, 16, 16, 428, 61, 125, 80, 201, 108, 227, 80, 303, 108}},
        {"a short text is as wide as the buttons", true, {10, 16}, {20, 40},
         {222, 127, 77, 16, 32, 38, 77, 10, 87, 98, 117, 124, 87, 212, 117}},
        {"a wide caption widens its button", true, {400, 32}, {120},
         {444, 143, 93, 16, 32, 428, 93, 152, 103, 292, 133, 152, 103, 292, 133}},
        // clang-format on
    };
    for (const auto& row : rows) {
        const auto layout = LayOutMessageBox({{8, 16}, 1024, row.version6}, row.measured, row.captions);
        std::vector<LONG> figures{layout.client.cx, layout.client.cy, layout.messageAreaHeight};
        for (const RECT& rect : {layout.message, layout.buttons.front(), layout.buttons.back()}) {
            figures.insert(figures.end(), {rect.left, rect.top, rect.right, rect.bottom});
        }
        EXPECT_EQ(figures, row.figures) << row.what;
    }
}

// The dialogs ask through this; what they take for consent must have been given by the operator.
TEST_F(MessageBoxes, PromptGivesNoAnswerWithoutTheDialogOrBeforeAQuit) {
    CWnd dialog;
    const struct {
        const char* what;
        ExpectedBox box;
        PromptAnswer answer;
    } rows[] = {
        {"answered", {"text", "caption", IDOK}, PromptAnswer::Ok},
        {"declined", {"text", "caption", IDCANCEL}, PromptAnswer::Cancel},
        {"to quit", {"text", "caption", 0, [](HWND) { PostQuitMessage(3); }}, PromptAnswer::None},
        {"gone", {"text", "caption", 0, [&](HWND) { dialog.DestroyWindow(); }}, PromptAnswer::None},
    };
    for (const bool coloured : {false, true}) {
        for (const auto& row : rows) {
            dialog.DestroyWindow();
            ASSERT_TRUE(dialog.Create(nullptr, "", WS_POPUP, RECT{0, 0, 50, 50}, host.Get(), 0));
            const MessageBoxScript script({row.box});
            DialogPrompt prompt(dialog);
            EXPECT_EQ(coloured ? prompt.AskColoured("text", "caption")
                               : prompt.Ask("text", "caption", PromptButtons::OkCancel),
                      row.answer)
                << row.what << (coloured ? ", coloured" : "");
            HostLoop().PumpUntilIdle();  // takes the quit away
        }
    }
    EXPECT_EQ(DialogPrompt(dialog).AskColoured("text", "caption"), PromptAnswer::None);
}

}  // namespace
