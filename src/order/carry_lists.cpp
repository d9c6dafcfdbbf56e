#include "order/carry_lists.h"

#include "framework/wnd.h"
#include "trade/host_services.h"

#include <utility>

namespace {

ITradeListWindow* Make(HWND owner, ISelectDataNotify* notify) {
    ITradeListWindow* list =
        g_pTradeList && IsWindow(owner) ? g_pTradeList->CreateListWindow(0, 4, owner, 1) : nullptr;
    if (list) {
        list->SetNotify(notify);
    }
    return list;
}

void Release(ITradeListWindow* list) {
    if (list && g_pTradeList) {
        g_pTradeList->ReleaseListWindow(list);
    }
}

void PlaceList(ITradeListWindow* list, const PixelRect& place) {
    if (list) {
        list->Place(place.left, place.top, place.right - place.left, place.bottom - place.top, 1);
    }
}

}  // namespace

CarryLists::~CarryLists() {
    // Forgotten first: a list may still report while it is released, and is then no longer ours.
    Release(std::exchange(m_near, nullptr));
    Release(std::exchange(m_forward, nullptr));
}

void CarryLists::Create(HWND owner, ISelectDataNotify* notify) {
    m_near = Make(owner, notify);
    m_forward = Make(owner, notify);  // none when the host took the owner away with the first
}

void CarryLists::Place(const PixelRect& near, const PixelRect& forward) {
    PlaceList(m_near, near);
    PlaceList(m_forward, forward);
}

void CarryLists::SetFilters(const PositionFilters& filters) {
    if (Complete()) {
        m_near->SetFilter(&filters.near);
        m_forward->SetFilter(&filters.forward);
    }
}
