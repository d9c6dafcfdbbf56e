#include "trade/trader_spi.h"

#include "trade/fake_trade.h"
#include "trade/host_services.h"
#include "trade/recording_listener.h"

#include <gtest/gtest.h>

#include <map>

namespace {

// Event type, callback, and what follows the data; '-' drops null data on demand, '!' always.
struct Row {
    int callback;
    char nullData;
    const char* numbers;  // for code 5, value -1
};
const std::map<int, Row> kExpected = {
    {2, {1, '-', ""}},   {3, {2, '+', " 5"}},    {4, {3, '-', ""}},     {5, {4, '+', " 5"}},
    {7, {6, '+', " 5"}}, {8, {7, '+', " 5 -1"}}, {14, {29, '-', ""}},   {15, {30, '-', ""}},
    {16, {31, '-', ""}}, {25, {17, '-', ""}},    {27, {24, '-', ""}},   {28, {8, '-', ""}},
    {29, {9, '-', ""}},  {31, {10, '-', ""}},    {32, {11, '-', ""}},   {33, {12, '-', ""}},
    {34, {13, '-', ""}}, {35, {14, '-', ""}},    {36, {15, '-', ""}},   {37, {23, '-', ""}},
    {39, {26, '-', ""}}, {40, {25, '-', ""}},    {41, {16, '+', " 5"}}, {45, {19, '-', ""}},
    {46, {20, '-', ""}}, {47, {21, '-', ""}},    {48, {32, '-', ""}},   {49, {18, '!', ""}},
    {50, {22, '-', ""}}, {52, {27, '-', ""}},    {53, {28, '-', ""}},   {55, {33, '-', ""}},
    {57, {34, '-', ""}}, {58, {35, '-', ""}},
};

TEST(TraderSpiSwitch, CallsWhatTheTypeSaysAndNothingElse) {
    int record = 0;
    for (unsigned type = 0; type < 256; ++type) {
        for (const bool dropNullData : {false, true}) {
            for (void* data : {static_cast<void*>(&record), static_cast<void*>(nullptr)}) {
                RecordingListener<TraderSpi> listener(false);
                EXPECT_TRUE(TraderSpiSwitch(dropNullData).Dispatch(&listener, data, type << 24 | 0x00FF0005));
                std::vector<std::string> expected;
                if (const auto row = kExpected.find(static_cast<int>(type)); row != kExpected.end()) {
                    const auto& [callback, nullData, numbers] = row->second;
                    if (data || nullData == '+' || (nullData == '-' && !dropNullData)) {
                        expected = {std::to_string(callback) + (data ? " data" : " null") + numbers};
                    }
                }
                EXPECT_EQ(listener.calls, expected) << "type " << type;
            }
        }
    }
    EXPECT_FALSE(TraderSpiSwitch(false).Dispatch(nullptr, &record, 32u << 24));
}

TEST(TraderSpiSwitch, CodesAreUnsignedAndValuesSigned) {
    RecordingListener<TraderSpi> listener(false);
    TraderSpiSwitch(true).Dispatch(&listener, nullptr, 0x087FFFFF);
    TraderSpiSwitch(true).Dispatch(&listener, nullptr, 0x08808000);
    EXPECT_EQ(listener.calls, (std::vector<std::string>{"7 null 65535 127", "7 null 32768 -128"}));
}

TEST(TraderSpi, IsAListenerFromItsConstructionToItsDestruction) {
    FakeTradeApi api;
    g_pTradeApi = &api;
    {
        TraderSpi listener(true);
        EXPECT_EQ(api.listeners, std::vector<ITradeSpi*>{&listener});
        HWND window = nullptr;
        EXPECT_FALSE(listener.GetNotifyWnd(&window));
        const TraderSpi silent(false);
        EXPECT_EQ(api.listeners.size(), 1u);
    }
    EXPECT_TRUE(api.listeners.empty());
    g_pTradeApi = nullptr;
    const TraderSpi listener(true);
    EXPECT_TRUE(api.listeners.empty());
}

}  // namespace
