#include "services/position_filter.h"

#include "book/price_format.h"

namespace {

template <std::size_t FilterWidth, std::size_t Width>
bool Agrees(const FixedText<FilterWidth>& wanted, const FixedText<Width>& text) {
    return wanted.Empty() || wanted.View() == text.View();
}

}  // namespace

bool PositionMatches(const PositionFilterRecord& filter, const PositionEntry& row) {
    const PositionRecord& position = row.record;
    return position.openQty > 0 && Agrees(filter.accountNo, position.accountNo) &&
           Agrees(filter.exchangeNo, position.key.exchangeNo) &&
           Agrees(filter.commodityNo, position.key.commodityNo) &&
           Agrees(filter.contractNo, position.key.contractNo) &&
           (filter.upperNo.Empty() || filter.upperNo.View() == row.upperNo) &&
           (filter.direction == 0 || filter.direction == position.direction) &&
           (SamePrice(filter.price, 0) || SamePrice(filter.price, position.price));
}
