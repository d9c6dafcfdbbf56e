#include "tests/controls/popup_fixture.h"

namespace {

// The popup by keyboard, closed to a home in its owner.
class PopupKeys : public PopupTest {
protected:
    HWND home = owner.Add("EDIT", 0, 10001, {0, 0, 90, 12});

    PopupKeys() { popup->SetKeyboardHome(home); }
    void OpenOn(const std::string& contract) {
        popup->Refresh("");
        ::SetFocus(home);
        popup->ToggleOn(contract);
        owner.Pump();
    }
    std::string Selected() const {
        HTREEITEM item = TreeView_GetSelection(Tree());
        return item ? Item(item) : "";
    }
    // Which part has the keyboard, and what is chosen by Enter there.
    std::string Keyboard() const {
        return ::GetFocus() == Tree()   ? "tree " + Selected()
               : ::GetFocus() == List() ? "list " + Cells().HotText()
               : ::GetFocus() == home   ? "home"
                                        : "elsewhere";
    }
};

TEST_F(PopupKeys, OpensOnTheTypedContract) {
    const struct {
        const char *typed, *node, *list, *keyboard;
    } rows[] = {
        // clang-format off
        {"EXA CM 1512", "CM[Copper]", "2x1 1509", "list 1512"},
        {"LMX CA 3M", "CA[Copper]", "1x1 3M", "list 3M"},
        {"EXA CMO 1512 P900", "CMO 1512", "2x2 C1000", "list P900"},
        {"EXA CMD 1509 C3000/1509 P3000", "CMD 1509", "1x1 C3000/P3000", "list C3000/P3000"},
        {"EXA CM 1601", "CM[Copper]", "2x1 1509", "tree CM[Copper]"},
        {"EXA CM", "CM[Goods]", "1x1 ", "tree CM[Goods]"},
        {"EXA CMO 1512", "CMO 1512", "2x2 C1000", "tree CMO 1512"},
        {"LMX", "LMX[Metal]", "10x1 ", "tree LMX[Metal]"},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.typed);
        OpenOn(row.typed);
        EXPECT_EQ(Selected(), row.node);
        EXPECT_EQ(ListShown(), row.list);
        EXPECT_EQ(Keyboard(), row.keyboard);
        owner.Keys({VK_ESCAPE});
        EXPECT_FALSE(popup->IsWindowVisible());
        EXPECT_EQ(Keyboard(), "home");
    }
    OpenOn("NIL 1");
    EXPECT_EQ(Keyboard(), "tree EXA[Exchange A]") << "from the top";
    EXPECT_EQ(owner.choices, "");
}

TEST_F(PopupKeys, MovingSendsNothingAndKeepsTheList) {
    OpenOn("EXA CM 1509");
    owner.Keys({VK_DOWN, VK_TAB, VK_DOWN});
    EXPECT_EQ(Keyboard(), "tree CMO[Options]");
    EXPECT_EQ(ListShown(), "2x1 1509");
    owner.Keys({VK_RIGHT, VK_RIGHT, VK_LEFT, VK_LEFT, 'L'});
    EXPECT_EQ(Keyboard(), "tree LMX[Metal]");
    owner.Keys({VK_RIGHT});
    EXPECT_NE(VisibleNodes().find("CA[Copper]"), std::string::npos);
    EXPECT_EQ(ListShown(), "2x1 1509");
    EXPECT_EQ(owner.choices, "");
    EXPECT_TRUE(popup->IsWindowVisible());
}

TEST_F(PopupKeys, EnterDoesWhatAClickDoes) {
    const struct {
        const char* typed;
        std::vector<int> keys;
        const char *choices, *keyboard;
    } rows[] = {
        // clang-format off
        {"EXA CM 1509", {VK_DOWN, VK_RETURN}, "EXA CM 1512|", "home"},
        {"EXA CM 1509", {VK_DOWN, VK_DOWN, VK_DOWN, VK_UP, VK_RETURN}, "EXA CM 1509|", "home"},
        {"EXA CMO 1512 C900", {VK_RIGHT, VK_UP, VK_RIGHT, VK_RETURN}, "EXA CMO 1512 P1000|", "home"},
        {"EXA CMO 1512 P900", {VK_LEFT, VK_LEFT, VK_RETURN}, "EXA CMO 1512 C900|", "home"},
        {"EXA CMO 1512", {VK_UP, VK_RETURN, VK_TAB, VK_TAB}, "EXA CMO 1509|", "tree CMO 1509"},
        {"EXA", {VK_RETURN, VK_DOWN, VK_DOWN, VK_RETURN, VK_TAB, VK_DOWN, VK_RETURN},
         "EXA |EXA CM|EXA CM 1512|", "home"},
        // What Tab enters are the rows of the selected node, never those of an earlier one.
        {"LMX CA 3M", {VK_TAB, VK_HOME, VK_RIGHT, VK_DOWN, VK_DOWN, VK_TAB, VK_DOWN, VK_RETURN},
         "EXA CM 1512|", "home"},
        {"EXA CM", {VK_RETURN}, "EXA CM|", "home"},                 // goods have no contracts
        {"LMX", {VK_TAB, VK_RETURN, VK_DOWN, VK_RETURN}, "", "list "},  // nothing chosen in empty cells
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.choices);
        MakePopup();
        popup->SetKeyboardHome(home);
        OpenOn(row.typed);
        owner.Keys(row.keys);
        EXPECT_EQ(TakeChoices(), row.choices);
        EXPECT_EQ(Keyboard(), row.keyboard);
        EXPECT_EQ(popup->IsWindowVisible(), std::string(row.keyboard) != "home");
    }
}

TEST_F(PopupKeys, AMouseThatRestsPointsAtNothing) {
    ::SetCursorPos(0, 0);
    OpenOn("EXA CM 1512");
    const auto report = [&](HWND part, POINT screen) {
        ::SendMessageA(part, WM_NCHITTEST, 0, MAKELPARAM(screen.x, screen.y));
        ::ScreenToClient(part, &screen);
        ::SendMessageA(part, WM_MOUSEMOVE, 0, MAKELPARAM(screen.x, screen.y));
    };
    const RECT cell = Cells().CellRect(0, 0);
    POINT first{cell.left + 2, cell.top + 2};
    ::ClientToScreen(List(), &first);
    ::SetCursorPos(first.x, first.y);
    owner.Pump();
    ::SetFocus(Tree());
    owner.Keys({VK_TAB, VK_DOWN});
    report(List(), first);
    EXPECT_EQ(Keyboard(), "list 1512") << "as the system reports it when the popup appears under it";
    report(List(), {first.x + 1, first.y});
    EXPECT_EQ(Keyboard(), "list 1509");
    owner.Keys({VK_DOWN});
    EXPECT_EQ(Keyboard(), "list 1512") << "the keys go on from there";
}

TEST_F(PopupKeys, SurvivesAnOwnerThatTakesItAway) {
    owner.onChoice = [&] { popup.reset(); };
    for (const char* typed : {"EXA CM 1509", "EXA CM 1601", "EXA CM"}) {
        MakePopup();
        popup->SetKeyboardHome(home);
        OpenOn(typed);
        owner.Keys({VK_RETURN});
        EXPECT_FALSE(popup);
    }
}

}  // namespace
