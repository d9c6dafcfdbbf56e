#pragma once

#include "framework/wnd.h"
#include "probe/probe.h"
#include "trade/plugin_interface.h"

// The findings on the screen, one a line, the worst first, with all that is known about the selected one
// below. Stands in the place of a dialog: the terminal offers it messages and must not outlive it. Deletes
// itself with its window.
class ProbeWindow final : public CWnd, public IEmendixOper {
public:
    // Null when it could not be made.
    static ProbeWindow* Show(Probe& probe, HWND parent);
    // The open one, or null.
    static ProbeWindow* Current();

    BOOL PreTranslateMessage(const MSG* message) override;
    BOOL PreTranslateMessage(MSG* message) override { return CWnd::PreTranslateMessage(message); }
    HWND GetSafeHwnd() override { return m_hWnd; }

    void Fill();

protected:
    void OnSize(UINT kind, int width, int height);
    void OnTimer(UINT_PTR id);
    void PostNcDestroy() override;
    void OnSelected(NMHDR* header, LRESULT* result);
    void OnKeyInList(NMHDR* header, LRESULT* result);

    DECLARE_MESSAGE_MAP()

private:
    explicit ProbeWindow(Probe& probe) : m_probe(probe) {}
    bool Make(HWND parent);

    Probe& m_probe;
    std::vector<Findings::Finding> m_shown;
    std::size_t m_total = 0;
    bool m_keyOffered = false;
    HWND m_list = nullptr;
    HWND m_details = nullptr;
};
