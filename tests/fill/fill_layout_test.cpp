#include "fill/fill_layout.h"

#include "res/resource_ids.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

// Shown and enabled of one control as two letters: y, n, - for untouched; "" when the view does not name it.
std::string StateOf(const FillView& view, int id) {
    std::string text;
    const auto letter = [](Wanted wanted) {
        return wanted == Wanted::Keep ? '-' : wanted == Wanted::Yes ? 'y' : 'n';
    };
    for (const ControlState& state : FillControlStates(view)) {
        if (state.id == id) {
            text += {letter(state.shown), letter(state.enabled)};
        }
    }
    return text;
}

TEST(FillLayout, ViewsOfModeSourceAndCommodity) {
    struct Row {
        int mode;
        char source;
        char type;  // 0: commodity not known
        std::uint32_t tickDenominator;
        FillLayout layout;
        // exchange, open contract, its label and direction, first numerator, second whole, second numerator
        const char *exchange, *openContract, *openRest, *numerator, *whole2, *numerator2;
    };
    using enum FillLayout;
    const Row rows[] = {
        {0, 'E', 'F', 1, Single, "-n", "nn", "n-", "-n", "nn", "nn"},
        {0, 'E', 'F', 8, Single, "-n", "nn", "n-", "-y", "nn", "ny"},
        {0, 'E', 'm', 1, Combination, "-n", "nn", "n-", "-n", "yy", "yn"},
        {0, 'E', 'u', 8, Combination, "-n", "nn", "n-", "-y", "yy", "yy"},
        {0, 'C', 'F', 1, Full, "-n", "yy", "y-", "-n", "yy", "yn"},
        {0, 'C', 'm', 1, Full, "-n", "yy", "y-", "-n", "yy", "yn"},
        {0, 'C', 0, 1, Full, "-n", "yy", "y-", "-n", "yy", "yn"},
        {1, 'E', 'm', 8, Single, "-y", "nn", "n-", "-y", "nn", "ny"},
        {1, 'C', 'F', 1, Single, "-n", "nn", "n-", "-n", "nn", "nn"},
        {2, 'E', 'F', 8, Single, "-y", "nn", "n-", "-y", "nn", "ny"},
        {3, 'E', 'F', 8, Single, "-n", "nn", "n-", "-n", "nn", "ny"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.mode) + row.source + row.type);
        CommodityRecord commodity{};
        commodity.commodityType = row.type;
        commodity.tickDenominator = row.tickDenominator;
        const FillView view = ViewOf(row.mode, row.source, row.type ? &commodity : nullptr, 1);
        EXPECT_EQ(view.Layout(), row.layout);
        EXPECT_EQ(StateOf(view, IDC_EXCHANGE), row.exchange);
        EXPECT_EQ(StateOf(view, IDC_OPEN_CONTRACT), row.openContract);
        EXPECT_EQ(StateOf(view, IDC_OPEN_CONTRACT_LABEL), row.openRest);
        EXPECT_EQ(StateOf(view, IDC_OPEN_DIRECTION), row.openRest);
        EXPECT_EQ(StateOf(view, IDC_FILL_PRICE_NUMERATOR), row.numerator);
        EXPECT_EQ(StateOf(view, IDC_FILL_PRICE2_WHOLE), row.whole2);
        EXPECT_EQ(StateOf(view, IDC_FILL_PRICE2_NUMERATOR), row.numerator2);
    }
}

}  // namespace
