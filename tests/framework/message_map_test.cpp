#include "framework/controls.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr UINT kOnlyBase = WM_APP + 1;
constexpr UINT kBoth = WM_APP + 2;
constexpr RECT kSmall{0, 0, 50, 50};

// What the handlers write: one word each, in the order in which they ran.
std::string g_trace;

class BaseWindow : public CWnd {
protected:
    LRESULT OnBase(WPARAM wParam, LPARAM lParam) {
        g_trace += "base ";
        return static_cast<LRESULT>(wParam) + lParam;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(BaseWindow, CWnd)
ON_MESSAGE(kOnlyBase, &BaseWindow::OnBase)
ON_MESSAGE(kBoth, &BaseWindow::OnBase)
END_MESSAGE_MAP()

class ParentWindow : public BaseWindow {
protected:
    LRESULT OnDerived(WPARAM, LPARAM) {
        g_trace += "derived ";
        return -1;
    }
    void OnParentUpdate() { g_trace += "parent "; }
    void OnRange(UINT id) { g_trace += "range" + std::to_string(id) + " "; }
    void OnParentNotify(NMHDR*, LRESULT* result) {
        g_trace += "parent ";
        *result = 5;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ParentWindow, BaseWindow)
ON_MESSAGE(kBoth, &ParentWindow::OnDerived)
ON_CBN_EDITUPDATE(1, &ParentWindow::OnParentUpdate)
ON_CONTROL_RANGE(EN_CHANGE, 10, 12, &ParentWindow::OnRange)
ON_NOTIFY(NM_CLICK, 1, &ParentWindow::OnParentNotify)
END_MESSAGE_MAP()

// Handles its own notifications and lets the parent have them when told so.
class ReflectingBox : public CComboBox {
public:
    bool passesOn = false;

protected:
    BOOL OnOwnUpdate() {
        g_trace += "child ";
        return !passesOn;
    }
    BOOL OnOwnClick(NMHDR*, LRESULT* result) {
        *result = 3;
        return OnOwnUpdate();
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ReflectingBox, CComboBox)
ON_CBN_EDITUPDATE_REFLECT(&ReflectingBox::OnOwnUpdate)
ON_NOTIFY_REFLECT(NM_CLICK, &ReflectingBox::OnOwnClick)
END_MESSAGE_MAP()

struct MessageMaps : testing::Test {
    MessageMaps() {
        parent.Create(nullptr, "parent", WS_OVERLAPPEDWINDOW, kSmall, nullptr, 0);
        child.Create(WS_CHILD | CBS_DROPDOWN, kSmall, parent.m_hWnd, 1);
        g_trace.clear();
    }
    void Command(int id, UINT code, HWND control) {
        parent.SendMessage(WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(control));
    }
    ParentWindow parent;
    ReflectingBox child;
};

TEST_F(MessageMaps, MostDerivedMapFirstThenBaseThenTheSystem) {
    EXPECT_EQ(parent.SendMessage(kBoth, 2, 3), -1);
    EXPECT_EQ(parent.SendMessage(kOnlyBase, 2, 3), 5);
    EXPECT_EQ(g_trace, "derived base ");
    EXPECT_EQ(parent.GetWindowText(), "parent") << "without an entry the system's handling answers";
}

TEST_F(MessageMaps, NotificationsReachTheChildFirst) {
    for (const bool passesOn : {false, true}) {
        child.passesOn = passesOn;
        Command(1, CBN_EDITUPDATE, child.m_hWnd);
        NMHDR click{child.m_hWnd, 1, static_cast<UINT>(NM_CLICK)};
        EXPECT_EQ(parent.SendMessage(WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&click)), passesOn ? 5 : 3);
    }
    EXPECT_EQ(g_trace, "child child child parent child parent ");
}

TEST_F(MessageMaps, RangesAndForeignControls) {
    for (const int id : {9, 10, 12, 13}) {
        Command(id, EN_CHANGE, GetDesktopWindow());
    }
    EXPECT_EQ(g_trace, "range10 range12 ");
    parent.SendMessage(WM_NOTIFY, 1, 0);  // without a header
}

}  // namespace
