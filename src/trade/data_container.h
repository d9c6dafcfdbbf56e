#pragma once

#include "trade/host_interfaces.h"

#include <new>
#include <vector>

// The list that the module hands to the host for one query; made on the stack, entries are not owned.
class CDataContainer final : public IDataContainer {
public:
    std::uint32_t Count() override { return static_cast<std::uint32_t>(m_records.size()); }
    // Past the end it raises std::out_of_range, which the module alone can catch: the caller's error.
    void* At(std::uint32_t index) override { return m_records.at(index); }
    void Clear() override { m_records.clear(); }
    // Without memory the record is dropped: no exception reaches the host, which may be another compiler's.
    void Add(void* record) override {
        try {
            m_records.push_back(record);
        } catch (const std::bad_alloc&) {
        }
    }

private:
    std::vector<void*> m_records;
};
