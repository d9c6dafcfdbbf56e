#include "order/order_dialog.h"

#include "framework/guard.h"
#include "res/dialog_creation.h"
#include "res/resource_ids.h"

BEGIN_MESSAGE_MAP(CEmendoOrder, CDialog)
ON_WM_CLOSE()
ON_BN_CLICKED(IDC_CANCEL, &CEmendoOrder::OnCancelClicked)
END_MESSAGE_MAP()

CEmendoOrder::CEmendoOrder(unsigned templateId, int mode, OrderRecord* record, HWND parent)
    : m_templateId(templateId), m_mode(mode), m_record(record), m_parent(parent) {}

CEmendoOrder::~CEmendoOrder() {
    if (g_pOrderDialog == this) {
        g_pOrderDialog = nullptr;
    }
}

bool CEmendoOrder::Create() {
    return CreateFromResources(*this, m_templateId, m_parent);
}

BOOL CEmendoOrder::PreTranslateMessage(const MSG* message) {
    return Guarded(
        [&] { return message && IsNearOwnWindow(message->hwnd) && OfferToWindows(*this, *message); }, false);
}

BOOL CEmendoOrder::PreTranslateMessage(MSG* message) {
    return message->message == WM_KEYDOWN && message->wParam == VK_TAB && IsDialogMessage(message);
}

void CEmendoOrder::OnClose() {
    CDialog::OnClose();
    DestroyWindow();
}

void CEmendoOrder::OnCancelClicked() {
    SendMessage(WM_CLOSE);
}

void CEmendoOrder::PostNcDestroy() {
    CDialog::PostNcDestroy();
    delete this;
}
