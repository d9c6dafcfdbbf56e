#pragma once

#include "controls/sele_code_wnd.h"

#include "tests/controls/control_dialog.h"
#include "tests/entry/sample_contracts.h"

#include <gtest/gtest.h>

#include <utility>

inline SampleContracts* g_book = nullptr;

inline TradeData SampleTrade() {
    return TradeData(g_book ? &g_book->api : nullptr);
}

// The owner of the popup: keeps the choices that it is sent.
class PopupOwner : public ControlDialog {
public:
    std::string choices;  // "text|sign|" of each
    std::function<void()> onChoice = [] {};

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_SELECTCODE) {
            choices += std::string(reinterpret_cast<const char*>(wParam)) + "|";
            choices += reinterpret_cast<const char*>(lParam);
            onChoice();
            return 0;
        }
        return ControlDialog::WindowProc(message, wParam, lParam);
    }
};

inline constexpr char kExa[] = "EXA[Exchange A]";

class PopupTest : public testing::Test {
protected:
    SampleContracts book;
    PopupOwner owner;
    CSeleCodeWnd::Owner popup;

    PopupTest() {
        g_book = &book;
        // A host that has sign entries is asked anew on every opening.
        book.api.signEntries.push_back(&book);
        book.AddUsualBook();
        MakePopup();
    }
    void MakePopup() {
        popup.reset(new CSeleCodeWnd(&SampleTrade));
        ASSERT_TRUE(popup->CreatePopup(owner.m_hWnd));
        popup->SetNotifyWnd(owner.m_hWnd);
    }
    // Clicks these nodes then.
    void Open(const std::vector<const char*>& path = {}) {
        popup->Refresh("");
        ::MoveWindow(popup->m_hWnd, 50, 50, 438, 400, TRUE);
        popup->Toggle();
        owner.Pump();
        for (const char* node : path) {
            ClickNode(node);
        }
    }
    HWND Tree() const { return popup->GetDlgItem(kSeleCodeTreeId); }
    HWND List() const { return popup->GetDlgItem(kSeleCodeListId); }
    std::string Item(HTREEITEM item) const {
        char text[100] = "";
        TVITEMA query{TVIF_TEXT, item, 0, 0, text, sizeof text, 0, 0, 0, 0};
        ::SendMessageA(Tree(), TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&query));
        return text;
    }
    // The nodes that can be seen, top to bottom.
    std::string VisibleNodes() const {
        std::string nodes;
        for (HTREEITEM item = TreeView_GetRoot(Tree()); item; item = TreeView_GetNextVisible(Tree(), item)) {
            nodes += Item(item) + ";";
        }
        return nodes;
    }
    HTREEITEM Find(const std::string& text) const {
        HTREEITEM item = TreeView_GetRoot(Tree());
        while (item && Item(item) != text) {
            item = TreeView_GetNextVisible(Tree(), item);
        }
        return item;
    }
    void RealClickAt(HWND control, POINT point) {
        ::ClientToScreen(control, &point);
        ::SetCursorPos(point.x, point.y);
        for (const DWORD button : {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP}) {
            INPUT input{};
            input.type = INPUT_MOUSE;
            input.mi.dwFlags = button;
            ::SendInput(1, &input, sizeof input);
        }
        owner.Pump();
    }
    void ClickNode(const std::string& text) {
        HTREEITEM item = Find(text);
        ASSERT_TRUE(item) << text;
        RECT rect{};
        TreeView_EnsureVisible(Tree(), item);
        ASSERT_TRUE(TreeView_GetItemRect(Tree(), item, &rect, TRUE));
        RealClickAt(Tree(), {rect.left + 3, (rect.top + rect.bottom) / 2});
    }
    const CSeleSubListCtrl& Cells() const {
        return *static_cast<CSeleSubListCtrl*>(CWnd::FromHandlePermanent(List()));
    }
    void ClickCell(int row, int column) {
        const RECT cell = Cells().CellRect(row, column);
        RealClickAt(List(), {cell.left + 5, (cell.top + cell.bottom) / 2});
    }
    // Rows and columns, and the text of the first cell.
    std::string ListShown() const {
        return std::to_string(ListView_GetItemCount(List())) + "x" +
               std::to_string(Cells().GetColumnCount()) + " " + Cells().GetItemText(0, 0);
    }
    std::string TakeChoices() { return std::exchange(owner.choices, {}); }
};
