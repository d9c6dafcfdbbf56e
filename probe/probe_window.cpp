#include "probe/probe_window.h"

#include "framework/guard.h"

namespace {

constexpr UINT_PTR kListId = 100;
constexpr UINT_PTR kDetailsId = 101;
constexpr UINT_PTR kRefreshTimer = 1;
constexpr UINT kRefreshMilliseconds = 500;

ProbeWindow* g_window = nullptr;

HWND MakeChild(HWND parent, const char* className, DWORD style, UINT_PTR id) {
    return CreateWindowExA(WS_EX_CLIENTEDGE, className, "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 0, 0,
                           0, 0, parent, reinterpret_cast<HMENU>(id), nullptr, nullptr);
}

}  // namespace

BEGIN_MESSAGE_MAP(ProbeWindow, CWnd)
ON_WM_SIZE()
ON_WM_TIMER()
ON_NOTIFY(LVN_ITEMCHANGED, kListId, &ProbeWindow::OnSelected)
ON_NOTIFY(LVN_KEYDOWN, kListId, &ProbeWindow::OnKeyInList)
END_MESSAGE_MAP()

ProbeWindow* ProbeWindow::Current() {
    return g_window;
}

ProbeWindow* ProbeWindow::Show(Probe& probe, HWND parent) {
    if (!g_window) {
        auto* window = new ProbeWindow(probe);
        if (!window->Make(IsWindow(parent) ? parent : nullptr)) {
            return nullptr;  // deleted with what there was of its window
        }
        g_window = window;
    }
    g_window->Fill();
    SetWindowPos(g_window->m_hWnd, HWND_TOP, 0, 0, 0, 0,
                 SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW | SWP_NOOWNERZORDER);
    return g_window;
}

bool ProbeWindow::Make(HWND parent) {
    const RECT place{80, 80, 80 + 860, 80 + 560};
    if (!CreateEx(WS_EX_CONTROLPARENT, nullptr, m_probe.Title().c_str(),
                  WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN, place, parent)) {
        return false;
    }
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    m_list = MakeChild(m_hWnd, WC_LISTVIEWA, LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS, kListId);
    m_details =
        MakeChild(m_hWnd, "EDIT", ES_MULTILINE | ES_READONLY | WS_VSCROLL | ES_AUTOVSCROLL, kDetailsId);
    const auto font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    const std::pair<const char*, int> columns[] = {
        {"Weight", 70}, {"Finding", 170}, {"Where", 220}, {"Times", 50}, {"What the operator sees", 320}};
    int index = 0;
    for (const auto& [title, width] : columns) {
        LVCOLUMNA column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.cx = width;
        column.pszText = const_cast<char*>(title);
        ::SendMessageA(m_list, LVM_INSERTCOLUMNA, static_cast<WPARAM>(index++),
                       reinterpret_cast<LPARAM>(&column));
    }
    ::SendMessageA(m_list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT);
    for (HWND child : {m_list, m_details}) {
        ::SendMessageA(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    }
    const RECT client = GetClientRect();
    OnSize(SIZE_RESTORED, client.right, client.bottom);
    SetTimer(kRefreshTimer, kRefreshMilliseconds);
    return true;
}

void ProbeWindow::Fill() {
    m_total = m_probe.Found().Total();
    m_shown = m_probe.Found().Sorted();
    ::SendMessageA(m_list, LVM_DELETEALLITEMS, 0, 0);
    int row = 0;
    for (const Findings::Finding& finding : m_shown) {
        const KindTraits& traits = TraitsOf(finding.kind);
        const std::string cells[] = {WeightName(traits.weight), traits.name, finding.place,
                                     std::to_string(finding.count), traits.operatorSees};
        int column = 0;
        for (const std::string& cell : cells) {
            LVITEMA item{};
            item.mask = LVIF_TEXT;
            item.iItem = row;
            item.iSubItem = column;
            item.pszText = const_cast<char*>(cell.c_str());
            ::SendMessageA(m_list, column++ == 0 ? LVM_INSERTITEMA : LVM_SETITEMA, 0,
                           reinterpret_cast<LPARAM>(&item));
        }
        ++row;
    }
    SetWindowText(m_probe.Title() + ": " +
                  (m_shown.empty() ? "nothing found" : std::to_string(row) + " findings"));
    ::SetWindowTextA(m_details, TextReport(m_probe.Found(), m_probe.Title(), m_probe.Scope()).c_str());
}

void ProbeWindow::OnSize(UINT /*kind*/, int width, int height) {
    const int listHeight = height * 55 / 100;
    MoveWindow(m_list, 0, 0, width, listHeight, TRUE);
    MoveWindow(m_details, 0, listHeight, width, height - listHeight, TRUE);
}

void ProbeWindow::OnTimer(UINT_PTR /*id*/) {
    m_probe.Refresh();
    if (m_probe.Found().Total() != m_total) {
        Fill();
    }
}

void ProbeWindow::OnSelected(NMHDR* header, LRESULT* /*result*/) {
    const auto& change = *reinterpret_cast<const NMLISTVIEW*>(header);
    const auto row = static_cast<std::size_t>(change.iItem);
    if (!(change.uNewState & LVIS_SELECTED) || change.iItem < 0 || row >= m_shown.size()) {
        return;
    }
    const Findings::Finding& finding = m_shown[row];
    const KindTraits& traits = TraitsOf(finding.kind);
    std::string text = finding.place + "\r\n";
    for (const std::string& one : finding.cases) {
        text += "    " + one + "\r\n";
    }
    text += std::string("The operator sees: ") + traits.operatorSees + "\r\nSee docs/" + traits.page;
    ::SetWindowTextA(m_details, text.c_str());
}

// The terminal offers each message before it dispatches it; a key that arrives without is one that a dialog
// misses.
BOOL ProbeWindow::PreTranslateMessage(const MSG* message) {
    if (!message || (message->hwnd != m_hWnd && !IsChild(m_hWnd, message->hwnd))) {
        return FALSE;
    }
    if (message->message == WM_KEYDOWN) {
        m_keyOffered = true;
    }
    MSG copy = *message;
    return Guarded(
        "PreTranslateMessage", [&] { return IsDialogMessageA(m_hWnd, &copy); }, FALSE);
}

void ProbeWindow::OnKeyInList(NMHDR* /*header*/, LRESULT* /*result*/) {
    if (!m_keyOffered) {
        m_probe.Found().Add(Kind::kKeyNotOffered, "IEmendixOper::PreTranslateMessage",
                            "a key arrived that was not offered first");
    }
    m_keyOffered = false;
}

void ProbeWindow::PostNcDestroy() {
    if (g_window == this) {
        g_window = nullptr;
    }
    delete this;
}
