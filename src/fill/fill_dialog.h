#pragma once

#include "framework/dialog.h"
#include "trade/fill_record.h"
#include "trade/plugin_interface.h"

// The fill dialog: inputs a fill for an order, or removes one. It deletes itself when its window is
// destroyed.
class CEmendoMatch : public CDialog, public IEmendixOper {
public:
    // `record` is the host's, kept and not copied: a FillRecord for kRecordKindFill, an OrderRecord for
    // kRecordKindOrder, ignored for any other kind.
    CEmendoMatch(int mode, void* record, int recordKind, HWND parent);
    ~CEmendoMatch() override;

    // False when the window could not be created; the object is then still there unless g_pFillDialog is
    // null.
    bool Create();

    int Mode() const { return m_mode; }
    FillRecord* Fill() const { return m_fill; }
    OrderRecord* Order() const { return m_order; }

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
    int m_mode;
    FillRecord* m_fill = nullptr;
    OrderRecord* m_order = nullptr;
    HWND m_parent;
};

// The one open fill dialog; null when there is none.
inline CEmendoMatch* g_pFillDialog = nullptr;
