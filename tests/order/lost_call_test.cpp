#include "order/order_window.h"

#include <csetjmp>

namespace {

jmp_buf g_behindTheModule;

struct LostCall : OrderDialog {
    static void Raise() { longjmp(g_behindTheModule, 1); }
};

// As if the host's operation had raised a structured exception that the host catches in its message loop: the
// frames of the module are left without their destructors.
TEST_F(LostCall, LeavesTheDialogUsableAndFreesIt) {
    Open(OrderMode::Input);
    EnterOrder();
    service.whileSending = &LostCall::Raise;
    if (setjmp(g_behindTheModule) == 0) {
        PressConfirm();
        FAIL() << "nothing was sent";
    }
    service.whileSending = nullptr;
    service.orders.clear();
    MessageBoxScript boxes({{ResString(IDS_ASK_NEXT_ORDER), ResString(IDS_TIPS), IDNO}});
    PressConfirm();
    EXPECT_EQ(Sent().substr(0, 4), "SIG ") << "the confirm button is dead";
    EXPECT_FALSE(IsWindow(window));
    EXPECT_TRUE(api.listeners.empty()) << "the dialog is not freed";
}

}  // namespace
