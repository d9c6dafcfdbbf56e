#include "desk/desk_window.h"

#include "book/contract_part.h"
#include "desk/shown_prices.h"
#include "services/wording.h"

#include <algorithm>
#include <chrono>

namespace {

std::int64_t Seconds() {
    return std::chrono::duration_cast<std::chrono::seconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

}  // namespace

void DeskWindow::HearJournal() {
    Journal& journal = m_host.Services().journal;
    journal.review = [this](const JournalEntry& entry) {
        std::vector<std::string> remarks =
            m_secondLook.Look(entry, Seconds(), PricesShownFor(entry, m_host.Dialogs()));
        m_changes.insert(m_changes.end(), entry.changes.begin(), entry.changes.end());
        for (const std::string& remark : remarks) {
            if (std::find(m_remarks.begin(), m_remarks.end(), remark) == m_remarks.end()) {
                m_remarks.push_back(remark);  // the legs of a carry say some things twice
            }
        }
        return remarks;
    };
    // The lists are read again when the request is over: one refresh for all that came together.
    journal.onLine = [this](const std::string&) {
        if (m_window && !m_journalGrew) {
            m_journalGrew = PostMessageW(m_window, kJournalGrew, 0, 0) != FALSE;
        }
    };
}

// What a request changed is selected in its list and in view; of several rows the last.
void DeskWindow::Reveal(const Change& change) {
    if (change.kind == "order") {
        m_panes[kOrderList]->Reveal(m_host.TheBook().ledger.FindOrder(std::stoul(change.id)));
    } else if (change.kind == "fill") {
        m_panes[kFillList]->Reveal(m_host.TheBook().ledger.FindFill(change.id));
    } else if (change.kind == "position") {
        const std::deque<PositionEntry>& rows = m_host.TheBook().ledger.AllPositions().Rows();
        const auto row = std::find_if(rows.begin(), rows.end(), [&](const PositionEntry& candidate) {
            const PositionRecord& position = candidate.record;
            return position.openQty > 0 &&
                   position.accountNo.Str() + ' ' + ContractName(position.key) == change.id;
        });
        m_panes[kPositionList]->Reveal(row == rows.end() ? nullptr : &*row);
    }
}

// All requests that came since the lists were read: an order and its fills come together.
void DeskWindow::OnJournalGrew() {
    m_journalGrew = false;
    for (int i = 0; i < kDeskListCount; ++i) {
        m_panes[static_cast<std::size_t>(i)]->Reload(i == kJournalList);
    }
    for (const Change& change : m_changes) {
        Reveal(change);
    }
    const std::vector<std::string>& lines = m_host.Services().journal.Lines();
    const JournalRow row = ReadJournalRow(lines.back(), lines.size() - 1);
    std::string status = row.operation + " " + Say(row.answer);
    if (!m_remarks.empty()) {
        std::string remarks;
        for (const std::string& remark : m_remarks) {
            remarks += (remarks.empty() ? "" : "; ") + remark;
        }
        status += " - " + Say("second look: %1", {remarks});
    }
    m_changes.clear();
    m_remarks.clear();
    if (!row.subject.empty()) {
        status += " - " + row.subject;
    }
    SetStatus(status);
}
