#pragma once

#include "framework/wnd.h"

#include <cstddef>
#include <unordered_map>

// A modeless dialog.
class CDialog : public CWnd {
public:
    ~CDialog() override;

    // Creates the window from an in-memory template. `initData` is the template's dialog-initialisation
    // resource (texts for its combo and list boxes), may be null; its texts are in `initCodePage`. On a
    // failure (no template, an unknown control class, an exception in OnInitDialog) no window is left; the
    // object may have been deleted by its own PostNcDestroy.
    bool CreateIndirect(const DLGTEMPLATE* dialogTemplate, HWND parent, const void* initData = nullptr,
                        std::size_t initSize = 0, UINT initCodePage = CP_ACP);

    // Remembers what it found: the system's own search walks all children each time.
    HWND GetDlgItem(int id) const override;

    // Runs the dialog's keyboard handling for keyboard and mouse messages of its children.
    BOOL PreTranslateMessage(MSG* message) override;

    // Tab order, default button and arrow keys, for one message. TRUE when it was handled.
    BOOL IsDialogMessage(MSG* message) const { return ::IsDialogMessageA(m_hWnd, message); }

protected:
    // The controls exist, the window is not shown, and the host's activation context is back in place. TRUE:
    // the system may set the focus to the first control. The base runs the initialisation resource and
    // exchanges the data into the controls.
    virtual BOOL OnInitDialog();
    // The commands IDOK and IDCANCEL (Enter, Escape and the close box through the dialog's keyboard
    // handling). Nothing happens unless overridden: a modeless dialog closes itself.
    virtual void OnOK() {}
    virtual void OnCancel() {}

    DECLARE_MESSAGE_MAP()

private:
    void ExecuteInitData();
    static INT_PTR CALLBACK StaticDialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    mutable std::unordered_map<int, HWND> m_items;
    const std::byte* m_initData = nullptr;
    std::size_t m_initSize = 0;
    UINT m_initCodePage = CP_ACP;
    const class FormerActivationContext* m_hostContext = nullptr;  // while the window is being created
    bool m_setUp = false;                                          // OnInitDialog ran to its end
};
