#include "fill/fill_window.h"

namespace {

class FillDialog : public FillWindow {
protected:
    // Where everything stands: the controls in the dialog, the dialog (id 0) on the screen.
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
    template <typename Record>
    Geometry Opened(Record record) {
        OpenOn(0, record);
        const Geometry geometry = GeometryNow();
        Close();
        return geometry;
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
};

TEST_F(FillDialog, EveryTransitionEndsWhereOpeningEnds) {
    using enum FillLayout;
    book.AddPair('m', "PAIR", 1, 'F', "CA", "CA").exchangeNo.Set("EXF");
    std::map<FillLayout, Geometry> opened;
    opened[Full] = Opened(book.FillOf("EXF CA 150320", 'C'));
    opened[Combination] = Opened(FillBook::OrderOf("EXF PAIR 150320/150618"));
    opened[Single] = Opened(FillBook::OrderOf("EXF CA 150320"));
    const int row = (opened[Full][IDC_EXCHANGE][1] - opened[Full][IDC_UPPER][1]) / 2;
    EXPECT_EQ(HeightOf(opened[Full]) - HeightOf(opened[Combination]), row);
    EXPECT_EQ(HeightOf(opened[Full]) - HeightOf(opened[Single]), 2 * row);
    EXPECT_EQ(opened[Combination][IDC_FILL_PRICE2_WHOLE][1], opened[Full][IDC_FILL_PRICE2_WHOLE][1] - row);
    EXPECT_EQ(opened[Single][IDC_CONFIRM][1], opened[Full][IDC_CONFIRM][1] - 2 * row);
    for (FillLayout from : {Full, Combination, Single}) {
        for (FillLayout to : {Full, Combination, Single}) {
            Open(0);
            for (FillLayout layout : {from, to, from, to}) {
                Become(layout);
                EXPECT_EQ(GeometryNow(), opened[layout]);
                EXPECT_EQ(Shown(IDC_OPEN_CONTRACT), layout == Full);
                EXPECT_EQ(Shown(IDC_FILL_PRICE2_WHOLE), layout != Single);
            }
            Close();
        }
    }
}

TEST_F(FillDialog, ARemovalNamesTheFillOfItsTitle) {
    FillRecord fill = book.FillOf("EXA CM 1509");
    OpenOn(3, fill);
    fill.fillNo.Set("OTHER");
    Press(IDC_CONFIRM);
    EXPECT_EQ(service.removedFillNos, std::vector<std::string>{"F77"});
}

TEST_F(FillDialog, ArrowsWheelAndSpinsStep) {
    OrderRecord fractions = FillBook::OrderOf("EXA TR 1509");
    OpenOn(0, fractions);
    const auto spin = [&](int id, int delta) {
        NMUPDOWN notification{
            {Item(id), static_cast<UINT_PTR>(id), static_cast<UINT>(UDN_DELTAPOS)}, 0, delta};
        EXPECT_EQ(SendMessageA(window, WM_NOTIFY, id, reinterpret_cast<LPARAM>(&notification)), 1);
    };
    const auto price = [&] { return Text(IDC_FILL_PRICE_WHOLE) + "+" + Text(IDC_FILL_PRICE_NUMERATOR); };
    Focus(IDC_FILL_QTY);
    loop.Key(VK_UP);
    EXPECT_EQ(Text(IDC_FILL_QTY), "4");
    Focus(IDC_FILL_PRICE_NUMERATOR);
    loop.Key(VK_DOWN);
    EXPECT_EQ(price(), "96+7");
    PostMessageA(GetFocus(), WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    loop.PumpUntilIdle();
    EXPECT_EQ(price(), "97+0");
    spin(IDC_FILL_PRICE_SPIN, 1);
    EXPECT_EQ(price(), "96+7");
    EXPECT_EQ(FocusId(), IDC_FILL_PRICE_NUMERATOR);
    spin(IDC_FILL_QTY_SPIN, -1);
    EXPECT_EQ(Text(IDC_FILL_QTY), "5");
    EXPECT_EQ(FocusId(), IDC_FILL_QTY);
    Focus(IDC_FEE);
    loop.Key(VK_ESCAPE);
    EXPECT_TRUE(IsWindow(window));
    loop.Key(VK_UP);
    EXPECT_EQ(Text(IDC_FEE), "0");
}

TEST_F(FillDialog, TypedTextsStayNumbers) {
    Open(0);
    EXPECT_EQ(Typed(IDC_FILL_QTY, "1.5"), "15");
    EXPECT_EQ(Typed(IDC_FILL_PRICE_WHOLE, "-1.5.2"), "1.52");
    EXPECT_EQ(Typed(IDC_FEE, "2x.5"), "2.5");
    Choose(IDC_EXCHANGE, "EXA");
    Choose(IDC_COMMODITY, "TR");
    EXPECT_EQ(Typed(IDC_FILL_PRICE_WHOLE, "12.5"), "125");
}

TEST_F(FillDialog, ASecondPressDuringAQuestionOrASendDoesNothing) {
    OpenOn(0, order);
    SetText(IDC_FILL_QTY, "5");
    MessageBoxScript boxes(Box(kAboveRemaining, "Tips", IDYES, [&](HWND box) {
        Command(IDC_CONFIRM);
        PostMessageA(box, WM_COMMAND, IDYES, 0);
    }));
    service.whileSending = [&] { Command(IDC_CONFIRM); };
    Press(IDC_CONFIRM);
    EXPECT_EQ(boxes.Shown(), 1);
    EXPECT_EQ(service.fills.size(), 1u);
}

}  // namespace
