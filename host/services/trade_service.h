#pragma once

#include "services/event_pump.h"
#include "services/fault_plan.h"
#include "services/journal.h"
#include "services/trade_api.h"

// Takes the requests: applies them to the ledger, writes the journal, reports changed positions.
class HostTradeService final : public ITradeService {
public:
    // `events` may be null: nothing is then reported.
    HostTradeService(Book& book, HostTradeApi& api, FaultPlan& faults, Journal& journal, EventPump* events)
        : m_book(book), m_api(api), m_faults(faults), m_journal(journal), m_events(events) {}

    ITradeApi* GetTradeApi() override;
    int SendOrder(OrderRecord* order) override;
    int DeleteOrder(std::uint32_t orderNo) override;
    int SendFill(FillRecord* fill) override;
    int RemoveFill(const char* fillNo, FillRecord* fill) override;
    int SendExercise(OrderRecord* order) override;

    // Called after each request, with what became of it.
    std::function<void(const Outcome& outcome)> onRequest;
    unsigned StrayCalls() const { return m_strayCalls; }

// clang-format off
#define STRAY(n) \
    void Reserved##n() override { ++m_strayCalls; }
    STRAY(0) STRAY(1) STRAY(3) STRAY(4) STRAY(5) STRAY(6) STRAY(7) STRAY(8) STRAY(9) STRAY(10)
    STRAY(11) STRAY(12) STRAY(13) STRAY(14) STRAY(15) STRAY(16) STRAY(17);
#undef STRAY
    // clang-format on

private:
    // Runs a request through faults, ledger, journal and events. `apply` is only called when nothing is set
    // to go wrong. The results are what the operation returns.
    template <typename Apply>
    int Handle(Operation operation, JournalEntry entry, int success, int failure, Apply apply);

    Book& m_book;
    HostTradeApi& m_api;
    FaultPlan& m_faults;
    Journal& m_journal;
    EventPump* m_events;
    unsigned m_strayCalls = 0;
};
