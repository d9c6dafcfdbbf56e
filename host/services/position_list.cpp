#include "services/position_list.h"

#include "book/contract_part.h"
#include "book/host_text.h"
#include "book/price_format.h"
#include "book/record_fields.h"
#include "services/position_filter.h"
#include "services/wide_text.h"
#include "services/wording.h"

#include <algorithm>

#include <commctrl.h>

namespace {

constexpr wchar_t kClassName[] = L"EmendoHostPositions";
constexpr UINT kReportRow = WM_APP + 1;  // wParam: the row

struct Column {
    const char* title;
    int width;  // pixels at 96 dpi
    int format;
};
constexpr Column kColumns[] = {{"Account", 64, LVCFMT_LEFT}, {"Contract", 104, LVCFMT_LEFT},
                               {"Side", 40, LVCFMT_LEFT},    {"Open", 46, LVCFMT_RIGHT},
                               {"Price", 72, LVCFMT_RIGHT},  {"Upper", 60, LVCFMT_LEFT}};

std::string CellText(const Book& book, const PositionEntry& row, int column) {
    const PositionRecord& position = row.record;
    switch (column) {
        case 0:
            return Utf8FromAnsi(position.accountNo.View());
        case 1:
            return Utf8FromAnsi(ContractName(position.key));
        case 2:
            return Say(WordOf(Words::kDirection, position.direction));
        case 3:
            return std::to_string(position.openQty);
        case 4:
            return PriceText(position.price, book.catalogue.FindCommodity(CommodityOf(position.key)));
        default:
            return Utf8FromAnsi(row.upperNo);
    }
}

}  // namespace

PositionListWindow::PositionListWindow(const Book& book, FaultPlan& faults, HWND owner)
    : m_book(book), m_faults(faults) {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<const wchar_t*>(IDC_ARROW));
    windowClass.lpszClassName = kClassName;
    RegisterClassW(&windowClass);  // fails quietly when it is already there
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    m_window = CreateWindowExW(0, kClassName, Wide(Say("Positions")).c_str(), WS_CHILD | WS_CLIPCHILDREN, 0,
                               0, 0, 0, owner, nullptr, instance, this);
    if (m_window) {
        m_list = CreateWindowExW(
            WS_EX_CLIENTEDGE, WC_LISTVIEWW, Wide(Say("Positions")).c_str(),
            WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS, 0, 0, 0,
            0, m_window, nullptr, instance, nullptr);
    }
    if (m_list) {
        MakeColumns();
    }
}

PositionListWindow::~PositionListWindow() {
    if (m_window) {
        DestroyWindow(m_window);
    }
}

void PositionListWindow::MakeColumns() {
    int index = 0;
    for (const Column& column : kColumns) {
        std::wstring title = Wide(Say(column.title));
        LVCOLUMNW item{};
        item.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        item.fmt = column.format;
        item.cx = Scaled(column.width);
        item.pszText = title.data();
        SendMessageW(m_list, LVM_INSERTCOLUMNW, index++, reinterpret_cast<LPARAM>(&item));
    }
    SendMessageW(m_list, LVM_SETUNICODEFORMAT, TRUE, 0);
    SendMessageW(m_list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
}

LRESULT CALLBACK PositionListWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* self = reinterpret_cast<PositionListWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    switch (message) {
        case WM_NOTIFY:
            return self->OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
        case WM_SIZE:
            MoveWindow(self->m_list, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
            return 0;
        case kReportRow:
            self->Report(wParam);
            return 0;
        case WM_NCDESTROY:  // also when the owner goes: the object lives until it is released
            SetWindowLongPtrW(window, GWLP_USERDATA, 0);
            self->m_window = self->m_list = nullptr;
            break;
        default:
            break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

LRESULT PositionListWindow::OnNotify(const NMHDR& notification) {
    if (notification.code == LVN_GETDISPINFOW) {
        auto& info = reinterpret_cast<NMLVDISPINFOW&>(const_cast<NMHDR&>(notification));
        const auto row = static_cast<std::size_t>(info.item.iItem);
        if ((info.item.mask & LVIF_TEXT) && row < m_rows.size()) {
            m_cell = Wide(CellText(m_book, *m_rows[row], info.item.iSubItem));
            info.item.pszText = m_cell.data();
        }
    } else if (notification.code == NM_DBLCLK) {
        const int row = reinterpret_cast<const NMITEMACTIVATE&>(notification).iItem;
        if (row >= 0) {
            PostMessageW(m_window, kReportRow, static_cast<WPARAM>(row), 0);
        }
    }
    return 0;
}

void PositionListWindow::Report(std::size_t row) {
    if (m_notify && row < m_rows.size()) {
        // The notify may release this list: nothing of it is touched afterwards.
        m_notify->OnSelectData(this, 0, const_cast<PositionRecord*>(&m_rows[row]->record));
    }
}

void PositionListWindow::Place(int left, int top, int width, int height, int /*one*/) {
    if (m_faults.Enter(Operation::kPlace) == FaultKind::kNone && m_window) {
        MoveWindow(m_window, left, top, width, height, TRUE);
        ShowWindow(m_window, SW_SHOWNA);
    }
}

void PositionListWindow::SetFilter(const PositionFilterRecord* filter) {
    if (m_faults.Enter(Operation::kSetFilter) == FaultKind::kNone) {
        m_filtered = filter != nullptr;
        m_filter = filter ? *filter : PositionFilterRecord{};
        Refresh();
    }
}

void PositionListWindow::SetNotify(ISelectDataNotify* notify) {
    if (m_faults.Enter(Operation::kSetNotify) == FaultKind::kNone) {
        m_notify = notify;
    }
}

void PositionListWindow::Refresh() {
    m_rows.clear();
    for (const PositionEntry& row : m_book.ledger.AllPositions().Rows()) {
        if (m_filtered && PositionMatches(m_filter, row)) {
            m_rows.push_back(&row);
        }
    }
    if (m_list) {
        SendMessageW(m_list, LVM_SETITEMCOUNT, m_rows.size(), 0);
        InvalidateRect(m_list, nullptr, TRUE);
    }
}

ITradeListWindow* HostTradeList::CreateListWindow(int /*zero*/, int /*four*/, HWND owner, int /*one*/) {
    if (m_faults.Enter(Operation::kCreateListWindow) != FaultKind::kNone || !IsWindow(owner)) {
        return nullptr;
    }
    auto window = std::make_unique<PositionListWindow>(m_book, m_faults, owner);
    if (!window->List()) {
        return nullptr;
    }
    return m_windows.emplace_back(std::move(window)).get();
}

void HostTradeList::ReleaseListWindow(ITradeListWindow* window) {
    m_faults.Enter(Operation::kReleaseListWindow);
    std::erase_if(m_windows, [&](const auto& known) { return known.get() == window; });
}

void HostTradeList::RefreshAll() {
    for (const std::unique_ptr<PositionListWindow>& window : m_windows) {
        window->Refresh();
    }
}
