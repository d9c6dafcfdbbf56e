#pragma once

// The one-character codes of orders and fills that the dialogs decide by. Their words are the code tables'.

namespace OrderType {
inline constexpr char kMarket = '1';
inline constexpr char kLimit = '2';
inline constexpr char kStopLoss = '3';
inline constexpr char kLimitStop = '4';
inline constexpr char kExercise = '5';
}  // namespace OrderType

namespace OrderState {
inline constexpr char kWorking = '4';
inline constexpr char kPartiallyFilled = '5';
inline constexpr char kFilled = '6';
inline constexpr char kPartiallyCanceled = 'A';  // partly filled, the rest cancelled
}  // namespace OrderState

// The states of an order that has traded, all of it or a part.
constexpr bool HasFill(char orderState) {
    return orderState == OrderState::kPartiallyFilled || orderState == OrderState::kFilled ||
           orderState == OrderState::kPartiallyCanceled;
}

namespace ValidType {
inline constexpr char kDay = '0';
inline constexpr char kTillDate = '2';
}  // namespace ValidType

// Of orders and of fills.
namespace OrderSource {
inline constexpr char kCarry = 'C';
inline constexpr char kETrade = 'E';
}  // namespace OrderSource

namespace Direction {
inline constexpr char kBuy = 'B';
inline constexpr char kSell = 'S';
}  // namespace Direction

// A commodity whose contracts are prompt dates, with a rolling one among them.
inline constexpr char kRollingCommodity = 'U';

// Stands for the contract whose prompt date is three months ahead.
inline constexpr const char* kThreeMonth = "3M";
