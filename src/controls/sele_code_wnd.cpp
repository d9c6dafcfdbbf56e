#include "controls/sele_code_wnd.h"

#include "controls/window_placement.h"
#include "entry/placement.h"
#include "framework/module_instance.h"
#include "framework/owned_handle.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr SIZE kPopupSize{438, 400};
constexpr int kMargin = 2;
constexpr int kTreeWidth = 280;
constexpr int kLineLeft = 283;
constexpr int kListLeft = 285;
constexpr COLORREF kLineColour = RGB(240, 240, 240);

// The list shows as many blank rows when it has nothing else.
constexpr int kBlankRows = 10;
constexpr int kListColumnsWidth = 169;

LOGFONTA TreeFont() {
    LOGFONTA font{};
    font.lfHeight = -19;
    font.lfWeight = 550;
    font.lfCharSet = DEFAULT_CHARSET;
    font.lfOutPrecision = OUT_STROKE_PRECIS;
    font.lfClipPrecision = CLIP_STROKE_PRECIS;
    font.lfQuality = DRAFT_QUALITY;
    font.lfPitchAndFamily = VARIABLE_PITCH;
    std::strcpy(font.lfFaceName, "SimSun");
    return font;
}

// "G" and "Y" commodities have no contracts to choose from.
bool HasNoContractLevel(char commodityType) {
    return commodityType == CommodityType::kGoods || commodityType == CommodityType::kGoodsDeferred;
}

}  // namespace

BEGIN_MESSAGE_MAP(CSeleCodeWnd, CWnd)
ON_WM_CREATE()
ON_WM_SIZE()
ON_WM_PAINT()
ON_WM_ACTIVATE()
ON_WM_NCACTIVATE()
ON_WM_DESTROY()
END_MESSAGE_MAP()

CSeleCodeWnd::CSeleCodeWnd(TradeData (*trade)()) : m_trade(trade) {
    m_treeFont.CreateFontIndirect(TreeFont());
    m_listFont.CreatePointFont(130, "Microsoft YaHei");
}

CSeleCodeWnd::~CSeleCodeWnd() {
    // While the children still exist: their notifications come here.
    if (m_hWnd) {
        DestroyWindow();
    }
}

void CSeleCodeWnd::Release::operator()(CSeleCodeWnd* popup) const {
    popup->DestroyWindow();
    popup->DeleteWhenIdle();
}

// --- creation and layout ---

bool CSeleCodeWnd::CreatePopup(HWND owner) {
    const char* windowClass = RegisterModuleClass(CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS | CS_PARENTDC);
    const RECT rect{0, 0, kPopupSize.cx, kPopupSize.cy};
    return windowClass && CreateEx(0, windowClass, "", WS_POPUP | WS_BORDER, rect, owner);
}

int CSeleCodeWnd::OnCreate(LPCREATESTRUCT create) {
    if (CWnd::OnCreate(create) == -1) {
        return -1;
    }
    constexpr DWORD kTreeStyle = WS_CHILD | WS_VISIBLE | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT |
                                 TVS_SHOWSELALWAYS | TVS_FULLROWSELECT;
    constexpr DWORD kListStyle = WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA;
    if (!m_tree.Create(kTreeStyle, RECT{}, m_hWnd, kSeleCodeTreeId) ||
        !m_list.Create(kListStyle, RECT{}, m_hWnd, kSeleCodeListId)) {
        return -1;
    }
    m_tree.SetRestingMouse(&m_mouse);
    m_list.SetRestingMouse(&m_mouse);
    m_tree.ShowWindow(SW_SHOW);
    m_tree.SetFont(m_treeFont.Get());
    m_list.ShowWindow(SW_SHOW);
    m_list.SetItemCount(kBlankRows);
    m_list.SetFont(m_listFont.Get());
    SetUpColumns();
    return 0;
}

void CSeleCodeWnd::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    if (!m_tree.m_hWnd || (width == 0 && height == 0)) {
        return;
    }
    const int childHeight = height - 2 * kMargin;
    ::MoveWindow(m_tree.m_hWnd, kMargin, kMargin, kTreeWidth, childHeight, TRUE);
    ::MoveWindow(m_list.m_hWnd, kListLeft, kMargin, width - kListLeft - kMargin, childHeight, TRUE);
}

void CSeleCodeWnd::OnPaint() {
    const RECT window = GetWindowRect();
    PAINTSTRUCT paint;
    HDC dc = ::BeginPaint(m_hWnd, &paint);
    // The class has no brush, so the strips around the children would show what was there before.
    for (const CWnd* child : {static_cast<CWnd*>(&m_tree), static_cast<CWnd*>(&m_list)}) {
        RECT covered = child->GetWindowRect();
        ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(&covered), 2);
        ::ExcludeClipRect(dc, covered.left, covered.top, covered.right, covered.bottom);
    }
    ::FillRect(dc, &paint.rcPaint, ::GetSysColorBrush(COLOR_WINDOW));
    {
        PenHandle pen(::CreatePen(PS_SOLID, 1, kLineColour));
        SelectedObject selected(dc, pen.Get());
        ::MoveToEx(dc, kLineLeft, kMargin, nullptr);
        ::LineTo(dc, kLineLeft, window.bottom - window.top - 2 * kMargin);
    }
    ::EndPaint(m_hWnd, &paint);
}

void CSeleCodeWnd::PlaceUnder(HWND button) {
    RECT at{};
    if (!m_hWnd || !::GetWindowRect(button, &at)) {
        return;
    }
    const RECT own = GetWindowRect();
    const PixelSize size{static_cast<int>(own.right - own.left), static_cast<int>(own.bottom - own.top)};
    const PixelSize screen{GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    const PixelRect buttonRect{static_cast<int>(at.left), static_cast<int>(at.top),
                               static_cast<int>(at.right), static_cast<int>(at.bottom)};
    const PixelPoint place = PlaceUnderButton(buttonRect, size, screen);
    ::MoveWindow(m_hWnd, place.x, place.y, size.width, size.height, TRUE);
}

// --- showing and hiding ---

void CSeleCodeWnd::Toggle() {
    const RunningCall call(*this);  // showing and focusing tells the host, which may take the popup away
    if (IsWindowVisible()) {
        ShowWindow(SW_HIDE);
    } else {
        ShowWindow(SW_SHOW);
        SetFocus();
        m_tree.SetFocus();
    }
    Invalidate();
    UpdateWindow();
}

void CSeleCodeWnd::OnActivate(UINT state, HWND other, bool minimized) {
    CWnd::OnActivate(state, other, minimized);
    if (state == WA_INACTIVE) {
        ShowWindow(SW_HIDE);
    }
}

BOOL CSeleCodeWnd::OnNcActivate(bool active) {
    if (active) {
        // The terminal's caption stays drawn as active while the popup has the focus.
        HWND top = TopMostAncestor(m_hWnd);
        if (top != m_hWnd) {
            ::SendMessageA(top, WM_NCACTIVATE, TRUE, 0);
        }
    }
    return m_hWnd ? CWnd::OnNcActivate(active) : TRUE;
}

void CSeleCodeWnd::OnDestroy() {
    CWnd::OnDestroy();
    m_tree.Clear();
    m_catalog.clear();
    m_built = false;
}

// --- the tree ---

void CSeleCodeWnd::Refresh(const std::string& sign) {
    const RunningCall call(*this);
    const TradeData trade = m_trade();
    if ((!sign.empty() || trade.SignEntryCount(sign) > 0) && (sign != m_lastSign || sign.empty())) {
        m_built = false;
        m_lastSign = sign;
    }
    if (m_built || !m_hWnd) {
        return;
    }
    std::vector<CatalogNode> catalog = BuildCatalog(trade, sign, m_forwardOnly);
    if (!m_hWnd) {
        return;
    }
    m_rows.ClearContracts();
    m_tree.SendMessage(WM_SETREDRAW, FALSE);
    m_tree.Clear();
    m_catalog = std::move(catalog);
    InsertNodes(m_catalog, TVI_ROOT);
    m_built = !m_catalog.empty();
    if (m_catalog.size() == 1) {
        m_tree.Expand(m_tree.GetRootItem());
    }
    m_tree.SendMessage(WM_SETREDRAW, TRUE);
    m_tree.Invalidate();
    m_tree.UpdateWindow();
}

void CSeleCodeWnd::InsertNodes(const std::vector<CatalogNode>& nodes, HTREEITEM parent) {
    for (const CatalogNode& node : nodes) {
        if (HTREEITEM item = m_tree.AppendNode(node.text, node.data, parent)) {
            InsertNodes(node.children, item);
        }
    }
}

void CSeleCodeWnd::OnTreeClick(LRESULT* result) {
    POINT cursor{};
    ::GetCursorPos(&cursor);
    ::ScreenToClient(m_tree.m_hWnd, &cursor);
    UINT cursorPart = 0;
    m_tree.HitTest(cursor, &cursorPart);

    POINT clicked = PackedPoint(static_cast<LPARAM>(::GetMessagePos()));
    ::ScreenToClient(m_tree.m_hWnd, &clicked);
    HTREEITEM item = m_tree.HitTest(clicked);
    if (!item) {
        return;
    }
    if ((cursorPart & TVHT_ONITEMBUTTON) == 0) {
        m_tree.Expand(item);
    }
    m_tree.SelectItem(item);
    if (!ChooseSelectedNode()) {
        // Nothing more may happen in a tree that is gone.
        *result = 1;
    }
}

bool CSeleCodeWnd::ChooseSelectedNode() {
    const HTREEITEM item = m_tree.GetSelectedItem();
    m_tree.OpenSingleChildren(item);
    m_choice = ReadChoice(m_tree.PathOf(item));
    if (m_choice.level == ContractChoice::Level::Exchange) {
        m_tree.CloseOtherRoots(item);
    }
    if (HasNoContractLevel(m_choice.commodityType)) {
        ShowWindow(SW_HIDE);
    }
    FillList();
    return m_hWnd && SendChoice(TreeClickText(m_choice));
}

// --- the list ---

void CSeleCodeWnd::FillList() {
    if (!m_rows.Load(m_choice, m_trade())) {
        m_list.Invalidate();
        return;
    }
    SetUpColumns();
    if (const std::size_t count = m_rows.Count(m_choice.commodityType)) {
        m_list.SetItemCount(static_cast<int>(count));
        m_list.Invalidate();
    }
}

void CSeleCodeWnd::SetUpColumns() {
    m_list.DeleteAllItems();
    while (m_list.GetColumnCount() > 0 && m_list.DeleteColumn(0)) {
    }
    m_list.SetItemCount(kBlankRows);
    const int width = kListColumnsWidth - GetSystemMetrics(SM_CXVSCROLL);
    const bool option = m_choice.commodityType == CommodityType::kOption;
    if (option) {
        m_list.InsertColumn(0, "Call", LVCFMT_LEFT, width / 2);
        m_list.InsertColumn(1, "Put", LVCFMT_LEFT, width / 2);
    } else {
        m_list.InsertColumn(0, "code", LVCFMT_LEFT, width);
    }
    m_list.SetExtendedStyle(LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT);
    const LONG style = ::GetWindowLongA(m_list.m_hWnd, GWL_STYLE) & ~LVS_NOCOLUMNHEADER;
    ::SetWindowLongA(m_list.m_hWnd, GWL_STYLE, option ? style : style | LVS_NOCOLUMNHEADER);
}

void CSeleCodeWnd::ShowCell(NMLVDISPINFOA& cell) const {
    LVITEMA& item = cell.item;
    if ((item.mask & LVIF_TEXT) == 0 || !item.pszText || item.cchTextMax <= 0 || item.iItem < 0 ||
        static_cast<std::size_t>(item.iItem) >= m_rows.Count(m_choice.commodityType)) {
        return;
    }
    const std::string text =
        m_rows.Text(m_choice.commodityType, static_cast<std::size_t>(item.iItem), item.iSubItem);
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(item.cchTextMax) - 1);
    std::memcpy(item.pszText, text.data(), length);
    item.pszText[length] = 0;
}

// --- notifications ---

BOOL CSeleCodeWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (lParam == 0) {
        return CWnd::OnNotify(wParam, lParam, result);
    }
    const NMHDR& header = *reinterpret_cast<const NMHDR*>(lParam);
    if (header.hwndFrom == m_tree.m_hWnd && header.code == NM_CLICK) {
        *result = 0;
        OnTreeClick(result);
        return TRUE;
    }
    if (header.hwndFrom == m_list.m_hWnd && header.code == LVN_GETDISPINFOA) {
        ShowCell(*reinterpret_cast<NMLVDISPINFOA*>(lParam));
        *result = 0;
        return TRUE;
    }
    if (header.hwndFrom == m_list.m_hWnd && header.code == NM_CLICK) {
        return OnListClick(*reinterpret_cast<const NMITEMACTIVATE*>(lParam), wParam, lParam, result);
    }
    if (header.code == static_cast<UINT>(NM_KEYDOWN)) {
        *result = OnPartKey(header.hwndFrom, reinterpret_cast<const NMKEY*>(lParam)->nVKey);
        return TRUE;
    }
    return CWnd::OnNotify(wParam, lParam, result);
}

BOOL CSeleCodeWnd::OnListClick(const NMITEMACTIVATE& click, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (m_list.GetSelectionMark() != -1) {
        const std::string cell = m_list.GetItemText(click.iItem, click.iSubItem);
        if (!SendChoice(ListClickText(m_choice, cell))) {
            return TRUE;
        }
        ShowWindow(SW_HIDE);
        *result = 0;
    }
    return CWnd::OnNotify(wParam, lParam, result);
}

bool CSeleCodeWnd::SendChoice(const std::string& text) {
    const std::string sign = m_choice.sign;  // the owner may have the popup filled anew
    ::SendMessageA(m_notifyWindow, WM_SELECTCODE, reinterpret_cast<WPARAM>(text.c_str()),
                   reinterpret_cast<LPARAM>(sign.c_str()));
    return m_hWnd != nullptr;
}
