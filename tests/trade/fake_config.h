#pragma once

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
    void Reserved0() override {} void Reserved1() override {} void Reserved2() override {}
    void Reserved3() override {} void Reserved4() override {} void Reserved5() override {}
    void Reserved6() override {} void Reserved7() override {} void Reserved8() override {}
    void Reserved9() override {} void Reserved10() override {} void Reserved11() override {}
    void Reserved12() override {} void Reserved13() override {} void Reserved14() override {}
    void Reserved15() override {} void Reserved16() override {} void Reserved17() override {}
    void Reserved18() override {} void Reserved19() override {} void Reserved20() override {}
    void Reserved21() override {} void Reserved22() override {} void Reserved23() override {}
    void Reserved24() override {} void Reserved25() override {}
    // clang-format on
};
