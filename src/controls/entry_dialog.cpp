#include "controls/entry_dialog.h"

#include "controls/dialog_keys.h"
#include "controls/dialog_setup.h"
#include "framework/data_exchange.h"
#include "framework/guard.h"
#include "framework/scoped_value.h"
#include "res/dialog_creation.h"
#include "res/resource_ids.h"
#include "trade/host_services.h"

#include <algorithm>
#include <cassert>

BEGIN_MESSAGE_MAP(CEntryDialog, CSelfOwnedDialog)
ON_WM_CLOSE()
ON_BN_CLICKED(IDC_CONFIRM, &CEntryDialog::OnConfirm)
ON_BN_CLICKED(IDC_CANCEL, &CEntryDialog::OnCancelClicked)
END_MESSAGE_MAP()

CEntryDialog::CEntryDialog(unsigned templateId, HWND parent, std::span<const ComboSettings> combos,
                           const NumericTable& numbers)
    : m_numbers(numbers, *this),
      m_templateId(templateId),
      m_parent(parent),
      m_comboSettings(combos),
      m_combos(std::make_unique<CxComboBox[]>(combos.size())) {}

bool CEntryDialog::Create() {
    return CreateFromResources(*this, m_templateId, m_parent);
}

TradeData CEntryDialog::Trade() const {
    return CurrentTradeData();
}

BOOL CEntryDialog::PreTranslateMessage(const MSG* message) {
    return Guarded(
        "PreTranslateMessage of a dialog",
        [&] {
            const RunningCall call(*this);
            return message && IsOffered(*message) && OfferToWindows(*this, *message);
        },
        false);
}

BOOL CEntryDialog::PreTranslateMessage(MSG* message) {
    switch (TranslateDialogKey(m_hWnd, *message, IDC_CONFIRM, IDC_CANCEL, m_numbers)) {
        case KeyOutcome::Consumed:
            return TRUE;
        case KeyOutcome::DialogKeyboard:
            return CDialog::PreTranslateMessage(message);
        default:
            return FALSE;
    }
}

void CEntryDialog::OnConfirm() {
    if (!m_confirming) {
        const ScopedValue confirming(m_confirming, true);
        Confirm();
    }
}

void CEntryDialog::OnCancelClicked() {
    SendMessage(WM_CLOSE);
}

void CEntryDialog::OnClose() {
    CDialog::OnClose();
    DestroyWindow();
}

void CEntryDialog::OnNumberFocus(UINT controlId) {
    m_numbers.OnFocus(static_cast<int>(controlId));
}

void CEntryDialog::OnNumberUpdate(UINT controlId) {
    m_numbers.OnTextUpdate(static_cast<int>(controlId));
}

void CEntryDialog::OnSpin(UINT, NMHDR* notification, LRESULT* result) {
    *result = m_numbers.OnSpin(notification);
}

CxComboBox& CEntryDialog::Combo(int id) const {
    const auto found = std::find_if(m_comboSettings.begin(), m_comboSettings.end(),
                                    [id](const ComboSettings& each) { return each.id == id; });
    assert(found != m_comboSettings.end());
    return m_combos[static_cast<std::size_t>(found - m_comboSettings.begin())];
}

void CEntryDialog::BindCombos(CDataExchange* exchange) {
    for (const ComboSettings& settings : m_comboSettings) {
        DDX_Control(exchange, settings.id, Combo(settings.id));
    }
}

void CEntryDialog::SetUpEntries() {
    SetWindowPos(m_hWnd, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    for (const ComboSettings& settings : m_comboSettings) {
        SetUpCombo(Combo(settings.id), settings);
    }
    m_numbers.Attach(m_hWnd);
}

PixelRect CEntryDialog::PlaceOf(int controlId) const {
    RECT rect{};
    ::GetWindowRect(GetDlgItem(controlId), &rect);
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(&rect), 2);
    return {rect.left, rect.top, rect.right, rect.bottom};
}

void CEntryDialog::MoveDown(int controlId, int pixels) {
    const HWND control = GetDlgItem(controlId);
    if (control && pixels != 0) {
        const PixelRect place = PlaceOf(controlId);
        ::SetWindowPos(control, nullptr, place.left, place.top + pixels, 0, 0,
                       SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void CEntryDialog::GrowDown(int pixels) {
    const RECT window = GetWindowRect();
    if (pixels != 0) {
        ::SetWindowPos(m_hWnd, nullptr, 0, 0, window.right - window.left, window.bottom - window.top + pixels,
                       SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}
