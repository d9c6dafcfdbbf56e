#include "fill/fill_layout.h"

#include "res/resource_ids.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Shown and enabled of one control as two letters: y, n, - for untouched; "" when the view does not name it.
std::string StateOf(const FillView& view, int id) {
    std::string text;
    const auto letter = [](Wanted wanted) {
        return wanted == Wanted::Keep ? '-' : wanted == Wanted::Yes ? 'y' : 'n';
    };
    for (const ControlState& state : RefreshStates(view)) {
        if (state.id == id) {
            text += {letter(state.shown), letter(state.enabled)};
        }
    }
    return text;
}

TEST(FillLayout, ViewsOfModeSourceAndCommodity) {
    using enum FillLayout;
    struct {
        int mode;
        char source;
        char type;  // 0: commodity not known
        std::uint32_t tickDenominator;
        FillLayout layout;
        // exchange, open contract, its label and direction, first numerator, second whole, second numerator
        const char* states;
    } const rows[] = {
        {0, 'E', 'F', 1, Single, "-n nn n- n- -n nn nn"},
        {0, 'E', 'F', 8, Single, "-n nn n- n- -y nn ny"},
        {0, 'E', 'm', 1, Combination, "-n nn n- n- -n yy yn"},
        {0, 'E', 'u', 8, Combination, "-n nn n- n- -y yy yy"},
        {0, 'C', 'F', 1, Full, "-n yy y- y- -n yy yn"},
        {0, 'C', 0, 1, Full, "-n yy y- y- -n yy yn"},
        {1, 'E', 'm', 8, Single, "-y nn n- n- -y nn ny"},
        {2, 'E', 'F', 8, Single, "-y nn n- n- -y nn ny"},
        {3, 'E', 'F', 8, Single, "-n nn n- n- -n nn ny"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.mode) + row.source + row.type);
        CommodityRecord commodity{};
        commodity.commodityType = row.type;
        commodity.tickDenominator = row.tickDenominator;
        const FillView view = ViewOf(FillMode{row.mode}, row.source, row.type ? &commodity : nullptr, 1);
        EXPECT_EQ(view.Layout(), row.layout);
        std::string states;
        for (const int id : {IDC_EXCHANGE, IDC_OPEN_CONTRACT, IDC_OPEN_CONTRACT_LABEL, IDC_OPEN_DIRECTION,
                             IDC_FILL_PRICE_NUMERATOR, IDC_FILL_PRICE2_WHOLE, IDC_FILL_PRICE2_NUMERATOR}) {
            states += (states.empty() ? "" : " ") + StateOf(view, id);
        }
        EXPECT_EQ(states, row.states);
    }
}

}  // namespace
