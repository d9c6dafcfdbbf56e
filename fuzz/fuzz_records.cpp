// Host records of arbitrary bytes: the access layer reads every field within its width.
#include "fuzz/fuzz_input.h"
#include "tests/trade/fake_trade.h"
#include "trade/contract_text.h"
#include "trade/trade_data.h"

#include <memory>

namespace {

// Each record in memory of its own, so that a byte read behind it is seen.
template <typename Record>
std::unique_ptr<Record> TakeRecord(FuzzInput& input) {
    return std::make_unique<Record>(input.Take<Record>());
}

void ReadContract(const ContractKey& key, const TradeData& trade) {
    std::string text;
    FormatContractText(key, text, false, false, trade);
    FormatContractText(key, text, true, true, trade);
    FormatContractWithSign(text, FirstLegOf(key));
    SingleContractKey first{}, second{};
    IsFirstLegFirst(key, trade);
    SplitContractLegs(key, first, second, trade);
    trade.Contracts(CommodityOf(key));
    trade.PositionQty(text, FirstLegOf(key));
    trade.Position(text, key, key.optionType, text);
}

void ReadAccount(const UserRecord& user, const ServerConfigRecord& config, const TradeData& trade) {
    IsTradable(&user);
    const std::string operatorNo = OperatorNo(&user);
    Require(operatorNo.size() <= sizeof(GroupRecord::operatorNo));
    trade.ServerOf(user, {config});
    trade.User(user.accountNo.Str(), user.sign.Str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const auto flags = input.Take<std::uint8_t>();
    const auto contract = TakeRecord<ContractRecord>(input);
    const auto position = TakeRecord<PositionRecord>(input);
    const auto user = TakeRecord<UserRecord>(input);
    const auto server = TakeRecord<ServerRecord>(input);
    const auto config = TakeRecord<ServerConfigRecord>(input);
    auto commodity = TakeRecord<CommodityRecord>(input);
    const auto group = TakeRecord<GroupRecord>(input);
    user->group = flags & 1 ? group.get() : nullptr;
    contract->commodity = commodity.get();
    if (flags & 2) {
        std::memcpy(commodity.get(), contract.get(), sizeof(CommodityKey));
    }
    const std::string threeMonth = input.TakeRest();

    FakeTradeApi api;
    api.contracts = {contract.get(), nullptr};
    api.commodities = {nullptr, commodity.get()};
    api.positions = {position.get()};
    api.users = {user.get()};
    api.server = flags & 4 ? server.get() : nullptr;
    api.threeMonthContractNo = flags & 8 ? threeMonth.c_str() : nullptr;
    api.priceText = flags & 16 ? threeMonth : std::string();
    const TradeData trade(&api);

    ReadContract(contract->key, trade);
    ReadAccount(*user, *config, trade);
    trade.PositionTotal(position->accountNo.Str(), position->key.exchangeNo.Str(),
                        position->key.commodityNo.Str(), position->key.contractNo.Str(), position->direction);
    Require(trade.ThreeMonthContractNo(position->key.sign.Str()).size() <= 10);
    Require(trade.FormatPrice(contract.get(), position->price).size() <= 400);
    return 0;
}
