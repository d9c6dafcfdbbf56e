#pragma once

#include "trade/host_records.h"

// An order, as the host holds it and as every order request carries it. Codes are the characters of the code
// tables; times are local, "%Y-%m-%d %H:%M:%S". Ranges without a name stay zero in requests.
#pragma pack(push, 1)
struct OrderRecord {
    ContractKey key;
    FixedText<21> accountNo;
    char orderType;
    char orderSource;
    char validType;
    FixedText<21> validUntil;  // only for validity type '2'
    char forcedClose;          // 'Y' or 'N'
    char direction;
    char flag137;  // always 'N' in requests
    char flag138;  // always 'N' in requests
    double orderPrice;
    double triggerPrice;
    char reserved155[2];
    std::uint32_t orderQty;
    std::uint32_t counter161;  // always 0 in requests
    char reserved165[105];
    std::uint32_t orderNo;  // given by the server; 0 in a new order
    char reserved274[5];
    FixedText<21> text279;  // carried over from the original order
    char reserved300[21];
    FixedText<51> systemNo;
    FixedText<51> exchangeSystemNo;
    char reserved423[11];
    FixedText<11> upperNo;
    char reserved445[11];
    FixedText<21> inputOperator;
    FixedText<21> inputTime;
    FixedText<21> updateOperator;
    FixedText<21> updateTime;
    char orderState;
    double fillPrice;
    std::uint32_t fillQty;
    char reserved553[59];
    char backOffice;  // 'Y': input through the back office; anything else: an electronic order
    char reserved613;
    char flag614;  // carried over from the original order
    char reserved615[54];
    ContractRecord* contract;
    char reserved673[4];
};
#pragma pack(pop)

static_assert(sizeof(OrderRecord) == 677);
static_assert(offsetof(OrderRecord, accountNo) == 90 && offsetof(OrderRecord, orderType) == 111 &&
              offsetof(OrderRecord, orderSource) == 112 && offsetof(OrderRecord, validType) == 113 &&
              offsetof(OrderRecord, validUntil) == 114 && offsetof(OrderRecord, forcedClose) == 135 &&
              offsetof(OrderRecord, direction) == 136 && offsetof(OrderRecord, flag137) == 137 &&
              offsetof(OrderRecord, flag138) == 138 && offsetof(OrderRecord, orderPrice) == 139 &&
              offsetof(OrderRecord, triggerPrice) == 147 && offsetof(OrderRecord, orderQty) == 157 &&
              offsetof(OrderRecord, counter161) == 161 && offsetof(OrderRecord, orderNo) == 270 &&
              offsetof(OrderRecord, text279) == 279 && offsetof(OrderRecord, systemNo) == 321 &&
              offsetof(OrderRecord, exchangeSystemNo) == 372 && offsetof(OrderRecord, upperNo) == 434 &&
              offsetof(OrderRecord, inputOperator) == 456 && offsetof(OrderRecord, inputTime) == 477 &&
              offsetof(OrderRecord, updateOperator) == 498 && offsetof(OrderRecord, updateTime) == 519 &&
              offsetof(OrderRecord, orderState) == 540 && offsetof(OrderRecord, fillPrice) == 541 &&
              offsetof(OrderRecord, fillQty) == 549 && offsetof(OrderRecord, backOffice) == 612 &&
              offsetof(OrderRecord, flag614) == 614 && offsetof(OrderRecord, contract) == 669);
