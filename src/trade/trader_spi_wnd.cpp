#include "trade/trader_spi_wnd.h"

#include "trade/trader_spi_factory.h"

#include <memory>
#include <new>

_TraderSpiWnd::_TraderSpiWnd(ITradeSpi* target, ITradeSpiSwitch* dispatcher)
    : TraderSpi(true), m_target(target), m_dispatcher(dispatcher ? dispatcher : &m_standardDispatcher) {
    Create(nullptr, nullptr, 0, RECT{}, GetDesktopWindow(), 0);
}

// The window goes while the host still knows the listener: what it posts from then on fails. The base
// unregisters.
_TraderSpiWnd::~_TraderSpiWnd() {
    DestroyWindow();
}

bool _TraderSpiWnd::GetNotifyWnd(HWND* window) {
    if (window) {
        *window = GetSafeHwnd();
    }
    return true;
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
    auto window = std::unique_ptr<_TraderSpiWnd>(new (std::nothrow) _TraderSpiWnd(target, dispatcher));
    // A listener without a window would make the host post its events to nowhere.
    return window && window->GetSafeHwnd() ? window.release() : nullptr;
}

void DestroyTraderSpiWnd(_TraderSpiWnd* window) {
    delete window;
}
