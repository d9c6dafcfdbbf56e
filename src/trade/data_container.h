#pragma once

#include "trade/host_interfaces.h"

#include <vector>

// The list that the module hands to the host for one query; made on the stack, entries are not owned.
class CDataContainer final : public IDataContainer {
public:
    std::uint32_t Count() override { return static_cast<std::uint32_t>(m_records.size()); }
    void* At(std::uint32_t index) override { return m_records.at(index); }  // std::out_of_range past the end
    void Clear() override { m_records.clear(); }
    void Add(void* record) override { m_records.push_back(record); }

private:
    std::vector<void*> m_records;
};
