#include "trade/trader_spi.h"

#include "trade/host_services.h"

#include <variant>

TraderSpi::TraderSpi(bool registered) : m_registered(registered) {
    if (m_registered && g_pTradeApi) {
        g_pTradeApi->RegisterSpi(this);
    }
}

TraderSpi::~TraderSpi() {
    if (m_registered && g_pTradeApi) {
        g_pTradeApi->UnregisterSpi(this);
    }
}

namespace {

// When an event without data is delivered.
enum NullData { kDroppable, kAlways, kNeverNull };

using DataCallback = void (ITradeSpi::*)(void*);
using CodeCallback = void (ITradeSpi::*)(std::uint16_t, void*);
using ValueCallback = void (ITradeSpi::*)(std::uint16_t, std::int8_t, void*);

struct EventRow {
    int type;
    NullData nullData;
    std::variant<DataCallback, CodeCallback, ValueCallback> callback;
};

// OnTradeNotify5 has no event: only a direct call reaches it.
constexpr EventRow kEvents[] = {
    {2, kDroppable, &ITradeSpi::OnTradeNotify1},   {3, kAlways, &ITradeSpi::OnTradeNotify2},
    {4, kDroppable, &ITradeSpi::OnTradeNotify3},   {5, kAlways, &ITradeSpi::OnTradeNotify4},
    {7, kAlways, &ITradeSpi::OnTradeNotify6},      {8, kAlways, &ITradeSpi::OnTradeNotify7},
    {14, kDroppable, &ITradeSpi::OnTradeNotify29}, {15, kDroppable, &ITradeSpi::OnTradeNotify30},
    {16, kDroppable, &ITradeSpi::OnTradeNotify31}, {25, kDroppable, &ITradeSpi::OnTradeNotify17},
    {27, kDroppable, &ITradeSpi::OnTradeNotify24}, {28, kDroppable, &ITradeSpi::OnTradeNotify8},
    {29, kDroppable, &ITradeSpi::OnTradeNotify9},  {31, kDroppable, &ITradeSpi::OnTradeNotify10},
    {32, kDroppable, &ITradeSpi::OnTradeNotify11}, {33, kDroppable, &ITradeSpi::OnTradeNotify12},
    {34, kDroppable, &ITradeSpi::OnTradeNotify13}, {35, kDroppable, &ITradeSpi::OnTradeNotify14},
    {36, kDroppable, &ITradeSpi::OnTradeNotify15}, {37, kDroppable, &ITradeSpi::OnTradeNotify23},
    {39, kDroppable, &ITradeSpi::OnTradeNotify26}, {40, kDroppable, &ITradeSpi::OnTradeNotify25},
    {41, kAlways, &ITradeSpi::OnTradeNotify16},    {45, kDroppable, &ITradeSpi::OnTradeNotify19},
    {46, kDroppable, &ITradeSpi::OnTradeNotify20}, {47, kDroppable, &ITradeSpi::OnTradeNotify21},
    {48, kDroppable, &ITradeSpi::OnTradeNotify32}, {49, kNeverNull, &ITradeSpi::OnTradeNotify18},
    {50, kDroppable, &ITradeSpi::OnTradeNotify22}, {52, kDroppable, &ITradeSpi::OnTradeNotify27},
    {53, kDroppable, &ITradeSpi::OnTradeNotify28}, {55, kDroppable, &ITradeSpi::OnTradeNotify33},
    {57, kDroppable, &ITradeSpi::OnTradeNotify34}, {58, kDroppable, &ITradeSpi::OnTradeNotify35},
};

const EventRow* FindEvent(int type) {
    for (const EventRow& row : kEvents) {
        if (row.type == type) {
            return &row;
        }
    }
    return nullptr;
}

struct Event {
    ITradeSpi& listener;
    std::uint16_t code;
    std::int8_t value;
    void* data;

    void operator()(DataCallback callback) const { (listener.*callback)(data); }
    void operator()(CodeCallback callback) const { (listener.*callback)(code, data); }
    void operator()(ValueCallback callback) const { (listener.*callback)(code, value, data); }
};

}  // namespace

bool TraderSpiSwitch::Dispatch(ITradeSpi* listener, void* data, std::uint32_t packed) {
    if (!listener) {
        return false;
    }
    // The type is signed: from 128 on it is below every known one.
    const EventRow* row = FindEvent(static_cast<std::int8_t>(packed >> 24));
    if (!row) {
        return true;
    }
    const bool takesNull = row->nullData == kAlways || (row->nullData == kDroppable && !m_dropNullData);
    if (data || takesNull) {
        std::visit(Event{*listener, static_cast<std::uint16_t>(packed),
                         static_cast<std::int8_t>(packed >> 16), data},
                   row->callback);
    }
    return true;
}
