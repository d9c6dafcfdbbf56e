// What an operator saw when he confirmed is what goes out: entries made at random from seeds, each confirm
// foretold from the windows alone and compared with what followed.
//
// EMENDO_ENTRIES says how many confirms are played at least; EMENDO_TRACE=1 tells every step with the fields
// in sight. For the others see Stage.

#include "shown_is_sent/stage.h"

#include <iostream>

namespace {

class ShownIsSent : public Stage {
protected:
    Plan Make(unsigned seed) const override { return MakeEntry(seed); }

    void Opened(const Plan& plan, Hands& hands) override { reader = ReaderOf(plan, hands.view); }

    std::string Do(const Step& step, Hands& hands) override {
        if (tracing) {
            std::cout << hands.view.Everything() << step.Words() << "\n";
        }
        std::string failure;
        if (step.act == Step::Confirm) {
            failure = Confirm(step, hands);
        } else {
            hands.Do(step);
        }
        reader->Look();
        return failure;
    }

    std::string Confirm(const Step& step, Hands& hands) {
        if (!hands.Focus(step.id)) {
            return {};
        }
        reader->Look();
        const auto bits = static_cast<unsigned>(step.number);
        Sequel expected{bits / 2 % 256, bits / 512};
        Sequel came = expected;
        const std::string shown = explaining ? "shown:" + hands.view.Everything() : "";
        std::string failure = reader->Contradiction();
        const bool closes = reader->Foretell(expected);
        Expect(&came);
        hands.Press(step.id, bits % 2);
        Expect(nullptr);
        const std::size_t events = std::max(expected.events.size(), came.events.size());
        expected.events.resize(events, {"nothing"});
        came.events.resize(events, {"nothing"});
        for (std::size_t i = 0; i < events; ++i) {
            failure += Difference(expected.events[i], came.events[i]);
            requests += !came.events[i].bytes.empty();
        }
        ++confirms;
        if (closes == hands.Open()) {
            failure += closes ? "the dialog stays open\n" : "the dialog closes\n";
        }
        return failure.empty() ? "" : failure + shown;
    }

    const bool tracing = Setting("EMENDO_TRACE", 0) != 0;
    std::unique_ptr<Reader> reader;
    int confirms = 0;
    int requests = 0;
};

TEST_F(ShownIsSent, WhateverIsEntered) {
    const int entries = Setting("EMENDO_ENTRIES", 270);
    const int plans = PlayPlans([&] { return confirms < entries; });
    std::cout << confirms << " confirms of " << plans << " plans, " << requests << " requests\n";
    EXPECT_TRUE(requests > confirms / 5 || confirms < 100) << "many entries are to come through";
}

}  // namespace
