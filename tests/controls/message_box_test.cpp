#include "controls/message_box.h"

#include "controls/dialog_prompt.h"
#include "controls/message_box_layout.h"
#include "framework/dialog.h"
#include "framework/window_helpers.h"
#include "support/leak_count.h"
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

// Answers Cancel after Ctrl+C.
void CopyAndCancel(HWND box) {
    std::array<BYTE, 256> state{};
    state[VK_CONTROL] = 0x80;
    SetKeyboardState(state.data());
    PostMessageA(GetDlgItem(box, IDOK), WM_KEYDOWN, 'C', 1);
    PostMessageA(box, WM_COMMAND, IDCANCEL, 0);
}

std::string ClipboardText() {
    std::array<BYTE, 256> state{};
    SetKeyboardState(state.data());  // Control is released
    OpenClipboard(nullptr);
    const HANDLE data = GetClipboardData(CF_TEXT);
    const std::string text = data ? static_cast<const char*>(GlobalLock(data)) : "";
    CloseClipboard();
    return text;
}

TEST_F(MessageBoxes, EndsWithTheButtonOrKeyPressed) {
    struct Row {
        const char* what;
        std::function<void(HWND)> act;
        int result;
    };
    const Row rows[] = {
        {"Ok", [](HWND box) { SendMessageA(GetDlgItem(box, IDOK), BM_CLICK, 0, 0); }, IDOK},
        {"Cancel", [](HWND box) { SendMessageA(GetDlgItem(box, IDCANCEL), BM_CLICK, 0, 0); }, IDCANCEL},
        {"Enter", [](HWND) { PostMessageA(GetFocus(), WM_KEYDOWN, VK_RETURN, 1); }, IDOK},
        {"Escape", [](HWND) { PostMessageA(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1); }, IDCANCEL},
        {"close box", [](HWND box) { PostMessageA(box, WM_CLOSE, 0, 0); }, IDCANCEL},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Show(row.act), row.result) << row.what;
        EXPECT_TRUE(IsWindowEnabled(host.Get())) << row.what;
    }
}

TEST_F(MessageBoxes, LooksAsAsked) {
    Show(
        [&](HWND box) {
            EXPECT_FALSE(IsWindowEnabled(host.Get()));
            EXPECT_EQ(GetWindow(box, GW_OWNER), host.Get());
            constexpr LONG addedBySystem = WS_CLIPSIBLINGS | DS_3DLOOK;
            EXPECT_EQ(GetWindowLongA(box, GWL_STYLE) & ~addedBySystem, static_cast<LONG>(0x90C80880));
            EXPECT_EQ(TextOf(GetDlgItem(box, IDOK)), "&Ok");
            EXPECT_EQ(TextOf(GetDlgItem(box, IDCANCEL)), "Cancel");
            EXPECT_EQ(GetFocus(), GetDlgItem(box, IDOK));
            EXPECT_EQ(LOWORD(SendMessageA(box, DM_GETDEFID, 0, 0)), IDOK);

            const HDC dc = GetDC(box);
            const auto brush =
                reinterpret_cast<HBRUSH>(SendMessageA(box, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                                                      reinterpret_cast<LPARAM>(GetDlgItem(box, kMessageId))));
            LOGBRUSH description{};
            GetObjectA(brush, sizeof(description), &description);
            EXPECT_EQ(description.lbColor, 0x00CEC7FFU);
            EXPECT_EQ(GetTextColor(dc), 0U);
            EXPECT_EQ(GetBkColor(dc), 0x00CEC7FFU);
            ReleaseDC(box, dc);
            PostMessageA(box, WM_COMMAND, IDOK, 0);
        },
        "This order was not entered in the back office.\nDo you want to modify it?", "Modify");
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
    EXPECT_TRUE(IsWindowEnabled(host.Get()));
}

TEST_F(MessageBoxes, NotShownOrLosingItsOwnerIsNoConsent) {
    EXPECT_EQ(XMessageBox(reinterpret_cast<HWND>(0x1234), "text", "caption", kStyle, kRed), IDCANCEL);
    EXPECT_EQ(Show([&](HWND) { host.Destroy(); }), IDCANCEL);
}

TEST_F(MessageBoxes, LeavesNothingBehind) {
    KeptByEach([&] { Show([](HWND box) { PostMessageA(box, WM_COMMAND, IDOK, 0); }); });
}

std::string Print(const RECT& rect) {
    return std::to_string(rect.left) + "," + std::to_string(rect.top) + "-" + std::to_string(rect.right) +
           "," + std::to_string(rect.bottom);
}

TEST(MessageBoxLayouts, RowsOfFigures) {
    const struct {
        const char* what;
        bool version6;
        SIZE measured;
        std::vector<int> captions;
        const char* places;  // client size, message and the height of its area, first and last button
    } rows[] = {
        // clang-format off
        {"the row is centred under a long text", true, {400, 32}, {20, 40},
         "444x143 16,32-428,93 93 121,103-209,133 235,103-323,133"},
        {"before version 6", false, {400, 32}, {20, 40},
         "428x118 16,16-428,61 70 125,80-201,108 227,80-303,108"},
        {"a short text is as wide as the buttons", true, {10, 16}, {20, 40},
         "222x127 16,32-38,77 77 10,87-98,117 124,87-212,117"},
        {"a wide caption widens its button", true, {400, 32}, {120},
         "444x143 16,32-428,93 93 152,103-292,133 152,103-292,133"},
        // clang-format on
    };
    for (const auto& row : rows) {
        const MessageBoxLayout layout =
            LayOutMessageBox({{8, 16}, 1024, row.version6}, row.measured, row.captions);
        EXPECT_EQ(std::to_string(layout.client.cx) + "x" + std::to_string(layout.client.cy) + " " +
                      Print(layout.message) + " " + std::to_string(layout.messageAreaHeight) + " " +
                      Print(layout.buttons.front()) + " " + Print(layout.buttons.back()),
                  row.places)
            << row.what;
    }
}

// The dialogs ask through this; what they take for consent must have been given by the operator.
TEST_F(MessageBoxes, PromptGivesNoAnswerWithoutTheDialogOrBeforeAQuit) {
    struct Row {
        const char* what;
        std::function<void(HWND)> act;
        PromptAnswer answer;
    };
    CWnd dialog;
    const Row rows[] = {
        {"answered", [](HWND box) { PostMessageA(box, WM_COMMAND, IDOK, 0); }, PromptAnswer::Ok},
        {"declined", [](HWND box) { PostMessageA(box, WM_COMMAND, IDCANCEL, 0); }, PromptAnswer::Cancel},
        {"the thread is to quit", [](HWND) { PostQuitMessage(3); }, PromptAnswer::None},
        {"the dialog is gone", [&](HWND) { dialog.DestroyWindow(); }, PromptAnswer::None},
    };
    for (const bool coloured : {false, true}) {
        for (const Row& row : rows) {
            dialog.DestroyWindow();
            ASSERT_TRUE(dialog.Create(nullptr, "", WS_POPUP, RECT{0, 0, 50, 50}, host.Get(), 0));
            const MessageBoxScript script({{"text", "caption", 0, row.act}});
            DialogPrompt prompt(dialog);
            EXPECT_EQ(coloured ? prompt.AskColoured("text", "caption")
                               : prompt.Ask("text", "caption", PromptButtons::OkCancel),
                      row.answer)
                << row.what << (coloured ? ", coloured" : "");
            MSG quit;
            while (PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
            }
        }
    }
    EXPECT_EQ(DialogPrompt(dialog).AskColoured("text", "caption"), PromptAnswer::None);
}

}  // namespace
