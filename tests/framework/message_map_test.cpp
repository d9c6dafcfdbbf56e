#include "framework/controls.h"
#include "support/window_kit.h"

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
    void OnSize(UINT type, int cx, int cy) {
        g_trace += "size ";
        m_size = {cx, cy};
        CWnd::OnSize(type, cx, cy);
    }
    DECLARE_MESSAGE_MAP()

public:
    SIZE m_size{};
};

BEGIN_MESSAGE_MAP(BaseWindow, CWnd)
ON_MESSAGE(kOnlyBase, &BaseWindow::OnBase)
ON_MESSAGE(kBoth, &BaseWindow::OnBase)
ON_WM_SIZE()
END_MESSAGE_MAP()

class ParentWindow : public BaseWindow {
public:
    bool takesNotify = false;

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
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override {
        if (takesNotify) {
            g_trace += "taken ";
            *result = 9;
            return TRUE;
        }
        return BaseWindow::OnNotify(wParam, lParam, result);
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
        g_trace += "child ";
        *result = 3;
        return !passesOn;
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
        g_trace.clear();
    }
    LRESULT Click() {
        NMHDR header{child.m_hWnd, 1, static_cast<UINT>(NM_CLICK)};
        return parent.SendMessage(WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&header));
    }
    ParentWindow parent;
    ReflectingBox child;
};

TEST_F(MessageMaps, MostDerivedMapFirstThenBaseThenTheSystem) {
    EXPECT_EQ(parent.SendMessage(kBoth, 2, 3), -1);
    EXPECT_EQ(parent.SendMessage(kOnlyBase, 2, 3), 5);
    EXPECT_EQ(g_trace, "derived base ");
    EXPECT_EQ(parent.GetWindowText(), "parent") << "without an entry the system's handling answers";
    parent.SendMessage(WM_SIZE, SIZE_RESTORED, MAKELPARAM(300, 200));
    EXPECT_EQ(parent.m_size.cx, 300);
    EXPECT_EQ(parent.m_size.cy, 200);
}

TEST_F(MessageMaps, NotificationsReachTheChildFirst) {
    ASSERT_TRUE(child.Create(WS_CHILD | CBS_DROPDOWN, kSmall, parent.m_hWnd, 1));
    const WPARAM update = MAKEWPARAM(1, CBN_EDITUPDATE);
    const auto box = reinterpret_cast<LPARAM>(child.m_hWnd);
    g_trace.clear();

    parent.SendMessage(WM_COMMAND, update, box);
    EXPECT_EQ(g_trace, "child ");
    child.passesOn = true;
    parent.SendMessage(WM_COMMAND, update, box);
    EXPECT_EQ(g_trace, "child child parent ");

    g_trace.clear();
    EXPECT_EQ(Click(), 5);
    child.passesOn = false;
    EXPECT_EQ(Click(), 3);
    EXPECT_EQ(g_trace, "child parent child ");
    parent.takesNotify = true;
    EXPECT_EQ(Click(), 9);
    EXPECT_EQ(g_trace, "child parent child taken ") << "the parent's override comes before the child";
}

TEST_F(MessageMaps, RangesAndForeignControls) {
    for (const int id : {9, 10, 12, 13}) {
        parent.SendMessage(WM_COMMAND, MAKEWPARAM(id, EN_CHANGE),
                           reinterpret_cast<LPARAM>(GetDesktopWindow()));
    }
    EXPECT_EQ(g_trace, "range10 range12 ");
    EXPECT_EQ(parent.SendMessage(WM_NOTIFY, 1, 0), 0) << "a notification without a header";
}

}  // namespace
