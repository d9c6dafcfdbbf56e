#include "order/order_population.h"

#include "entry/price_row.h"
#include "res/resource_ids.h"
#include "trade/coded_lists.h"
#include "trade/contract_text.h"

#include <algorithm>
#include <cctype>

namespace {

// The words of types, states, sources and directions are whole items: "Limit stop" is not "Limit".
constexpr ComboSettings kComboSettings[] = {
    //                     full   whole  menu  list   rows
    {IDC_ACCOUNT, true, false, true, false, 10},
    {IDC_UPPER, true, false, true, true, 10},
    {IDC_SOURCE, false, true, true, true, 10},
    {IDC_ORDER_TYPE, false, true, true, true, 0},
    {IDC_ORDER_STATE, false, true, true, true, 10},
    {IDC_VALID_TYPE, true, false, true, true, 0},
    {IDC_DIRECTION, false, true, true, true, 10},
    {IDC_FORWARD_DIRECTION, false, true, false, false, 0},
    {IDC_FORWARD_CONTRACT, false, true, true, false, 30},
    {IDC_CURRENCY, true, false, true, true, 0},
};

constexpr CodeList kDirections{"BS", DirectionToText, DirectionFromText};
constexpr WordList kWordLists[] = {
    {IDC_DIRECTION, kDirections, &OrderForm::direction},
    {IDC_SOURCE, {"EJPMSDR", OrderSourceToText, OrderSourceFromText}, &OrderForm::source},
    {IDC_ORDER_TYPE, {"2143", OrderTypeToText, OrderTypeFromText}, &OrderForm::orderType},
    {IDC_ORDER_STATE, {"49A56DB", OrderStateToText, OrderStateFromText}, &OrderForm::orderState},
    {IDC_VALID_TYPE, {"43012", ValidTypeToLongText, ValidTypeFromText}, &OrderForm::validType},
};

constexpr std::string_view kPreferredCurrency = "USD";

bool BeginsWithIgnoringCase(std::string_view text, std::string_view head) {
    return text.size() >= head.size() &&
           std::equal(head.begin(), head.end(), text.begin(), [](char a, char b) {
               return std::toupper(static_cast<unsigned char>(a)) ==
                      std::toupper(static_cast<unsigned char>(b));
           });
}

bool IsOpen(const OrderForm& form, const TradeData& trade) {
    return ListsAreOpen(form.account, form.sign, trade);
}

std::vector<AccountRow> BuildAccountRows(const TradeData& trade) {
    const std::vector<ServerConfigRecord> configs = trade.ServerConfigs();
    std::vector<AccountRow> rows;
    if (configs.empty()) {
        return rows;
    }
    std::vector<const UserRecord*> users = trade.Users("");
    std::stable_sort(users.begin(), users.end(), [](const UserRecord* a, const UserRecord* b) {
        return a->accountNo.View() < b->accountNo.View();
    });
    for (const UserRecord* user : users) {
        if (!IsTradable(user)) {
            continue;
        }
        const auto server = trade.ServerOf(*user, configs);
        rows.push_back({user->accountNo.Str(), user->accountName.Str(),
                        server ? server->name.Str() : std::string(), user->group->operatorNo.Str(),
                        user->group->sign.Str()});
    }
    return rows;
}

// The host writes prices in the notation of the contract; a fraction brings its denominator with it.
void LoadPrice(OrderForm& form, PriceRow OrderForm::*row, double price, const TradeData& trade) {
    const CommodityRecord* commodity = trade.Commodity(CommodityKeyOf(form));
    SplitPrice split = InPartsOf(commodity ? static_cast<std::int32_t>(commodity->tickDenominator) : 0,
                                 SplitPriceText(trade.FormatPrice(form.original, price)));
    form.*row = std::move(split.row);
    if (split.denominator != 0) {
        form.denominator = split.denominator;
    } else if (row == &OrderForm::orderPrice) {
        form.denominator = 1;
    }
}

void LoadDefaults(OrderForm& form, const TradeData& trade) {
    form.orderState = OrderState::kWorking;
    form.source = OrderSource::kETrade;
    form.validType = ValidType::kDay;
    form.orderType = OrderType::kLimit;
    if (const auto uppers = trade.Uppers(form.sign); IsOpen(form, trade) && !uppers.empty()) {
        form.upper = uppers.front()->upperNo.Str();
    }
}

void LoadOrder(OrderForm& form, const OrderRecord& order, const TradeData& trade) {
    form.orderState = order.orderState;
    form.source = order.orderSource;
    form.validType = order.validType;
    form.direction = order.direction;
    form.orderType = order.orderType;
    form.forcedClose = YNToFlag(order.forcedClose);
    form.orderQty = static_cast<std::int32_t>(order.orderQty);
    form.fillQty = static_cast<std::int32_t>(order.fillQty);
    std::tm validUntil{};
    ParseDateTimeFields(order.validUntil.Str().c_str(), kRecordTimePattern, validUntil);
    if (validUntil.tm_mday > 0) {  // an order without such a date keeps the picker at today
        form.validUntil = validUntil;
    }
    form.sign = order.key.sign.Str();
    form.account = order.accountNo.Str();
    form.exchangeNo = order.key.exchangeNo.Str();
    form.commodityNo = order.key.commodityNo.Str();
    form.commodityType = order.key.commodityType;
    form.systemNo = order.systemNo.Str();
    form.upper = order.upperNo.Str();
    FormatContractText(order.key, form.contractNo, true, false, trade);
    LoadPrice(form, &OrderForm::orderPrice, order.orderPrice, trade);
    LoadPrice(form, &OrderForm::triggerPrice, order.triggerPrice, trade);
    LoadPrice(form, &OrderForm::fillPrice, order.fillPrice, trade);
    form.contractText = ShownContract(form).value_or("");
}

}  // namespace

std::span<const ComboSettings> OrderComboSettings() {
    return kComboSettings;
}

std::span<const WordList> OrderWordLists() {
    return kWordLists;
}

const WordList& WordListOf(int comboId) {
    return *std::find_if(std::begin(kWordLists), std::end(kWordLists),
                         [comboId](const WordList& each) { return each.comboId == comboId; });
}

bool MayChangeAccount(const OrderForm& form, const TradeData& trade) {
    if (form.account.empty() || form.sign.empty()) {
        return true;
    }
    const UserRecord* user = trade.User(form.account, form.sign);
    return user && user->group && user->group->accountLock != 'c';
}

std::vector<std::string> ListCurrencies(const OrderForm& form, const TradeData& trade) {
    return IsOpen(form, trade) ? CurrencyItems(trade) : std::vector<std::string>();
}

std::string PreferredCurrency(const std::vector<std::string>& currencies) {
    const auto preferred = std::find_if(currencies.begin(), currencies.end(), [](const std::string& item) {
        return BeginsWithIgnoringCase(item, kPreferredCurrency);
    });
    return preferred == currencies.end() ? std::string() : preferred->substr(0, preferred->find(' '));
}

std::vector<std::string> ListUppers(const OrderForm& form, const TradeData& trade) {
    return IsOpen(form, trade) ? UpperItems(form.sign, trade) : std::vector<std::string>();
}

std::vector<AccountRow> ListAccounts(const OrderForm& form, const TradeData& trade) {
    return IsOpen(form, trade) ? BuildAccountRows(trade) : std::vector<AccountRow>();
}

std::optional<std::vector<std::string>> ListForwardContracts(const OrderForm& form, const TradeData& trade) {
    if (!IsOpen(form, trade) || form.exchangeNo.empty() || form.commodityNo.empty()) {
        return std::nullopt;
    }
    std::vector<std::string> items;
    CommodityKey key = CommodityKeyOf(form);
    if (form.mode == OrderMode::Exercise) {
        const CommodityRecord* option = trade.Commodity(key);
        if (!option) {
            return items;
        }
        key.commodityType = option->relatedCommodityType;
        key.commodityNo = option->relatedCommodityNo;
    }
    for (const ContractRecord* contract : trade.Contracts(key)) {
        FormatContractText(contract->key, items.emplace_back(), true, true, trade);
    }
    return items;
}

void LoadRecord(OrderForm& form, const TradeData& trade) {
    if (form.original) {
        LoadOrder(form, *form.original, trade);
    } else {
        LoadDefaults(form, trade);
    }
}

void GenerateNumbers(OrderForm& form, const LocalMoment& now) {
    if (form.mode == OrderMode::Move) {
        return;
    }
    const std::string stamp = FormatLocalTime("%m%d%H%M%S%s", now);
    if (form.mode != OrderMode::Modify) {
        form.systemNo = "S_" + stamp;
    }
    form.exchangeFillNo = "M_" + stamp;
}

std::string ModifiedSystemNo(const std::string& operatorNo, const LocalMoment& now) {
    return "S_" + operatorNo + "_" + FormatLocalTime("%Y%m%d%H%M%S%s", now);
}

void PrepareNextOrder(OrderForm& form, const LocalMoment& now) {
    form.orderQty = 0;
    GenerateNumbers(form, now);
}

bool TakeContract(OrderForm& form, const std::string& text, const TradeData& trade) {
    ContractKey key{};
    if (!ParseContractText(text, key)) {
        return false;
    }
    form.contractText = text;
    form.exchangeNo = key.exchangeNo.Str();
    form.commodityNo = key.commodityNo.Str();
    form.commodityType = key.commodityType;
    form.contractNo.clear();
    FormatContractText(key, form.contractNo, true, false, trade);
    return true;
}

std::optional<std::string> ShownContract(const OrderForm& form) {
    // A commodity without contracts is known as a whole by its number.
    const bool noContracts =
        form.commodityType == CommodityType::kGoods || form.commodityType == CommodityType::kGoodsDeferred;
    if (form.exchangeNo.empty() || form.commodityNo.empty() || (form.contractNo.empty() && !noContracts)) {
        return std::nullopt;
    }
    return form.exchangeNo + ' ' + form.commodityNo + ' ' + form.contractNo;
}

int FindAccountRow(const OrderForm& form, std::string_view accountNo) {
    const bool own = form.account == accountNo;
    const auto row = std::find_if(form.accounts.begin(), form.accounts.end(), [&](const AccountRow& each) {
        return each.accountNo == accountNo && (!own || each.sign == form.sign);
    });
    return row == form.accounts.end() ? -1 : static_cast<int>(row - form.accounts.begin());
}

void TakeAccount(OrderForm& form, int index, std::string_view accountNo) {
    if (index < 0 || static_cast<std::size_t>(index) >= form.accounts.size()) {
        return;
    }
    const AccountRow& row = form.accounts[static_cast<std::size_t>(index)];
    if (row.accountNo == accountNo) {
        form.account = row.accountNo;
        form.sign = row.sign;
    }
}

std::optional<std::int32_t> FillQtyOfOrderQty(OrderMode mode, char orderState, std::int32_t orderQty) {
    // A carry has no order quantity of its own.
    const bool apart = mode == OrderMode::Modify || mode == OrderMode::Carry;
    return orderState == OrderState::kFilled && !apart ? std::optional(orderQty) : std::nullopt;
}

bool ForwardQtyFollows(OrderMode mode, char orderState) {
    return mode == OrderMode::Carry || orderState == OrderState::kFilled;
}
