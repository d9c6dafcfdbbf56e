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
#include <cstdlib>

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

void PressWithControl(unsigned key, HWND window) {
    std::array<BYTE, 256> state{};
    GetKeyboardState(state.data());
    state[VK_CONTROL] = 0x80;
    SetKeyboardState(state.data());
    PostMessageA(window, WM_KEYDOWN, key, 1);
}

void ReleaseControl() {
    std::array<BYTE, 256> state{};
    SetKeyboardState(state.data());
}

std::string ClipboardText() {
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
        {"space, then Cancel",
         [](HWND box) {
             PostMessageA(GetFocus(), WM_KEYDOWN, VK_SPACE, 1);
             PostMessageA(GetFocus(), WM_KEYUP, VK_SPACE, 1);
             PostMessageA(box, WM_COMMAND, IDCANCEL, 0);
         },
         IDCANCEL},
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
            constexpr DWORD addedBySystem = WS_CLIPSIBLINGS | DS_3DLOOK;
            EXPECT_EQ(static_cast<DWORD>(GetWindowLongA(box, GWL_STYLE)) & ~addedBySystem, 0x90C80880U);
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
            if (const char* picture = std::getenv("EMENDO_PICTURE")) {
                HostLoop().PumpUntilIdle();
                EXPECT_TRUE(SaveScreenshot(box, picture));
            }
            PostMessageA(box, WM_COMMAND, IDOK, 0);
        },
        "This order was not entered in the back office.\nDo you want to modify it?", "Modify");
}

TEST_F(MessageBoxes, ControlCCopiesTheWholeBox) {
    const std::string line = "---------------------------\r\n";
    struct Row {
        std::string message;
        std::string copied;
    };
    const Row rows[] = {
        {"Modify\r\nit?", "Modify\r\nit?"},
        {std::string(5000, 'm'), std::string(4000, 'm')},
    };
    for (const Row& row : rows) {
        const int result = Show(
            [](HWND box) {
                PressWithControl('C', GetDlgItem(box, IDOK));
                PostMessageA(box, WM_COMMAND, IDCANCEL, 0);
            },
            row.message, "Question");
        ReleaseControl();
        EXPECT_EQ(result, IDCANCEL);
        EXPECT_EQ(ClipboardText(),
                  line + "Question\r\n" + line + row.copied + "\r\n" + line + "Ok   Cancel   \r\n" + line);
    }
    Show(
        [](HWND box) {
            PressWithControl('C', GetDlgItem(box, IDOK));
            PostMessageA(box, WM_COMMAND, IDCANCEL, 0);
        },
        std::string(4500, 'm'), std::string(6000, 'c'));
    ReleaseControl();
    EXPECT_EQ(ClipboardText().size(), 8191U);
}

TEST_F(MessageBoxes, QuitEndsTheBoxAndStaysPending) {
    EXPECT_EQ(Show([](HWND) { PostQuitMessage(77); }), IDCANCEL);
    MSG quit{};
    ASSERT_TRUE(PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(quit.wParam, 77U);
    EXPECT_TRUE(IsWindowEnabled(host.Get()));
}

TEST_F(MessageBoxes, OwnerDestroyedMeanwhileIsNoConsent) {
    EXPECT_EQ(Show([&](HWND) { host.Destroy(); }), IDCANCEL);
}

TEST_F(MessageBoxes, NotShownIsNoConsent) {
    EXPECT_EQ(XMessageBox(reinterpret_cast<HWND>(0x1234), "text", "caption", kStyle, kRed), IDCANCEL);
}

TEST_F(MessageBoxes, LeavesNothingBehind) {
    const auto once = [&] { Show([](HWND box) { PostMessageA(box, WM_COMMAND, IDOK, 0); }); };
    once();
    const ResourceCount before = CountResources();
    for (int round = 0; round < 100; ++round) {
        once();
    }
    const ResourceCount after = CountResources();
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_EQ(after.gdiObjects, before.gdiObjects);
}

TEST(MessageBoxLayouts, RowsOfFigures) {
    struct Row {
        const char* what;
        bool version6;
        SIZE measured;
        std::vector<int> captions;
        SIZE client;
        RECT message;
        int area;
        RECT firstButton;
        RECT lastButton;
    };
    const Row rows[] = {
        {"the row is centred under a long text",
         true,
         {400, 32},
         {20, 40},
         {444, 143},
         {16, 32, 428, 93},
         93,
         {121, 103, 209, 133},
         {235, 103, 323, 133}},
        {"before version 6",
         false,
         {400, 32},
         {20, 40},
         {428, 118},
         {16, 16, 428, 61},
         70,
         {125, 80, 201, 108},
         {227, 80, 303, 108}},
        {"a short text is as wide as the buttons",
         true,
         {10, 16},
         {20, 40},
         {222, 127},
         {16, 32, 38, 77},
         77,
         {10, 87, 98, 117},
         {124, 87, 212, 117}},
        {"a wide caption widens its button",
         true,
         {400, 32},
         {120},
         {444, 143},
         {16, 32, 428, 93},
         93,
         {152, 103, 292, 133},
         {152, 103, 292, 133}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const MessageBoxLayout layout =
            LayOutMessageBox({{8, 16}, 1024, row.version6}, row.measured, row.captions);
        EXPECT_EQ(layout.client.cx, row.client.cx);
        EXPECT_EQ(layout.client.cy, row.client.cy);
        EXPECT_EQ(layout.messageAreaHeight, row.area);
        EXPECT_TRUE(EqualRect(&layout.message, &row.message));
        EXPECT_TRUE(EqualRect(&layout.buttons.front(), &row.firstButton));
        EXPECT_TRUE(EqualRect(&layout.buttons.back(), &row.lastButton));
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
