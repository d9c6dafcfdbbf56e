#include "services/other_services.h"

#include "book/record_fields.h"

int HostConfigTable::Query(ConfigQuery* block) {
    const FaultKind fault = m_faults.Enter(Operation::kQuery);
    if (!block || fault == FaultKind::kFail) {
        return -1;
    }
    block->count = 0;
    block->records = nullptr;
    if (block->requestType != kConfigTradeServers) {
        return -1;
    }
    if (fault == FaultKind::kEmpty) {
        return 0;
    }
    if (fault == FaultKind::kNull) {
        block->count = 1;  // a count without records
        return 0;
    }
    std::vector<ServerConfigRecord> rows;
    for (const Entry<ServerConfigRecord>& config : m_book.catalogue.serverConfigs) {
        rows.push_back(config.record);
        if (fault == FaultKind::kUnterminated) {
            UnterminateTexts(*FindLayout("ServerConfigRecord"), &rows.back());
        }
    }
    if (!rows.empty()) {
        std::vector<ServerConfigRecord>& answer = m_answers.emplace_back(std::move(rows));
        block->count = static_cast<std::uint32_t>(answer.size());
        block->records = answer.data();
    }
    return 0;
}

void HostConfigTable::Release(ConfigQuery* block) {
    m_faults.Enter(Operation::kRelease);
    if (!block) {
        return;
    }
    m_answers.remove_if([&](const auto& answer) { return answer.data() == block->records; });
    block->count = 0;
    block->records = nullptr;
}

void HostPluginManager::Offer(const std::string& name, const std::string& version, void* service) {
    m_services[name + ' ' + version] = service;
}

void* HostPluginManager::GetPlugin(const char* name, const char* version) {
    if (!name || !version) {
        return nullptr;
    }
    const std::string wanted = std::string(name) + ' ' + version;
    m_asked.push_back(wanted);
    const auto found = m_services.find(wanted);
    const bool struck = m_faults.Enter(Operation::kGetPlugin) != FaultKind::kNone;
    return struck || found == m_services.end() ? nullptr : found->second;
}
