// What an operator saw when he confirmed is what goes out: entries made at random from seeds, each confirm
// foretold from the windows alone and compared with what followed.
//
// EMENDO_SEED and EMENDO_ENTRIES choose the entries, EMENDO_LANGUAGE the module's language.

#include "shown_is_sent/stage.h"

#include <gtest/gtest.h>

#include <iostream>

namespace {

struct Counts {
    int confirms = 0;
    int boxes = 0;
    int requests = 0;
};

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
        for (const Step& step : plan.steps) {
            if (!hands.Open() || !failure.empty()) {
                break;
            }
            if (Stage::Setting("EMENDO_TRACE", 0) > 1) {
                std::cout << step.Words() << "\n  before:" << hands.view.Everything();
            }
            if (step.act == Step::Confirm) {
                failure = Confirm(step, hands, *reader);
            } else {
                hands.Do(step);
            }
            reader->Look();
        }
        if (stage.boxes.unasked + stage.server.unasked > 0) {
            failure += "a box or a request came without a confirm\n";
            stage.boxes.unasked = stage.server.unasked = 0;
        }
        if (hands.Open()) {
            SendMessageA(hands.view.dialog, WM_CLOSE, 0, 0);
        }
        hands.Pump();
        return failure;
    }

    std::string Confirm(const Step& step, Hands& hands, Reader& reader) {
        if (!hands.Focus(step.id)) {
            return {};
        }
        reader.Look();
        const auto bits = static_cast<unsigned>(step.number);
        Sequel expected{bits / 2 % 256, bits / 512, {}};
        Sequel came = expected;
        const std::string shown = hands.view.Everything();
        std::string failure = reader.Contradiction();
        const bool closes = reader.Foretell(expected);
        stage.boxes.sequel = stage.server.sequel = &came;
        hands.Press(step.id, bits % 2);
        stage.boxes.sequel = stage.server.sequel = nullptr;
        ++counts.confirms;
        for (std::size_t i = 0; i < std::max(expected.events.size(), came.events.size()); ++i) {
            const Event nothing{"nothing", ""};
            failure += Difference(i < expected.events.size() ? expected.events[i] : nothing,
                                  i < came.events.size() ? came.events[i] : nothing);
        }
        for (const Event& event : came.events) {
            ++(event.bytes.empty() ? counts.boxes : counts.requests);
            if (Stage::Setting("EMENDO_TRACE", 0)) {
                std::cout << event.what << "\n";
            }
        }
        if (failure.empty() && closes == hands.Open()) {
            failure = closes ? "the dialog stays open\n" : "the dialog closes\n";
        }
        return failure.empty() ? failure : failure + "shown:" + shown;
    }

    Stage stage;
    Counts counts;
};

TEST_F(ShownIsSent, Entries) {
    const int seed = Stage::Setting("EMENDO_SEED", 1);
    const int entries = Stage::Setting("EMENDO_ENTRIES", 70);
    int failures = 0;
    for (int entry = 0; entry < entries && failures < Stage::Setting("EMENDO_FAILURES", 3); ++entry) {
        Plan plan = MakePlan(static_cast<unsigned>(seed + entry));
        if (!Play(plan).empty()) {
            ++failures;
            const std::string failure = Shrink(plan, [this](const Plan& each) { return Play(each); });
            ADD_FAILURE() << "seed " << seed + entry << ", shortened: " << plan.Words() << failure;
        }
    }
    std::cout << entries << " entries, " << counts.confirms << " confirms, " << counts.boxes << " boxes, "
              << counts.requests << " requests\n";
    EXPECT_TRUE(counts.requests > entries / 4 || entries < 20) << "most entries are to come through";
}

}  // namespace
