#pragma once

#include "entry/combo_settings.h"
#include "entry/date_text.h"
#include "order/order_form.h"
#include "trade/code_tables.h"
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

// A list that no host data fills (directions, order types, ...), and the code of the form that it enters.
struct WordList {
    int comboId;
    CodeList list;
    char OrderForm::*code;
};
std::span<const WordList> OrderWordLists();
const WordList& WordListOf(int comboId);

// False when the account of the form is one that the operator must not leave.
bool MayChangeAccount(const OrderForm& form, const TradeData& trade);

// The lists below are empty while the account of the form may not be traded.

std::vector<std::string> ListCurrencies(const OrderForm& form, const TradeData& trade);
// The code of the currency that a dialog starts with, the dollar; empty when it is not listed.
std::string PreferredCurrency(const std::vector<std::string>& currencies);
std::vector<std::string> ListUppers(const OrderForm& form, const TradeData& trade);
std::vector<AccountRow> ListAccounts(const OrderForm& form, const TradeData& trade);
// The forward contracts of the carry, or the underlying contracts of the exercise. Nothing: the list stays as
// it is.
std::optional<std::vector<std::string>> ListForwardContracts(const OrderForm& form, const TradeData& trade);

// Takes the original order over, or gives a new order its defaults.
void LoadRecord(OrderForm& form, const TradeData& trade);

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

// The row of an account number: the form's own account keeps its sign, of any other the first row counts. -1
// without a row.
int FindAccountRow(const OrderForm& form, std::string_view accountNo);
// Takes account and sign of the row at `index`, if that is a row of this number.
void TakeAccount(OrderForm& form, int index, std::string_view accountNo);

// The fill quantity that an order quantity brings with it; nothing where the two are entered apart.
std::optional<std::int32_t> FillQtyOfOrderQty(OrderMode mode, char orderState, std::int32_t orderQty);
// True when the forward fill quantity shows what is typed as the fill quantity.
bool ForwardQtyFollows(OrderMode mode, char orderState);
