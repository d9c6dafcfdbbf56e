#pragma once

#include "book/book.h"
#include "services/fault_plan.h"
#include "trade/host_interfaces.h"

#include <list>
#include <map>
#include <string>
#include <vector>

// clang-format off
#define STRAY(n) \
    void Reserved##n() override { ++strayCalls; }

class HostQuoteDataCenter final : public IQuoteDataCenter {
public:
    explicit HostQuoteDataCenter(FaultPlan& faults) : m_faults(faults) {}
    void* Slot38() override { return m_faults.Enter(Operation::kSlot38) == FaultKind::kNone ? this : nullptr; }

    unsigned strayCalls = 0;
    STRAY(0) STRAY(1) STRAY(2) STRAY(3) STRAY(4) STRAY(5) STRAY(6) STRAY(7) STRAY(8) STRAY(9)
    STRAY(10) STRAY(11) STRAY(12) STRAY(13) STRAY(14) STRAY(15) STRAY(16) STRAY(17) STRAY(18) STRAY(19)
    STRAY(20) STRAY(21) STRAY(22) STRAY(23) STRAY(24) STRAY(25) STRAY(26) STRAY(27) STRAY(28) STRAY(29)
    STRAY(30) STRAY(31) STRAY(32) STRAY(33) STRAY(34) STRAY(35) STRAY(36) STRAY(37)

private:
    FaultPlan& m_faults;
};

// Answers the trade server configurations of the book. A query returns 0 when it was answered, also with no
// rows, and -1 for an unknown request type.
class HostConfigTable final : public IConfigTable {
public:
    HostConfigTable(Book& book, FaultPlan& faults) : m_book(book), m_faults(faults) {}
    int Query(ConfigQuery* block) override;
    void Release(ConfigQuery* block) override;

    // Answers that were not released yet.
    std::size_t Outstanding() const { return m_answers.size(); }

    unsigned strayCalls = 0;
    STRAY(0) STRAY(1)

private:
    Book& m_book;
    FaultPlan& m_faults;
    std::list<std::vector<ServerConfigRecord>> m_answers;
};

class HostSysConfig final : public ISysConfig {
public:
    HostSysConfig(Book& book, FaultPlan& faults) : m_table(book, faults), m_faults(faults) {}
    IConfigTable* GetConfigTable() override {
        return m_faults.Enter(Operation::kGetConfigTable) == FaultKind::kNone ? &m_table : nullptr;
    }
    HostConfigTable& Table() { return m_table; }

    unsigned strayCalls = 0;
    STRAY(0) STRAY(1) STRAY(2) STRAY(3) STRAY(4) STRAY(5) STRAY(6) STRAY(7) STRAY(8) STRAY(9)
    STRAY(10) STRAY(11) STRAY(12) STRAY(13) STRAY(14) STRAY(15) STRAY(16) STRAY(17) STRAY(18) STRAY(19)
    STRAY(20) STRAY(21) STRAY(22) STRAY(23) STRAY(24) STRAY(25)

private:
    HostConfigTable m_table;
    FaultPlan& m_faults;
};

// The directory of services. A service is found by its exact name and version.
class HostPluginManager final : public IPluginManager {
public:
    explicit HostPluginManager(FaultPlan& faults) : m_faults(faults) {}

    // A null service takes it out of the directory.
    void Offer(const std::string& name, const std::string& version, void* service);
    void* GetPlugin(const char* name, const char* version) override;

    // What was asked for, in order, as "name version".
    const std::vector<std::string>& Asked() const { return m_asked; }

    unsigned strayCalls = 0;
    STRAY(0)

private:
    FaultPlan& m_faults;
    std::map<std::string, void*> m_services;  // by "name version"
    std::vector<std::string> m_asked;
};
#undef STRAY
// clang-format on

// Stands for a service that is fetched and never called: its table holds nothing.
class IdleService {
public:
    virtual void Slot0() {}

protected:
    ~IdleService() = default;
};
class HostIdleService final : public IdleService {};
