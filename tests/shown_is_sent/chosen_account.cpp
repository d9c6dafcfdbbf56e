#include "shown_is_sent/chosen_account.h"

#include "res/resource_ids.h"
#include "shown_is_sent/reader.h"

ChosenAccount::ChosenAccount(const View& view, const World& world, const OrderRecord* order)
    : m_view(view), m_world(world), m_last(Now()) {
    if (order) {
        m_number = order->accountNo.Str();
        sign = order->key.sign.Str();
    } else if (const UserRecord* first = Listed(0)) {
        sign = first->group->sign.Str();
    }
}

ChosenAccount::Shown ChosenAccount::Now() const {
    return {m_view.Line(IDC_ACCOUNT), m_view.Text(IDC_ACCOUNT)};
}

// The account of a line of the list, by number and name; null beyond the end.
const UserRecord* ChosenAccount::Listed(int line) const {
    const std::string text = ListTextOf(m_view.Item(IDC_ACCOUNT), line);
    const auto& users = m_world.everyUser;
    const auto found = std::find_if(users.begin(), users.end(), [&](const UserRecord* each) {
        return text == each->accountNo.Str() + ' ' + each->accountName.Str();
    });
    return found == users.end() ? nullptr : *found;
}

// A chosen account is that of its line. A typed number is taken when it is left, as the first line that has
// it; the number that the account already has changes nothing, nor does one that is not listed.
void ChosenAccount::Look() {
    const Shown now = Now();
    if (now == m_last || (now.first < 0 && m_view.FocusId() == IDC_ACCOUNT)) {
        return;
    }
    m_last = now;
    const std::string number = FirstWord(now.second);
    const UserRecord* found = now.first < 0 ? nullptr : Listed(now.first);
    if (!found || found->accountNo != number) {
        found = nullptr;
        for (int line = 0; const UserRecord* each = number == m_number ? nullptr : Listed(line); ++line) {
            found = !found && each->accountNo == number ? each : found;
        }
    }
    if (found) {
        m_number = number;
        sign = found->group->sign.Str();
    }
}
