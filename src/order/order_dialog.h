#pragma once

#include "framework/dialog.h"
#include "trade/plugin_interface.h"

// The order dialog: one class for every mode of working on an order. It deletes itself when its window is
// destroyed.
class CEmendoOrder : public CDialog, public IEmendixOper {
public:
    // `record` is the host's order to work on, may be null; it is kept, not copied.
    CEmendoOrder(unsigned templateId, int mode, OrderRecord* record, HWND parent);
    ~CEmendoOrder() override;

    // False when the window could not be created; the object is then still there unless g_pOrderDialog is
    // null.
    bool Create();

    int Mode() const { return m_mode; }
    OrderRecord* Record() const { return m_record; }

    // For the host: a message of its loop on the way to the dialog's windows.
    BOOL PreTranslateMessage(const MSG* message) override;
    HWND GetSafeHwnd() override { return m_hWnd; }

    // The dialog's own keyboard.
    BOOL PreTranslateMessage(MSG* message) override;

protected:
    void PostNcDestroy() override;

    void OnClose();
    void OnCancelClicked();

    DECLARE_MESSAGE_MAP()

private:
    unsigned m_templateId;
    int m_mode;
    OrderRecord* m_record;
    HWND m_parent;
};

// The one open order dialog; null when there is none.
inline CEmendoOrder* g_pOrderDialog = nullptr;
