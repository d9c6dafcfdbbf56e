#include "frame/emendo_control.h"

#include "fill/fill_dialog.h"
#include "framework/guard.h"
#include "framework/scoped_value.h"
#include "order/order_dialog.h"
#include "order/order_mode.h"
#include "trade/host_services.h"

#include <new>

namespace {

// A host that closes the dialog in one of its own look-ups and opens another may do so again in the look-ups
// of that one, and so on until the stack ends.
constexpr int kMaxCreationsWithin = 8;

// How far the opening of one kind of dialog has come. All of it is put back when a call of the host does not
// return (see CallNote).
template <typename Dialog>
struct Opening {
    Dialog*& slot;        // the single-instance pointer
    bool constructing;    // the object is not whole, and not in the slot
    int running;          // creations within creations
    int within;           // creations since the outermost of these began
    const Dialog* whole;  // the dialog of the slot once it has been created to the end
};

Opening<CEmendoMatch> g_fillOpening{g_pFillDialog, false, 0, 0, nullptr};
Opening<CEmendoOrder> g_orderOpening{g_pOrderDialog, false, 0, 0, nullptr};

// During the creation the host may close the dialog and open another: then that one is in the slot.
template <typename Dialog, typename MakeDialog>
void CreateDialogInSlot(Opening<Dialog>& opening, MakeDialog makeDialog) {
    opening.within = opening.running == 0 ? 1 : opening.within + 1;
    const ScopedValue running(opening.running, opening.running + 1);
    opening.whole = nullptr;
    Dialog* made = nullptr;
    {
        const ScopedValue constructing(opening.constructing, true);
        made = makeDialog();
    }
    opening.slot = made;
    const CWnd::RunningCall call(*made);
    const bool created = Guarded(
        "creation of a dialog", [&] { return made->Create(); }, false);
    if (opening.slot != made) {
        return;
    }
    if (created) {
        opening.whole = made;
    } else {
        opening.slot = nullptr;
        made->DestroyWindow();
        made->DeleteWhenIdle();
    }
}

// A call of the host that did not return left a dialog behind that will never be whole.
template <typename Dialog>
void DiscardHalfMade(Opening<Dialog>& opening) {
    if (Dialog* dialog = opening.slot; dialog && dialog != opening.whole && opening.running == 0) {
        opening.slot = nullptr;
        dialog->DestroyWindow();
        dialog->DeleteWhenIdle();
    }
}

// At most one dialog of a kind, whatever the host does in the calls that the opening makes: a request that
// comes while the object is being constructed is declined, one that comes later finds the dialog.
template <typename Dialog, typename MakeDialog>
IEmendixOper* OpenOrBringForward(Opening<Dialog>& opening, MakeDialog makeDialog) {
    if (!g_pTradeList) {
        return nullptr;
    }
    DiscardHalfMade(opening);
    const bool declined =
        opening.constructing || (opening.running > 0 && opening.within >= kMaxCreationsWithin);
    if (!opening.slot && !declined) {
        CreateDialogInSlot(opening, makeDialog);
    }
    const Dialog* dialog = opening.slot;
    if (!dialog || !dialog->m_hWnd) {
        return nullptr;
    }
    SetWindowPos(dialog->m_hWnd, HWND_TOP, 0, 0, 0, 0,
                 SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW | SWP_NOOWNERZORDER);
    // Showing runs the host's and the dialog's handlers; either may have closed it, or opened another.
    return opening.slot;
}

}  // namespace

IEmendix* IEmendoControl::Create() {
    auto* control = new (std::nothrow) IEmendoControl;
    if (control) {
        control->m_next = s_first;
        s_first = control;
    }
    return control;
}

void IEmendoControl::Free(const IEmendix* control) {
    for (IEmendoControl** link = &s_first; *link; link = &(*link)->m_next) {
        if (*link == control) {
            IEmendoControl* found = *link;
            *link = found->m_next;
            delete found;
            return;
        }
    }
}

IEmendixOper* IEmendoControl::OpenFillDialog(int mode, void* record, int recordKind, HWND parentWindow) {
    CallNote::PutBackAbandoned(__builtin_frame_address(0));
    return Guarded(
        "OpenFillDialog",
        [&] {
            return OpenOrBringForward(
                g_fillOpening, [&] { return new CEmendoMatch(mode, record, recordKind, parentWindow); });
        },
        static_cast<IEmendixOper*>(nullptr));
}

IEmendixOper* IEmendoControl::OpenOrderDialog(int mode, OrderRecord* record, HWND parentWindow) {
    CallNote::PutBackAbandoned(__builtin_frame_address(0));
    return Guarded(
        "OpenOrderDialog",
        [&] {
            return OpenOrBringForward(g_orderOpening, [&] {
                const OrderModeTraits& traits = TraitsOf(static_cast<OrderMode>(mode));
                return new CEmendoOrder(static_cast<unsigned>(traits.templateId), mode, record, parentWindow);
            });
        },
        static_cast<IEmendixOper*>(nullptr));
}
