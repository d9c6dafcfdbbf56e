// Whatever is done with the dialogs, in whatever order, and whatever becomes of the host's data meanwhile:
// nothing ends, nothing goes out that nobody confirmed, the keyboard stays usable, and nothing is left.
//
// EMENDO_SEED and EMENDO_PLANS choose the plans, EMENDO_LANGUAGE the module's language.

#include "shown_is_sent/stage.h"
#include "support/leak_count.h"

#include <gtest/gtest.h>

#include <iostream>

namespace {

constexpr int kActions = 40;  // of a plan

class Monkey : public testing::Test {
protected:
    // Plays a plan up to its first fault, which is returned; empty when there is none.
    std::string Play(const Plan& plan) {
        IEmendixOper* dialog = stage.Open(plan);
        if (!dialog) {
            return "the dialog does not open\n";
        }
        Hands hands(stage.world, stage.lists, dialog);
        hands.Pump();
        std::string failure;
        for (auto step = plan.steps.begin(); step != plan.steps.end() && failure.empty() && hands.Open();
             ++step) {
            ++actions;
            failure = Do(*step, hands);
        }
        if (hands.Open()) {
            SendMessageA(hands.view.dialog, WM_CLOSE, 0, 0);
        }
        hands.Pump();
        return failure + stage.Complaints(true);
    }

    std::string Do(const Step& step, Hands& hands) {
        const auto bits = static_cast<unsigned>(step.number);
        Sequel sequel{bits / 2 % 256, bits / 512};
        const bool aimed = step.act == Step::Confirm && hands.Focus(step.id);
        // Keys and clicks may meet the confirm button by themselves.
        const bool confirms = aimed || step.act == Step::Point ||
                              (step.act == Step::Press && hands.view.FocusId() == IDC_CONFIRM);
        stage.Expect(confirms ? &sequel : nullptr);
        if (aimed) {
            hands.Press(step.id, bits % 2);
        } else {
            hands.Do(step);
        }
        stage.Expect(nullptr);
        std::string failure = stage.Complaints(false);
        failure += sequel.sentAfterRefusal ? "a request followed a refused question\n" : "";
        if (hands.Open() && GetActiveWindow() == hands.view.dialog &&
            !hands.view.Usable(hands.view.FocusId())) {
            failure += "the keyboard is on #" + std::to_string(hands.view.FocusId()) + ", which takes none\n";
        }
        return failure.empty() ? "" : failure + "after " + step.Words() + "\n";
    }

    Stage stage;
    int actions = 0;
};

TEST_F(Monkey, DoesNoHarm) {
    const int seed = Stage::Setting("EMENDO_SEED", 1);
    const int plans = Stage::Setting("EMENDO_PLANS", 10);
    int failures = Stage::Setting("EMENDO_FAILURES", 3);
    int played = 0;
    const auto playNext = [&] {
        const int next = seed + played++ % plans;
        Plan plan = MakeMuddle(static_cast<unsigned>(next), kActions);
        if (failures > 0 && !Play(plan).empty()) {
            --failures;
            const std::string failure = Shrink(plan, [this](const Plan& each) { return Play(each); });
            ADD_FAILURE() << "seed " << next << ", shortened: " << plan.Words() << failure;
        }
        stage.Raise();
    };
    // The system's own stores, of device contexts say, grow with what is new to them; a second time nothing
    // is.
    while (played < plans) {
        playNext();
    }
    KeptByEach(playNext, plans);
    std::cout << actions << " actions\n";
    EXPECT_GT(actions, plans * kActions / 4);
}

}  // namespace
