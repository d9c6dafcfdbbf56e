#pragma once

#include "framework/wnd.h"
#include "probe/findings.h"
#include "trade/trader_spi.h"

#include <atomic>

// A listener of the terminal's events with a window of its own, as a dialog has one, that judges what
// arrives. It asks for posted events, so every direct call is a finding.
class EventWatch final : public CWnd, public TraderSpi {
public:
    explicit EventWatch(Findings& findings);
    ~EventWatch() override;

    bool GetNotifyWnd(HWND* window) override;
    // Notes the direct calls so far, which may come on any thread.
    void NoteDirectCalls();
    unsigned Positions() const { return m_positions; }  // changed positions that arrived

    // clang-format off
#define DIRECT(n) void OnTradeNotify##n(void*) override { OnDirect(); }
#define DIRECT_CODE(n) void OnTradeNotify##n(std::uint16_t, void*) override { OnDirect(); }
    DIRECT(1) DIRECT_CODE(2) DIRECT(3) DIRECT_CODE(4) DIRECT(5) DIRECT_CODE(6)
    void OnTradeNotify7(std::uint16_t, std::int8_t, void*) override { OnDirect(); }
    DIRECT(8) DIRECT(9) DIRECT(10) DIRECT(11) DIRECT(12) DIRECT(13) DIRECT(14) DIRECT(15) DIRECT_CODE(16)
    DIRECT(17) DIRECT(18) DIRECT(19) DIRECT(20) DIRECT(21) DIRECT(22) DIRECT(23) DIRECT(24) DIRECT(25)
    DIRECT(26) DIRECT(27) DIRECT(28) DIRECT(29) DIRECT(30) DIRECT(31) DIRECT(32) DIRECT(33) DIRECT(34)
    DIRECT(35)
#undef DIRECT
#undef DIRECT_CODE
        // clang-format on

        private : void OnDirect();
    LRESULT OnTradeSpi(WPARAM data, LPARAM packed);

    DECLARE_MESSAGE_MAP()

    Findings& m_findings;
    const DWORD m_thread;
    std::atomic<HWND> m_window{nullptr};
    std::atomic<unsigned> m_direct{0};
    std::atomic<unsigned> m_directElsewhere{0};
    unsigned m_positions = 0;
};
