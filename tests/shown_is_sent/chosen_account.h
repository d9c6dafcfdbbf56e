#pragma once

#include "shown_is_sent/hands.h"

// The account that counts in the order dialog: the one that the operator chose or left last.
class ChosenAccount {
public:
    // The dialog has just been opened on the order, null for none.
    ChosenAccount(const View& view, const World& world, const OrderRecord* order);

    // After every step.
    void Look();

    std::string sign;

private:
    using Shown = std::pair<int, std::string>;  // line and text of the list

    Shown Now() const;
    const UserRecord* Listed(int line) const;

    const View& m_view;
    const World& m_world;
    std::string m_number;
    Shown m_last;
};
