#include "services/fault_plan.h"

#include <charconv>
#include <iterator>
#include <stdexcept>

namespace {

constexpr std::string_view kNames[] = {
#define X(name) #name,
    HOST_OPERATIONS(X)
#undef X
};

struct KindName {
    std::string_view name;
    FaultKind kind;
};
constexpr KindName kKinds[] = {
    {"fail", FaultKind::kFail},   {"null", FaultKind::kNull},
    {"empty", FaultKind::kEmpty}, {"unterminated", FaultKind::kUnterminated},
    {"slow", FaultKind::kSlow},   {"destroy-parent", FaultKind::kDestroyParent},
};

std::vector<std::string_view> Split(std::string_view text) {
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const std::size_t end = text.find(' ');
        if (end != 0) {
            parts.push_back(text.substr(0, end));
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return parts;
}

}  // namespace

std::string_view OperationName(Operation operation) {
    return kNames[static_cast<std::size_t>(operation)];
}

void FaultPlan::Set(const Fault& fault) {
    m_faults.push_back({fault, Calls(fault.operation)});
}

void FaultPlan::Set(std::string_view text) {
    const std::vector<std::string_view> parts = Split(text);
    const auto refuse = [&](const std::string& reason) {
        throw std::invalid_argument("fault '" + std::string(text) + "': " + reason);
    };
    if (parts.size() < 2) {
        refuse("an operation and a kind are needed");
    }
    Fault fault{};
    fault.fromCall = 1;
    fault.operation = Operation::kCount;
    for (std::size_t i = 0; i < std::size(kNames); ++i) {
        if (kNames[i] == parts[0]) {
            fault.operation = static_cast<Operation>(i);
        }
    }
    for (const KindName& kind : kKinds) {
        if (kind.name == parts[1]) {
            fault.kind = kind.kind;
        }
    }
    if (fault.operation == Operation::kCount) {
        refuse("no operation '" + std::string(parts[0]) + "'");
    }
    if (fault.kind == FaultKind::kNone) {
        refuse("no kind '" + std::string(parts[1]) + "'");
    }
    std::size_t next = 2;
    const auto number = [&](unsigned least) {
        unsigned value = 0;
        if (next >= parts.size()) {
            refuse("a number is missing at the end");
        }
        const std::string_view part = parts[next++];
        const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), value);
        if (error != std::errc() || end != part.data() + part.size() || value < least) {
            refuse("'" + std::string(part) + "' is no number of " + std::to_string(least) + " or more");
        }
        return value;
    };
    if (fault.kind == FaultKind::kSlow) {
        fault.milliseconds = number(1);
    }
    while (next < parts.size()) {
        const std::string_view word = parts[next++];
        if (word == "at") {
            fault.fromCall = number(1);
        } else if (word == "for") {
            fault.calls = number(1);
        } else {
            refuse("'" + std::string(word) + "' is none of at, for");
        }
    }
    Set(fault);
}

void FaultPlan::Clear() {
    m_faults.clear();
}

FaultKind FaultPlan::Enter(Operation operation) {
    const unsigned call = ++m_calls[static_cast<std::size_t>(operation)];
    for (auto armed = m_faults.rbegin(); armed != m_faults.rend(); ++armed) {
        const Fault fault = armed->fault;
        if (fault.operation != operation) {
            continue;
        }
        const unsigned sinceSet = call - armed->callsBefore;
        if (sinceSet < fault.fromCall || (fault.calls && sinceSet >= fault.fromCall + fault.calls)) {
            continue;
        }
        if (fault.kind == FaultKind::kSlow) {
            if (sleep) {
                sleep(fault.milliseconds);
            }
            return FaultKind::kNone;
        }
        if (fault.kind == FaultKind::kDestroyParent) {
            if (destroyParent) {
                destroyParent();
            }
            return FaultKind::kNone;
        }
        return fault.kind;
    }
    return FaultKind::kNone;
}
