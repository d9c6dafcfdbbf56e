#include "trade/trader_spi_wnd.h"

#include "trade/trader_spi_factory.h"

#include <memory>

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

_TraderSpiWnd* CreateTraderSpiWnd(ITradeSpi* target, ITradeSpiSwitch* dispatcher) {
    return Guarded(
        "creation of the window for events",
        [&]() -> _TraderSpiWnd* {
            auto window = std::make_unique<_TraderSpiWnd>(target, dispatcher);
            return window->GetSafeHwnd() ? window.release() : nullptr;
        },
        static_cast<_TraderSpiWnd*>(nullptr));
}

void DestroyTraderSpiWnd(_TraderSpiWnd* window) {
    delete window;
}
