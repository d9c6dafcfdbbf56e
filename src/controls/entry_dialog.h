#pragma once

#include "controls/numeric_entry.h"
#include "controls/x_combo_box.h"
#include "entry/combo_settings.h"
#include "entry/placement.h"
#include "framework/self_owned_dialog.h"
#include "trade/plugin_interface.h"

#include <memory>
#include <span>

// What the order and the fill dialog have in common: how they are opened and closed, their type-ahead combo
// boxes by control id, their numeric edits and their keyboard. The numeric edits ask the dialog for its
// contract.
class CEntryDialog : public CSelfOwnedDialog, public IEmendixOper, protected INumericContext {
public:
    // False when the window could not be created; the object is then still there unless its single-instance
    // pointer is null.
    bool Create();

    // For the host: a message of its loop on the way to the dialog's windows.
    BOOL PreTranslateMessage(const MSG* message) override;
    HWND GetSafeHwnd() override { return m_hWnd; }

    // The dialog's own keyboard.
    BOOL PreTranslateMessage(MSG* message) override;

protected:
    // `combos` and `numbers` have to outlive the dialog.
    CEntryDialog(unsigned templateId, HWND parent, std::span<const ComboSettings> combos,
                 const NumericTable& numbers);

    TradeData Trade() const override;

    // Whether the dialog's windows are offered a message of the host's loop.
    virtual bool IsOffered(const MSG&) const { return true; }
    // What the confirm button does; never within itself.
    virtual void Confirm() = 0;

    void OnClose();
    void OnConfirm();
    void OnCancelClicked();
    void OnNumberFocus(UINT controlId);
    void OnNumberUpdate(UINT controlId);
    void OnSpin(UINT controlId, NMHDR* notification, LRESULT* result);

    // The combo box of a control that the settings name.
    CxComboBox& Combo(int id) const;
    void BindCombos(CDataExchange* exchange);
    // Brings the dialog to the front of its siblings and sets its combo boxes and numeric edits up.
    void SetUpEntries();

    // Client pixels.
    PixelRect PlaceOf(int controlId) const;
    void MoveDown(int controlId, int pixels);
    void GrowDown(int pixels);

    NumericEntry m_numbers;
    bool m_started = false;  // lists and values are there, changes of controls are the operator's

    DECLARE_MESSAGE_MAP()

private:
    unsigned m_templateId;
    HWND m_parent;
    std::span<const ComboSettings> m_comboSettings;
    std::unique_ptr<CxComboBox[]> m_combos;  // in the order of their settings
    bool m_confirming = false;               // a request or a question of the confirm button is on its way
};
