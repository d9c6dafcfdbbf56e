#pragma once

#include "trade/order_record.h"

// A fill of an order on the exchange, as the host holds it and as every fill request carries it. A fill
// always names one leg. Ranges without a name stay zero in requests.
#pragma pack(push, 1)
struct FillRecord {
    SingleContractKey key;
    FixedText<21> fillNo;  // given by the server; empty in a new fill
    FixedText<21> accountNo;
    char fillSource;
    char direction;
    char flag111;  // always 'N' in requests
    char reserved112[27];
    FixedText<51> exchangeFillNo;
    FixedText<21> fillTime;  // local, "%Y-%m-%d %H:%M:%S"
    char reserved211[21];
    double fillPrice;
    std::uint32_t fillQty;
    char reserved244;
    FixedText<11> currencyNo;
    char feeGiven;  // 'Y': fee is the fee of this fill; 'N': none is given
    char reserved257[11];
    double fee;
    char reserved276[27];
    FixedText<11> upperNo;
    char reserved314;
    double closePrice;   // price of the chosen position that the fill closes
    OrderRecord* order;  // host records only; may be null
    char reserved327[4];
    char carryPair;  // the fill dialog writes 'Y' in a carry pair, the order dialog the byte value 1 in a
                     // carry leg
    FixedText<51> systemNo;
};
#pragma pack(pop)

static_assert(sizeof(FillRecord) == 383);
static_assert(offsetof(FillRecord, fillNo) == 67 && offsetof(FillRecord, accountNo) == 88 &&
              offsetof(FillRecord, fillSource) == 109 && offsetof(FillRecord, direction) == 110 &&
              offsetof(FillRecord, flag111) == 111 && offsetof(FillRecord, exchangeFillNo) == 139 &&
              offsetof(FillRecord, fillTime) == 190 && offsetof(FillRecord, fillPrice) == 232 &&
              offsetof(FillRecord, fillQty) == 240 && offsetof(FillRecord, currencyNo) == 245 &&
              offsetof(FillRecord, feeGiven) == 256 && offsetof(FillRecord, fee) == 268 &&
              offsetof(FillRecord, upperNo) == 303 && offsetof(FillRecord, closePrice) == 315 &&
              offsetof(FillRecord, order) == 323 && offsetof(FillRecord, carryPair) == 331 &&
              offsetof(FillRecord, systemNo) == 332);
