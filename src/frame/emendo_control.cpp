#include "frame/emendo_control.h"

#include "fill/fill_dialog.h"
#include "framework/guard.h"
#include "order/order_dialog.h"
#include "order/order_mode.h"
#include "trade/host_services.h"

namespace {

// `slot` is the single-instance pointer; a dialog whose window is destroyed clears it itself, also when that
// happens while it is being created.
template <typename Dialog, typename MakeDialog>
IEmendixOper* OpenOrBringForward(Dialog*& slot, MakeDialog makeDialog) {
    if (!g_pTradeList) {
        return nullptr;
    }
    if (!slot) {
        slot = makeDialog();
        if (!slot->Create()) {
            delete slot;
            slot = nullptr;
        }
    }
    if (!slot) {
        return nullptr;
    }
    SetWindowPos(slot->m_hWnd, HWND_TOP, 0, 0, 0, 0,
                 SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW | SWP_NOOWNERZORDER);
    // Showing runs the host's and the dialog's handlers; either may have closed it.
    return slot;
}

}  // namespace

IEmendixOper* IEmendoControl::OpenFillDialog(int mode, void* record, int recordKind, HWND parentWindow) {
    return Guarded(
        [&] {
            return OpenOrBringForward(
                g_pFillDialog, [&] { return new CEmendoMatch(mode, record, recordKind, parentWindow); });
        },
        static_cast<IEmendixOper*>(nullptr));
}

IEmendixOper* IEmendoControl::OpenOrderDialog(int mode, OrderRecord* record, HWND parentWindow) {
    return Guarded(
        [&] {
            return OpenOrBringForward(g_pOrderDialog, [&] {
                const OrderModeTraits& traits = TraitsOf(static_cast<OrderMode>(mode));
                return new CEmendoOrder(static_cast<unsigned>(traits.templateId), mode, record, parentWindow);
            });
        },
        static_cast<IEmendixOper*>(nullptr));
}
