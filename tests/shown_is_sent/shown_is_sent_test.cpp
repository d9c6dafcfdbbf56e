// What an operator saw when he confirmed is what goes out: entries made at random from seeds, each confirm
// foretold from the windows alone and compared with what followed.
//
// EMENDO_SEED and EMENDO_ENTRIES choose the entries, EMENDO_LANGUAGE the module's language; EMENDO_TRACE=1
// tells every step with the fields in sight.

#include "shown_is_sent/stage.h"

#include <gtest/gtest.h>

#include <iostream>

namespace {

class ShownIsSent : public testing::Test {
protected:
    // Plays a plan up to its first difference, which is returned; empty when there is none.
    std::string Play(const Plan& plan) {
        IEmendixOper* dialog = stage.Open(plan);
        if (!dialog) {
            return "the dialog does not open\n";
        }
        Hands hands(stage.world, stage.lists, dialog);
        hands.Pump();
        const auto reader = stage.ReaderOf(plan, hands.view);
        std::string failure;
        for (auto step = plan.steps.begin(); step != plan.steps.end() && failure.empty() && hands.Open();
             ++step) {
            if (Stage::Setting("EMENDO_TRACE", 0)) {
                std::cout << hands.view.Everything() << step->Words() << "\n";
            }
            if (step->act == Step::Confirm) {
                failure = Confirm(*step, hands, *reader);
            } else {
                hands.Do(*step);
            }
            reader->Look();
        }
        if (hands.Open()) {
            SendMessageA(hands.view.dialog, WM_CLOSE, 0, 0);
        }
        hands.Pump();
        return failure + stage.Complaints(true);
    }

    std::string Confirm(const Step& step, Hands& hands, Reader& reader) {
        if (!hands.Focus(step.id)) {
            return {};
        }
        reader.Look();
        const auto bits = static_cast<unsigned>(step.number);
        Sequel expected{bits / 2 % 256, bits / 512};
        Sequel came = expected;
        const std::string shown = explaining ? "shown:" + hands.view.Everything() : "";
        std::string failure = reader.Contradiction();
        const bool closes = reader.Foretell(expected);
        stage.Expect(&came);
        hands.Press(step.id, bits % 2);
        stage.Expect(nullptr);
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

    Stage stage;
    bool explaining = false;
    int confirms = 0;
    int requests = 0;
};

TEST_F(ShownIsSent, WhateverIsEntered) {
    const int seed = Stage::Setting("EMENDO_SEED", 1);
    const int entries = Stage::Setting("EMENDO_ENTRIES", 67);
    int failures = Stage::Setting("EMENDO_FAILURES", 3);
    for (int entry = seed; entry < seed + entries && failures > 0; ++entry) {
        Plan plan = MakeEntry(static_cast<unsigned>(entry));
        if (!Play(plan).empty()) {
            --failures;
            explaining = true;
            const std::string failure = Shrink(plan, [this](const Plan& each) { return Play(each); });
            explaining = false;
            ADD_FAILURE() << "seed " << entry << ", shortened: " << plan.Words() << failure;
        }
    }
    std::cout << entries << " entries, " << confirms << " confirms, " << requests << " requests\n";
    EXPECT_TRUE(requests > entries / 4 || entries < 20) << "most entries are to come through";
}

}  // namespace
