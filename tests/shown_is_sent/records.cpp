#include "shown_is_sent/plan.h"

void MakeOrder(World& world, std::mt19937& random) {
    OrderRecord& order = world.order = {};
    const UserRecord* user = world.everyUser[random() % world.everyUser.size()];
    const ContractRecord* contract = nullptr;
    while (!contract || (contract->key.sign.View() != user->sign.View() && !OneIn(random, 20))) {
        contract = world.contracts[random() % world.contracts.size()];
    }
    order.key = contract->key;
    order.key.sign = user->sign;
    order.accountNo = user->accountNo;
    order.orderType = Any(random, {'2', '2', '2', '1', '4', '3', '9'});
    order.orderSource = Any(random, {'E', 'P', 'M', 'S', 'C', 'C', 'X'});
    order.validType = Any(random, {'0', '2', '4', '1'});
    order.validUntil.Set(OneIn(random, 2) ? "2030-02-03 04:05:06" : "");
    order.forcedClose = Any(random, {'Y', 'N'});
    order.direction = Any(random, {'B', 'S', 'S', 'B', 'A'});
    order.orderPrice = OneIn(random, 4) ? Below(random, 200) * 0.5 : 10 * Below(random, 20);
    order.triggerPrice = Below(random, 20);
    order.fillPrice = Below(random, 200) * 0.5;
    order.orderQty = static_cast<unsigned>(OneIn(random, 12) ? 0 : 4 + Below(random, 9));
    order.orderState = Any(random, {'4', '4', '5', '6', 'C', '0', 'A'});
    order.fillQty = order.orderState == '6' ? order.orderQty
                    : order.orderState == '4'
                        ? 0
                        : static_cast<unsigned>(OneIn(random, 8) ? 0 : 1 + Below(random, 4));
    order.orderNo = Any(random, {0u, 77u, 77u, 78u});
    order.text279.Set("kept");
    order.systemNo.Set(Any(random, {"S_OLD", "S_OLD", ""}));
    order.exchangeSystemNo.Set("X_OLD");
    order.upperNo.Set(Any(random, {"U1", "U10", "U9"}));
    order.inputOperator.Set("CREATOR");
    order.inputTime.Set("2026-01-02 03:04:05");
    order.backOffice = Any(random, {'Y', 'Y', 'N'});
    order.flag614 = 'Q';
    world.orders.assign(random() % 2, &order);
}

void MakeFill(World& world, std::mt19937& random) {
    do {
        MakeOrder(world, random);
    } while (!world.order.key.contractNo2.Empty());  // a fill is of one leg
    FillRecord& fill = world.fill = {};
    std::memcpy(&fill.key, &world.order.key, sizeof fill.key);
    fill.fillNo.Set("FILL-9");
    fill.accountNo = world.order.accountNo;
    fill.fillSource = world.order.orderSource;
    fill.direction = Any(random, {'B', 'S'});
    fill.exchangeFillNo.Set("M_OLD");
    fill.fillPrice = world.order.fillPrice;
    fill.fillQty = static_cast<unsigned>(Below(random, 5));
    fill.upperNo = world.order.upperNo;
    fill.systemNo.Set("S_FILL");
    fill.order = OneIn(random, 8) ? nullptr : &world.order;
}
