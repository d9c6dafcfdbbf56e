#include "framework/dialog.h"

#include "framework/activation_context.h"
#include "framework/controls.h"
#include "framework/module_instance.h"
#include "framework/window_helpers.h"
#include "support/window_kit.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

const DLGTEMPLATE* Template(unsigned id) {
    const HRSRC found = FindResourceA(ModuleInstance(), MAKEINTRESOURCEA(id), RT_DIALOG);
    return static_cast<const DLGTEMPLATE*>(LockResource(LoadResource(ModuleInstance(), found)));
}

// The first edit of the dialog; may take messages before the dialog sees them.
class TakingEdit : public CWnd {
public:
    bool takes = false;
    int offered = 0;
    BOOL PreTranslateMessage(MSG* message) override {
        ++offered;
        return takes && message->message == WM_KEYDOWN;
    }
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
    bool hostBoxIsVersion6 = true;
    TakingEdit edit;
    int commands = 0;
    int itemsAtInit = 0;
    int ended = 0;
    bool throwsAtInit = false;
    bool endsAtInit = false;
    int cancels = 0;

    bool Open(HWND parent, const std::vector<std::byte>& init = {}) {
        return CreateIndirect(Template(500), parent, init.data(), init.size(), 1252);
    }

protected:
    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        itemsAtInit = static_cast<int>(::SendMessageA(GetDlgItem(104), CB_GETCOUNT, 0, 0));
        edit.SubclassDlgItem(101, m_hWnd);
        hostBoxIsVersion6 = IsVersion6(PlainBox(m_hWnd));
        if (throwsAtInit) {
            throw std::runtime_error("thrown on purpose");
        }
        if (endsAtInit) {
            DestroyWindow();
        }
        return TRUE;
    }
    void OnCancel() override { ++cancels; }
    void OnOther() { ++commands; }
    void PostNcDestroy() override { ++ended; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(TestDialog, CDialog)
ON_BN_CLICKED(107, &TestDialog::OnOther)
END_MESSAGE_MAP()

// The dialog-initialisation resource that adds these items to combo boxes.
std::vector<std::byte> InitData(const std::vector<std::pair<int, std::string>>& items) {
    std::string data;
    for (const auto& [id, text] : items) {
        const WORD head[] = {static_cast<WORD>(id), 0x0403, static_cast<WORD>(text.size() + 1), 0};
        data.append(reinterpret_cast<const char*>(head), sizeof(head)).append(text).append(1, 0);
    }
    data.append(2, 0);
    const auto* bytes = reinterpret_cast<const std::byte*>(data.data());
    return {bytes, bytes + data.size()};
}

struct Dialogs : testing::Test {
    HostWindow host;
    TestDialog dialog;
    HostLoop Loop() {
        return HostLoop(
            [this](const MSG& message) { return dialog.m_hWnd && OfferToWindows(dialog, message); });
    }
};

TEST_F(Dialogs, InitialItemsAreThereBeforeTheDialogSetsItselfUp) {
    ASSERT_TRUE(dialog.Open(host.Get(), InitData({{104, "first"}, {104, "second"}, {999, "no control"}})));
    EXPECT_EQ(dialog.itemsAtInit, 2);
}

TEST_F(Dialogs, BrokenInitDataEndsQuietly) {
    std::vector<std::byte> data = InitData({{104, "first"}, {104, "second"}});
    for (const std::size_t size : {std::size_t{0}, std::size_t{5}, std::size_t{8}, data.size() - 4}) {
        TestDialog cut;
        EXPECT_TRUE(cut.Open(host.Get(), {data.begin(), data.begin() + static_cast<long>(size)})) << size;
        EXPECT_LE(cut.itemsAtInit, 1);
        cut.DestroyWindow();
    }
    data[4] = std::byte{0xFF};  // a length beyond the end
    data[5] = std::byte{0xFF};
    ASSERT_TRUE(dialog.Open(host.Get(), data));
    EXPECT_EQ(dialog.itemsAtInit, 0);
}

TEST_F(Dialogs, FailedCreationLeavesNoWindow) {
    EXPECT_FALSE(dialog.CreateIndirect(nullptr, host.Get()));
    EXPECT_FALSE(dialog.CreateIndirect(Template(501), host.Get()));
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    dialog.endsAtInit = true;
    EXPECT_FALSE(dialog.Open(host.Get()));
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_FALSE(dialog.Open(reinterpret_cast<HWND>(0x1234)));
}

TEST_F(Dialogs, ExceptionDuringSetUpStopsThere) {
    dialog.throwsAtInit = true;
    EXPECT_TRUE(dialog.Open(host.Get()));
    EXPECT_TRUE(IsWindow(dialog.m_hWnd));
}

TEST_F(Dialogs, TabGoesThroughTheHostsLoop) {
    ASSERT_TRUE(dialog.Open(host.Get()));
    dialog.ShowWindow(SW_SHOW);
    HostLoop loop = Loop();
    SetFocus(dialog.GetDlgItem(101));
    loop.Key(VK_TAB);
    EXPECT_EQ(GetFocus(), dialog.GetDlgItem(102));
    loop.Key(VK_TAB);
    EXPECT_EQ(GetFocus(), dialog.GetDlgItem(103));
    EXPECT_GT(dialog.edit.offered, 0);

    SetFocus(dialog.GetDlgItem(101));
    dialog.edit.takes = true;
    loop.Key(VK_TAB);
    EXPECT_EQ(GetFocus(), dialog.GetDlgItem(101)) << "the target's object comes before the dialog";
}

TEST_F(Dialogs, EscapeAndCloseDoNothingOfTheirOwn) {
    ASSERT_TRUE(dialog.Open(host.Get()));
    dialog.ShowWindow(SW_SHOW);
    SetFocus(dialog.GetDlgItem(102));
    Loop().Key(VK_ESCAPE);
    EXPECT_EQ(dialog.cancels, 1);
    EXPECT_TRUE(dialog.IsWindowVisible());
    Loop().Click(dialog.GetDlgItem(107));
    EXPECT_EQ(dialog.commands, 1);
}

TEST_F(Dialogs, OnlyWindowsUnderTheDialogAreOffered) {
    ASSERT_TRUE(dialog.Open(host.Get()));
    const MSG toHost{host.Get(), WM_KEYDOWN, VK_TAB, 0, 0, {}};
    EXPECT_FALSE(OfferToWindows(dialog, toHost));
    EXPECT_FALSE(IsNearOwnWindow(host.Get()));
    EXPECT_FALSE(IsNearOwnWindow(nullptr));
    EXPECT_TRUE(IsNearOwnWindow(dialog.m_hWnd));
    EXPECT_TRUE(IsNearOwnWindow(dialog.GetDlgItem(107))) << "its parent is the dialog";
    const HWND boxEdit = FindWindowExA(dialog.GetDlgItem(104), nullptr, "Edit", nullptr);
    EXPECT_FALSE(IsNearOwnWindow(boxEdit)) << "two steps below the dialog, no object between";
}

TEST_F(Dialogs, DestroyedWithTheParent) {
    ASSERT_TRUE(dialog.Open(host.Get()));
    host.Destroy();
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(dialog.ended, 1);
    EXPECT_EQ(dialog.edit.m_hWnd, nullptr);
}

TEST_F(Dialogs, ControlsAreOfVersion6AndTheHostsAreNot) {
    ASSERT_TRUE(dialog.Open(host.Get()));
    EXPECT_TRUE(IsVersion6(dialog.GetDlgItem(104)));
    EXPECT_FALSE(dialog.hostBoxIsVersion6) << "made by the host while the dialog sets itself up";
    EXPECT_FALSE(IsVersion6(PlainBox(host.Get())));
}

}  // namespace
