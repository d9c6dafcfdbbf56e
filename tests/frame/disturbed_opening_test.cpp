// What the host does in the middle of an opening: in each call that the opening makes it closes, opens, loses
// its window, or raises an exception that it catches behind the module.

#include "frame/opening_fixture.h"

#include <csetjmp>
#include <functional>

namespace {

struct DisturbedOpening : Openings {
    void* nested = nullptr;  // what the last request within the opening got

    // Opens again and again; each time `act` runs in another of the host's calls. `after` is given what the
    // opening returned.
    void InEveryCall(const Way& way, const std::function<void()>& act,
                     const std::function<void(void* outer)>& after) {
        for (int at = 0;; ++at) {
            SCOPED_TRACE(at);
            parent = std::make_unique<HostWindow>();
            nested = nullptr;
            int asked = 0;
            book.whileAsked = [&] {
                const int now = asked++;
                if (now == at) {
                    act();
                }
            };
            void* outer = Open(way);
            book.whileAsked = nullptr;
            after(outer);
            ExpectNothingLeft();
            if (HasFailure() || asked <= at) {
                EXPECT_GT(at, 5) << "the opening made no calls";
                return;
            }
        }
    }
};

TEST_F(DisturbedOpening, LeavesAtMostOneDialogOfTheKindAndReturnsThatOne) {
    const struct {
        const char* what;
        std::function<void(const Way&)> act;
    } disturbances[] = {
        {"opens", [&](const Way& way) { nested = Open(way); }},
        {"closes and opens",
         [&](const Way& way) {
             CloseAll();
             nested = Open(way);
         }},
        {"loses its window", [&](const Way&) { parent->Destroy(); }},
    };
    for (const Way& way : {kWays[1], kWays[4]}) {
        for (const auto& disturbance : disturbances) {
            SCOPED_TRACE(std::string(way.what) + ", the host " + disturbance.what);
            InEveryCall(
                way, [&] { disturbance.act(way); },
                [&](void* outer) {
                    const std::vector<HWND> dialogs = Dialogs();
                    ASSERT_EQ(dialogs.size(), outer ? 1u : 0u);
                    if (outer) {
                        EXPECT_EQ(Window(outer), dialogs[0]);
                        EXPECT_EQ(Open(way), outer);
                    }
                    EXPECT_TRUE(!nested || nested == outer) << "the host keeps a dialog that is gone";
                });
        }
    }
}

TEST_F(DisturbedOpening, EndsWithAHostThatClosesAndOpensForEver) {
    for (const Way& way : {kWays[0], kWays[4]}) {
        parent = std::make_unique<HostWindow>();
        book.whileAsked = [&] {
            CloseAll();
            Open(way);
        };
        Open(way);
        book.whileAsked = nullptr;
        EXPECT_LE(Dialogs().size(), 1u);
        ExpectNothingLeft();
    }
}

jmp_buf g_behindTheModule;

struct LostOpening : Openings {
    // True when one of the host's calls did not return.
    bool IsLost(const Way& way) {
        if (setjmp(g_behindTheModule) != 0) {
            return true;
        }
        Open(way);
        return false;
    }
};

// As if the host's operation had raised a structured exception that the host catches behind the module.
TEST_F(LostOpening, IsForgotten) {
    for (const Way& way : {kWays[0], kWays[4]}) {
        bool lost = true;
        for (int at = way.fill ? 0 : 1; lost; ++at) {  // the first call of an order is its registration
            SCOPED_TRACE(at);
            parent = std::make_unique<HostWindow>();
            int asked = 0;
            book.whileAsked = [&] {
                if (asked++ == at) {
                    longjmp(g_behindTheModule, 1);
                }
            };
            lost = IsLost(way);
            book.whileAsked = nullptr;
            EXPECT_TRUE(lost || at > 5) << "the opening made no calls";
            HostLoop().PumpUntilIdle();
            void* dialog = Open(way);
            ASSERT_TRUE(dialog);
            EXPECT_EQ(Dialogs().size(), 1u);
            char title[100] = "";
            GetWindowTextA(Window(dialog), title, sizeof title);
            EXPECT_STREQ(title, way.fill ? "Input Fill" : "Input Order");
            ExpectNothingLeft();
        }
    }
}

}  // namespace
