#include "probe/findings.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace {

constexpr std::size_t kCasesKept = 5;

// clang-format off
constexpr KindTraits kTraits[] = {
    {"start-sequence", Weight::kWrong, "texts in the wrong language, or no dialogs", "integrating.html#start-and-end"},
    {"other-thread", Weight::kBroken, "a dialog that freezes or vanishes", "integrating.html#threads"},
    {"other-version", Weight::kBroken, "no dialog opens", "integrating.html#versions"},
    {"missing-service", Weight::kBroken, "no dialog opens, or its lists stay empty and nothing can be sent", "integrating.html#services"},
    {"unused-service-missing", Weight::kRemark, "nothing: the module fetches this service and does not use it", "integrating.html#services"},
    {"no-trade-interface", Weight::kBroken, "every list is empty, every code is refused", "integrating.html#services"},
    {"no-parent", Weight::kWrong, "a dialog that other windows cover, or none", "integrating.html#opening-a-dialog"},
    {"bad-opening", Weight::kWrong, "a dialog that is empty, or works on nothing", "integrating.html#opening-a-dialog"},
    {"null-entry", Weight::kWrong, "one entry fewer than there is", "integrating.html#lists-and-look-ups"},
    {"empty-list", Weight::kBroken, "a list with nothing to choose", "integrating.html#lists-and-look-ups"},
    {"unsteady-list", Weight::kWrong, "entries twice, or none, or a crash: records are read in place", "integrating.html#lifetimes"},
    {"unreadable-record", Weight::kBroken, "the terminal crashes", "integrating.html#lifetimes"},
    {"unterminated-text", Weight::kWrong, "a code or name that is cut or ends in strange characters", "integrating.html#records"},
    {"bad-code", Weight::kWrong, "an entry that cannot be chosen by typing it", "integrating.html#records"},
    {"unknown-type", Weight::kWrong, "contracts that cannot be entered", "integrating.html#records"},
    {"bad-tick", Weight::kWrong, "prices that are refused, or steps of the wrong size", "integrating.html#records"},
    {"not-found-again", Weight::kBroken, "\"does not exist\" for something that the list shows", "integrating.html#lists-and-look-ups"},
    {"foreign-record", Weight::kWrong, "an entry under the wrong exchange, commodity or account", "integrating.html#lists-and-look-ups"},
    {"missing-leg", Weight::kWrong, "a spread whose fill has no price steps, an option that cannot be exercised", "integrating.html#records"},
    {"no-commodity-pointer", Weight::kWrong, "a contract that the picker cannot place", "integrating.html#records"},
    {"ambiguous-contract", Weight::kWrong, "a contract that becomes another one when its text is read", "integrating.html#records"},
    {"no-account-usable", Weight::kBroken, "the account list is empty", "integrating.html#accounts"},
    {"account-without-group", Weight::kRemark, "this account is not listed", "integrating.html#accounts"},
    {"account-without-server", Weight::kPoor, "this account stands without the name of its server", "integrating.html#accounts"},
    {"server-not-configured", Weight::kRemark, "the accounts of this server stand without its name", "integrating.html#accounts"},
    {"no-server-configurations", Weight::kPoor, "accounts stand without the names of their servers", "integrating.html#accounts"},
    {"bad-configuration", Weight::kWrong, "accounts stand without the names of their servers", "integrating.html#accounts"},
    {"no-three-month-date", Weight::kRemark, "\"3M\" stays \"3M\": its date can be entered although it may not be", "integrating.html#three-months"},
    {"bad-three-month-date", Weight::kWrong, "carries go out under a contract that is not there", "integrating.html#three-months"},
    {"price-not-written", Weight::kPoor, "prices in the module's own notation instead of the terminal's", "integrating.html#prices"},
    {"price-not-read", Weight::kWrong, "a price field that shows another price than the order has", "integrating.html#prices"},
    {"price-overrun", Weight::kBroken, "the terminal crashes", "integrating.html#prices"},
    {"bad-position", Weight::kWrong, "a carry that cannot close this position", "integrating.html#positions"},
    {"quantities-differ", Weight::kWrong, "a quantity to close that is not what is open", "integrating.html#positions"},
    {"no-list-window", Weight::kPoor, "the carry dialog without its lists of positions", "integrating.html#position-lists"},
    {"list-window-misplaced", Weight::kWrong, "a list of positions over other fields", "integrating.html#position-lists"},
    {"list-window-left", Weight::kPoor, "a list of positions that stays behind", "integrating.html#position-lists"},
    {"direct-event", Weight::kWrong, "a terminal that freezes when a position changes", "integrating.html#events"},
    {"event-on-other-thread", Weight::kBroken, "a terminal that crashes when a position changes", "integrating.html#events"},
    {"unknown-event", Weight::kPoor, "nothing: the event is dropped", "integrating.html#events"},
    {"bad-event-record", Weight::kBroken, "a terminal that crashes when a position changes, or an old quantity", "integrating.html#events"},
    {"no-event", Weight::kWrong, "a carry dialog that keeps showing old positions", "integrating.html#events"},
    {"key-not-offered", Weight::kWrong, "Tab and Enter do nothing in the dialogs", "integrating.html#message-loop"},
    {"slow-answer", Weight::kPoor, "a dialog that stands still while it reads", "integrating.html#threads"},
    {"parent-destroyed", Weight::kBroken, "the dialog vanishes while it is being filled", "integrating.html#opening-a-dialog"},
    {"request-refused", Weight::kBroken, "a message that the request was not sent", "integrating.html#requests"},
    {"bad-request-file", Weight::kRemark, "nothing: this line of the request file was not sent", "integrating.html#the-probe"},
    {"too-much", Weight::kRemark, "nothing: the rest was not looked at, to keep the terminal usable", "integrating.html#the-probe"},
};
// clang-format on
static_assert(std::size(kTraits) == static_cast<std::size_t>(Kind::kCount));

constexpr const char* kWeightNames[] = {"broken", "wrong", "poor", "remark"};

// As a JSON string. Texts that the terminal gave may hold any byte: what is not printable ASCII was escaped
// when the finding was made.
std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
        }
        quoted += c;
    }
    return quoted + '"';
}

std::string QuotedList(const std::vector<std::string>& texts) {
    std::string list;
    for (const std::string& text : texts) {
        list += (list.empty() ? "" : ", ") + Quoted(text);
    }
    return "[" + list + "]";
}

// Any other byte as \xNN, so that reports can be read anywhere.
std::string Printable(const std::string& text) {
    std::string printable;
    for (const char c : text) {
        if (c >= ' ' && c <= '~') {
            printable += c;
        } else {
            char hex[8];
            std::snprintf(hex, sizeof hex, "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
            printable += hex;
        }
    }
    return printable;
}

}  // namespace

std::string WeightName(Weight weight) {
    return kWeightNames[static_cast<std::size_t>(weight)];
}

const KindTraits& TraitsOf(Kind kind) {
    return kTraits[static_cast<std::size_t>(kind)];
}

void Findings::Add(Kind kind, const std::string& place, const std::string& what) {
    ++m_total;
    auto found = std::find_if(m_findings.begin(), m_findings.end(), [&](const Finding& known) {
        return known.kind == kind && known.place == place;
    });
    if (found == m_findings.end()) {
        found = m_findings.insert(m_findings.end(), Finding{kind, place, {}, 0});
    }
    ++found->count;
    if (found->cases.size() < kCasesKept) {
        found->cases.push_back(Printable(what));
    }
}

std::vector<Findings::Finding> Findings::Sorted() const {
    std::vector<Finding> sorted = m_findings;
    std::stable_sort(sorted.begin(), sorted.end(), [](const Finding& first, const Finding& second) {
        return TraitsOf(first.kind).weight < TraitsOf(second.kind).weight;
    });
    return sorted;
}

bool Findings::Has(Kind kind) const {
    return std::any_of(m_findings.begin(), m_findings.end(),
                       [&](const Finding& finding) { return finding.kind == kind; });
}

std::string TextReport(const Findings& findings, const std::string& title,
                       const std::vector<std::string>& scope) {
    std::string report = title + "\r\n";
    for (const std::string& line : scope) {
        report += "    " + line + "\r\n";
    }
    const std::vector<Findings::Finding> sorted = findings.Sorted();
    if (sorted.empty()) {
        report += "\r\nNothing found.\r\n";
    }
    for (const Findings::Finding& finding : sorted) {
        const KindTraits& traits = TraitsOf(finding.kind);
        report += "\r\n" + WeightName(traits.weight) + ": " + traits.name + ", " + finding.place;
        report += finding.count > 1 ? " (" + std::to_string(finding.count) + " times)\r\n" : "\r\n";
        for (const std::string& text : finding.cases) {
            report += "    " + text + "\r\n";
        }
        report += std::string("    the operator sees: ") + traits.operatorSees + "\r\n";
        report += std::string("    see ") + traits.page + "\r\n";
    }
    return report;
}

std::string JsonReport(const Findings& findings, const std::string& title,
                       const std::vector<std::string>& scope) {
    std::string report = "{\n \"title\": " + Quoted(title) + ",\n \"scope\": " + QuotedList(scope);
    report += ",\n \"findings\": [";
    const char* separator = "\n";
    for (const Findings::Finding& finding : findings.Sorted()) {
        const KindTraits& traits = TraitsOf(finding.kind);
        report += separator;
        report +=
            "  {\"weight\": " + Quoted(WeightName(traits.weight)) + ", \"kind\": " + Quoted(traits.name);
        report += ", \"place\": " + Quoted(finding.place) + ", \"count\": " + std::to_string(finding.count);
        report += ",\n   \"cases\": " + QuotedList(finding.cases);
        report += ",\n   \"operatorSees\": " + Quoted(traits.operatorSees);
        report += ", \"page\": " + Quoted(traits.page) + "}";
        separator = ",\n";
    }
    return report + "\n ]\n}\n";
}
