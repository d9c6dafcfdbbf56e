#include "framework/redraw_off.h"
#include "framework/window_helpers.h"
#include "framework/wnd.h"
#include "support/swallowed_exceptions.h"
#include "support/window_kit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace {

constexpr RECT kSmall{0, 0, 50, 50};

// Keeps the messages that reach it and whether it was bound at that moment.
class RecordingWindow : public CWnd {
public:
    std::vector<UINT> seen;
    bool boundAtEveryMessage = true;
    int unboundEnds = 0;
    UINT refuse = 0;   // message answered with failure
    UINT throwAt = 0;  // message at which the handling throws

    bool Open(DWORD style = WS_OVERLAPPEDWINDOW, const RECT& place = kSmall) {
        return Create(nullptr, "w", style, place, nullptr, 0);
    }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        seen.push_back(message);
        boundAtEveryMessage = boundAtEveryMessage && m_hWnd && FromHandlePermanent(m_hWnd) == this;
        if (message == throwAt) {
            throw std::runtime_error("thrown on purpose");
        }
        return message == refuse ? -1 : CWnd::WindowProc(message, wParam, lParam);
    }
    void PostNcDestroy() override { unboundEnds += !m_hWnd; }
};

// Deletes itself with its window, like the dialogs.
class SelfDeleting : public CWnd {
protected:
    void PostNcDestroy() override { delete this; }
    LRESULT OnEnd(WPARAM, LPARAM) {
        DestroyWindow();
        return 42;
    }
    BOOL OnCommand(WPARAM, LPARAM) override {
        DestroyWindow();
        return FALSE;  // the base would go on with an object that is gone
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(SelfDeleting, CWnd)
ON_MESSAGE(WM_APP, &SelfDeleting::OnEnd)
END_MESSAGE_MAP()

TEST(Binding, LastsFromTheFirstMessageToTheLast) {
    RecordingWindow window;
    ASSERT_TRUE(window.Open());
    const HWND handle = window.m_hWnd;
    EXPECT_NE(std::find(window.seen.begin(), window.seen.end(), UINT{WM_NCCREATE}), window.seen.end());
    EXPECT_EQ(window.seen.front(), UINT{WM_GETMINMAXINFO});

    window.DestroyWindow();
    EXPECT_EQ(window.seen.back(), UINT{WM_NCDESTROY});
    EXPECT_TRUE(window.boundAtEveryMessage);
    EXPECT_EQ(window.unboundEnds, 1);
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
}

TEST(Binding, RefusedOrThrowingCreationLeavesNothing) {
    ExpectedExceptions expected;
    for (const bool throws : {false, true}) {
        RecordingWindow window;
        (throws ? window.throwAt : window.refuse) = WM_CREATE;
        EXPECT_FALSE(window.Open()) << throws;
        EXPECT_EQ(window.m_hWnd, nullptr);
        EXPECT_EQ(window.unboundEnds, 1);
        EXPECT_EQ(expected.Take(), throws);
    }
    auto* window = new SelfDeleting;
    const WindowWatch watch(window);
    EXPECT_FALSE(window->Create("NoSuchWindowClass", "w", 0, kSmall, nullptr, 0));
    ASSERT_TRUE(watch.ObjectAlive()) << "no window, so nobody but the creator may delete the object";
    delete window;
}

HWND AddEdit(const HostWindow& host, const char* text) {
    return CreateWindowExA(0, "Edit", text, WS_CHILD, 0, 0, 50, 20, host.Get(), nullptr, nullptr, nullptr);
}

TEST(Binding, DeletingTheObjectDestroysItsOwnWindowOnly) {
    const HostWindow host;
    const HWND edit = AddEdit(host, "text");
    HWND own = nullptr;
    {
        RecordingWindow subclassed;
        ASSERT_TRUE(subclassed.SubclassWindow(edit));
        EXPECT_FALSE(RecordingWindow().SubclassWindow(edit)) << "one object to a window";
        RecordingWindow created;
        ASSERT_TRUE(created.Open());
        own = created.m_hWnd;
    }
    EXPECT_FALSE(IsWindow(own));
    EXPECT_EQ(TextOf(edit), "text");
}

WNDPROC g_below = nullptr;
int g_countedTexts = 0;

LRESULT CALLBACK CountingProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    g_countedTexts += message == WM_SETTEXT;
    return CallWindowProcA(g_below, window, message, wParam, lParam);
}

// The host, or a tool, subclasses one of the module's controls after the module did.
TEST(Binding, UnsubclassingBelowAnotherSubclassKeepsTheChain) {
    const HostWindow host;
    const HWND edit = AddEdit(host, "");
    const LONG original = GetWindowLongA(edit, GWL_WNDPROC);
    {
        RecordingWindow object;
        ASSERT_TRUE(object.SubclassWindow(edit));
        g_below = reinterpret_cast<WNDPROC>(
            SetWindowLongA(edit, GWL_WNDPROC, reinterpret_cast<LONG>(&CountingProc)));
        object.UnsubclassWindow();
    }
    SetWindowTextA(edit, "still an edit");
    EXPECT_EQ(TextOf(edit), "still an edit");
    EXPECT_EQ(g_countedTexts, 1);

    RecordingWindow second;
    ASSERT_TRUE(second.SubclassWindow(edit));
    SetWindowTextA(edit, "x");
    EXPECT_EQ(std::count(second.seen.begin(), second.seen.end(), UINT{WM_SETTEXT}), 1);
    SetWindowLongA(edit, GWL_WNDPROC, reinterpret_cast<LONG>(g_below));
    second.UnsubclassWindow();
    EXPECT_EQ(GetWindowLongA(edit, GWL_WNDPROC), original);
}

TEST(Binding, HandlerMayDestroyItsWindowAndObject) {
    const std::pair<UINT, LRESULT> rows[] = {{WM_APP, 42}, {WM_COMMAND, 0}, {WM_CLOSE, 0}};
    for (const auto& [message, result] : rows) {
        auto* window = new SelfDeleting;
        ASSERT_TRUE(window->Create(nullptr, "w", WS_OVERLAPPEDWINDOW, kSmall, nullptr, 0));
        const WindowWatch watch(window);
        EXPECT_TRUE(watch.WindowAlive());
        EXPECT_EQ(SendMessageA(window->m_hWnd, message, 1, 0), result) << message;
        EXPECT_FALSE(watch.ObjectAlive()) << message;
    }
}

TEST(Binding, NoExceptionLeavesAWindowProcedure) {
    ExpectedExceptions expected;
    RecordingWindow window;
    ASSERT_TRUE(window.Open(WS_POPUP));
    window.throwAt = WM_APP;
    EXPECT_EQ(window.SendMessage(WM_APP), 0);
    EXPECT_EQ(expected.Take(), 1);

    window.throwAt = WM_PAINT;
    window.ShowWindow(SW_SHOWNA);
    window.Invalidate();
    HostLoop().PumpUntilIdle();  // would never end if the painting were asked for again
    EXPECT_FALSE(GetUpdateRect(window.m_hWnd, nullptr, FALSE));

    EXPECT_EQ(expected.Take(), 1);

    window.throwAt = WM_NCDESTROY;
    window.DestroyWindow();
    EXPECT_EQ(expected.Take(), 1);
    EXPECT_EQ(window.unboundEnds, 1);
}

TEST(Redraw, HiddenWindowStaysHidden) {
    RecordingWindow window;
    ASSERT_TRUE(window.Open(WS_POPUP));
    { const RedrawOff hidden(window.m_hWnd); }
    EXPECT_FALSE(window.IsWindowVisible());
}

TEST(Redraw, PaintsWhatLooksDifferent) {
    RecordingWindow window;
    ASSERT_TRUE(window.Open(WS_POPUP, {0, 0, 300, 100}));
    const auto label = [&](int left) {
        return CreateWindowExA(0, "Static", "same", WS_CHILD | WS_VISIBLE, left, 0, 40, 20, window.m_hWnd,
                               nullptr, nullptr, nullptr);
    };
    const HWND still = label(0), renamed = label(50), disabled = label(100), moved = label(150);
    window.ShowWindow(SW_SHOWNA);
    const auto paintedAfter = [&](auto change) {
        RedrawWindow(window.m_hWnd, nullptr, nullptr, RDW_VALIDATE | RDW_ALLCHILDREN);
        {
            const RedrawOff redrawOff(window.m_hWnd);
            change();
        }
        std::vector<HWND> painted;
        for (const HWND control : {still, renamed, disabled, moved}) {
            if (GetUpdateRect(control, nullptr, FALSE)) {
                painted.push_back(control);
            }
        }
        return painted;
    };
    EXPECT_EQ(paintedAfter([] {}), std::vector<HWND>{});
    EXPECT_EQ(paintedAfter([&] { SetWindowTextA(renamed, "other"); }), std::vector{renamed});
    EXPECT_EQ(paintedAfter([&] { EnableWindow(disabled, FALSE); }), std::vector{disabled});
    EXPECT_EQ(paintedAfter([&] { MoveWindow(moved, 200, 0, 40, 20, TRUE); }), std::vector{moved});
    RECT update{};
    EXPECT_TRUE(GetUpdateRect(window.m_hWnd, &update, FALSE));
    EXPECT_EQ(update.left, 150) << "where a control stood is painted too";
    EXPECT_EQ(paintedAfter([&] { MoveWindow(window.m_hWnd, 0, 0, 310, 100, TRUE); }).size(), 4u);
}

}  // namespace
