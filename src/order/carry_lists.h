#pragma once

#include "entry/placement.h"
#include "order/carry_positions.h"
#include "trade/host_interfaces.h"

// The two position lists of the carry, made by the host inside the dialog and released with it. A list that
// the host could not make is missing from every operation.
class CarryLists {
public:
    CarryLists() = default;
    ~CarryLists();
    CarryLists(const CarryLists&) = delete;
    CarryLists& operator=(const CarryLists&) = delete;

    void Create(HWND owner, ISelectDataNotify* notify);
    // Client pixels of the owner.
    void Place(const PixelRect& near, const PixelRect& forward);
    void SetFilters(const PositionFilters& filters);

    bool Complete() const { return m_near && m_forward; }
    bool IsNear(const ITradeListWindow* list) const { return list && list == m_near; }
    bool IsForward(const ITradeListWindow* list) const { return list && list == m_forward; }

private:
    ITradeListWindow* m_near = nullptr;
    ITradeListWindow* m_forward = nullptr;
};
