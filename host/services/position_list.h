#pragma once

#include "book/book.h"
#include "services/fault_plan.h"
#include "trade/host_interfaces.h"

#include <memory>
#include <string>
#include <vector>

#include <windows.h>

// A list view of positions, a child of the window that asked for it. It shows nothing before it has a filter.
// A double click on a row goes to the notify as a message of its own, so that the notify may release the
// list.
class PositionListWindow final : public ITradeListWindow {
public:
    PositionListWindow(const Book& book, FaultPlan& faults, HWND owner);
    ~PositionListWindow();
    PositionListWindow(const PositionListWindow&) = delete;
    PositionListWindow& operator=(const PositionListWindow&) = delete;

    void Place(int left, int top, int width, int height, int one) override;
    void SetFilter(const PositionFilterRecord* filter) override;
    void SetNotify(ISelectDataNotify* notify) override;

    // Reads the book again.
    void Refresh();
    // Null when it could not be made or its owner has been destroyed.
    HWND Window() const { return m_window; }
    HWND List() const { return m_list; }
    const std::vector<const PositionEntry*>& Rows() const { return m_rows; }

    unsigned strayCalls = 0;
    void Reserved0() override { ++strayCalls; }
    void Reserved1() override { ++strayCalls; }
    void Reserved2() override { ++strayCalls; }
    void Reserved3() override { ++strayCalls; }
    void Reserved4() override { ++strayCalls; }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnNotify(const NMHDR& notification);
    void Report(std::size_t row);
    void MakeColumns();

    const Book& m_book;
    FaultPlan& m_faults;
    HWND m_window = nullptr;
    HWND m_list = nullptr;
    ISelectDataNotify* m_notify = nullptr;
    PositionFilterRecord m_filter{};
    bool m_filtered = false;
    std::vector<const PositionEntry*> m_rows;
    std::wstring m_cell;  // of the last answer, which the list view reads after the call
};

// Makes the position lists and keeps them until they are released.
class HostTradeList final : public ITradeList {
public:
    HostTradeList(const Book& book, FaultPlan& faults) : m_book(book), m_faults(faults) {}
    ITradeListWindow* CreateListWindow(int zero, int four, HWND owner, int one) override;
    void ReleaseListWindow(ITradeListWindow* window) override;

    // After a change of the book.
    void RefreshAll();
    const std::vector<std::unique_ptr<PositionListWindow>>& Windows() const { return m_windows; }

private:
    const Book& m_book;
    FaultPlan& m_faults;
    std::vector<std::unique_ptr<PositionListWindow>> m_windows;
};
