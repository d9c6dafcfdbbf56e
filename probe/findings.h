#pragma once

#include <cstddef>
#include <string>
#include <vector>

// How bad a finding is for the operator, the worst first.
enum class Weight {
    kBroken,  // the dialogs do not open, or something cannot be entered at all
    kWrong,   // what the operator sees, or what is sent, may be wrong
    kPoor,    // it works, but slower or with less than there could be
    kRemark,  // single data that the dialogs leave out or cannot use; often so on purpose
};
std::string WeightName(Weight weight);  // "broken" ...

// What can be found. Each kind has its row in a table: weight, what the operator would see, where to read on.
enum class Kind {
    kStartSequence,
    kOtherThread,
    kOtherVersion,
    kMissingService,
    kUnusedServiceMissing,
    kNoTradeInterface,
    kNoParent,
    kBadOpening,
    kNullEntry,
    kEmptyList,
    kUnsteadyList,
    kUnreadableRecord,
    kUnterminatedText,
    kBadCode,
    kUnknownType,
    kBadTick,
    kNotFoundAgain,
    kForeignRecord,
    kMissingLeg,
    kNoCommodityPointer,
    kAmbiguousContract,
    kNoAccountUsable,
    kAccountWithoutGroup,
    kAccountWithoutServer,
    kServerNotConfigured,
    kNoServerConfigurations,
    kBadConfiguration,
    kNoThreeMonthDate,
    kBadThreeMonthDate,
    kPriceNotWritten,
    kPriceNotRead,
    kPriceOverrun,
    kBadPosition,
    kQuantitiesDiffer,
    kNoListWindow,
    kListWindowMisplaced,
    kListWindowLeft,
    kDirectEvent,
    kEventOnOtherThread,
    kUnknownEvent,
    kBadEventRecord,
    kNoEvent,
    kKeyNotOffered,
    kSlowAnswer,
    kParentDestroyed,
    kRequestRefused,
    kBadRequestFile,
    kTooMuch,
    kCount
};

struct KindTraits {
    const char* name;  // in the reports
    Weight weight;
    const char* operatorSees;
    const char* page;  // of the documentation
};
const KindTraits& TraitsOf(Kind kind);

// Everything found so far. Of each kind and place the first few cases are kept by their text, the others
// counted.
class Findings {
public:
    struct Finding {
        Kind kind;
        std::string place;  // operation, service or record: "GetUsers", "CommodityRecord.tickDenominator"
        std::vector<std::string> cases;  // what exactly, the first few
        std::size_t count = 0;
    };

    void Add(Kind kind, const std::string& place, const std::string& what);

    // By weight, the worst first, and in the order of finding.
    std::vector<Finding> Sorted() const;
    bool Has(Kind kind) const;
    // Changes with every Add.
    std::size_t Total() const { return m_total; }

private:
    std::vector<Finding> m_findings;
    std::size_t m_total = 0;
};

// The same for people and for programs; what was looked at is said by `scope`.
std::string TextReport(const Findings& findings, const std::string& title,
                       const std::vector<std::string>& scope);
std::string JsonReport(const Findings& findings, const std::string& title,
                       const std::vector<std::string>& scope);
