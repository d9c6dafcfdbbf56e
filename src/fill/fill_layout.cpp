#include "fill/fill_layout.h"

#include "res/resource_ids.h"
#include "trade/code_tables.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int kButtons[] = {IDC_CONFIRM, IDC_CANCEL};
constexpr int kOpenInModify[] = {IDC_CONFIRM, IDC_CANCEL, IDC_FILL_PRICE_LABEL, IDC_FILL_PRICE_WHOLE,
                                 IDC_FILL_PRICE_SPIN};
// An order fixes what it says itself.
constexpr int kShutForOrder[] = {
    IDC_SYSTEM_NO,     IDC_UPPER,          IDC_ACCOUNT,         IDC_EXCHANGE,        IDC_COMMODITY,
    IDC_DIRECTION,     IDC_FILL_NO_LABEL,  IDC_SYSTEM_NO_LABEL, IDC_CONTRACT_LABEL,  IDC_UPPER_LABEL,
    IDC_ACCOUNT_LABEL, IDC_EXCHANGE_LABEL, IDC_COMMODITY_LABEL, IDC_DIRECTION_LABEL,
};

constexpr int kOpenContractRow[] = {IDC_OPEN_CONTRACT_LABEL, IDC_OPEN_CONTRACT, IDC_OPEN_DIRECTION_LABEL,
                                    IDC_OPEN_DIRECTION};
constexpr int kFractionParts[] = {IDC_FILL_PRICE_PLUS, IDC_FILL_PRICE_NUMERATOR, IDC_FILL_PRICE_SLASH,
                                  IDC_FILL_PRICE_DENOMINATOR};
constexpr int kWholeParts2[] = {IDC_FILL_PRICE2_LABEL, IDC_FILL_PRICE2_WHOLE, IDC_FILL_PRICE2_SPIN};
constexpr int kFractionParts2[] = {IDC_FILL_PRICE2_PLUS, IDC_FILL_PRICE2_NUMERATOR, IDC_FILL_PRICE2_SLASH,
                                   IDC_FILL_PRICE2_DENOMINATOR};

constexpr int kSecondPriceControls[] = {
    IDC_FILL_PRICE2_LABEL,     IDC_FILL_PRICE2_WHOLE, IDC_FILL_PRICE2_SPIN,        IDC_FILL_PRICE2_PLUS,
    IDC_FILL_PRICE2_NUMERATOR, IDC_FILL_PRICE2_SLASH, IDC_FILL_PRICE2_DENOMINATOR,
};
constexpr int kBottomControls[] = {IDC_CURRENCY_LABEL, IDC_CURRENCY, IDC_FILL_FEE_GIVEN, IDC_FEE,
                                   IDC_CONFIRM,        IDC_CANCEL};

template <std::size_t Count>
bool Holds(const int (&ids)[Count], int id) {
    return std::find(std::begin(ids), std::end(ids), id) != std::end(ids);
}

// Where a layout has its movable controls, in rows below their place in the template.
FillMove PlacesOf(FillLayout layout) {
    switch (layout) {
        case FillLayout::Combination:
            return {-1, -1};
        case FillLayout::Single:
            return {0, -2};
        case FillLayout::Full:
            break;
    }
    return {0, 0};
}

}  // namespace

bool StartsDisabled(FillMode mode, bool forOrder, int controlId) {
    switch (mode) {
        case FillMode::Modify:
            return !Holds(kOpenInModify, controlId);
        case FillMode::Remove:
            return !Holds(kButtons, controlId);
        default:
            return forOrder && Holds(kShutForOrder, controlId);
    }
}

FillLayout FillView::Layout() const {
    if (carry) {
        return FillLayout::Full;
    }
    return combination ? FillLayout::Combination : FillLayout::Single;
}

FillView ViewOf(FillMode mode, char source, const CommodityRecord* commodity, std::int32_t denominator) {
    const bool fullInput = mode == FillMode::FullInput;
    FillView view{mode, source, false, false, denominator};
    view.carry = fullInput && source == OrderSource::kCarry;
    if (commodity) {
        view.combination = fullInput && IsTwoLegType(commodity->commodityType);
        view.denominator = static_cast<std::int32_t>(commodity->tickDenominator);
    }
    return view;
}

std::vector<ControlState> RefreshStates(const FillView& view) {
    const Wanted carry = WantedIf(view.carry);
    const Wanted second = WantedIf(view.carry || view.combination);
    const bool fractional = view.Fractional();
    const bool exchangeFree = view.source != OrderSource::kCarry && view.mode != FillMode::FullInput &&
                              view.mode != FillMode::Remove;

    std::vector<ControlState> states{{IDC_EXCHANGE, Wanted::Keep, WantedIf(exchangeFree)}};
    for (int id : kOpenContractRow) {
        states.push_back({id, carry, id == IDC_OPEN_CONTRACT ? carry : Wanted::Keep});
    }
    for (int id : kFractionParts) {
        states.push_back({id, Wanted::Keep, WantedIf(fractional && view.mode != FillMode::Remove)});
    }
    for (int id : kWholeParts2) {
        states.push_back({id, second, second});
    }
    for (int id : kFractionParts2) {
        states.push_back({id, second, WantedIf(fractional)});
    }
    return states;
}

std::span<const int> SecondPriceControls() {
    return kSecondPriceControls;
}

std::span<const int> BottomControls() {
    return kBottomControls;
}

FillMove MoveBetween(FillLayout from, FillLayout to) {
    const FillMove old = PlacesOf(from);
    const FillMove wanted = PlacesOf(to);
    return {wanted.secondPriceRows - old.secondPriceRows, wanted.bottomRows - old.bottomRows};
}
