#include "book/record_fields.h"

#include "trade/fill_record.h"
#include "trade/host_records.h"
#include "trade/order_record.h"

#include <array>
#include <cstring>

namespace {

using enum FieldKind;

// clang-format off
#define FIELD(Record, member, kind, ...) \
    RecordField { #member, offsetof(Record, member), sizeof(Record::member), kind __VA_OPT__(,) __VA_ARGS__ }
// clang-format on
#define LEG_FIELDS                                                                     \
    FIELD(ContractKey, sign, kText), FIELD(ContractKey, exchangeNo, kText),            \
        FIELD(ContractKey, commodityType, kCode, Words::kCommodityType),               \
        FIELD(ContractKey, commodityNo, kText), FIELD(ContractKey, contractNo, kText), \
        FIELD(ContractKey, strikePrice, kText), FIELD(ContractKey, optionType, kCode, Words::kOption)

#define CONTRACT_FIELDS                                                                          \
    LEG_FIELDS, FIELD(ContractKey, contractNo2, kText), FIELD(ContractKey, strikePrice2, kText), \
        FIELD(ContractKey, optionType2, kCode, Words::kOption)

constexpr RecordField kOrderFields[] = {
    CONTRACT_FIELDS,
    FIELD(OrderRecord, accountNo, kText),
    FIELD(OrderRecord, orderType, kCode, Words::kOrderType),
    FIELD(OrderRecord, orderSource, kCode, Words::kSource),
    FIELD(OrderRecord, validType, kCode, Words::kValidity),
    FIELD(OrderRecord, validUntil, kText, Words::kNone, ClockField::kTime),
    FIELD(OrderRecord, forcedClose, kCode, Words::kYesNo),
    FIELD(OrderRecord, direction, kCode, Words::kDirection),
    FIELD(OrderRecord, flag137, kCode, Words::kYesNo),
    FIELD(OrderRecord, flag138, kCode, Words::kYesNo),
    FIELD(OrderRecord, orderPrice, kDouble),
    FIELD(OrderRecord, triggerPrice, kDouble),
    FIELD(OrderRecord, orderQty, kUint32),
    FIELD(OrderRecord, counter161, kUint32),
    FIELD(OrderRecord, orderNo, kUint32),
    FIELD(OrderRecord, text279, kText),
    FIELD(OrderRecord, systemNo, kText, Words::kNone, ClockField::kNumber),
    FIELD(OrderRecord, exchangeSystemNo, kText, Words::kNone, ClockField::kNumber),
    FIELD(OrderRecord, upperNo, kText),
    FIELD(OrderRecord, inputOperator, kText),
    FIELD(OrderRecord, inputTime, kText, Words::kNone, ClockField::kTime),
    FIELD(OrderRecord, updateOperator, kText),
    FIELD(OrderRecord, updateTime, kText, Words::kNone, ClockField::kTime),
    FIELD(OrderRecord, orderState, kCode, Words::kState),
    FIELD(OrderRecord, fillPrice, kDouble),
    FIELD(OrderRecord, fillQty, kUint32),
    FIELD(OrderRecord, backOffice, kCode, Words::kYesNo),
    FIELD(OrderRecord, flag614, kCode),
    FIELD(OrderRecord, contract, kPointer),
};

constexpr RecordField kFillFields[] = {
    LEG_FIELDS,
    FIELD(FillRecord, fillNo, kText),
    FIELD(FillRecord, accountNo, kText),
    FIELD(FillRecord, fillSource, kCode, Words::kSource),
    FIELD(FillRecord, direction, kCode, Words::kDirection),
    FIELD(FillRecord, flag111, kCode, Words::kYesNo),
    FIELD(FillRecord, exchangeFillNo, kText, Words::kNone, ClockField::kNumber),
    FIELD(FillRecord, fillTime, kText, Words::kNone, ClockField::kTime),
    FIELD(FillRecord, fillPrice, kDouble),
    FIELD(FillRecord, fillQty, kUint32),
    FIELD(FillRecord, currencyNo, kText),
    FIELD(FillRecord, feeGiven, kCode, Words::kYesNo),
    FIELD(FillRecord, fee, kDouble),
    FIELD(FillRecord, upperNo, kText),
    FIELD(FillRecord, closePrice, kDouble),
    FIELD(FillRecord, order, kPointer),
    FIELD(FillRecord, carryPair, kCode, Words::kCarryPair),
    FIELD(FillRecord, systemNo, kText, Words::kNone, ClockField::kNumber),
};

constexpr RecordField kPositionFields[] = {
    LEG_FIELDS,
    FIELD(PositionRecord, accountNo, kText),
    FIELD(PositionRecord, direction, kCode, Words::kDirection),
    FIELD(PositionRecord, price, kDouble),
    FIELD(PositionRecord, openQty, kUint32),
};

constexpr RecordField kFilterFields[] = {
    FIELD(PositionFilterRecord, accountNo, kText),
    FIELD(PositionFilterRecord, exchangeNo, kText),
    FIELD(PositionFilterRecord, commodityNo, kText),
    FIELD(PositionFilterRecord, contractNo, kText),
    FIELD(PositionFilterRecord, direction, kCode, Words::kDirection),
    FIELD(PositionFilterRecord, upperNo, kText),
    FIELD(PositionFilterRecord, price, kDouble),
};

constexpr RecordField kExchangeFields[] = {
    FIELD(ExchangeRecord, sign, kText), FIELD(ExchangeRecord, exchangeNo, kText),
    FIELD(ExchangeRecord, exchangeName, kText), FIELD(ExchangeRecord, forwardMarket, kCode)};
constexpr RecordField kCommodityFields[] = {
    FIELD(CommodityRecord, sign, kText),
    FIELD(CommodityRecord, exchangeNo, kText),
    FIELD(CommodityRecord, commodityType, kCode, Words::kCommodityType),
    FIELD(CommodityRecord, commodityNo, kText),
    FIELD(CommodityRecord, commodityName, kText),
    FIELD(CommodityRecord, tickNumerator, kDouble),
    FIELD(CommodityRecord, tickDenominator, kUint32),
    FIELD(CommodityRecord, legOrder, kCode),
    FIELD(CommodityRecord, rollingCode, kCode),
    FIELD(CommodityRecord, relatedExchangeNo, kText),
    FIELD(CommodityRecord, relatedCommodityType, kCode, Words::kCommodityType),
    FIELD(CommodityRecord, relatedCommodityNo, kText),
    FIELD(CommodityRecord, secondExchangeNo, kText),
    FIELD(CommodityRecord, secondCommodityType, kCode, Words::kCommodityType),
    FIELD(CommodityRecord, secondCommodityNo, kText)};
constexpr RecordField kContractFields[] = {CONTRACT_FIELDS, FIELD(ContractRecord, contractName, kText),
                                           FIELD(ContractRecord, commodity, kPointer)};
constexpr RecordField kGroupFields[] = {
    FIELD(GroupRecord, sign, kText), FIELD(GroupRecord, operatorNo, kText),
    FIELD(GroupRecord, accountLock, kCode), FIELD(GroupRecord, tradable, kCode, Words::kYesNo)};
constexpr RecordField kUserFields[] = {
    FIELD(UserRecord, sign, kText), FIELD(UserRecord, serverKey, kText), FIELD(UserRecord, accountNo, kText),
    FIELD(UserRecord, accountName, kText), FIELD(UserRecord, group, kPointer)};
constexpr RecordField kUpperFields[] = {FIELD(UpperRecord, sign, kText), FIELD(UpperRecord, upperNo, kText),
                                        FIELD(UpperRecord, upperName, kText)};
constexpr RecordField kCurrencyFields[] = {FIELD(CurrencyRecord, sign, kText),
                                           FIELD(CurrencyRecord, currencyNo, kText),
                                           FIELD(CurrencyRecord, currencyName, kText)};
constexpr RecordField kServerFields[] = {FIELD(ServerRecord, address, kText),
                                         FIELD(ServerRecord, port, kUint16)};
constexpr RecordField kServerConfigFields[] = {FIELD(ServerConfigRecord, name, kText),
                                               FIELD(ServerConfigRecord, address, kText),
                                               FIELD(ServerConfigRecord, port, kUint32)};
#undef CONTRACT_FIELDS
#undef LEG_FIELDS
#undef FIELD

constexpr std::array<RecordLayout, 13> kLayouts{{
    {"OrderRecord", sizeof(OrderRecord), kOrderFields},
    {"FillRecord", sizeof(FillRecord), kFillFields},
    {"PositionRecord", sizeof(PositionRecord), kPositionFields},
    {"PositionFilterRecord", sizeof(PositionFilterRecord), kFilterFields},
    {"ExchangeRecord", sizeof(ExchangeRecord), kExchangeFields},
    {"CommodityRecord", sizeof(CommodityRecord), kCommodityFields},
    {"ContractRecord", sizeof(ContractRecord), kContractFields},
    {"GroupRecord", sizeof(GroupRecord), kGroupFields},
    {"UserRecord", sizeof(UserRecord), kUserFields},
    {"UpperRecord", sizeof(UpperRecord), kUpperFields},
    {"CurrencyRecord", sizeof(CurrencyRecord), kCurrencyFields},
    {"ServerRecord", sizeof(ServerRecord), kServerFields},
    {"ServerConfigRecord", sizeof(ServerConfigRecord), kServerConfigFields},
}};

struct CodeWord {
    Words words;
    char code;
    std::string_view word;
};
constexpr CodeWord kWords[] = {
    {Words::kOrderType, '1', "market"},
    {Words::kOrderType, '2', "limit"},
    {Words::kOrderType, '3', "stop-loss"},
    {Words::kOrderType, '4', "limit stop"},
    {Words::kOrderType, '5', "exercise"},
    {Words::kOrderType, '6', "abstain"},
    {Words::kOrderType, '7', "enquiry"},
    {Words::kOrderType, '8', "offer"},
    {Words::kOrderType, '9', "iceberg"},
    {Words::kOrderType, 'A', "ghost"},
    {Words::kOrderType, 'B', "swap"},
    {Words::kSource, 'C', "carry"},
    {Words::kSource, 'D', "delivery exercise"},
    {Words::kSource, 'E', "E-trade"},
    {Words::kSource, 'J', "J-trade"},
    {Words::kSource, 'M', "manual"},
    {Words::kSource, 'P', "proxy"},
    {Words::kSource, 'R', "RTS"},
    {Words::kSource, 'S', "program"},
    {Words::kValidity, '0', "good for the day"},
    {Words::kValidity, '1', "good till cancelled"},
    {Words::kValidity, '2', "good till date"},
    {Words::kValidity, '3', "immediate or cancel"},
    {Words::kValidity, '4', "fill or kill"},
    {Words::kYesNo, 'Y', "yes"},
    {Words::kYesNo, 'N', "no"},
    {Words::kDirection, 'B', "buy"},
    {Words::kDirection, 'S', "sell"},
    {Words::kDirection, 'A', "both"},
    {Words::kState, '0', "sent"},
    {Words::kState, '1', "accepted"},
    {Words::kState, '3', "executed"},
    {Words::kState, '4', "working"},
    {Words::kState, '5', "partially filled"},
    {Words::kState, '6', "filled"},
    {Words::kState, '7', "cancelling"},
    {Words::kState, '8', "modifying"},
    {Words::kState, '9', "cancelled"},
    {Words::kState, 'A', "rest cancelled"},
    {Words::kState, 'B', "rejected"},
    {Words::kState, 'D', "suspended"},
    {Words::kCommodityType, 'G', "goods"},
    {Words::kCommodityType, 'Y', "deferred goods"},
    {Words::kCommodityType, 'F', "futures"},
    {Words::kCommodityType, 'm', "spread of months"},
    {Words::kCommodityType, 'c', "spread of commodities"},
    {Words::kCommodityType, 'O', "option"},
    {Words::kCommodityType, 'u', "two calls, lower strike first"},
    {Words::kCommodityType, 'e', "two puts, higher strike first"},
    {Words::kCommodityType, 'd', "straddle"},
    {Words::kCommodityType, 'g', "strangle"},
    {Words::kCommodityType, 'l', "two calls of two months"},
    {Words::kCommodityType, 'r', "two puts of two months"},
    {Words::kOption, 'C', "call"},
    {Words::kOption, 'P', "put"},
    {Words::kOption, 'N', "none"},
    {Words::kCarryPair, 'Y', "half of a carry pair"},
    {Words::kCarryPair, '\x01', "carry leg"},
};

}  // namespace

const RecordLayout& OrderLayout() {
    return kLayouts[0];
}

const RecordLayout& FillLayout() {
    return kLayouts[1];
}

const RecordLayout* FindLayout(std::string_view name) {
    for (const RecordLayout& layout : kLayouts) {
        if (layout.name == name) {
            return &layout;
        }
    }
    return nullptr;
}

const RecordLayout* FindLayout(std::size_t size) {
    for (const RecordLayout& layout : kLayouts) {
        if (layout.size == size) {
            return &layout;
        }
    }
    return nullptr;
}

const RecordField* FindField(const RecordLayout& layout, std::string_view name) {
    for (const RecordField& field : layout.fields) {
        if (field.name == name) {
            return &field;
        }
    }
    return nullptr;
}

std::string_view WordOf(Words words, char code) {
    for (const CodeWord& word : kWords) {
        if (word.words == words && word.code == code) {
            return word.word;
        }
    }
    return {};
}

void TerminateTexts(const RecordLayout& layout, void* record) {
    for (const RecordField& field : layout.fields) {
        if (field.kind == FieldKind::kText) {
            static_cast<char*>(record)[field.offset + field.width - 1] = 0;
        }
    }
}

void UnterminateTexts(const RecordLayout& layout, void* record) {
    for (const RecordField& field : layout.fields) {
        if (field.kind == FieldKind::kText) {
            char* text = static_cast<char*>(record) + field.offset;
            const void* end = std::memchr(text, 0, field.width);
            const std::size_t length = end ? static_cast<const char*>(end) - text : field.width;
            std::memset(text + length, '~', field.width - length);
        }
    }
}
