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

    void OnTradeNotify1(void* data) override { Note(1, data); }
    void OnTradeNotify2(std::uint16_t code, void* data) override { Note(2, data, code); }
    void OnTradeNotify3(void* data) override { Note(3, data); }
    void OnTradeNotify4(std::uint16_t code, void* data) override { Note(4, data, code); }
    void OnTradeNotify5(void* data) override { Note(5, data); }
    void OnTradeNotify6(std::uint16_t code, void* data) override { Note(6, data, code); }
    void OnTradeNotify7(std::uint16_t code, std::int8_t value, void* data) override {
        Note(7, data, code, value);
    }
    void OnTradeNotify8(void* data) override { Note(8, data); }
    void OnTradeNotify9(void* data) override { Note(9, data); }
    void OnTradeNotify10(void* data) override { Note(10, data); }
    void OnTradeNotify11(void* data) override { Note(11, data); }
    void OnTradeNotify12(void* data) override { Note(12, data); }
    void OnTradeNotify13(void* data) override { Note(13, data); }
    void OnTradeNotify14(void* data) override { Note(14, data); }
    void OnTradeNotify15(void* data) override { Note(15, data); }
    void OnTradeNotify16(std::uint16_t code, void* data) override { Note(16, data, code); }
    void OnTradeNotify17(void* data) override { Note(17, data); }
    void OnTradeNotify18(void* data) override { Note(18, data); }
    void OnTradeNotify19(void* data) override { Note(19, data); }
    void OnTradeNotify20(void* data) override { Note(20, data); }
    void OnTradeNotify21(void* data) override { Note(21, data); }
    void OnTradeNotify22(void* data) override { Note(22, data); }
    void OnTradeNotify23(void* data) override { Note(23, data); }
    void OnTradeNotify24(void* data) override { Note(24, data); }
    void OnTradeNotify25(void* data) override { Note(25, data); }
    void OnTradeNotify26(void* data) override { Note(26, data); }
    void OnTradeNotify27(void* data) override { Note(27, data); }
    void OnTradeNotify28(void* data) override { Note(28, data); }
    void OnTradeNotify29(void* data) override { Note(29, data); }
    void OnTradeNotify30(void* data) override { Note(30, data); }
    void OnTradeNotify31(void* data) override { Note(31, data); }
    void OnTradeNotify32(void* data) override { Note(32, data); }
    void OnTradeNotify33(void* data) override { Note(33, data); }
    void OnTradeNotify34(void* data) override { Note(34, data); }
    void OnTradeNotify35(void* data) override { Note(35, data); }

private:
    template <typename... Numbers>
    void Note(int callback, void* data, Numbers... numbers) {
        std::string text = std::to_string(callback) + (data ? " data" : " null");
        ((text += " " + std::to_string(numbers)), ...);
        calls.push_back(text);
        if (onCall) {
            onCall();
        }
    }
};
