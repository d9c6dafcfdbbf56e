#pragma once

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

    void Reserved0() override {} void Reserved1() override {} void Reserved3() override {}
    void Reserved4() override {} void Reserved5() override {} void Reserved6() override {}
    void Reserved7() override {} void Reserved8() override {} void Reserved9() override {}
    void Reserved10() override {} void Reserved11() override {} void Reserved12() override {}
    void Reserved13() override {} void Reserved14() override {} void Reserved15() override {}
    void Reserved16() override {} void Reserved17() override {}

private:
    template <typename Request>
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
