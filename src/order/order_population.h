#pragma once

#include "controls/combo_settings.h"
#include "controls/date_text.h"
#include "order/order_form.h"
#include "trade/trade_data.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Where the values of the order dialog come from: lists, defaults, the original order, the chosen account and
// contract.

std::span<const ComboSettings> OrderComboSettings();

// The words of a list that no host data fills (directions, order types, ...), in order; empty for another
// control.
std::vector<std::string> WordItems(int comboId);

struct ComboList {
    std::vector<std::string> items;
    int selected = -1;  // index; -1: none
};

// False when the account of the form is one that the operator must not leave.
bool MayChangeAccount(const OrderForm& form, const TradeData& trade);

// The lists below are empty while the account of the form may not be traded.

// The dollar is selected when there is one, and becomes the currency of the form.
ComboList ListCurrencies(OrderForm& form, const TradeData& trade);
ComboList ListUppers(const OrderForm& form, const TradeData& trade);
// Builds the account rows anew; the form's sign becomes that of the first row. One item per row.
ComboList ListAccounts(OrderForm& form, const TradeData& trade);
// The forward contracts of the carry, or the underlying contracts of the exercise. Nothing: the list stays as
// it is.
std::optional<ComboList> ListForwardContracts(const OrderForm& form, const TradeData& trade);

// Takes the original order over, or gives a new order its defaults.
void LoadOriginal(OrderForm& form, const TradeData& trade);

// The system number and the exchange fill number of a new entry. A modified order keeps its system number, a
// moved one both.
void GenerateNumbers(OrderForm& form, const LocalMoment& now);
// The system number of a modified order that has none.
std::string ModifiedSystemNo(const std::string& operatorNo, const LocalMoment& now);
// Empties what the next order does not share with the one that was just sent.
void PrepareNextOrder(OrderForm& form, const LocalMoment& now);

// Takes a full contract text that was typed or came from the popup. False, and nothing changed, when it is
// none. The account's sign stays.
bool TakeContract(OrderForm& form, const std::string& text, const TradeData& trade);
// What the contract edit shows for the chosen contract; nothing while exchange, commodity or contract are not
// known.
std::optional<std::string> ShownContract(const OrderForm& form);

// Takes account and sign of the row at `index` when the item selected there is that row's. True when taken.
bool TakeSelectedAccount(OrderForm& form, int index, std::string_view accountNo);
// Takes account and sign of the row with this account number; a number without a row changes nothing.
bool TakeTypedAccount(OrderForm& form, std::string_view accountNo);

// The fill quantity that an order quantity brings with it; nothing where the two are entered apart.
std::optional<std::int32_t> FillQtyOfOrderQty(OrderMode mode, char orderState, std::int32_t orderQty);
// True when the forward fill quantity shows what is typed as the fill quantity.
bool ForwardQtyFollows(OrderMode mode, char orderState);
// The word of the opposite direction; empty for none.
std::string OppositeDirectionText(char direction);
