#include "desk/desk_window.h"

#include "app/file_version.h"
#include "app/language_choice.h"
#include "book/host_text.h"
#include "services/wide_text.h"
#include "services/wording.h"

#include <stdexcept>

namespace {

constexpr wchar_t kClassName[] = L"EmendoHostDesk";
constexpr unsigned kFirstListId = 1000;
constexpr int kWidth = 1180;
constexpr int kHeight = 760;
constexpr int kGap = 5;
constexpr int kLanguagePart = 420;

FontHandle MessageFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    return FontHandle(CreateFontIndirectW(&metrics.lfMessageFont));
}

}  // namespace

DeskWindow::DeskWindow(HostApp& host, std::string bookPath, DeskSettings settings)
    : m_host(host),
      m_secondLook(host.TheBook()),
      m_bookPath(std::move(bookPath)),
      m_settings(std::move(settings)),
      m_lists(MakeDeskLists(host.TheBook(), host.Services().journal)),
      m_font(MessageFont()),
      m_keys(MakeDeskKeys()) {
    MakeWindow();
    MakePanes();
    Arrange();
    HearJournal();
}

DeskWindow::~DeskWindow() {
    m_host.Services().journal.review = nullptr;
    m_host.Services().journal.onLine = nullptr;
    if (m_window) {
        DestroyWindow(m_window);
    }
    DestroyAcceleratorTable(m_keys);
}

void DeskWindow::MakeWindow() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hIcon = LoadIconW(nullptr, reinterpret_cast<const wchar_t*>(IDI_APPLICATION));
    windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<const wchar_t*>(IDC_ARROW));
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    windowClass.lpszClassName = kClassName;
    RegisterClassW(&windowClass);  // fails quietly when it is already there
    CreateWindowExW(0, kClassName, L"", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT,
                    Scaled(kWidth), Scaled(kHeight), nullptr, MakeDeskMenu(), windowClass.hInstance, this);
    m_status = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0, 0,
                               m_window, nullptr, windowClass.hInstance, nullptr);
    if (!m_window || !m_status) {
        throw std::runtime_error("the desk cannot be opened (error " + std::to_string(GetLastError()) + ")");
    }
    ShowTitle();
    SendMessageW(m_status, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.Get()), FALSE);
}

void DeskWindow::ShowTitle() {
    std::string title = Say("Emendo desk") + ' ' + OwnVersion();
    if (!m_bookPath.empty()) {
        title += " - " + Utf8FromAnsi(m_bookPath.substr(m_bookPath.find_last_of("\\/") + 1));
    }
    SetWindowTextW(m_window, Wide(title).c_str());
}

void DeskWindow::SayAnew() {
    HMENU former = GetMenu(m_window);
    SetMenu(m_window, MakeDeskMenu());
    DestroyMenu(former);
    for (const auto& pane : m_panes) {
        pane->SayAnew();
    }
    ShowTitle();
    ShowLanguage();
}

void DeskWindow::MakePanes() {
    for (unsigned i = 0; i < kDeskListCount; ++i) {
        m_panes[i] = std::make_unique<ListPane>(m_lists[i], m_window, kFirstListId + i, m_font.Get());
        m_panes[i]->Apply(m_settings.lists[i]);
    }
}

void DeskWindow::Show(WORD language) {
    m_language = language;
    SayAnew();
    int command = SW_SHOWNORMAL;
    if (m_settings.placed) {
        const PaneBox box = AtDpi(m_settings.window, m_settings.dpi, Scaled(kPlainDpi));
        // The system moves it back when the screen is another one.
        WINDOWPLACEMENT placement{};
        placement.length = sizeof placement;
        placement.showCmd = SW_HIDE;
        placement.rcNormalPosition = {box.left, box.top, box.right, box.bottom};
        SetWindowPlacement(m_window, &placement);
        command = m_settings.maximized ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
    }
    ShowWindow(m_window, command);
    for (const auto& pane : m_panes) {
        if (pane->List().Count() > 0) {
            pane->Select(0);
        }
    }
    SetFocus(m_panes[kOrderList]->Window());
    UpdateWindow(m_window);
}

void DeskWindow::Run() {
    MSG message;
    while (m_window && GetMessageA(&message, nullptr, 0, 0) > 0) {
        Handle(message);
    }
}

void DeskWindow::Handle(MSG& message) {
    if (!TranslateKeys(message)) {
        m_host.Handle(message);
    }
    // Here no call of the module is under way, as it may be in a handler: a question has a loop of its own.
    if (m_nextLanguage) {
        ChangeLanguageNow();
    }
}

bool DeskWindow::TranslateKeys(MSG& message) {
    if (m_explanation && message.hwnd == m_explanation && message.message == WM_KEYDOWN &&
        message.wParam == VK_ESCAPE) {
        DestroyWindow(m_explanation);
        return true;
    }
    return (message.hwnd == m_window || IsChild(m_window, message.hwnd)) &&
           TranslateAcceleratorW(m_window, m_keys, &message);
}

LRESULT CALLBACK DeskWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        auto* self = static_cast<DeskWindow*>(create->lpCreateParams);
        self->m_window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<DeskWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        self->m_window = nullptr;
        return DefWindowProcW(window, message, wParam, lParam);
    }
    return self->OnMessage(message, wParam, lParam);
}

LRESULT DeskWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    switch (message) {
        case WM_COMMAND:
            if (HIWORD(wParam) <= 1) {  // from a menu or a key
                OnCommand(LOWORD(wParam));
            }
            return 0;
        case WM_NOTIFY:
            return OnNotify(*reinterpret_cast<NMHDR*>(lParam));
        case WM_SIZE:
            Arrange();
            return 0;
        case WM_SETFOCUS:
            SetFocus(m_panes[static_cast<std::size_t>(m_active)]->Window());
            return 0;
        case WM_INITMENUPOPUP:
            OnInitMenu(reinterpret_cast<HMENU>(wParam));
            return 0;
        case WM_CONTEXTMENU:
            OnContextMenu(reinterpret_cast<HWND>(wParam), point, lParam == -1);
            return 0;
        case WM_SETCURSOR:
            if (LOWORD(lParam) == HTCLIENT && OnSetCursor()) {
                return TRUE;
            }
            break;
        case WM_LBUTTONDOWN:
            m_dragged = DividerAt(point);
            if (m_dragged >= 0) {
                SetCapture(m_window);
            }
            return 0;
        case WM_MOUSEMOVE:
            OnDrag(point);
            return 0;
        case WM_LBUTTONUP:
            ReleaseCapture();
            return 0;
        case WM_CAPTURECHANGED:
            m_dragged = -1;
            return 0;
        case WM_CLOSE:
            m_host.CloseDialogs();
            if (m_window) {
                DestroyWindow(m_window);
            }
            return 0;
        case WM_ENDSESSION:
            if (wParam) {
                Save();
            }
            return 0;
        case WM_DESTROY:
            OnDestroy();
            return 0;
        case kJournalGrew:
            OnJournalGrew();
            return 0;
        default:
            break;
    }
    return DefWindowProcW(m_window, message, wParam, lParam);
}

LRESULT DeskWindow::OnNotify(NMHDR& header) {
    const std::size_t index = header.idFrom - kFirstListId;
    if (index >= m_panes.size() || !m_panes[index] || header.hwndFrom != m_panes[index]->Window()) {
        return 0;
    }
    if (header.code == static_cast<UINT>(NM_SETFOCUS)) {
        m_active = static_cast<int>(index);
    } else if (header.code == static_cast<UINT>(NM_DBLCLK)) {
        if (m_panes[index]->Selected()) {
            OnCommand(kDefaultAction);
        }
        return 0;
    }
    return m_panes[index]->OnNotify(header);
}

void DeskWindow::OnDestroy() {
    m_settings = Settings();
    m_host.Services().journal.onLine = nullptr;
}

PaneBox DeskWindow::ListArea() const {
    RECT client{};
    RECT status{};
    GetClientRect(m_window, &client);
    GetWindowRect(m_status, &status);
    return {0, 0, client.right, client.bottom - (status.bottom - status.top)};
}

void DeskWindow::Arrange() {
    if (!m_status || !m_panes[kDeskListCount - 1]) {
        return;
    }
    SendMessageW(m_status, WM_SIZE, 0, 0);
    const PaneBox area = ListArea();
    const int parts[] = {area.right - Scaled(kLanguagePart), -1};
    SendMessageW(m_status, SB_SETPARTS, 2, reinterpret_cast<LPARAM>(parts));
    const auto boxes = m_settings.panes.Panes(area.right, area.bottom, Scaled(kGap));
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        m_panes[i]->Place(boxes[i]);
    }
    RedrawWindow(m_window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

int DeskWindow::DividerAt(POINT point) const {
    const PaneBox area = ListArea();
    const auto boxes = m_settings.panes.Dividers(area.right, area.bottom, Scaled(kGap));
    for (int i = 0; i < kDividerCount; ++i) {
        const auto& [left, top, right, bottom] = boxes[static_cast<std::size_t>(i)];
        if (point.x >= left && point.x < right && point.y >= top && point.y < bottom) {
            return i;
        }
    }
    return -1;
}

bool DeskWindow::OnSetCursor() const {
    POINT point{};
    GetCursorPos(&point);
    ScreenToClient(m_window, &point);
    const int divider = DividerAt(point);
    if (divider < 0) {
        return false;
    }
    const auto* cursor = reinterpret_cast<const wchar_t*>(IsUpright(divider) ? IDC_SIZEWE : IDC_SIZENS);
    SetCursor(LoadCursorW(nullptr, cursor));
    return true;
}

void DeskWindow::OnDrag(POINT point) {
    const PaneBox area = ListArea();
    if (m_dragged < 0 || area.right <= 0 || area.bottom <= 0) {
        return;
    }
    m_settings.panes.Move(m_dragged, IsUpright(m_dragged) ? static_cast<double>(point.x) / area.right
                                                          : static_cast<double>(point.y) / area.bottom);
    Arrange();
}

DeskSettings DeskWindow::Settings() const {
    DeskSettings settings = m_settings;
    if (!m_window) {
        return settings;
    }
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    if (GetWindowPlacement(m_window, &placement)) {
        const RECT& box = placement.rcNormalPosition;
        settings.placed = true;
        settings.window = {box.left, box.top, box.right, box.bottom};
        settings.maximized = IsZoomed(m_window) != FALSE;
        settings.dpi = Scaled(kPlainDpi);
    }
    for (std::size_t i = 0; i < m_panes.size(); ++i) {
        settings.lists[i] = m_panes[i]->Settings();
    }
    return settings;
}

void DeskWindow::SetStatus(const std::string& utf8) {
    SendMessageW(m_status, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(Wide(utf8).c_str()));
}

void DeskWindow::ShowLanguage() {
    const std::string text = m_host.Loaded()
                                 ? Say("%1 in language %2", {"EmendoOrd " + FileVersion(m_host.ModulePath()),
                                                             std::to_string(LanguageOf(m_language))})
                                 : Say("No module");
    SendMessageW(m_status, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(Wide(text).c_str()));
}

std::wstring DeskWindow::StatusText() const {
    const auto length = LOWORD(SendMessageW(m_status, SB_GETTEXTLENGTHW, 0, 0));
    std::wstring text(length, L'\0');
    SendMessageW(m_status, SB_GETTEXTW, 0, reinterpret_cast<LPARAM>(text.data()));
    return text;
}
