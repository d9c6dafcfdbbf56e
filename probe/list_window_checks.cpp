#include "probe/list_window_checks.h"

#include "framework/format_text.h"
#include "framework/wnd.h"

namespace {

class QuietNotify final : public ISelectDataNotify {
public:
    void OnSelectData(ITradeListWindow*, int, PositionRecord*) override {}
};

std::string TextOf(const RECT& rect) {
    return FormatText("%ld,%ld %ld x %ld", rect.left, rect.top, rect.right - rect.left,
                      rect.bottom - rect.top);
}

// The window that lies where it was put, in client pixels of the owner.
void ExpectAt(HWND owner, const RECT& wanted, const char* when, Findings& findings) {
    const HWND child = GetWindow(owner, GW_CHILD);
    if (!child) {
        findings.Add(Kind::kNoListWindow, "CreateListWindow",
                     std::string("no window inside its owner, ") + when);
        return;
    }
    RECT place{};
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, owner, reinterpret_cast<POINT*>(&place), 2);
    if (!EqualRect(&place, &wanted)) {
        findings.Add(Kind::kListWindowMisplaced, "Place",
                     std::string(when) + ": wanted " + TextOf(wanted) + ", is " + TextOf(place));
    }
    if (!(GetWindowLongA(child, GWL_STYLE) & WS_VISIBLE)) {
        findings.Add(Kind::kListWindowMisplaced, "Place", std::string(when) + ": not shown");
    }
}

void Put(ITradeListWindow& list, const RECT& rect, CallWatch& watch) {
    watch.Watch("Place",
                [&] { list.Place(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, 1); });
}

}  // namespace

void CheckListWindow(ITradeList& lists, const PositionFilterRecord& filter, CallWatch& watch) {
    Findings& findings = watch.Found();
    const RECT area{0, 0, 640, 480};
    CWnd owner;
    if (!owner.CreateEx(0, nullptr, "", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, area, nullptr)) {
        return;
    }
    ITradeListWindow* list =
        watch.Watch("CreateListWindow", [&] { return lists.CreateListWindow(0, 4, owner.GetSafeHwnd(), 1); });
    if (!list) {
        findings.Add(Kind::kNoListWindow, "CreateListWindow", "null for a window that is there");
        return;
    }
    const RECT first{10, 20, 310, 170};
    const RECT second{40, 60, 240, 160};
    Put(*list, first, watch);
    ExpectAt(owner.GetSafeHwnd(), first, "placed once", findings);
    Put(*list, second, watch);
    ExpectAt(owner.GetSafeHwnd(), second, "placed again", findings);
    QuietNotify notify;
    watch.Watch("SetNotify", [&] { list->SetNotify(&notify); });
    watch.Watch("SetFilter", [&] { list->SetFilter(&filter); });
    ExpectAt(owner.GetSafeHwnd(), second, "filtered", findings);
    SetWindowPos(owner.GetSafeHwnd(), nullptr, 0, 0, 700, 500, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    ExpectAt(owner.GetSafeHwnd(), second, "its owner resized", findings);
    watch.Watch("ReleaseListWindow", [&] { lists.ReleaseListWindow(list); });
    if (GetWindow(owner.GetSafeHwnd(), GW_CHILD)) {
        findings.Add(Kind::kListWindowLeft, "ReleaseListWindow", "its window is still there");
    }
}
