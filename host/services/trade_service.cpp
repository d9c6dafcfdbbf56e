#include "services/trade_service.h"

#include "book/host_text.h"

#include <cstring>

namespace {

constexpr int kSent = 0;
constexpr int kFailed = -1;

JournalEntry EntryOf(const RecordLayout& layout, const void* record) {
    JournalEntry entry;
    entry.layout = &layout;
    entry.record = record;
    return entry;
}

}  // namespace

template <typename Apply>
int HostTradeService::Handle(Operation operation, JournalEntry entry, int success, int failure, Apply apply) {
    const FaultKind fault = m_faults.Enter(operation);
    const Outcome outcome = fault == FaultKind::kNone ? apply() : Refused("set to fail");
    entry.operation = OperationName(operation);
    entry.result = outcome.Accepted() ? success : failure;
    entry.note = outcome.refusal;
    entry.changes = outcome.changes;
    m_journal.Write(entry);
    if (m_events) {
        for (const PositionEntry* row : outcome.positions) {
            m_events->PositionChanged(row->record);
        }
    }
    if (onRequest) {
        onRequest(outcome);
    }
    return entry.result;
}

ITradeApi* HostTradeService::GetTradeApi() {
    return m_faults.Enter(Operation::kGetTradeApi) == FaultKind::kNone ? &m_api : nullptr;
}

int HostTradeService::SendOrder(OrderRecord* order) {
    return Handle(Operation::kSendOrder, EntryOf(OrderLayout(), order), kSent, kFailed,
                  [&] { return order ? m_book.ledger.SendOrder(*order) : Refused("no record"); });
}

// The one request whose result is the other way round: nonzero means that it was done.
int HostTradeService::DeleteOrder(std::uint32_t orderNo) {
    JournalEntry entry;
    entry.arguments["orderNo"] = orderNo;
    return Handle(Operation::kDeleteOrder, entry, 1, 0, [&] { return m_book.ledger.DeleteOrder(orderNo); });
}

int HostTradeService::SendFill(FillRecord* fill) {
    return Handle(Operation::kSendFill, EntryOf(FillLayout(), fill), kSent, kFailed,
                  [&] { return fill ? m_book.ledger.SendFill(*fill) : Refused("no record"); });
}

int HostTradeService::RemoveFill(const char* fillNo, FillRecord* fill) {
    JournalEntry entry = EntryOf(FillLayout(), fill);
    const std::string number =
        fillNo ? std::string(fillNo, strnlen(fillNo, decltype(fill->fillNo)::kWidth)) : "";
    entry.arguments["fillNoArgument"] = Utf8FromAnsi(number);
    return Handle(Operation::kRemoveFill, entry, kSent, kFailed, [&] {
        if (fill && fill->fillNo.View() != number) {
            return Refused("the fill number in the record is another");
        }
        return m_book.ledger.RemoveFill(number, fill ? fill->accountNo.View() : std::string_view());
    });
}

int HostTradeService::SendExercise(OrderRecord* order) {
    return Handle(Operation::kSendExercise, EntryOf(OrderLayout(), order), kSent, kFailed,
                  [&] { return order ? m_book.ledger.SendExercise(*order) : Refused("no record"); });
}
