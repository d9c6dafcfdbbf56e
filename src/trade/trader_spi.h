#pragma once

#include "trade/trade_spi.h"

#include <cstdint>

// A listener that ignores everything and is called directly. With `registered` it is a listener of the trade
// service from its construction to its destruction; without a trade service it never is.
class TraderSpi : public ITradeSpi {
public:
    explicit TraderSpi(bool registered);
    TraderSpi(const TraderSpi&) = delete;
    TraderSpi& operator=(const TraderSpi&) = delete;

    bool GetNotifyWnd(HWND*) override { return false; }
    void OnTradeNotify1(void*) override {}
    void OnTradeNotify2(std::uint16_t, void*) override {}
    void OnTradeNotify3(void*) override {}
    void OnTradeNotify4(std::uint16_t, void*) override {}
    void OnTradeNotify5(void*) override {}
    void OnTradeNotify6(std::uint16_t, void*) override {}
    void OnTradeNotify7(std::uint16_t, std::int8_t, void*) override {}
    void OnTradeNotify8(void*) override {}
    void OnTradeNotify9(void*) override {}
    void OnTradeNotify10(void*) override {}
    void OnTradeNotify11(void*) override {}
    void OnTradeNotify12(void*) override {}
    void OnTradeNotify13(void*) override {}
    void OnTradeNotify14(void*) override {}
    void OnTradeNotify15(void*) override {}
    void OnTradeNotify16(std::uint16_t, void*) override {}
    void OnTradeNotify17(void*) override {}
    void OnTradeNotify18(void*) override {}
    void OnTradeNotify19(void*) override {}
    void OnTradeNotify20(void*) override {}
    void OnTradeNotify21(void*) override {}
    void OnTradeNotify22(void*) override {}
    void OnTradeNotify23(void*) override {}
    void OnTradeNotify24(void*) override {}
    void OnTradeNotify25(void*) override {}
    void OnTradeNotify26(void*) override {}
    void OnTradeNotify27(void*) override {}
    void OnTradeNotify28(void*) override {}
    void OnTradeNotify29(void*) override {}
    void OnTradeNotify30(void*) override {}
    void OnTradeNotify31(void*) override {}
    void OnTradeNotify32(void*) override {}
    void OnTradeNotify33(void*) override {}
    void OnTradeNotify34(void*) override {}
    void OnTradeNotify35(void*) override {}

    virtual ~TraderSpi();  // behind the callbacks: the host knows the slots before it

private:
    const bool m_registered;
};

// Turns an event back into a call of the listener.
class ITradeSpiSwitch {
public:
    // `packed` is the long parameter of WM_TRADESPI. False when there is no listener.
    virtual bool Dispatch(ITradeSpi* listener, void* data, std::uint32_t packed) = 0;

protected:
    ~ITradeSpiSwitch() = default;
};

// The standard one. Unknown event types call nothing, and with `dropNullData` neither do events without data,
// except those that carry a code of their own.
class TraderSpiSwitch final : public ITradeSpiSwitch {
public:
    explicit TraderSpiSwitch(bool dropNullData) : m_dropNullData(dropNullData) {}
    bool Dispatch(ITradeSpi* listener, void* data, std::uint32_t packed) override;

private:
    const bool m_dropNullData;
};

class _TraderSpiWnd;

// The base of a dialog that listens: the host's events reach the callbacks that it overrides on the thread
// that constructed it, from its construction to its destruction. Events still on their way then are lost.
// Only on Windows.
class TradeSpiEx : public TraderSpi {
public:
    // A null dispatcher means the standard one, which drops events without data.
    explicit TradeSpiEx(ITradeSpiSwitch* dispatcher = nullptr);
    ~TradeSpiEx() override;

private:
    _TraderSpiWnd* m_window;  // owned; null when it could not be made: no events arrive
};
