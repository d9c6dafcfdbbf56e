#include "probe/event_watch.h"

#include "framework/format_text.h"
#include "probe/host_watch.h"
#include "probe/record_checks.h"

#include <algorithm>
#include <iterator>

namespace {

// The event types that reach a callback.
constexpr int kKnownEvents[] = {2,  3,  4,  5,  7,  8,  14, 15, 16, 25, 27, 28, 29, 31, 32, 33, 34,
                                35, 36, 37, 39, 40, 41, 45, 46, 47, 48, 49, 50, 52, 53, 55, 57, 58};

}  // namespace

BEGIN_MESSAGE_MAP(EventWatch, CWnd)
ON_MESSAGE(kWmTradeSpi, &EventWatch::OnTradeSpi)
END_MESSAGE_MAP()

EventWatch::EventWatch(Findings& findings)
    : TraderSpi(false), m_findings(findings), m_thread(GetCurrentThreadId()) {
    CreateEx(0, nullptr, "", 0, RECT{}, GetDesktopWindow());
    m_window = m_hWnd;
}

EventWatch::~EventWatch() {
    m_window = nullptr;
    DestroyWindow();
}

bool EventWatch::GetNotifyWnd(HWND* window) {
    *window = m_window;
    return true;
}

void EventWatch::OnDirect() {
    ++(GetCurrentThreadId() == m_thread ? m_direct : m_directElsewhere);
}

void EventWatch::NoteDirectCalls() {
    if (const unsigned calls = m_direct.exchange(0)) {
        m_findings.Add(Kind::kDirectEvent, "ITradeSpi",
                       FormatText("%u calls, though the events are to be posted", calls));
    }
    if (const unsigned calls = m_directElsewhere.exchange(0)) {
        m_findings.Add(Kind::kEventOnOtherThread, "ITradeSpi", FormatText("%u calls", calls));
    }
}

LRESULT EventWatch::OnTradeSpi(WPARAM data, LPARAM packed) {
    const auto type = static_cast<int>(static_cast<std::uint32_t>(packed) >> 24);
    const void* record = reinterpret_cast<const void*>(data);
    if (std::find(std::begin(kKnownEvents), std::end(kKnownEvents), type) == std::end(kKnownEvents)) {
        m_findings.Add(Kind::kUnknownEvent, "WM_TRADESPI", FormatText("event type %d", type));
    } else if (type == kPositionChangedEvent) {
        ++m_positions;
        if (!record || !Readable(record, sizeof(PositionRecord))) {
            m_findings.Add(Kind::kBadEventRecord, "WM_TRADESPI",
                           "a changed position without a readable record");
        } else {
            CheckPosition(m_findings, *static_cast<const PositionRecord*>(record), "WM_TRADESPI");
        }
    }
    return 1;
}
