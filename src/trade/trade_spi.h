#pragma once

#include "trade/window_handle.h"

#include <cstdint>

// A listener of the host's trade events. GetNotifyWnd returns true when the events are to be posted to the
// window that it stores (WM_TRADESPI), false when the listener is to be called directly. The data pointers
// are the host's records and are never freed here.
class ITradeSpi {
public:
    virtual bool GetNotifyWnd(HWND* window) = 0;  // slot 0
    virtual void OnTradeNotify1(void* data) = 0;
    virtual void OnTradeNotify2(std::uint16_t code, void* data) = 0;
    virtual void OnTradeNotify3(void* data) = 0;
    virtual void OnTradeNotify4(std::uint16_t code, void* data) = 0;
    virtual void OnTradeNotify5(void* data) = 0;
    virtual void OnTradeNotify6(std::uint16_t code, void* data) = 0;
    virtual void OnTradeNotify7(std::uint16_t code, std::int8_t value, void* data) = 0;
    virtual void OnTradeNotify8(void* data) = 0;
    virtual void OnTradeNotify9(void* data) = 0;
    virtual void OnTradeNotify10(void* data) = 0;
    virtual void OnTradeNotify11(void* data) = 0;  // a changed PositionRecord
    virtual void OnTradeNotify12(void* data) = 0;
    virtual void OnTradeNotify13(void* data) = 0;
    virtual void OnTradeNotify14(void* data) = 0;
    virtual void OnTradeNotify15(void* data) = 0;
    virtual void OnTradeNotify16(std::uint16_t code, void* data) = 0;
    virtual void OnTradeNotify17(void* data) = 0;
    virtual void OnTradeNotify18(void* data) = 0;
    virtual void OnTradeNotify19(void* data) = 0;
    virtual void OnTradeNotify20(void* data) = 0;
    virtual void OnTradeNotify21(void* data) = 0;
    virtual void OnTradeNotify22(void* data) = 0;
    virtual void OnTradeNotify23(void* data) = 0;
    virtual void OnTradeNotify24(void* data) = 0;
    virtual void OnTradeNotify25(void* data) = 0;
    virtual void OnTradeNotify26(void* data) = 0;
    virtual void OnTradeNotify27(void* data) = 0;
    virtual void OnTradeNotify28(void* data) = 0;
    virtual void OnTradeNotify29(void* data) = 0;
    virtual void OnTradeNotify30(void* data) = 0;
    virtual void OnTradeNotify31(void* data) = 0;
    virtual void OnTradeNotify32(void* data) = 0;
    virtual void OnTradeNotify33(void* data) = 0;
    virtual void OnTradeNotify34(void* data) = 0;
    virtual void OnTradeNotify35(void* data) = 0;

protected:
    ~ITradeSpi() = default;
};

// Delivers an event to a listener window: the word parameter is the data pointer, the long parameter packs
// the event type (bits 24 to 31), a signed 8-bit value (bits 16 to 23) and an unsigned 16-bit code (bits 0 to
// 15).
inline constexpr unsigned kWmTradeSpi = 0x2B1B;
inline constexpr int kPositionChangedEvent = 32;  // reaches OnTradeNotify11
