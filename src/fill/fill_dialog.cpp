#include "fill/fill_dialog.h"

#include "framework/guard.h"
#include "res/dialog_creation.h"
#include "res/resource_ids.h"

BEGIN_MESSAGE_MAP(CEmendoMatch, CDialog)
ON_WM_CLOSE()
ON_BN_CLICKED(IDC_CANCEL, &CEmendoMatch::OnCancelClicked)
END_MESSAGE_MAP()

CEmendoMatch::CEmendoMatch(int mode, void* record, int recordKind, HWND parent)
    : m_mode(mode), m_parent(parent) {
    if (recordKind == kRecordKindFill) {
        m_fill = static_cast<FillRecord*>(record);
    } else if (recordKind == kRecordKindOrder) {
        m_order = static_cast<OrderRecord*>(record);
    }
}

CEmendoMatch::~CEmendoMatch() {
    if (g_pFillDialog == this) {
        g_pFillDialog = nullptr;
    }
}

bool CEmendoMatch::Create() {
    return CreateFromResources(*this, IDD_FILL, m_parent);
}

BOOL CEmendoMatch::PreTranslateMessage(const MSG* message) {
    return Guarded([&] { return message && OfferToWindows(*this, *message); }, false);
}

BOOL CEmendoMatch::PreTranslateMessage(MSG* message) {
    return message->message == WM_KEYDOWN && message->wParam == VK_TAB && IsDialogMessage(message);
}

void CEmendoMatch::OnClose() {
    CDialog::OnClose();
    DestroyWindow();
}

void CEmendoMatch::OnCancelClicked() {
    SendMessage(WM_CLOSE);
}

void CEmendoMatch::PostNcDestroy() {
    CDialog::PostNcDestroy();
    delete this;
}
