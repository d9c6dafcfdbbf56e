#include "fill/fill_window.h"

#include "res/dialog_creation.h"
#include "support/leak_count.h"

namespace {

const char* const kAboveRemaining =
    "FillQty cann't be greater than OrderQty,do you want to modify this order?";

class FillDialog : public FillWindow {
protected:
    // Where everything stands: the controls in the dialog, the dialog on the screen.
    using Geometry = std::map<int, std::array<LONG, 4>>;
    Geometry GeometryNow() const {
        Geometry geometry;
        RECT place;
        GetWindowRect(window, &place);
        geometry[0] = {place.left, place.top, place.right, place.bottom};
        for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            GetWindowRect(child, &place);
            MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
            geometry[GetDlgCtrlID(child)] = {place.left, place.top, place.right, place.bottom};
        }
        return geometry;
    }
    // The first control (0: the window) that stands elsewhere; -1 for none.
    static int FirstDifference(const Geometry& one, const Geometry& other) {
        for (const auto& [id, place] : one) {
            const auto found = other.find(id);
            if (found == other.end() || found->second != place) {
                return id;
            }
        }
        return one.size() == other.size() ? -1 : 0;
    }
    int HeightOf(const Geometry& geometry) const { return geometry.at(0)[3] - geometry.at(0)[1]; }

    // Puts the open dialog into the state of a carry, a combination or a plain fill on the forward exchange.
    void Become(FillLayout layout) {
        if (layout == FillLayout::Full) {
            SendMessageA(Item(IDC_FILL_SOURCE), CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
            SetText(IDC_FILL_SOURCE, "Carry");
            SendMessageA(window, WM_COMMAND, MAKEWPARAM(IDC_FILL_SOURCE, CBN_SELCHANGE), 0);
        } else {
            Choose(IDC_FILL_SOURCE, "Proxy");
        }
        Choose(IDC_COMMODITY, layout == FillLayout::Combination ? "PAIR" : "CA");
    }
    void AddForwardPair() {
        CommodityRecord& pair = book.AddPair('m', "PAIR", "CA", "CA");
        pair.exchangeNo.Set("EXF");
    }
};

TEST_F(FillDialog, EveryTransitionEndsWhereOpeningEnds) {
    using enum FillLayout;
    AddForwardPair();
    FillRecord carry = As(FillOf("EXF CA 150320"), 'C');
    OrderRecord pair = OrderOf("EXF PAIR 150320/150618");
    OrderRecord plain = OrderOf("EXF CA 150320");
    std::map<FillLayout, Geometry> opened;
    OpenOn(0, carry);
    opened[Full] = GeometryNow();
    const int row = (opened[Full][IDC_EXCHANGE][1] - opened[Full][IDC_UPPER][1]) / 2;
    Close();
    OpenOn(0, pair);
    opened[Combination] = GeometryNow();
    Close();
    OpenOn(0, plain);
    opened[Single] = GeometryNow();
    Close();
    EXPECT_EQ(HeightOf(opened[Full]) - HeightOf(opened[Combination]), row);
    EXPECT_EQ(HeightOf(opened[Full]) - HeightOf(opened[Single]), 2 * row);
    EXPECT_EQ(opened[Combination][IDC_FILL_PRICE2_WHOLE][1], opened[Full][IDC_FILL_PRICE2_WHOLE][1] - row);
    for (FillLayout from : {Full, Combination, Single}) {
        for (FillLayout to : {Full, Combination, Single}) {
            Open(0);
            for (FillLayout layout : {from, to, from, to}) {
                Become(layout);
                EXPECT_EQ(FirstDifference(GeometryNow(), opened[layout]), -1);
                EXPECT_EQ(Shown(IDC_OPEN_CONTRACT), layout == Full);
                EXPECT_EQ(Shown(IDC_FILL_PRICE2_WHOLE), layout != Single);
            }
            Close();
        }
    }
}

TEST_F(FillDialog, ListsFollowTheExchange) {
    Open(1);
    Choose(IDC_DIRECTION, "Sell");
    EXPECT_EQ(Text(IDC_OPEN_DIRECTION), "Buy");
    Choose(IDC_EXCHANGE, "EXA");
    EXPECT_EQ(SendMessageA(Item(IDC_COMMODITY), CB_GETCOUNT, 0, 0), 6);
    EXPECT_EQ(Text(IDC_COMMODITY), "");
    Choose(IDC_COMMODITY, "TR");
    EXPECT_EQ(Text(IDC_FILL_PRICE_DENOMINATOR), "8");
    EXPECT_TRUE(Usable(IDC_FILL_PRICE_NUMERATOR));
    // Passing the exchange by keeps the commodity; another exchange empties it.
    Focus(IDC_EXCHANGE);
    loop->Key(VK_TAB);
    EXPECT_EQ(Text(IDC_COMMODITY), "TR");
    Focus(IDC_EXCHANGE);
    SendMessageA(EditOf(IDC_EXCHANGE), EM_SETSEL, 0, -1);
    loop->Type(EditOf(IDC_EXCHANGE), "exf");
    loop->Key(VK_TAB);
    EXPECT_EQ(Text(IDC_EXCHANGE) + Text(IDC_COMMODITY), "EXF");
    EXPECT_EQ(SendMessageA(Item(IDC_COMMODITY), CB_GETCOUNT, 0, 0), 1);
}

TEST_F(FillDialog, ACarryLeavesOnlyTheForwardExchange) {
    FillRecord elsewhere = As(FillOf("EXA CM 1509"), 'C');
    OpenOn(0, elsewhere);
    EXPECT_EQ(Text(IDC_EXCHANGE) + " " + Text(IDC_COMMODITY), "EXF CM");
    EXPECT_FALSE(Usable(IDC_EXCHANGE));
    EXPECT_TRUE(Shown(IDC_OPEN_CONTRACT));
    EXPECT_EQ(Text(IDC_FILL_SOURCE), "Carry");
}

TEST_F(FillDialog, AccountsAreListedAgainWhenTheirNumberChanged) {
    Open(0);
    SetText(IDC_ACCOUNT, "10002");
    UserRecord another = userStore[0];
    book.users.push_back(&another);
    Focus(IDC_ACCOUNT);
    EXPECT_EQ(SendMessageA(Item(IDC_ACCOUNT), CB_GETCOUNT, 0, 0), 4);
    EXPECT_EQ(Text(IDC_ACCOUNT), "10002");
}

TEST_F(FillDialog, EnterWalksAndSubmits) {
    OpenOn(0, order);
    Focus(IDC_FILL_CONTRACT);
    loop->Key(VK_RETURN);
    EXPECT_EQ(FocusId(), IDC_FILL_PRICE_WHOLE);
    for (int expected : {IDC_CURRENCY, IDC_FILL_FEE_GIVEN, IDC_FEE, IDC_CONFIRM}) {
        loop->Key(expected == IDC_FEE ? VK_TAB : VK_RETURN);
        EXPECT_EQ(FocusId(), expected);
    }
    loop->Key(VK_ESCAPE);
    EXPECT_TRUE(IsWindow(window));
    loop->Key(VK_RETURN);
    EXPECT_EQ(g_pFillDialog, nullptr);
    ASSERT_EQ(service.fills.size(), 1u);
    const FillRecord& sent = service.fills[0];
    EXPECT_EQ(sent.accountNo.Str() + sent.key.contractNo.Str() + sent.systemNo.Str() + sent.currencyNo.Str(),
              "100011509SYS7USD");
    EXPECT_EQ(std::string({sent.fillSource, sent.direction, sent.key.commodityType}), "MBF");
    EXPECT_EQ(sent.fillQty, 3u);
    EXPECT_EQ(sent.fillPrice, 97);
}

TEST_F(FillDialog, ArrowsWheelAndSpinsStep) {
    OrderRecord fractions = OrderOf("EXA TR 1509");
    OpenOn(0, fractions);
    const auto spin = [&](int id, int delta) {
        NMUPDOWN notification{
            {Item(id), static_cast<UINT_PTR>(id), static_cast<UINT>(UDN_DELTAPOS)}, 0, delta};
        EXPECT_EQ(SendMessageA(window, WM_NOTIFY, id, reinterpret_cast<LPARAM>(&notification)), 1);
    };
    Focus(IDC_FILL_QTY);
    loop->Key(VK_UP);
    EXPECT_EQ(Text(IDC_FILL_QTY), "4");
    Focus(IDC_FILL_PRICE_NUMERATOR);
    loop->Key(VK_DOWN);
    EXPECT_EQ(Text(IDC_FILL_PRICE_WHOLE) + "+" + Text(IDC_FILL_PRICE_NUMERATOR), "96+7");
    PostMessageA(GetFocus(), WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    loop->PumpUntilIdle();
    EXPECT_EQ(Text(IDC_FILL_PRICE_WHOLE) + "+" + Text(IDC_FILL_PRICE_NUMERATOR), "97+0");
    spin(IDC_FILL_PRICE_SPIN, 1);
    EXPECT_EQ(Text(IDC_FILL_PRICE_WHOLE) + "+" + Text(IDC_FILL_PRICE_NUMERATOR), "96+7");
    EXPECT_EQ(FocusId(), IDC_FILL_PRICE_NUMERATOR);
    spin(IDC_FILL_QTY_SPIN, -1);
    EXPECT_EQ(Text(IDC_FILL_QTY), "5");
    EXPECT_EQ(FocusId(), IDC_FILL_QTY);
    Focus(IDC_FEE);
    loop->Key(VK_UP);
    EXPECT_EQ(Text(IDC_FEE), "0");
}

TEST_F(FillDialog, TypedTextsStayNumbers) {
    Open(0);
    const auto typed = [&](int id, const char* text) {
        Focus(id);
        SetText(id, "");
        loop->Type(Item(id), text);
        return Text(id);
    };
    EXPECT_EQ(typed(IDC_FILL_QTY, "1.5"), "15");
    EXPECT_EQ(typed(IDC_FILL_PRICE_WHOLE, "-1.5.2"), "1.52");
    EXPECT_EQ(typed(IDC_FEE, "2x.5"), "2.5");
    Choose(IDC_EXCHANGE, "EXA");
    Choose(IDC_COMMODITY, "TR");
    EXPECT_EQ(typed(IDC_FILL_PRICE_WHOLE, "12.5"), "125");
}

TEST_F(FillDialog, ADoubtedPriceGetsTheFocus) {
    OpenOn(0, order);
    SetText(IDC_FILL_PRICE_WHOLE, "0");
    Focus(IDC_CONFIRM);
    MessageBoxScript boxes(Box("Fill Price is zero;\n\n\t\tAre you sure to down to this order?",
                               "Operational quaification", IDCANCEL));
    Press(IDC_CONFIRM);
    EXPECT_EQ(FocusId(), IDC_FILL_PRICE_WHOLE);
    EXPECT_TRUE(service.fills.empty());
}

TEST_F(FillDialog, ASecondPressDuringAQuestionDoesNothing) {
    OpenOn(0, order);
    SetText(IDC_FILL_QTY, "5");
    MessageBoxScript boxes(Box(kAboveRemaining, "Tips", IDYES, [&](HWND box) {
        SendMessageA(window, WM_COMMAND, IDC_CONFIRM, 0);
        PostMessageA(box, WM_COMMAND, IDYES, 0);
    }));
    service.whileSending = [&] { SendMessageA(window, WM_COMMAND, IDC_CONFIRM, 0); };
    Press(IDC_CONFIRM);
    EXPECT_EQ(boxes.Shown(), 1);
    EXPECT_EQ(service.fills.size(), 1u);
}

TEST_F(FillDialog, AParentThatGoesAwayTakesTheEntryWithIt) {
    OpenOn(0, order);
    SetText(IDC_FILL_QTY, "5");
    MessageBoxScript boxes(Box(kAboveRemaining, "Tips", IDYES, [&](HWND) { host->Destroy(); }));
    Press(IDC_CONFIRM);
    EXPECT_EQ(g_pFillDialog, nullptr);
    EXPECT_TRUE(service.fills.empty());
}

TEST_F(FillDialog, ARequestThatTakesTheDialogAwayIsSurvived) {
    OrderRecord spread = OrderOf("EXA CM 1509/1512");
    OpenOn(0, spread);
    service.whileSending = [&] { host->Destroy(); };
    Press(IDC_CONFIRM);
    EXPECT_EQ(g_pFillDialog, nullptr);
    EXPECT_EQ(service.fills.size(), 2u);
}

TEST_F(FillDialog, AHostThatTakesTheDialogAwayDuringALookUpIsSurvived) {
    for (int fatal = 0;; ++fatal) {
        host.emplace();
        int asked = 0;
        book.whileAsked = [&] {
            if (asked++ == fatal) {
                host->Destroy();
            }
        };
        g_pFillDialog = new CEmendoMatch(0, &order, kRecordKindOrder, host->Get());
        if (g_pFillDialog->Create()) {
            window = g_pFillDialog->m_hWnd;
            Choose(IDC_EXCHANGE, "EXA");
            Choose(IDC_COMMODITY, "CM");
            Focus(IDC_FILL_PRICE_WHOLE);
            SetText(IDC_FILL_PRICE_WHOLE, "5");
            Press(IDC_CONFIRM);
        }
        book.whileAsked = nullptr;
        EXPECT_EQ(g_pFillDialog, nullptr);
        if (asked <= fatal) {
            EXPECT_GT(fatal, 10);
            break;
        }
    }
}

TEST_F(FillDialog, OpeningAndClosingLeavesNothing) {
    constexpr int cycles = 20;
    const auto growthOf = [](const std::function<void()>& cycle) {
        cycle();
        cycle();
        const ResourceCount before = CountResources();
        for (int i = 0; i < cycles; ++i) {
            cycle();
        }
        const ResourceCount after = CountResources();
        EXPECT_EQ(after, before);
        return after.heapBytes - before.heapBytes;
    };
    // The system keeps some memory for every dialog of this template.
    const long long systemGrowth = growthOf([&] {
        CDialog bare;
        CreateFromResources(bare, IDD_FILL, host->Get());
        bare.DestroyWindow();
    });
    const long long growth = growthOf([&] {
        OpenOn(0, order);
        Choose(IDC_DIRECTION, "Sell");
        Close();
    });
    EXPECT_LT(growth - systemGrowth, cycles * 8);
}

}  // namespace
