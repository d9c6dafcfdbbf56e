// What both sides of the border must agree on to the byte: slots of interfaces, places of fields in records.

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
    const struct {
        int slot;
        int expected;
    } rows[] = {
        // clang-format off
        {SlotOf(&IPluginManager::GetPlugin), 1}, {SlotOf(&IEmendix::OpenFillDialog), 0},
        {SlotOf(&IEmendix::OpenOrderDialog), 1}, {SlotOf(&IEmendixOper::PreTranslateMessage), 0},
        {SlotOf(&IEmendixOper::GetSafeHwnd), 1}, {SlotOf(&ITradeService::GetTradeApi), 2},
        {SlotOf(&ITradeService::SendOrder), 18}, {SlotOf(&ITradeService::DeleteOrder), 19},
        {SlotOf(&ITradeService::SendFill), 20}, {SlotOf(&ITradeService::RemoveFill), 21},
        {SlotOf(&ITradeService::SendExercise), 22}, {SlotOf(&ITradeApi::RegisterSpi), 0},
        {SlotOf(&ITradeApi::UnregisterSpi), 1}, {SlotOf(&ITradeApi::ListSignEntries), 2},
        {SlotOf(&ITradeApi::GetUserServer), 3}, {SlotOf(&ITradeApi::GetOrder), 6},
        {SlotOf(&ITradeApi::GetPositions), 15}, {SlotOf(&ITradeApi::GetPosition), 16},
        {SlotOf(&ITradeApi::GetPositionQty), 25}, {SlotOf(&ITradeApi::GetUsers), 26},
        {SlotOf(&ITradeApi::GetUser), 27}, {SlotOf(&ITradeApi::GetExchanges), 37},
        {SlotOf(&ITradeApi::GetExchange), 38}, {SlotOf(&ITradeApi::GetCommodities), 39},
        {SlotOf(&ITradeApi::GetCommodity), 40}, {SlotOf(&ITradeApi::GetContracts), 41},
        {SlotOf(&ITradeApi::GetContract), 43}, {SlotOf(&ITradeApi::Get3MContractNo), 44},
        {SlotOf(&ITradeApi::GetCurrencies), 48}, {SlotOf(&ITradeApi::GetUppers), 50},
        {SlotOf(&ITradeApi::FormatPrice), 55}, {SlotOf(&IDataContainer::Count), 0},
        {SlotOf(&IDataContainer::At), 1}, {SlotOf(&IDataContainer::Clear), 2},
        {SlotOf(&IDataContainer::Add), 3}, {SlotOf(&IQuoteDataCenter::Slot38), 38},
        {SlotOf(&ISysConfig::GetConfigTable), 26}, {SlotOf(&IConfigTable::Query), 2},
        {SlotOf(&IConfigTable::Release), 3}, {SlotOf(&ITradeList::CreateListWindow), 0},
        {SlotOf(&ITradeList::ReleaseListWindow), 1}, {SlotOf(&ITradeListWindow::Place), 5},
        {SlotOf(&ITradeListWindow::SetFilter), 6}, {SlotOf(&ITradeListWindow::SetNotify), 7},
        {SlotOf(&ISelectDataNotify::OnSelectData), 0}, {SlotOf(&ITradeSpi::GetNotifyWnd), 0},
        {SlotOf(&ITradeSpi::OnTradeNotify1), 1}, {SlotOf(&ITradeSpi::OnTradeNotify11), 11},
        {SlotOf(&ITradeSpi::OnTradeNotify35), 35},
        // clang-format on
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.slot, row.expected) << "row " << &row - rows;
    }
}

// A record of raw bytes: 0xEE everywhere but in the fields that the test writes, so that a field in the wrong
// place or of the wrong width reads the filling.
template <typename Record>
class RawRecord {
public:
    RawRecord() { std::memset(&m_record, 0xEE, sizeof(m_record)); }
    // Text with its terminator, or a number as it lies in memory.
    RawRecord& Text(std::size_t offset, const char* text) {
        return Bytes(offset, text, std::strlen(text) + 1);
    }
    template <typename Value>
    RawRecord& Number(std::size_t offset, Value number) {
        return Bytes(offset, &number, sizeof(number));
    }
    const Record& Get() const { return m_record; }

private:
    RawRecord& Bytes(std::size_t offset, const void* bytes, std::size_t count) {
        EXPECT_LE(offset + count, sizeof(m_record));
        std::memcpy(reinterpret_cast<char*>(&m_record) + offset, bytes, count);
        return *this;
    }
    Record m_record;
};

TEST(Border, HostRecordsAreReadWhereTheHostWrites) {
    const auto commodity = RawRecord<CommodityRecord>()
                               .Text(21, "EXA")
                               .Number(32, 'F')
                               .Text(33, "CM")
                               .Text(44, "Copper")
                               .Number(73, 0.5)
                               .Number(81, 32u)
                               .Number(85, '2')
                               .Number(115, 'U')
                               .Text(137, "EXB")
                               .Number(148, 'O')
                               .Text(149, "CB")
                               .Text(160, "EXC")
                               .Number(171, 'F')
                               .Text(172, "CC")
                               .Get();
    EXPECT_EQ(commodity.exchangeNo, "EXA");
    EXPECT_EQ(commodity.commodityNo, "CM");
    EXPECT_EQ(commodity.commodityName, "Copper");
    EXPECT_EQ(double{commodity.tickNumerator}, 0.5);
    EXPECT_EQ(std::uint32_t{commodity.tickDenominator}, 32u);
    EXPECT_EQ(commodity.legOrder, '2');
    EXPECT_EQ(commodity.rollingCode, 'U');
    EXPECT_EQ(commodity.relatedCommodityNo, "CB");
    EXPECT_EQ(commodity.secondExchangeNo, "EXC");
    EXPECT_EQ(commodity.secondCommodityNo, "CC");

    const auto position = RawRecord<PositionRecord>()
                              .Text(44, "1509")
                              .Text(118, "A1")
                              .Number(139, 'S')
                              .Number(189, 97.25)
                              .Number(197, 7u)
                              .Get();
    EXPECT_EQ(position.key.contractNo, "1509");
    EXPECT_EQ(position.accountNo, "A1");
    EXPECT_EQ(position.direction, 'S');
    EXPECT_EQ(double{position.price}, 97.25);
    EXPECT_EQ(std::uint32_t{position.openQty}, 7u);

    const auto user = RawRecord<UserRecord>()
                          .Text(0, "S1")
                          .Text(21, "KEY")
                          .Text(42, "A1")
                          .Text(63, "Ann")
                          .Number(89, 0x12345678u)
                          .Get();
    EXPECT_EQ(user.sign, "S1");
    EXPECT_EQ(user.serverKey, "KEY");
    EXPECT_EQ(user.accountName, "Ann");
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(user.group), 0x12345678u);
    const auto group =
        RawRecord<GroupRecord>().Text(0, "S2").Text(148, "OP1").Number(284, 'c').Number(746, 'Y').Get();
    EXPECT_EQ(group.sign, "S2");
    EXPECT_EQ(group.operatorNo, "OP1");
    EXPECT_EQ(group.accountLock, 'c');
    EXPECT_EQ(group.tradable, 'Y');

    const auto exchange =
        RawRecord<ExchangeRecord>().Text(21, "EXA").Text(32, "Exchange").Number(53, '\1').Get();
    EXPECT_EQ(exchange.exchangeName, "Exchange");
    EXPECT_EQ(exchange.forwardMarket, 1);
    const auto upper = RawRecord<UpperRecord>().Text(21, "U1").Text(32, "Upper").Get();
    EXPECT_EQ(upper.upperNo, "U1");
    EXPECT_EQ(upper.upperName, "Upper");
    const auto currency = RawRecord<CurrencyRecord>().Text(21, "USD").Text(32, "Dollar").Get();
    EXPECT_EQ(currency.currencyNo, "USD");
    EXPECT_EQ(currency.currencyName, "Dollar");
    const auto contract =
        RawRecord<ContractRecord>().Text(67, "1512").Text(90, "Name").Number(201, 0x9ABCu).Get();
    EXPECT_EQ(contract.key.contractNo2, "1512");
    EXPECT_EQ(contract.contractName, "Name");
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(contract.commodity), 0x9ABCu);
    const auto server = RawRecord<ServerRecord>().Text(21, "10.0.0.1").Number(61, std::uint16_t{8000}).Get();
    EXPECT_EQ(server.address, "10.0.0.1");
    EXPECT_EQ(std::uint16_t{server.port}, 8000);
    const auto config =
        RawRecord<ServerConfigRecord>().Text(0, "Name").Text(51, "10.0.0.1").Number(311, 8000u).Get();
    EXPECT_EQ(config.name, "Name");
    EXPECT_EQ(config.address, "10.0.0.1");
    EXPECT_EQ(std::uint32_t{config.port}, 8000u);
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
