#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// Every operation of the host's services, by its name in the interfaces.
// clang-format off
#define HOST_OPERATIONS(X)                                                                           \
    X(GetPlugin) X(GetTradeApi) X(SendOrder) X(DeleteOrder) X(SendFill) X(RemoveFill) X(SendExercise) \
    X(RegisterSpi) X(UnregisterSpi) X(ListSignEntries) X(GetUserServer) X(GetOrder) X(GetPositions)   \
    X(GetPosition) X(GetPositionQty) X(GetUsers) X(GetUser) X(GetExchanges) X(GetExchange)            \
    X(GetCommodities) X(GetCommodity) X(GetContracts) X(GetContract) X(Get3MContractNo)               \
    X(GetCurrencies) X(GetUppers) X(FormatPrice) X(Slot38) X(GetConfigTable) X(Query) X(Release)      \
    X(CreateListWindow) X(ReleaseListWindow) X(Place) X(SetFilter) X(SetNotify)
// clang-format on
enum class Operation {
#define X(name) k##name,
    HOST_OPERATIONS(X)
#undef X
        kCount
};
std::string_view OperationName(Operation operation);

// What goes wrong with a call. The operation decides what it means where it has no such answer: a failing
// look-up finds nothing, a failing list stays empty.
enum class FaultKind {
    kNone,
    kFail,           // "fail": a request is refused, nothing happens
    kNull,           // "null": a look-up returns null, a list begins with a null entry, a text is null
    kEmpty,          // "empty": a list or text is empty, a look-up returns null
    kUnterminated,   // "unterminated": text fields of the records handed out have no terminator
    kSlow,           // "slow MS": the answer comes late
    kDestroyParent,  // "destroy-parent": the window given to the dialogs is destroyed first
};

struct Fault {
    Operation operation;
    FaultKind kind;
    unsigned fromCall = 1;      // the first call that it strikes, counted from when it was set
    unsigned calls = 0;         // how many calls it strikes; 0: all from there
    unsigned milliseconds = 0;  // of "slow"
};

// The one place where services learn that they are to misbehave. Used on the user-interface thread only.
class FaultPlan {
public:
    // A later fault of the same operation comes before an earlier one.
    void Set(const Fault& fault);
    // "SendOrder fail", "GetUser null at 3", "GetContracts slow 500 at 2 for 1", "SendFill destroy-parent".
    // Throws std::invalid_argument with the reason.
    void Set(std::string_view text);
    void Clear();

    // Counts the call and returns the fault that strikes it. Slowness and the loss of the parent have then
    // already happened, and the call goes on as it should: kNone.
    FaultKind Enter(Operation operation);

    // Calls so far, struck or not.
    unsigned Calls(Operation operation) const { return m_calls[static_cast<std::size_t>(operation)]; }

    // What being slow and losing the parent mean here; without them nothing happens.
    std::function<void(unsigned milliseconds)> sleep;
    std::function<void()> destroyParent;

private:
    struct Armed {
        Fault fault;
        unsigned callsBefore;  // calls of the operation when it was set
    };
    std::vector<Armed> m_faults;
    std::array<unsigned, static_cast<std::size_t>(Operation::kCount)> m_calls{};
};
