#include "services/trade_api.h"

#include "book/price_format.h"
#include "book/record_fields.h"

#include <cstdio>
#include <cstring>

namespace {

std::string_view View(const char* text) {
    return text ? std::string_view(text) : std::string_view();
}

// A text argument that may stand in a record field without a terminator.
std::string_view FieldView(const char* text, std::size_t width) {
    return text ? std::string_view(text, strnlen(text, width)) : std::string_view();
}

template <typename Record>
constexpr std::string_view NameOf();
#define RECORD_NAME(Record)                       \
    template <>                                   \
    constexpr std::string_view NameOf<Record>() { \
        return #Record;                           \
    }
RECORD_NAME(UserRecord)
RECORD_NAME(GroupRecord)
RECORD_NAME(UpperRecord)
RECORD_NAME(CurrencyRecord)
RECORD_NAME(ExchangeRecord)
RECORD_NAME(CommodityRecord)
RECORD_NAME(ContractRecord)
RECORD_NAME(PositionRecord)
RECORD_NAME(ServerRecord)
RECORD_NAME(OrderRecord)
#undef RECORD_NAME

void SetQty(std::uint32_t* output, std::uint32_t qty) {
    if (output) {
        *output = qty;
    }
}

}  // namespace

void* HostTradeApi::BrokenCopy(const void* record, std::size_t size, std::string_view layout) {
    const auto* bytes = static_cast<const unsigned char*>(record);
    std::vector<unsigned char>& copy = m_copies.emplace_back(bytes, bytes + size);
    UnterminateTexts(*FindLayout(layout), copy.data());
    return copy.data();
}

template <typename Record>
Record* HostTradeApi::Answer(FaultKind fault, Record* record) {
    if (fault == FaultKind::kNone || !record) {
        return record;
    }
    if (fault != FaultKind::kUnterminated) {
        return nullptr;
    }
    auto* copy = static_cast<Record*>(BrokenCopy(record, sizeof(Record), NameOf<Record>()));
    if constexpr (std::is_same_v<Record, UserRecord>) {
        if (copy->group) {
            copy->group = static_cast<GroupRecord*>(
                BrokenCopy(copy->group, sizeof(GroupRecord), NameOf<GroupRecord>()));
        }
    }
    return copy;
}

template <typename Entries>
void HostTradeApi::FillList(Operation operation, IDataContainer* list, const Entries& entries) {
    const FaultKind fault = m_faults.Enter(operation);
    if (!list || fault == FaultKind::kFail || fault == FaultKind::kEmpty) {
        return;
    }
    if (fault == FaultKind::kNull) {
        list->Add(nullptr);
    }
    for (auto* entry : entries) {
        list->Add(fault == FaultKind::kUnterminated ? Answer(fault, &entry->record) : &entry->record);
    }
}

void HostTradeApi::RegisterSpi(ITradeSpi* listener) {
    if (m_faults.Enter(Operation::kRegisterSpi) == FaultKind::kNone) {
        m_listeners.Add(listener);
    }
}

void HostTradeApi::UnregisterSpi(ITradeSpi* listener) {
    m_faults.Enter(Operation::kUnregisterSpi);
    m_listeners.Remove(listener);  // whatever is set to go wrong: the listener will not be there any more
}

void HostTradeApi::ListSignEntries(IDataContainer* list, const char* sign) {
    const FaultKind fault = m_faults.Enter(Operation::kListSignEntries);
    if (!list || fault == FaultKind::kFail || fault == FaultKind::kEmpty) {
        return;
    }
    if (fault == FaultKind::kNull) {
        list->Add(nullptr);
    }
    for (SignRecord& record : m_book.catalogue.signs) {
        if (View(sign).empty() || record.sign.View() == View(sign)) {
            list->Add(&record);
        }
    }
}

ServerRecord* HostTradeApi::GetUserServer(const char* serverKey, UserRecord* user) {
    const FaultKind fault = m_faults.Enter(Operation::kGetUserServer);
    ServerRecord* server =
        m_book.catalogue.FindServer(FieldView(serverKey, decltype(user->serverKey)::kWidth));
    return Answer(fault, user ? server : nullptr);
}

OrderRecord* HostTradeApi::GetOrder(std::uint32_t orderNo) {
    const FaultKind fault = m_faults.Enter(Operation::kGetOrder);
    OrderEntry* order = m_book.ledger.FindOrder(orderNo);
    return Answer(fault, order ? &order->record : nullptr);
}

void HostTradeApi::GetPositions(IDataContainer* list, const char* sign) {
    std::vector<PositionEntry*> rows;
    for (const PositionEntry& row : m_book.ledger.AllPositions().Rows()) {
        if (row.record.openQty > 0 && (View(sign).empty() || row.record.key.sign.View() == View(sign))) {
            rows.push_back(const_cast<PositionEntry*>(&row));
        }
    }
    FillList(Operation::kGetPositions, list, rows);
}

PositionRecord* HostTradeApi::GetPosition(const char* accountNo, const ContractKey* key, char direction,
                                          const char* priceText) {
    const FaultKind fault = m_faults.Enter(Operation::kGetPosition);
    const std::optional<double> price = ReadPriceText(View(priceText));
    if (!accountNo || !key || !price) {
        return nullptr;
    }
    const SingleContractKey leg = m_book.ledger.BookedLeg(FirstLegOf(*key));
    PositionEntry* row = m_book.ledger.AllPositions().Find(
        MakeLineKey(FieldView(accountNo, decltype(PositionRecord::accountNo)::kWidth), leg), direction,
        *price);
    return Answer(fault, row ? &row->record : nullptr);
}

void HostTradeApi::GetPositionQty(const char* accountNo, const SingleContractKey* key, std::uint32_t* longQty,
                                  std::uint32_t* shortQty, std::uint32_t* further1, std::uint32_t* further2) {
    const FaultKind fault = m_faults.Enter(Operation::kGetPositionQty);
    for (std::uint32_t* output : {longQty, shortQty, further1, further2}) {
        SetQty(output, 0);
    }
    if (!accountNo || !key || fault != FaultKind::kNone) {
        return;
    }
    const LineKey line = MakeLineKey(FieldView(accountNo, decltype(PositionRecord::accountNo)::kWidth),
                                     m_book.ledger.BookedLeg(*key));
    SetQty(longQty, m_book.ledger.AllPositions().OpenQty(line, 'B'));
    SetQty(shortQty, m_book.ledger.AllPositions().OpenQty(line, 'S'));
}

void HostTradeApi::GetUsers(IDataContainer* list, const char* sign) {
    FillList(Operation::kGetUsers, list, m_book.catalogue.accountsBySign.Of(View(sign)));
}

UserRecord* HostTradeApi::GetUser(const char* accountNo, const char* sign) {
    const FaultKind fault = m_faults.Enter(Operation::kGetUser);
    return Answer(fault, m_book.catalogue.FindAccount(View(accountNo), View(sign)));
}

void HostTradeApi::GetExchanges(IDataContainer* list, const char* sign) {
    FillList(Operation::kGetExchanges, list, m_book.catalogue.exchangesBySign.Of(View(sign)));
}

ExchangeRecord* HostTradeApi::GetExchange(const void* exchangeKey) {
    const FaultKind fault = m_faults.Enter(Operation::kGetExchange);
    return exchangeKey ? Answer(fault, m_book.catalogue.FindExchange(TidyKeyAt<ExchangeKey>(exchangeKey)))
                       : nullptr;
}

void HostTradeApi::GetCommodities(const void* exchangeKey, IDataContainer* list) {
    static const std::vector<Entry<CommodityRecord>*> none;
    FillList(Operation::kGetCommodities, list,
             exchangeKey ? m_book.catalogue.CommoditiesOf(TidyKeyAt<ExchangeKey>(exchangeKey)) : none);
}

CommodityRecord* HostTradeApi::GetCommodity(const void* commodityKey) {
    const FaultKind fault = m_faults.Enter(Operation::kGetCommodity);
    return commodityKey ? Answer(fault, m_book.catalogue.FindCommodity(TidyKeyAt<CommodityKey>(commodityKey)))
                        : nullptr;
}

void HostTradeApi::GetContracts(const void* commodityKey, IDataContainer* list) {
    static const std::vector<Entry<ContractRecord>*> none;
    FillList(Operation::kGetContracts, list,
             commodityKey ? m_book.catalogue.ContractsOf(TidyKeyAt<CommodityKey>(commodityKey)) : none);
}

ContractRecord* HostTradeApi::GetContract(const ContractKey* key) {
    const FaultKind fault = m_faults.Enter(Operation::kGetContract);
    return key ? Answer(fault, m_book.catalogue.FindContract(TidyKeyAt<ContractKey>(key))) : nullptr;
}

const char* HostTradeApi::Get3MContractNo(const char* sign) {
    switch (m_faults.Enter(Operation::kGet3MContractNo)) {
        case FaultKind::kNull:
            return nullptr;
        case FaultKind::kEmpty:
            return "";
        case FaultKind::kFail:
            return "3M";
        default:
            break;
    }
    const SignRecord* record = m_book.catalogue.FindSign(View(sign));
    return record ? record->threeMonthNo.c_str() : "3M";
}

void HostTradeApi::GetCurrencies(IDataContainer* list, const char* sign) {
    FillList(Operation::kGetCurrencies, list, m_book.catalogue.currenciesBySign.Of(View(sign)));
}

void HostTradeApi::GetUppers(IDataContainer* list, const char* sign) {
    FillList(Operation::kGetUppers, list, m_book.catalogue.uppersBySign.Of(View(sign)));
}

void HostTradeApi::FormatPrice(const void* recordWithKey, double price, char* buffer, int bufferSize,
                               int /*zero*/, char notation) {
    const FaultKind fault = m_faults.Enter(Operation::kFormatPrice);
    if (!buffer || bufferSize < 1 || fault == FaultKind::kFail || fault == FaultKind::kNull) {
        return;
    }
    const auto size = static_cast<std::size_t>(bufferSize);
    if (fault == FaultKind::kUnterminated) {
        std::memset(buffer, '9', size);
        return;
    }
    const CommodityRecord* commodity =
        recordWithKey ? m_book.catalogue.FindCommodity(TidyKeyAt<CommodityKey>(recordWithKey)) : nullptr;
    const std::string text = fault == FaultKind::kEmpty ? std::string()
                             : notation == 'D'          ? PriceText(price, commodity)
                                                        : DecimalText(price, 0);
    std::snprintf(buffer, size, "%s", text.c_str());
}
