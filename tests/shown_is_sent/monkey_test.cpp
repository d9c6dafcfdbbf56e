// Whatever is done with the dialogs, in whatever order, and whatever becomes of the host's data meanwhile:
// nothing ends, nothing goes out that nobody confirmed, the keyboard stays usable, and nothing is left.
//
// EMENDO_ACTIONS says how many actions are played at least. For the others see Stage.

#include "shown_is_sent/stage.h"
#include "support/leak_count.h"

#include <iostream>

namespace {

constexpr int kActions = 40;  // of a plan

class Monkey : public Stage {
protected:
    Plan Make(unsigned seed) const override { return MakeMuddle(seed, kActions); }

    std::string Do(const Step& step, Hands& hands) override {
        ++actions;
        const auto bits = static_cast<unsigned>(step.number);
        Sequel sequel{bits / 2 % 256, bits / 512};
        const bool aimed = step.act == Step::Confirm && hands.Focus(step.id);
        // Keys and clicks may meet the confirm button by themselves.
        const bool confirms = aimed || step.act == Step::Point ||
                              (step.act == Step::Press && hands.view.FocusId() == IDC_CONFIRM);
        Expect(confirms ? &sequel : nullptr);
        if (aimed) {
            hands.Press(step.id, bits % 2);
        } else {
            hands.Do(step);
        }
        Expect(nullptr);
        std::string failure = Complaints(false);
        failure += sequel.sentAfterRefusal ? "a request followed a refused question\n" : "";
        if (hands.Open() && GetActiveWindow() == hands.view.dialog &&
            !hands.view.Usable(hands.view.FocusId())) {
            failure += "the keyboard is on #" + std::to_string(hands.view.FocusId()) + ", which takes none\n";
        }
        return failure.empty() ? "" : failure + "after " + step.Words() + "\n";
    }

    int actions = 0;
};

TEST_F(Monkey, DoesNoHarm) {
    const int wanted = Setting("EMENDO_ACTIONS", 500);
    // The system's own stores, of device contexts say, grow with what is new to them; a second time nothing
    // is.
    const int plans = PlayPlans([&] { return actions < wanted / 2; });
    EXPECT_GT(actions, plans * kActions / 4);
    int place = 0;
    KeptByEach([&] { PlayPlan(place++ % plans); }, plans);
    std::cout << actions << " actions of " << plans << " plans, each twice\n";
}

}  // namespace
