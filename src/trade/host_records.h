#pragma once

#include "trade/contract_key.h"
#include "trade/fixed_text.h"

#include <cstddef>
#include <cstdint>

// Records that the host owns and the module reads in place. Fields without a name here are the host's own.
static_assert(sizeof(void*) == 4, "records hold 4-byte in-process pointers");

#pragma pack(push, 1)
struct ExchangeRecord {
    FixedText<21> sign;
    FixedText<11> exchangeNo;
    FixedText<21> exchangeName;
    char forwardMarket;  // nonzero: trades on the nearby/forward ("3M") model
};

struct CommodityRecord {
    FixedText<21> sign;
    FixedText<11> exchangeNo;
    char commodityType;
    FixedText<11> commodityNo;
    FixedText<29> commodityName;
    double tickNumerator;           // minimum price change = tickNumerator / tickDenominator
    std::uint32_t tickDenominator;  // 2 or more: prices are quoted in fractions of it
    char legOrder;                  // '2': the second leg of a two-leg commodity is quoted first
    char reserved86[29];
    char rollingCode;  // 'U': has a rolling "3M" contract, whose prompt date may not be entered
    char reserved116[21];
    // The first leg of a two-leg commodity, the underlying of an option.
    FixedText<11> relatedExchangeNo;
    char relatedCommodityType;
    FixedText<11> relatedCommodityNo;
    // The second leg of a two-leg commodity.
    FixedText<11> secondExchangeNo;
    char secondCommodityType;
    FixedText<11> secondCommodityNo;
};

struct ContractRecord {
    ContractKey key;
    FixedText<111> contractName;
    CommodityRecord* commodity;  // may be null
};

struct GroupRecord {
    FixedText<21> sign;  // the sign of every account of the group
    char reserved21[127];
    FixedText<21> operatorNo;
    char reserved169[115];
    char accountLock;  // 'c': the account may not be changed in the order dialog
    char reserved285[461];
    char tradable;  // 'Y': the accounts of the group are listed and accepted
};

struct UserRecord {
    FixedText<21> sign;
    FixedText<21> serverKey;  // argument of ITradeApi::GetUserServer
    FixedText<21> accountNo;
    FixedText<26> accountName;
    GroupRecord* group;  // may be null
};

// The upstream account at the clearing member.
struct UpperRecord {
    FixedText<21> sign;
    FixedText<11> upperNo;
    FixedText<51> upperName;
};

struct CurrencyRecord {
    FixedText<21> sign;
    FixedText<11> currencyNo;
    FixedText<51> currencyName;
};

struct PositionRecord {
    SingleContractKey key;
    char reserved67[51];
    FixedText<21> accountNo;
    char direction;  // 'B' or 'S'
    char reserved140[49];
    double price;
    std::uint32_t openQty;
};

struct ServerRecord {
    char reserved0[21];
    FixedText<40> address;
    std::uint16_t port;
};

struct ServerConfigRecord {
    FixedText<51> name;
    FixedText<260> address;
    std::uint32_t port;
    char reserved315[153];
};

// What the module tells a position list window to show.
struct PositionFilterRecord {
    FixedText<21> accountNo;
    char reserved21[42];
    FixedText<21> exchangeNo;
    FixedText<21> commodityNo;
    char reserved105;
    FixedText<51> contractNo;
    char direction;  // 'B' or 'S'
    char reserved158[2];
    FixedText<21> upperNo;
    char reserved181[75];
    double price;  // 0: any price
};
#pragma pack(pop)

static_assert(sizeof(ExchangeRecord) == 54 && offsetof(ExchangeRecord, exchangeName) == 32 &&
              offsetof(ExchangeRecord, forwardMarket) == 53);
static_assert(sizeof(CommodityRecord) == 183 && offsetof(CommodityRecord, commodityName) == 44 &&
              offsetof(CommodityRecord, tickNumerator) == 73 &&
              offsetof(CommodityRecord, tickDenominator) == 81 && offsetof(CommodityRecord, legOrder) == 85 &&
              offsetof(CommodityRecord, rollingCode) == 115 &&
              offsetof(CommodityRecord, relatedExchangeNo) == 137 &&
              offsetof(CommodityRecord, relatedCommodityType) == 148 &&
              offsetof(CommodityRecord, relatedCommodityNo) == 149 &&
              offsetof(CommodityRecord, secondExchangeNo) == 160 &&
              offsetof(CommodityRecord, secondCommodityType) == 171 &&
              offsetof(CommodityRecord, secondCommodityNo) == 172);
static_assert(sizeof(ContractRecord) == 205 && offsetof(ContractRecord, contractName) == 90 &&
              offsetof(ContractRecord, commodity) == 201);
static_assert(sizeof(GroupRecord) == 747 && offsetof(GroupRecord, operatorNo) == 148 &&
              offsetof(GroupRecord, accountLock) == 284 && offsetof(GroupRecord, tradable) == 746);
static_assert(sizeof(UserRecord) == 93 && offsetof(UserRecord, serverKey) == 21 &&
              offsetof(UserRecord, accountNo) == 42 && offsetof(UserRecord, accountName) == 63 &&
              offsetof(UserRecord, group) == 89);
static_assert(offsetof(UpperRecord, upperNo) == 21 && offsetof(UpperRecord, upperName) == 32);
static_assert(offsetof(CurrencyRecord, currencyNo) == 21 && offsetof(CurrencyRecord, currencyName) == 32);
static_assert(sizeof(PositionRecord) == 201 && offsetof(PositionRecord, accountNo) == 118 &&
              offsetof(PositionRecord, direction) == 139 && offsetof(PositionRecord, price) == 189 &&
              offsetof(PositionRecord, openQty) == 197);
static_assert(offsetof(ServerRecord, address) == 21 && offsetof(ServerRecord, port) == 61);
static_assert(sizeof(ServerConfigRecord) == 468 && offsetof(ServerConfigRecord, address) == 51 &&
              offsetof(ServerConfigRecord, port) == 311);
static_assert(sizeof(PositionFilterRecord) == 264 && offsetof(PositionFilterRecord, exchangeNo) == 63 &&
              offsetof(PositionFilterRecord, commodityNo) == 84 &&
              offsetof(PositionFilterRecord, contractNo) == 106 &&
              offsetof(PositionFilterRecord, direction) == 157 &&
              offsetof(PositionFilterRecord, upperNo) == 160 && offsetof(PositionFilterRecord, price) == 256);
