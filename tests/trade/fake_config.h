#pragma once

#include "tests/trade/reserved.h"
#include "trade/host_interfaces.h"

#include <vector>

// A configuration service that is its own table of trade servers.
class FakeConfig : public ISysConfig, public IConfigTable {
public:
    std::vector<ServerConfigRecord> configs;
    std::uint32_t count = 0;
    bool hasTable = true;
    bool hasRecords = true;
    int released = 0;

    IConfigTable* GetConfigTable() override { return hasTable ? this : nullptr; }
    int Query(ConfigQuery* block) override {
        if (block->requestType == 0x40000) {
            block->count = count;
            block->records = hasRecords ? configs.data() : nullptr;
        }
        return 0;
    }
    void Release(ConfigQuery*) override { ++released; }
    // clang-format off
    RESERVED(0) RESERVED(1) RESERVED(2) RESERVED(3) RESERVED(4) RESERVED(5) RESERVED(6) RESERVED(7)
    RESERVED(8) RESERVED(9) RESERVED(10) RESERVED(11) RESERVED(12) RESERVED(13) RESERVED(14) RESERVED(15)
    RESERVED(16) RESERVED(17) RESERVED(18) RESERVED(19) RESERVED(20) RESERVED(21) RESERVED(22) RESERVED(23)
    RESERVED(24) RESERVED(25)
    // clang-format on
};
