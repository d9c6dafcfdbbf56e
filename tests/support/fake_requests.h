#pragma once

#include "tests/trade/reserved.h"
#include "trade/host_interfaces.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

// A trade service that keeps every request. Results are scripted; without a script a request succeeds.
class FakeTradeService : public ITradeService {
public:
    ITradeApi* api = nullptr;
    std::deque<int> results;
    std::vector<OrderRecord> orders;
    std::vector<OrderRecord> exercises;
    std::vector<std::uint32_t> deletedOrders;
    std::vector<FillRecord> fills;
    std::vector<FillRecord> removedFills;
    std::vector<std::string> removedFillNos;  // the first argument of each removal
    bool removedByOwnField = true;            // that argument was always the record's own field
    std::function<void()> whileSending;

    ITradeApi* GetTradeApi() override { return api; }
    int SendOrder(OrderRecord* order) override { return Keep(orders, *order, 0); }
    int DeleteOrder(std::uint32_t orderNo) override { return Keep(deletedOrders, orderNo, 1); }
    int SendFill(FillRecord* fill) override { return Keep(fills, *fill, 0); }
    int RemoveFill(const char* fillNo, FillRecord* fill) override {
        removedFillNos.push_back(fillNo);
        removedByOwnField = removedByOwnField && fillNo == fill->fillNo.chars;
        return Keep(removedFills, *fill, 0);
    }
    int SendExercise(OrderRecord* order) override { return Keep(exercises, *order, 0); }

    // clang-format off
    RESERVED(0) RESERVED(1) RESERVED(3) RESERVED(4) RESERVED(5) RESERVED(6) RESERVED(7) RESERVED(8)
    RESERVED(9) RESERVED(10) RESERVED(11) RESERVED(12) RESERVED(13) RESERVED(14) RESERVED(15) RESERVED(16)
    RESERVED(17)
        // clang-format on

        private : template <typename Request>
                  int Keep(std::vector<Request>& requests, const Request& request, int success) {
        requests.push_back(request);
        if (whileSending) {
            whileSending();
        }
        if (results.empty()) {
            return success;
        }
        const int result = results.front();
        results.pop_front();
        return result;
    }
};
