#include "tests/controls/popup_fixture.h"

namespace {

TEST_F(PopupTest, ClicksOpenTheTreeLikeAnAccordion) {
    Open();
    EXPECT_TRUE(popup->IsWindowVisible());
    EXPECT_EQ(::GetFocus(), Tree());
    EXPECT_EQ(VisibleNodes(), "EXA[Exchange A];LMX[Metal];");
    ClickNode(kExa);
    EXPECT_EQ(VisibleNodes(), "EXA[Exchange A];CM[Goods];CM[Copper];CMO[Options];CMD[Straddles];LMX[Metal];");
    EXPECT_EQ(TakeChoices(), "EXA |");
    ClickNode("LMX[Metal]");
    EXPECT_EQ(VisibleNodes(), "EXA[Exchange A];LMX[Metal];CA[Copper];") << "the other one is closed";
    // Opened again by the button, it stays: the exchange clicked last has not changed.
    TreeView_Expand(Tree(), TreeView_GetRoot(Tree()), TVE_EXPAND);
    ClickNode("CA[Copper]");  // so that the next click is not the second of a double click
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
    EXPECT_EQ(Item(TreeView_GetSelection(Tree())), "LMX[Metal]");
    EXPECT_EQ(TakeChoices(), "LMX |");
}

TEST_F(PopupTest, ClicksChooseEveryKindOfContract) {
    const struct {
        std::vector<const char*> path;
        const char* clicks;  // what the clicks on it send
        const char* list;    // rows x columns, first cell
        int row, column;     // the cell clicked then
        const char* choice;  // null when the popup is closed before
    } rows[] = {
        // clang-format off
        {{kExa}, "EXA |", "10x1 ", 3, 0, "EXA  |"},
        {{kExa, "CM[Goods]"}, "EXA |EXA CM|", "1x1 ", 0, 0, nullptr},
        {{kExa, "CM[Copper]"}, "EXA |EXA CM|", "2x1 1509", 1, 0, "EXA CM 1512|"},
        {{kExa, "CMO[Options]", "CMO 1512"}, "EXA |EXA CMO |EXA CMO 1512|", "2x2 C1000", 1, 1,
         "EXA CMO 1512 P900|"},
        {{kExa, "CMD[Straddles]", "CMD 1509"}, "EXA |EXA CMD|EXA CMD|", "1x1 C3000/P3000", 0, 0,
         "EXA CMD 1509 C3000/1509 P3000|"},
        // clang-format on
    };
    for (const auto& row : rows) {
        Open(row.path);
        EXPECT_EQ(TakeChoices(), row.clicks);
        EXPECT_EQ(ListShown(), row.list);
        EXPECT_EQ(popup->IsWindowVisible(), row.choice != nullptr) << row.clicks;
        if (row.choice) {
            ClickCell(row.row, row.column);
            EXPECT_EQ(TakeChoices(), row.choice);
            EXPECT_FALSE(popup->IsWindowVisible());
        }
    }
}

TEST_F(PopupTest, HidesWhenItIsLeft) {
    Open();
    ::SetActiveWindow(owner.m_hWnd);
    owner.Pump();
    EXPECT_FALSE(popup->IsWindowVisible());
    Open();
    popup->Toggle();
    EXPECT_FALSE(popup->IsWindowVisible());
    EXPECT_EQ(owner.choices, "");
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
    Open({kExa, "CMO[Options]", "CMO 1512"});
    EXPECT_EQ(::GetFocus(), Tree());
    RECT client{}, cell{LVIR_BOUNDS, 1, 0, 0};
    ::SendMessageA(List(), LVM_GETSUBITEMRECT, 1, reinterpret_cast<LPARAM>(&cell));
    ::GetClientRect(List(), &client);
    ::IntersectRect(&cell, &cell, &client);
    POINT onScreen{cell.left + 3, cell.top + 3};
    ::ClientToScreen(List(), &onScreen);
    ::SendMessageA(List(), WM_NCHITTEST, 0, MAKELPARAM(onScreen.x, onScreen.y));
    EXPECT_EQ(::GetFocus(), List());

    ::UpdateWindow(List());
    const auto changedBy = [&](int y) {
        ::ValidateRect(List(), nullptr);
        ::SendMessageA(List(), WM_MOUSEMOVE, 0, MAKELPARAM(cell.left + 3, y));
        RECT changed{};
        ::GetUpdateRect(List(), &changed, FALSE);
        return changed;
    };
    const RECT entered = changedBy(cell.top + 3), below = changedBy(300), furtherBelow = changedBy(301);
    EXPECT_TRUE(::EqualRect(&entered, &cell)) << "that cell and no other";
    EXPECT_TRUE(::EqualRect(&below, &cell)) << "it is given up below the rows";
    EXPECT_TRUE(::IsRectEmpty(&furtherBelow));
}

TEST_F(PopupTest, SurvivesAnOwnerThatTakesItAway) {
    const auto take = [&] { popup.reset(); };
    for (const bool list : {false, true}) {
        owner.onChoice = [] {};
        MakePopup();
        list ? Open({kExa, "CM[Copper]"}) : Open({kExa});
        owner.onChoice = take;
        list ? ClickCell(0, 0) : ClickNode("CM[Copper]");
        EXPECT_FALSE(popup);
    }
    owner.onChoice = [] {};
    for (const bool opening : {false, true}) {
        MakePopup();
        if (!opening) {
            Open({kExa});
        }
        book.api.whileAsked = take;  // as when the host closes the dialog in its answer
        opening ? popup->Refresh("") : ClickNode("CM[Copper]");
        book.api.whileAsked = nullptr;
        EXPECT_FALSE(popup);
    }
}

TEST_F(PopupTest, KeepsGoingWithoutATradeService) {
    g_book = nullptr;
    Open();
    EXPECT_EQ(TreeView_GetCount(Tree()), 0u);
    ::SendMessageA(popup->m_hWnd, WM_NOTIFY, 0, 0);
    RealClickAt(Tree(), {50, 50});
    RealClickAt(List(), {20, 20});
    EXPECT_EQ(ListShown(), "10x1 ");
}

}  // namespace
