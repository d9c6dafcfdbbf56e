// What both sides of the border must agree on to the byte and the compiler cannot check: slots of interfaces,
// texts of a fixed width.

#include "trade/host_interfaces.h"
#include "trade/plugin_interface.h"
#include "trade/trade_spi.h"

#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

namespace {

// Both compilers write the pointer to a virtual function as 1 + its offset in the table of functions.
template <typename Function>
int SlotOf(Function function) {
    std::intptr_t offset = 0;
    static_assert(sizeof(function) >= sizeof(offset));
    std::memcpy(&offset, &function, sizeof(offset));
    return static_cast<int>((offset - 1) / static_cast<int>(sizeof(void*)));
}

TEST(Border, OperationsStandInTheirSlots) {
    // clang-format off
#define AT(slot, type, operation) {slot, #type "::" #operation, SlotOf(&type::operation)}
    const std::tuple<int, const char*, int> rows[] = {
        AT(1, IPluginManager, GetPlugin), AT(0, IEmendix, OpenFillDialog), AT(1, IEmendix, OpenOrderDialog),
        AT(0, IEmendixOper, PreTranslateMessage), AT(1, IEmendixOper, GetSafeHwnd),
        AT(2, ITradeService, GetTradeApi), AT(18, ITradeService, SendOrder),
        AT(19, ITradeService, DeleteOrder), AT(20, ITradeService, SendFill),
        AT(21, ITradeService, RemoveFill), AT(22, ITradeService, SendExercise), AT(0, ITradeApi, RegisterSpi),
        AT(1, ITradeApi, UnregisterSpi), AT(2, ITradeApi, ListSignEntries), AT(3, ITradeApi, GetUserServer),
        AT(6, ITradeApi, GetOrder), AT(15, ITradeApi, GetPositions), AT(16, ITradeApi, GetPosition),
        AT(25, ITradeApi, GetPositionQty), AT(26, ITradeApi, GetUsers), AT(27, ITradeApi, GetUser),
        AT(37, ITradeApi, GetExchanges), AT(38, ITradeApi, GetExchange), AT(39, ITradeApi, GetCommodities),
        AT(40, ITradeApi, GetCommodity), AT(41, ITradeApi, GetContracts), AT(43, ITradeApi, GetContract),
        AT(44, ITradeApi, Get3MContractNo), AT(48, ITradeApi, GetCurrencies), AT(50, ITradeApi, GetUppers),
        AT(55, ITradeApi, FormatPrice), AT(0, IDataContainer, Count), AT(1, IDataContainer, At),
        AT(2, IDataContainer, Clear), AT(3, IDataContainer, Add), AT(38, IQuoteDataCenter, Slot38),
        AT(26, ISysConfig, GetConfigTable), AT(2, IConfigTable, Query), AT(3, IConfigTable, Release),
        AT(0, ITradeList, CreateListWindow), AT(1, ITradeList, ReleaseListWindow),
        AT(5, ITradeListWindow, Place), AT(6, ITradeListWindow, SetFilter),
        AT(7, ITradeListWindow, SetNotify), AT(0, ISelectDataNotify, OnSelectData),
        AT(0, ITradeSpi, GetNotifyWnd), AT(1, ITradeSpi, OnTradeNotify1), AT(11, ITradeSpi, OnTradeNotify11),
        AT(35, ITradeSpi, OnTradeNotify35),
    };
#undef AT
    // clang-format on
    for (const auto& [slot, name, actual] : rows) {
        EXPECT_EQ(actual, slot) << name;
    }
}

TEST(FixedText, CutsAndZeroFills) {
    FixedText<5> field;
    std::memset(&field, 'x', sizeof(field));
    EXPECT_EQ(field.Str(), "xxxxx");
    using namespace std::string_view_literals;
    for (const auto& [text, bytes] :
         {std::pair{"abcdefg"sv, "abcd\0"sv}, {"a"sv, "a\0\0\0\0"sv}, {"b\0c"sv, "b\0\0\0\0"sv}}) {
        field.Set(text);
        EXPECT_EQ(std::string_view(field.chars, 5), bytes);
    }
    field.Set(field.View());
    EXPECT_EQ(field, "b");
    field.Set({});
    EXPECT_TRUE(field.Empty());
}

}  // namespace
