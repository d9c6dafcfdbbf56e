#include "framework/guard.h"
#include "framework/wnd.h"
#include "trade/trader_spi.h"

#include <atomic>
#include <memory>

// The hidden window that receives a listener's events on the thread that made it. The object is the listener
// that the host knows, and outlives its window at both ends: it is registered before the window exists, and
// still is when the window has been destroyed. There it asks to be called directly and ignores the call, so
// that an event of that moment is lost and posts to no window, which would be the queue of the posting
// thread.
class _TraderSpiWnd final : public CWnd, public TraderSpi {
public:
    _TraderSpiWnd(ITradeSpi* target, ITradeSpiSwitch* dispatcher);
    ~_TraderSpiWnd() override;

    // The host posts its events to the window while there is one; may be asked from any thread, also while
    // the object is being constructed. Without a window the handle is null and the answer false.
    bool GetNotifyWnd(HWND* window) override;

    // A host that calls directly reaches the target at once, on its own thread.
    void OnTradeNotify1(void* data) override { Forward(&ITradeSpi::OnTradeNotify1, data); }
    void OnTradeNotify2(std::uint16_t code, void* data) override {
        Forward(&ITradeSpi::OnTradeNotify2, code, data);
    }
    void OnTradeNotify3(void* data) override { Forward(&ITradeSpi::OnTradeNotify3, data); }
    void OnTradeNotify4(std::uint16_t code, void* data) override {
        Forward(&ITradeSpi::OnTradeNotify4, code, data);
    }
    void OnTradeNotify5(void* data) override { Forward(&ITradeSpi::OnTradeNotify5, data); }
    void OnTradeNotify6(std::uint16_t code, void* data) override {
        Forward(&ITradeSpi::OnTradeNotify6, code, data);
    }
    void OnTradeNotify7(std::uint16_t code, std::int8_t value, void* data) override {
        Forward(&ITradeSpi::OnTradeNotify7, code, value, data);
    }
    void OnTradeNotify8(void* data) override { Forward(&ITradeSpi::OnTradeNotify8, data); }
    void OnTradeNotify9(void* data) override { Forward(&ITradeSpi::OnTradeNotify9, data); }
    void OnTradeNotify10(void* data) override { Forward(&ITradeSpi::OnTradeNotify10, data); }
    void OnTradeNotify11(void* data) override { Forward(&ITradeSpi::OnTradeNotify11, data); }
    void OnTradeNotify12(void* data) override { Forward(&ITradeSpi::OnTradeNotify12, data); }
    void OnTradeNotify13(void* data) override { Forward(&ITradeSpi::OnTradeNotify13, data); }
    void OnTradeNotify14(void* data) override { Forward(&ITradeSpi::OnTradeNotify14, data); }
    void OnTradeNotify15(void* data) override { Forward(&ITradeSpi::OnTradeNotify15, data); }
    void OnTradeNotify16(std::uint16_t code, void* data) override {
        Forward(&ITradeSpi::OnTradeNotify16, code, data);
    }
    void OnTradeNotify17(void* data) override { Forward(&ITradeSpi::OnTradeNotify17, data); }
    void OnTradeNotify18(void* data) override { Forward(&ITradeSpi::OnTradeNotify18, data); }
    void OnTradeNotify19(void* data) override { Forward(&ITradeSpi::OnTradeNotify19, data); }
    void OnTradeNotify20(void* data) override { Forward(&ITradeSpi::OnTradeNotify20, data); }
    void OnTradeNotify21(void* data) override { Forward(&ITradeSpi::OnTradeNotify21, data); }
    void OnTradeNotify22(void* data) override { Forward(&ITradeSpi::OnTradeNotify22, data); }
    void OnTradeNotify23(void* data) override { Forward(&ITradeSpi::OnTradeNotify23, data); }
    void OnTradeNotify24(void* data) override { Forward(&ITradeSpi::OnTradeNotify24, data); }
    void OnTradeNotify25(void* data) override { Forward(&ITradeSpi::OnTradeNotify25, data); }
    void OnTradeNotify26(void* data) override { Forward(&ITradeSpi::OnTradeNotify26, data); }
    void OnTradeNotify27(void* data) override { Forward(&ITradeSpi::OnTradeNotify27, data); }
    void OnTradeNotify28(void* data) override { Forward(&ITradeSpi::OnTradeNotify28, data); }
    void OnTradeNotify29(void* data) override { Forward(&ITradeSpi::OnTradeNotify29, data); }
    void OnTradeNotify30(void* data) override { Forward(&ITradeSpi::OnTradeNotify30, data); }
    void OnTradeNotify31(void* data) override { Forward(&ITradeSpi::OnTradeNotify31, data); }
    void OnTradeNotify32(void* data) override { Forward(&ITradeSpi::OnTradeNotify32, data); }
    void OnTradeNotify33(void* data) override { Forward(&ITradeSpi::OnTradeNotify33, data); }
    void OnTradeNotify34(void* data) override { Forward(&ITradeSpi::OnTradeNotify34, data); }
    void OnTradeNotify35(void* data) override { Forward(&ITradeSpi::OnTradeNotify35, data); }

private:
    template <typename... Parameters, typename... Arguments>
    void Forward(void (ITradeSpi::*callback)(Parameters...), Arguments... arguments) {
        if (m_target && m_window) {
            Guarded("an event that the host calls directly", [&] { (m_target->*callback)(arguments...); });
        }
    }
    LRESULT OnTradeSpi(WPARAM data, LPARAM packed);

    DECLARE_MESSAGE_MAP()

    ITradeSpi* const m_target;
    std::atomic<HWND> m_window = nullptr;  // while events can be posted to it
    TraderSpiSwitch m_standardDispatcher{true};
    ITradeSpiSwitch* const m_dispatcher;
};

_TraderSpiWnd::_TraderSpiWnd(ITradeSpi* target, ITradeSpiSwitch* dispatcher)
    : TraderSpi(true), m_target(target), m_dispatcher(dispatcher ? dispatcher : &m_standardDispatcher) {
    if (Create(nullptr, nullptr, 0, RECT{}, GetDesktopWindow(), 0)) {
        m_window = m_hWnd;
    }
}

// The window goes while the host still knows the listener. The base unregisters.
_TraderSpiWnd::~_TraderSpiWnd() {
    m_window = nullptr;
    DestroyWindow();
}

bool _TraderSpiWnd::GetNotifyWnd(HWND* window) {
    const HWND current = m_window;
    if (window) {
        *window = current;
    }
    return current != nullptr;
}

// The callback may destroy the dialog and with it this window, so nothing of it is touched afterwards.
LRESULT _TraderSpiWnd::OnTradeSpi(WPARAM data, LPARAM packed) {
    return m_dispatcher->Dispatch(m_target, reinterpret_cast<void*>(data),
                                  static_cast<std::uint32_t>(packed));
}

BEGIN_MESSAGE_MAP(_TraderSpiWnd, CWnd)
ON_MESSAGE(kWmTradeSpi, &_TraderSpiWnd::OnTradeSpi)
END_MESSAGE_MAP()

// Null when the window could not be made.
static _TraderSpiWnd* Create(ITradeSpi* target, ITradeSpiSwitch* dispatcher) {
    return Guarded(
        "creation of the window for events",
        [&]() -> _TraderSpiWnd* {
            auto window = std::make_unique<_TraderSpiWnd>(target, dispatcher);
            return window->GetSafeHwnd() ? window.release() : nullptr;
        },
        static_cast<_TraderSpiWnd*>(nullptr));
}

TradeSpiEx::TradeSpiEx(ITradeSpiSwitch* dispatcher) : TraderSpi(false), m_window(Create(this, dispatcher)) {}

TradeSpiEx::~TradeSpiEx() {
    delete m_window;
}
