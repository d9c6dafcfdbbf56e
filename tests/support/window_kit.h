#pragma once

#include "trade/plugin_interface.h"

#include <windows.h>

#include <functional>
#include <string>

// A plain top-level window of the test, the parent of what is tested.
class HostWindow {
public:
    explicit HostWindow(RECT place = {100, 100, 900, 700});
    ~HostWindow() { Destroy(); }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    HWND Get() const { return m_window; }
    void Destroy();

private:
    HWND m_window;
};

// The message loop of a host: a message is offered first, and dispatched when nobody handled it. Nothing ever
// sleeps: waiting ends with the condition or the time limit.
class HostLoop {
public:
    using Offer = std::function<bool(const MSG&)>;

    HostLoop() = default;
    explicit HostLoop(Offer offer) : m_offer(std::move(offer)) {}
    // Offers every message to the dialog, until its window is gone.
    explicit HostLoop(IEmendixOper* dialog);

    // Handles what is queued. A quit is kept: see QuitSeen.
    void PumpUntilIdle();
    // False when the time ran out first.
    bool PumpUntil(const std::function<bool()>& condition, unsigned milliseconds = 5000);
    bool QuitSeen() const { return m_quitSeen; }

    // Posted input: the loop is pumped until idle after each call.

    // Presses and releases a key in the window that has the focus.
    void Key(unsigned virtualKey);
    // Types text into a window, character by character.
    void Type(HWND window, const std::string& text);
    // Presses and releases the left button in the middle of a window, or at a point of its client area.
    void Click(HWND window);
    void ClickAt(HWND window, POINT point);

    // Real input, for a shown window in the foreground.

    void RealClick(HWND window);

private:
    void Handle(MSG& message);

    Offer m_offer;
    bool m_quitSeen = false;
};
