#pragma once

#include "trade/trader_spi.h"

#include <functional>
#include <string>
#include <vector>

// Keeps what it is called with: "11 data", "2 data code", "7 null code value".
template <typename Base>
class RecordingListener : public Base {
public:
    using Base::Base;
    std::vector<std::string> calls;
    std::function<void()> onCall;

    void OnTradeNotify7(std::uint16_t code, std::int8_t value, void* data) override {
        Note(7, data, code, value);
    }
    // clang-format off
#define PLAIN(n) void OnTradeNotify##n(void* data) override { Note(n, data); }
#define CODED(n) void OnTradeNotify##n(std::uint16_t code, void* data) override { Note(n, data, code); }
    PLAIN(1) CODED(2) PLAIN(3) CODED(4) PLAIN(5) CODED(6) PLAIN(8) PLAIN(9) PLAIN(10) PLAIN(11) PLAIN(12)
    PLAIN(13) PLAIN(14) PLAIN(15) CODED(16) PLAIN(17) PLAIN(18) PLAIN(19) PLAIN(20) PLAIN(21) PLAIN(22)
    PLAIN(23) PLAIN(24) PLAIN(25) PLAIN(26) PLAIN(27) PLAIN(28) PLAIN(29) PLAIN(30) PLAIN(31) PLAIN(32)
    PLAIN(33) PLAIN(34) PLAIN(35)
#undef PLAIN
#undef CODED
        // clang-format on

        private : template <typename... Numbers>
                  void Note(int callback, void* data, Numbers... numbers) {
        std::string text = std::to_string(callback) + (data ? " data" : " null");
        ((text += " " + std::to_string(numbers)), ...);
        calls.push_back(text);
        if (onCall) {
            onCall();
        }
    }
};
