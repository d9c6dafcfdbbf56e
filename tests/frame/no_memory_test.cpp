// The module gets no memory, from some allocation on or for a single one.

#include "frame/opening_fixture.h"
#include "support/allocation_faults.h"
#include "support/swallowed_exceptions.h"

namespace {

struct NoMemory : Openings {
    ExpectedExceptions expected;
    AllocationFaults faults{loaded->Library()};
};

TEST_F(NoMemory, ExportsDoNothing) {
    faults.Refuse(0);
    EXPECT_EQ(loaded->createPluginApi("1.0.0.1"), nullptr);
    loaded->onPluginLoad(kEnglish);
    loaded->onPluginInit(host.Manager());
    loaded->freePluginApi(nullptr);
    loaded->onPluginFree();
    EXPECT_GT(faults.Refused(), 0);
    faults.RefuseNone();
    void* another = loaded->createPluginApi("1.0.0.1");
    ASSERT_NE(another, nullptr);
    loaded->freePluginApi(static_cast<IEmendix*>(another));
    loaded->freePluginApi(static_cast<IEmendix*>(another));
}

TEST_F(NoMemory, OpensADialogOrNoneAndNeverHalfOfOne) {
    constexpr long kSteps = 12;  // of the allocations of an opening, by which the refused one moves on
    for (const Way& way : {kWays[1], kWays[4]}) {
        SCOPED_TRACE(way.what);
        parent = std::make_unique<HostWindow>();
        faults.RefuseNone();
        ASSERT_TRUE(Open(way));
        const long all = faults.Asked();
        ExpectNothingLeft();
        for (const long count : {1L, AllocationFaults::kAllFurther}) {
            int declined = 0;
            for (long from = 0; from < all; from += 1 + all / kSteps) {
                SCOPED_TRACE(from);
                parent = std::make_unique<HostWindow>();
                faults.Refuse(from, count);
                void* dialog = Open(way);
                faults.RefuseNone();
                declined += !dialog;
                ASSERT_EQ(Dialogs().size(), dialog ? 1u : 0u);
                ExpectNothingLeft();
            }
            EXPECT_GT(declined, 0);
            parent = std::make_unique<HostWindow>();
            EXPECT_TRUE(Open(way));
            ExpectNothingLeft();
        }
    }
}

}  // namespace
