#include "controls/sele_code_wnd.h"

#include "support/leak_count.h"
#include "tests/controls/control_dialog.h"
#include "tests/controls/indexed_book.h"
#include "tests/controls/sample_contracts.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

SampleContracts* g_book = nullptr;
IndexedBook* g_largeBook = nullptr;

TradeData SampleTrade() {
    return TradeData(g_book ? &g_book->api : nullptr);
}

// The owner of the popup: keeps the choices that it is sent.
class Owner : public ControlDialog {
public:
    std::vector<std::string> choices;  // "text|sign"
    std::function<void()> onChoice;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_SELECTCODE) {
            choices.push_back(std::string(reinterpret_cast<const char*>(wParam)) + "|" +
                              reinterpret_cast<const char*>(lParam));
            if (onChoice) {
                onChoice();
            }
            return 0;
        }
        return ControlDialog::WindowProc(message, wParam, lParam);
    }
};

class PopupTest : public testing::Test {
protected:
    SampleContracts book;
    Owner owner;
    std::unique_ptr<CSeleCodeWnd> popup = std::make_unique<CSeleCodeWnd>(&SampleTrade);

    void SetUp() override {
        g_book = &book;
        // A host that has sign entries is asked anew on every opening.
        book.api.signEntries.push_back(&book);
        book.AddUsualBook();
        ASSERT_TRUE(popup->CreatePopup(owner.m_hWnd));
        popup->SetNotifyWnd(owner.m_hWnd);
    }
    void TearDown() override {
        popup.reset();
        owner.DestroyWindow();
        g_book = nullptr;
    }

    void Open() {
        popup->Refresh("");
        ::MoveWindow(popup->m_hWnd, 50, 50, 438, 400, TRUE);
        popup->Toggle();
        owner.Pump();
    }
    HWND Tree() const { return popup->GetDlgItem(kSeleCodeTreeId); }
    HWND List() const { return popup->GetDlgItem(kSeleCodeListId); }
    std::string ItemText(HTREEITEM item) const {
        char text[100] = "";
        TVITEMA query{};
        query.mask = TVIF_TEXT;
        query.hItem = item;
        query.pszText = text;
        query.cchTextMax = sizeof text;
        ::SendMessageA(Tree(), TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&query));
        return text;
    }
    // The nodes that can be seen, top to bottom.
    std::string VisibleNodes() const {
        std::string nodes;
        for (HTREEITEM item = TreeView_GetRoot(Tree()); item; item = TreeView_GetNextVisible(Tree(), item)) {
            nodes += ItemText(item) + ";";
        }
        return nodes;
    }
    HTREEITEM Find(const std::string& text) const {
        for (HTREEITEM item = TreeView_GetRoot(Tree()); item; item = TreeView_GetNextVisible(Tree(), item)) {
            if (ItemText(item) == text) {
                return item;
            }
        }
        return nullptr;
    }
    void RealClickAt(HWND control, POINT point) {
        ::ClientToScreen(control, &point);
        ::SetCursorPos(point.x, point.y);
        INPUT inputs[2]{};
        inputs[0].type = inputs[1].type = INPUT_MOUSE;
        inputs[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
        inputs[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
        ::SendInput(2, inputs, sizeof(INPUT));
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
    void ClickCell(int row, int column) {
        RECT rect{column == 0 ? LVIR_LABEL : LVIR_BOUNDS, column, 0, 0};
        ASSERT_TRUE(::SendMessageA(List(), LVM_GETSUBITEMRECT, row, reinterpret_cast<LPARAM>(&rect)));
        RealClickAt(List(), {rect.left + 5, (rect.top + rect.bottom) / 2});
    }
    std::string Cell(int row, int column) const {
        char text[100] = "";
        LVITEMA query{};
        query.iSubItem = column;
        query.pszText = text;
        query.cchTextMax = sizeof text;
        ::SendMessageA(List(), LVM_GETITEMTEXTA, row, reinterpret_cast<LPARAM>(&query));
        return text;
    }
    int Rows() const { return ListView_GetItemCount(List()); }
    int Columns() const { return Header_GetItemCount(ListView_GetHeader(List())); }
    std::vector<std::string> TakeChoices() { return std::exchange(owner.choices, {}); }
};

TEST_F(PopupTest, ClicksOpenTheTreeLikeAnAccordion) {
    Open();
    EXPECT_TRUE(popup->IsWindowVisible());
    EXPECT_EQ(::GetFocus(), Tree());
    EXPECT_EQ(VisibleNodes(), "EXA[Exchange A];LMX[Metal];");
    ClickNode("EXA[Exchange A]");
    EXPECT_EQ(VisibleNodes(), "EXA[Exchange A];CM[Goods];CM[Copper];CMO[Options];CMD[Straddles];LMX[Metal];");
    EXPECT_EQ(TakeChoices(), std::vector<std::string>{"EXA |"});
    ClickNode("LMX[Metal]");
    EXPECT_EQ(VisibleNodes(), "EXA[Exchange A];LMX[Metal];CA[Copper];") << "the other one is closed";
    // Opened again by the button, it stays: the exchange clicked last has not changed.
    TreeView_Expand(Tree(), TreeView_GetRoot(Tree()), TVE_EXPAND);
    ClickNode("LMX[Metal]");
    EXPECT_NE(VisibleNodes().find("CM[Goods]"), std::string::npos);
}

TEST_F(PopupTest, TheButtonOpensANodeOnce) {
    Open();
    RECT rect{};
    TreeView_GetItemRect(Tree(), Find("LMX[Metal]"), &rect, TRUE);
    TVHITTESTINFO hit{};
    hit.pt.y = (rect.top + rect.bottom) / 2;
    while (hit.pt.x < rect.left && (hit.flags & TVHT_ONITEMBUTTON) == 0) {
        ++hit.pt.x;
        TreeView_HitTest(Tree(), &hit);
    }
    RealClickAt(Tree(), hit.pt);
    EXPECT_EQ(VisibleNodes(), "EXA[Exchange A];LMX[Metal];CA[Copper];");
    EXPECT_EQ(ItemText(TreeView_GetSelection(Tree())), "LMX[Metal]");
    EXPECT_EQ(TakeChoices(), std::vector<std::string>{"LMX |"});
}

TEST_F(PopupTest, ChoosesAFuture) {
    Open();
    ClickNode("EXA[Exchange A]");
    TakeChoices();
    ClickNode("CM[Copper]");
    EXPECT_EQ(TakeChoices(), std::vector<std::string>{"EXA CM|"});
    EXPECT_EQ(Rows(), 2);
    EXPECT_EQ(Columns(), 1);
    EXPECT_EQ(Cell(0, 0) + Cell(1, 0), "15091512");
    ClickCell(1, 0);
    EXPECT_EQ(TakeChoices(), std::vector<std::string>{"EXA CM 1512|"});
    EXPECT_FALSE(popup->IsWindowVisible());
}

TEST_F(PopupTest, ChoosesAnOption) {
    Open();
    ClickNode("EXA[Exchange A]");
    ClickNode("CMO[Options]");
    EXPECT_EQ(TakeChoices().back(), "EXA CMO |");
    EXPECT_EQ(Cell(0, 0), "") << "no texts before a series is chosen";
    ClickNode("CMO 1512");
    EXPECT_EQ(TakeChoices(), std::vector<std::string>{"EXA CMO 1512|"});
    EXPECT_EQ(Columns(), 2);
    EXPECT_EQ(Rows(), 2);
    EXPECT_EQ(Cell(0, 0) + Cell(1, 1), "C1000P900");
    ClickCell(1, 1);
    EXPECT_EQ(TakeChoices(), std::vector<std::string>{"EXA CMO 1512 P900|"});
    EXPECT_FALSE(popup->IsWindowVisible());
}

TEST_F(PopupTest, OpensSingleChildrenAndChoosesAPair) {
    Open();
    ClickNode("EXA[Exchange A]");
    ClickNode("CMD[Straddles]");
    ASSERT_TRUE(Find("CMD 1509"));
    ClickNode("CMD 1509");
    EXPECT_EQ(TakeChoices().back(), "EXA CMD|");
    EXPECT_EQ(Columns(), 1);
    EXPECT_EQ(Cell(0, 0), "C3000/P3000");
    ClickCell(0, 0);
    EXPECT_EQ(TakeChoices(), std::vector<std::string>{"EXA CMD 1509 C3000/1509 P3000|"});
}

TEST_F(PopupTest, GoodsCloseItAtOnceAndBlankRowsSendABlank) {
    Open();
    ClickNode("EXA[Exchange A]");
    TakeChoices();
    EXPECT_EQ(Rows(), 10);
    ClickCell(3, 0);
    EXPECT_EQ(TakeChoices(), std::vector<std::string>{"EXA  |"});
    Open();
    ClickNode("EXA[Exchange A]");
    ClickNode("CM[Goods]");
    EXPECT_EQ(TakeChoices().back(), "EXA CM|");
    EXPECT_FALSE(popup->IsWindowVisible());
}

TEST_F(PopupTest, KeysMoveAndSendNothing) {
    Open();
    owner.Keys({VK_DOWN, VK_UP, VK_RIGHT, VK_DOWN, VK_RETURN});
    ::SetFocus(List());
    owner.Keys({VK_DOWN, VK_DOWN, VK_UP});
    EXPECT_EQ(owner.choices, std::vector<std::string>{});
    EXPECT_EQ(Rows(), 10);
    EXPECT_TRUE(popup->IsWindowVisible());
}

TEST_F(PopupTest, HidesWhenItIsLeft) {
    Open();
    ::SetActiveWindow(owner.m_hWnd);
    owner.Pump();
    EXPECT_FALSE(popup->IsWindowVisible());
    Open();
    popup->Toggle();
    EXPECT_FALSE(popup->IsWindowVisible());
    EXPECT_TRUE(owner.choices.empty());
}

TEST_F(PopupTest, RebuildsByTheHostsSignEntries) {
    Open();
    const LRESULT nodes = TreeView_GetCount(Tree());
    book.AddContract("1M");
    book.AddCommodity('F', "NEW", "New");
    book.AddContract("1601");
    popup->Refresh("");
    EXPECT_EQ(TreeView_GetCount(Tree()), static_cast<UINT>(nodes + 1)) << "asked anew";
    book.api.signEntries.clear();
    book.AddCommodity('F', "NEWER", "Newer");
    book.AddContract("1601");
    popup->Refresh("");
    EXPECT_EQ(TreeView_GetCount(Tree()), static_cast<UINT>(nodes + 1)) << "kept: the host has no entries";
    popup->Refresh("S1");
    EXPECT_EQ(TreeView_GetCount(Tree()), static_cast<UINT>(nodes + 2)) << "another sign";
    book.AddCommodity('F', "NEWEST", "Newest");
    book.AddContract("1601");
    popup->Refresh("S1");
    EXPECT_EQ(TreeView_GetCount(Tree()), static_cast<UINT>(nodes + 2)) << "the same sign";
    book.api.signEntries.push_back(&book);
    popup->SetExchangeFilter(true);
    popup->Refresh("");
    EXPECT_EQ(VisibleNodes().substr(0, 11), "LMX[Metal];") << "a single exchange stands open";
    EXPECT_NE(VisibleNodes(), "LMX[Metal];");
}

TEST_F(PopupTest, LaysItsChildrenOutAndStandsUnderItsButton) {
    Open();
    const RECT client = popup->GetClientRect();
    const auto childRect = [&](HWND child) {
        RECT rect{};
        ::GetWindowRect(child, &rect);
        ::MapWindowPoints(nullptr, popup->m_hWnd, reinterpret_cast<POINT*>(&rect), 2);
        return std::vector<LONG>{rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
    };
    EXPECT_EQ(childRect(Tree()), (std::vector<LONG>{2, 2, 280, client.bottom - 4}));
    EXPECT_EQ(childRect(List()), (std::vector<LONG>{285, 2, client.right - 287, client.bottom - 4}));
    const HWND button = owner.Add("BUTTON", 0, 10000, {0, 0, 12, 12});
    ::SetWindowPos(owner.m_hWnd, nullptr, 300, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    RECT at{};
    ::GetWindowRect(button, &at);
    popup->PlaceUnder(button);
    EXPECT_EQ(popup->GetWindowRect().left, at.left - 213);
    EXPECT_EQ(popup->GetWindowRect().top, at.bottom + 1);
    EXPECT_EQ(popup->GetWindowRect().right - popup->GetWindowRect().left, 438);
}

TEST_F(PopupTest, TheMouseBringsTheFocusAndHighlightsOneCell) {
    Open();
    ClickNode("EXA[Exchange A]");
    ClickNode("CMO[Options]");
    ClickNode("CMO 1512");
    EXPECT_EQ(::GetFocus(), Tree());
    RECT cell{LVIR_BOUNDS, 1, 0, 0};
    ::SendMessageA(List(), LVM_GETSUBITEMRECT, 1, reinterpret_cast<LPARAM>(&cell));
    RECT client{};
    ::GetClientRect(List(), &client);
    ::IntersectRect(&cell, &cell, &client);
    POINT inCell{cell.left + 3, cell.top + 3};
    POINT onScreen = inCell;
    ::ClientToScreen(List(), &onScreen);
    ::SendMessageA(List(), WM_NCHITTEST, 0, MAKELPARAM(onScreen.x, onScreen.y));
    EXPECT_EQ(::GetFocus(), List());

    ::UpdateWindow(List());
    ::ValidateRect(List(), nullptr);
    ::SendMessageA(List(), WM_MOUSEMOVE, 0, MAKELPARAM(inCell.x, inCell.y));
    RECT changed{};
    ::GetUpdateRect(List(), &changed, FALSE);
    EXPECT_TRUE(::EqualRect(&changed, &cell)) << "that cell and no other";
    ::ValidateRect(List(), nullptr);
    ::SendMessageA(List(), WM_MOUSEMOVE, 0, MAKELPARAM(inCell.x, 300));
    ::GetUpdateRect(List(), &changed, FALSE);
    EXPECT_TRUE(::EqualRect(&changed, &cell)) << "it is given up below the rows";
    ::ValidateRect(List(), nullptr);
    ::SendMessageA(List(), WM_MOUSEMOVE, 0, MAKELPARAM(inCell.x, 301));
    EXPECT_FALSE(::GetUpdateRect(List(), &changed, FALSE));
}

TEST_F(PopupTest, SurvivesAnOwnerThatTakesItAway) {
    for (const bool list : {false, true}) {
        owner.onChoice = nullptr;
        popup = std::make_unique<CSeleCodeWnd>(&SampleTrade);
        ASSERT_TRUE(popup->CreatePopup(owner.m_hWnd));
        popup->SetNotifyWnd(owner.m_hWnd);
        Open();
        ClickNode("EXA[Exchange A]");
        if (list) {
            ClickNode("CM[Copper]");
        }
        const HWND window = popup->m_hWnd;
        owner.onChoice = [&] { popup.reset(); };
        if (list) {
            ClickCell(0, 0);
        } else {
            ClickNode("CM[Copper]");
        }
        EXPECT_FALSE(popup);
        EXPECT_FALSE(::IsWindow(window));
    }
}

// Counts what the list asks for.
class CountingPopup : public CSeleCodeWnd {
public:
    using CSeleCodeWnd::CSeleCodeWnd;
    int cellsAsked = 0;

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override {
        cellsAsked += reinterpret_cast<const NMHDR*>(lParam)->code == static_cast<UINT>(LVN_GETDISPINFOA);
        return CSeleCodeWnd::OnNotify(wParam, lParam, result);
    }
};

TEST_F(PopupTest, ARepaintFormatsVisibleRowsOnly) {
    auto counting = std::make_unique<CountingPopup>(&SampleTrade);
    CountingPopup* counter = counting.get();
    popup = std::move(counting);
    ASSERT_TRUE(popup->CreatePopup(owner.m_hWnd));
    book.AddCommodity('F', "BIG", "Many");
    for (int i = 0; i < 3000; ++i) {
        book.AddContract(std::to_string(i));
    }
    Open();
    ClickNode("LMX[Metal]");
    ClickNode("BIG[Many]");
    ASSERT_EQ(Rows(), 3000);
    ::UpdateWindow(List());
    counter->cellsAsked = 0;
    ::InvalidateRect(List(), nullptr, TRUE);
    ::UpdateWindow(List());
    EXPECT_GT(counter->cellsAsked, 0);
    EXPECT_LE(counter->cellsAsked, 4 * (ListView_GetCountPerPage(List()) + 2));
}

TEST_F(PopupTest, ShowsALargeBookAsTheCatalogListsIt) {
    IndexedBook large(50, 40, 50);
    const TradeData trade(&large);
    g_largeBook = &large;
    popup = std::make_unique<CSeleCodeWnd>([] { return TradeData(g_largeBook); });
    ASSERT_TRUE(popup->CreatePopup(owner.m_hWnd));
    popup->Refresh("");
    std::function<void(const std::vector<CatalogNode>&, HTREEITEM)> compare =
        [&](const std::vector<CatalogNode>& nodes, HTREEITEM first) {
            for (const CatalogNode& node : nodes) {
                ASSERT_EQ(ItemText(first), node.text);
                TVITEMA query{};
                query.mask = TVIF_PARAM;
                query.hItem = first;
                ::SendMessageA(Tree(), TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&query));
                ASSERT_EQ(reinterpret_cast<const char*>(query.lParam), node.data);
                compare(node.children, TreeView_GetChild(Tree(), first));
                first = TreeView_GetNextSibling(Tree(), first);
            }
            ASSERT_EQ(first, nullptr);
        };
    compare(BuildCatalog(trade, "", false), TreeView_GetRoot(Tree()));
    EXPECT_EQ(TreeView_GetCount(Tree()), 50u + 2000u + 500u * 5u);
    popup->Refresh("");
    const long long before = CountResources().heapBytes;
    for (int i = 0; i < 5; ++i) {
        popup->Refresh("");
    }
    EXPECT_LT(CountResources().heapBytes - before, 1000) << "every refresh frees what the last one held";
}

TEST_F(PopupTest, KeepsGoingWithoutATradeService) {
    g_book = nullptr;
    Open();
    EXPECT_EQ(TreeView_GetCount(Tree()), 0u);
    RealClickAt(Tree(), {50, 50});
    RealClickAt(List(), {20, 20});
    EXPECT_EQ(Cell(0, 0), "");
}

}  // namespace
