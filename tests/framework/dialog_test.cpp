#include "framework/dialog.h"

#include "framework/activation_context.h"
#include "framework/controls.h"
#include "framework/window_helpers.h"
#include "support/window_kit.h"
#include "tests/framework/test_templates.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

// Takes keys before the dialog sees them.
class TakingEdit : public CWnd {
public:
    BOOL PreTranslateMessage(MSG* message) override { return message->message == WM_KEYDOWN; }
};

// A combo box as the host would make it.
HWND PlainBox(HWND parent) {
    return CreateWindowExA(0, WC_COMBOBOXA, "", WS_CHILD | CBS_DROPDOWN, 0, 0, 50, 50, parent, nullptr,
                           nullptr, nullptr);
}

// CB_SETMINVISIBLE is known to version 6 only.
bool IsVersion6(HWND box) {
    return ::SendMessageA(box, CB_SETMINVISIBLE, 5, 0) != FALSE;
}

class TestDialog : public CDialog {
public:
    int cancels = 0;
    int ended = 0;
    std::function<void()> atInit = [] {};

    bool Open(HWND parent, const std::string& init = {}) {
        return CreateIndirect(Template(500), parent, init.data(), init.size(), 1252);
    }

protected:
    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        atInit();
        return TRUE;
    }
    void OnCancel() override { ++cancels; }
    void PostNcDestroy() override { ++ended; }
};

// The dialog-initialisation resource that adds these items to combo boxes.
std::string InitData(const std::vector<std::pair<int, std::string>>& items) {
    std::string data;
    for (const auto& [id, text] : items) {
        const WORD head[] = {static_cast<WORD>(id), 0x0403, static_cast<WORD>(text.size() + 1), 0};
        data.append(reinterpret_cast<const char*>(head), sizeof(head)).append(text).append(1, 0);
    }
    return data.append(2, 0);
}

struct Dialogs : testing::Test {
    HostWindow host;
    TestDialog dialog;
    TakingEdit edit;
    HostLoop loop{[this](const MSG& message) { return dialog.m_hWnd && OfferToWindows(dialog, message); }};

    void Show() {
        ASSERT_TRUE(dialog.Open(host.Get()));
        dialog.ShowWindow(SW_SHOW);
    }
};

TEST_F(Dialogs, InitialItemsAreThereBeforeTheDialogSetsItselfUp) {
    LRESULT items = 0;
    dialog.atInit = [&] { items = ::SendMessageA(dialog.GetDlgItem(104), CB_GETCOUNT, 0, 0); };
    std::string data = InitData({{104, "first"}, {104, "second"}, {999, "no control"}});
    const std::pair<std::size_t, LRESULT> rows[] = {{data.size(), 2}, {25, 1}, {20, 1},
                                                    {8, 0},           {5, 0},  {0, 0}};
    for (const auto& [size, expected] : rows) {
        ASSERT_TRUE(dialog.Open(host.Get(), data.substr(0, size)));
        EXPECT_EQ(items, expected) << "of the first " << size << " bytes";
        dialog.DestroyWindow();
    }
    data[4] = data[5] = '\xFF';  // a length beyond the end
    ASSERT_TRUE(dialog.Open(host.Get(), data));
    EXPECT_EQ(items, 0);
}

TEST_F(Dialogs, FailedCreationLeavesNoWindow) {
    EXPECT_FALSE(dialog.CreateIndirect(nullptr, host.Get()));
    EXPECT_FALSE(dialog.CreateIndirect(Template(501), host.Get()));
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    dialog.atInit = [&] { dialog.DestroyWindow(); };
    EXPECT_FALSE(dialog.Open(host.Get()));
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_FALSE(dialog.Open(reinterpret_cast<HWND>(0x1234)));
}

TEST_F(Dialogs, ExceptionDuringSetUpStopsThere) {
    dialog.atInit = [] { throw std::runtime_error("thrown on purpose"); };
    EXPECT_TRUE(dialog.Open(host.Get()));
    EXPECT_TRUE(IsWindow(dialog.m_hWnd));
}

TEST_F(Dialogs, TabGoesThroughTheHostsLoop) {
    Show();
    SetFocus(dialog.GetDlgItem(101));
    for (const int next : {102, 103}) {
        loop.Key(VK_TAB);
        EXPECT_EQ(GetDlgCtrlID(GetFocus()), next);
    }
    SetFocus(dialog.GetDlgItem(101));
    ASSERT_TRUE(edit.SubclassDlgItem(101, dialog.m_hWnd));
    loop.Key(VK_TAB);
    EXPECT_EQ(GetFocus(), edit.m_hWnd) << "the target's object comes before the dialog";
}

TEST_F(Dialogs, EscapeDoesNothingOfItsOwn) {
    Show();
    SetFocus(dialog.GetDlgItem(102));
    loop.Key(VK_ESCAPE);
    EXPECT_EQ(dialog.cancels, 1);
    EXPECT_TRUE(dialog.IsWindowVisible());
}

TEST_F(Dialogs, OnlyWindowsUnderTheDialogAreOffered) {
    ASSERT_TRUE(dialog.Open(host.Get()));
    EXPECT_FALSE(OfferToWindows(dialog, {host.Get(), WM_KEYDOWN, VK_TAB, 0, 0, {}}));
    EXPECT_FALSE(IsNearOwnWindow(host.Get()));
    EXPECT_FALSE(IsNearOwnWindow(nullptr));
    EXPECT_TRUE(IsNearOwnWindow(dialog.m_hWnd));
    EXPECT_TRUE(IsNearOwnWindow(dialog.GetDlgItem(107))) << "its parent is the dialog";
    const HWND boxEdit = FindWindowExA(dialog.GetDlgItem(104), nullptr, "Edit", nullptr);
    EXPECT_FALSE(IsNearOwnWindow(boxEdit)) << "two steps below the dialog, no object between";
}

TEST_F(Dialogs, DestroyedWithTheParent) {
    ASSERT_TRUE(dialog.Open(host.Get()));
    ASSERT_TRUE(edit.SubclassDlgItem(101, dialog.m_hWnd));
    host.Destroy();
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(dialog.ended, 1);
    EXPECT_EQ(edit.m_hWnd, nullptr);
}

TEST_F(Dialogs, ControlsAreOfVersion6AndTheHostsAreNot) {
    dialog.atInit = [&] {
        EXPECT_FALSE(IsVersion6(PlainBox(dialog.m_hWnd))) << "made while it sets itself up";
    };
    ASSERT_TRUE(dialog.Open(host.Get()));
    EXPECT_TRUE(IsVersion6(dialog.GetDlgItem(104)));
    EXPECT_FALSE(IsVersion6(PlainBox(host.Get())));
}

}  // namespace
