#include "controls/sele_code_wnd.h"

#include "support/leak_count.h"
#include "tests/controls/control_dialog.h"
#include "tests/controls/sample_contracts.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

SampleContracts* g_book = nullptr;

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
        TVITEMA query{TVIF_TEXT, item, 0, 0, text, sizeof text, 0, 0, 0, 0};
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

TEST_F(PopupTest, ClicksChooseEveryKindOfContract) {
    const struct {
        std::vector<const char*> nodes;
        const char* clicks;  // what the clicks on them send
        const char* list;    // rows x columns, first cell
        int row, column;     // the cell clicked then
        const char* choice;
    } rows[] = {
        {{}, "EXA |", "10x1 ", 3, 0, "EXA  |"},
        {{"CM[Copper]"}, "EXA |EXA CM|", "2x1 1509", 1, 0, "EXA CM 1512|"},
        {{"CMO[Options]", "CMO 1512"},
         "EXA |EXA CMO |EXA CMO 1512|",
         "2x2 C1000",
         1,
         1,
         "EXA CMO 1512 P900|"},
        {{"CMD[Straddles]", "CMD 1509"},
         "EXA |EXA CMD|EXA CMD|",
         "1x1 C3000/P3000",
         0,
         0,
         "EXA CMD 1509 C3000/1509 P3000|"},
    };
    for (const auto& row : rows) {
        Open();
        ClickNode("EXA[Exchange A]");
        for (const char* node : row.nodes) {
            ClickNode(node);
        }
        std::string clicks;
        for (const std::string& choice : TakeChoices()) {
            clicks += choice;
        }
        EXPECT_EQ(clicks, row.clicks);
        EXPECT_EQ(std::to_string(Rows()) + "x" + std::to_string(Columns()) + " " + Cell(0, 0), row.list);
        ClickCell(row.row, row.column);
        EXPECT_EQ(TakeChoices(), std::vector<std::string>{row.choice});
        EXPECT_FALSE(popup->IsWindowVisible());
    }
}

TEST_F(PopupTest, GoodsCloseItAtOnce) {
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
    UINT nodes = TreeView_GetCount(Tree());
    const struct {
        bool signEntries;
        const char* sign;
        bool rebuilt;
    } rows[] = {{true, "", true}, {false, "", false}, {false, "S1", true}, {false, "S1", false}};
    UINT added = 0;
    for (const auto& row : rows) {
        book.AddCommodity('F', ("NEW" + std::to_string(++added)).c_str(), "New");
        book.AddContract("1601");
        book.api.signEntries.resize(row.signEntries ? 1 : 0);
        popup->Refresh(row.sign);
        EXPECT_EQ(TreeView_GetCount(Tree()), nodes + (row.rebuilt ? added : added - 1)) << added;
    }
    book.api.signEntries.push_back(&book);
    popup->SetExchangeFilter(true);
    popup->Refresh("");
    EXPECT_EQ(VisibleNodes().substr(0, 21), "LMX[Metal];CA[Copper]") << "a single exchange stands open";
}

TEST_F(PopupTest, LaysItsChildrenOutAndStandsUnderItsButton) {
    Open();
    const RECT client = popup->GetClientRect();
    const auto placed = [&](HWND child, const RECT& expected) {
        RECT rect{};
        ::GetWindowRect(child, &rect);
        ::MapWindowPoints(nullptr, popup->m_hWnd, reinterpret_cast<POINT*>(&rect), 2);
        return ::EqualRect(&rect, &expected) != FALSE;
    };
    EXPECT_TRUE(placed(Tree(), {2, 2, 282, client.bottom - 2}));
    EXPECT_TRUE(placed(List(), {285, 2, client.right - 2, client.bottom - 2}));
    const HWND button = owner.Add("BUTTON", 0, 10000, {0, 0, 12, 12});
    RECT at{};
    ::GetWindowRect(button, &at);
    popup->PlaceUnder(button);
    EXPECT_EQ(popup->GetWindowRect().top, at.bottom + 1);
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
        owner.onChoice = [&] { popup.reset(); };
        list ? ClickCell(0, 0) : ClickNode("CM[Copper]");
        EXPECT_FALSE(popup);
    }
}

TEST_F(PopupTest, ShowsWhatTheCatalogListsAndFreesItWithTheNext) {
    std::function<void(const std::vector<CatalogNode>&, HTREEITEM)> compare =
        [&](const std::vector<CatalogNode>& nodes, HTREEITEM item) {
            for (const CatalogNode& node : nodes) {
                TVITEMA query{};
                query.mask = TVIF_PARAM;
                query.hItem = item;
                ::SendMessageA(Tree(), TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&query));
                ASSERT_EQ(reinterpret_cast<const char*>(query.lParam), node.data);
                ASSERT_EQ(ItemText(item), node.text);
                compare(node.children, TreeView_GetChild(Tree(), item));
                item = TreeView_GetNextSibling(Tree(), item);
            }
            ASSERT_EQ(item, nullptr);
        };
    Open();
    compare(BuildCatalog(SampleTrade(), "", false), TreeView_GetRoot(Tree()));
    EXPECT_LT(KeptByEach([&] { popup->Refresh(""); }, 10), 50);
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
