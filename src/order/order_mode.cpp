#include "order/order_mode.h"

#include "res/resource_ids.h"
#include "res/string_table.h"
#include "trade/order_record.h"

#include <cstdio>

namespace {

constexpr OrderModeTraits kTraits[] = {
    {OrderMode::Input, IDD_ORDER, IDS_INPUT_ORDER_TITLE, IDS_INPUT, IDC_ACCOUNT},
    {OrderMode::Carry, IDD_CARRY, 0, 0, IDC_ACCOUNT},
    {OrderMode::Modify, IDD_ORDER, IDS_MODIFY_ORDER_TITLE, IDS_MODIFY, 0},
    {OrderMode::RemoveFilled, IDD_ORDER, IDS_REMOVE_FILLED_TITLE, IDS_REMOVE, 0},
    {OrderMode::Move, IDD_ORDER, IDS_MOVE_ORDER_TITLE, IDS_MOVE, 0},
    {OrderMode::Exercise, IDD_EXERCISE, 0, 0, IDC_UPPER},
};

// Back-office terms of the carry, the same in every language.
constexpr const char* kBorrow = "Borrow";
constexpr const char* kLending = "Lending";

}  // namespace

const OrderModeTraits& TraitsOf(OrderMode mode) {
    for (const OrderModeTraits& traits : kTraits) {
        if (traits.mode == mode) {
            return traits;
        }
    }
    return kTraits[0];
}

std::string OrderTitle(OrderMode mode, const OrderRecord* original) {
    const unsigned titleId = TraitsOf(mode).titleId;
    if (titleId == 0) {
        return {};
    }
    const int orderNo = original ? static_cast<int>(original->orderNo) : 0;
    const std::string account = original ? original->accountNo.Str() : std::string();
    char title[512];
    std::snprintf(title, sizeof(title), ResString(titleId).c_str(), orderNo, account.c_str());
    return title;
}

std::string ConfirmText(OrderMode mode) {
    if (mode == OrderMode::Carry) {
        return kBorrow;
    }
    const unsigned confirmId = TraitsOf(mode).confirmId;
    return confirmId ? ResString(confirmId) : std::string();
}

std::string ConfirmTextForDirection(OrderMode mode, char direction) {
    if (mode == OrderMode::Carry && direction == 'B') {
        return kBorrow;
    }
    if (mode == OrderMode::Carry && direction == 'S') {
        return kLending;
    }
    return ResString(IDS_OK);
}
