// What both sides of the border must agree on to the byte and the compiler cannot check: slots of interfaces,
// texts of a fixed width.

#include "trade/host_interfaces.h"
#include "trade/plugin_interface.h"
#include "trade/trade_spi.h"

#include <gtest/gtest.h>

#include <cstring>

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
#define SLOT(type, operation, slot) EXPECT_EQ(SlotOf(&type::operation), slot) << #operation;
    SLOT(IPluginManager, GetPlugin, 1) SLOT(IEmendix, OpenFillDialog, 0)
    SLOT(IEmendix, OpenOrderDialog, 1) SLOT(IEmendixOper, PreTranslateMessage, 0)
    SLOT(IEmendixOper, GetSafeHwnd, 1) SLOT(ITradeService, GetTradeApi, 2)
    SLOT(ITradeService, SendOrder, 18) SLOT(ITradeService, DeleteOrder, 19)
    SLOT(ITradeService, SendFill, 20) SLOT(ITradeService, RemoveFill, 21)
    SLOT(ITradeService, SendExercise, 22) SLOT(ITradeApi, RegisterSpi, 0)
    SLOT(ITradeApi, UnregisterSpi, 1) SLOT(ITradeApi, ListSignEntries, 2)
    SLOT(ITradeApi, GetUserServer, 3) SLOT(ITradeApi, GetOrder, 6) SLOT(ITradeApi, GetPositions, 15)
    SLOT(ITradeApi, GetPosition, 16) SLOT(ITradeApi, GetPositionQty, 25) SLOT(ITradeApi, GetUsers, 26)
    SLOT(ITradeApi, GetUser, 27) SLOT(ITradeApi, GetExchanges, 37) SLOT(ITradeApi, GetExchange, 38)
    SLOT(ITradeApi, GetCommodities, 39) SLOT(ITradeApi, GetCommodity, 40)
    SLOT(ITradeApi, GetContracts, 41) SLOT(ITradeApi, GetContract, 43)
    SLOT(ITradeApi, Get3MContractNo, 44) SLOT(ITradeApi, GetCurrencies, 48)
    SLOT(ITradeApi, GetUppers, 50) SLOT(ITradeApi, FormatPrice, 55) SLOT(IDataContainer, Count, 0)
    SLOT(IDataContainer, At, 1) SLOT(IDataContainer, Clear, 2) SLOT(IDataContainer, Add, 3)
    SLOT(IQuoteDataCenter, Slot38, 38) SLOT(ISysConfig, GetConfigTable, 26) SLOT(IConfigTable, Query, 2)
    SLOT(IConfigTable, Release, 3) SLOT(ITradeList, CreateListWindow, 0)
    SLOT(ITradeList, ReleaseListWindow, 1) SLOT(ITradeListWindow, Place, 5)
    SLOT(ITradeListWindow, SetFilter, 6) SLOT(ITradeListWindow, SetNotify, 7)
    SLOT(ISelectDataNotify, OnSelectData, 0) SLOT(ITradeSpi, GetNotifyWnd, 0)
    SLOT(ITradeSpi, OnTradeNotify1, 1) SLOT(ITradeSpi, OnTradeNotify11, 11)
    SLOT(ITradeSpi, OnTradeNotify35, 35)
    // clang-format on
#undef SLOT
}

TEST(FixedText, CutsAndZeroFills) {
    FixedText<5> field;
    std::memset(&field, 'x', sizeof(field));
    EXPECT_EQ(field.Str(), "xxxxx");
    field.Set("abcdefg");
    EXPECT_EQ(std::memcmp(field.chars, "abcd\0", 5), 0);
    field.Set("a");
    EXPECT_EQ(std::memcmp(field.chars, "a\0\0\0\0", 5), 0);
    field.Set(std::string_view("b\0c", 3));
    EXPECT_EQ(std::memcmp(field.chars, "b\0\0\0\0", 5), 0);
    field.Set(field.View());
    EXPECT_EQ(field, "b");
    field.Set({});
    EXPECT_TRUE(field.Empty());
}

}  // namespace
