// A dialog that is opened and closed leaves nothing, in every mode: no window, no object of the system, and
// no more memory than a dialog of the same template without the module.
//
// EMENDO_CYCLES says how often each is opened. For the language see Stage.

#include "shown_is_sent/stage.h"
#include "support/leak_count.h"

#include <iostream>

namespace {

constexpr Opening kOpenings[] = {
    {false, 0},
    {false, 1},
    {false, 2, kRecordKindOrder},
    {false, 3, kRecordKindOrder},
    {false, 4, kRecordKindOrder},
    {false, 5},
    {true, 0, kRecordKindOrder},
    {true, 0, kRecordKindFill},
    {true, 1},
    {true, 2, kRecordKindFill},
    {true, 3, kRecordKindFill},
};
constexpr int kDialogs = std::size(kOpenings);

unsigned TemplateOf(const Opening& opening) {
    return opening.fillDialog  ? IDD_FILL
           : opening.mode == 1 ? IDD_CARRY
           : opening.mode == 5 ? IDD_EXERCISE
                               : IDD_ORDER;
}

class Life : public Stage {
protected:
    Plan Make(unsigned seed) const override { return {kOpenings[seed % kDialogs], 0, seed, {}}; }
    std::string Do(const Step&, Hands&) override { return {}; }

    // With the common controls that the module asks for.
    void OpenBare(const Opening& opening) {
        ACTCTXA wanted{};
        wanted.cbSize = sizeof wanted;
        wanted.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
        wanted.hModule = Library();
        wanted.lpResourceName = ISOLATIONAWARE_MANIFEST_RESOURCE_ID;
        const HANDLE context = CreateActCtxA(&wanted);
        ULONG_PTR cookie = 0;
        ASSERT_TRUE(ActivateActCtx(context, &cookie));
        const HRSRC found =
            FindResourceExA(Library(), RT_DIALOG, MAKEINTRESOURCEA(TemplateOf(opening)), Language());
        const auto* shape = static_cast<const DLGTEMPLATE*>(LockResource(LoadResource(Library(), found)));
        const HWND dialog = CreateDialogIndirectParamA(Library(), shape, Parent(), nullptr, 0);
        DeactivateActCtx(0, cookie);
        ReleaseActCtx(context);
        ASSERT_NE(dialog, nullptr);
        DestroyWindow(dialog);
        HostLoop().PumpUntilIdle();
    }
};

TEST_F(Life, LeavesNothingBehind) {
    PlayPlan(0);  // and the parent stands
    const long long ofTheSystem = KeptByEach(
        [&] {
            for (const Opening& opening : kOpenings) {
                OpenBare(opening);
            }
        },
        3);
    const long long ofTheModule = KeptByEach(
        [&] {
            for (int place = 0; place < kDialogs; ++place) {
                PlayPlan(place);
            }
        },
        3);
    std::cout << "bytes kept by " << kDialogs << " dialogs: " << ofTheModule << ", by bare ones "
              << ofTheSystem << "\n";
    EXPECT_LT(ofTheModule - ofTheSystem, kDialogs * 16);
}

}  // namespace
