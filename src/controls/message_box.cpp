#include "controls/message_box.h"

#include "controls/dialog_template.h"
#include "controls/message_box_layout.h"
#include "framework/dialog.h"
#include "framework/owned_handle.h"
#include "framework/window_helpers.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

constexpr WORD kMessageId = 1001;
constexpr DWORD kBoxStyle = WS_POPUP | WS_VISIBLE | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_CENTER;
constexpr UINT kIconBits = 0xF0;

struct Button {
    WORD id;
    const char* caption;
};

std::vector<Button> ButtonsOf(UINT style) {
    const Button ok{IDOK, "&Ok"};
    if ((style & MB_TYPEMASK) == MB_OKCANCEL) {
        return {ok, {IDCANCEL, "Cancel"}};
    }
    return {ok};
}

FontHandle MessageFont() {
    NONCLIENTMETRICSA metrics{};
    metrics.cbSize = sizeof(metrics);
    if (!SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0)) {
        return FontHandle(nullptr);
    }
    return FontHandle(CreateFontIndirectA(&metrics.lfMessageFont));
}

// The coloured box itself; it ends by storing the button and is destroyed by its loop.
class CMessageBoxWindow : public CDialog {
public:
    CMessageBoxWindow(std::string message, std::string caption, UINT style,
                      const XMessageBoxParameters& parameters)
        : m_message(std::move(message)),
          m_caption(std::move(caption)),
          m_buttons(ButtonsOf(style)),
          m_font(MessageFont()),
          m_textColour(parameters.textColour != CLR_INVALID ? parameters.textColour
                                                            : GetSysColor(COLOR_WINDOWTEXT)),
          m_backgroundColour(parameters.backgroundColour != CLR_INVALID ? parameters.backgroundColour
                                                                        : GetSysColor(COLOR_WINDOW)),
          m_background(CreateSolidBrush(m_backgroundColour)) {}

    bool Create(HWND owner);
    // Runs until a button was pressed, the window is gone, or the thread is to quit.
    int Run();

protected:
    BOOL OnInitDialog() override;
    void OnOK() override { m_pressed = IDOK; }
    void OnCancel() override { m_pressed = IDCANCEL; }
    BOOL OnEraseBkgnd(HDC dc);
    HBRUSH OnCtlColor(HDC dc, HWND control, UINT message);
    DECLARE_MESSAGE_MAP()

private:
    MessageBoxLayout Measure() const;
    bool Handle(MSG& message);
    bool CopyOnKey(const MSG& key) const;
    std::string TextToCopy() const;

    std::string m_message;
    std::string m_caption;
    std::vector<Button> m_buttons;
    FontHandle m_font;
    COLORREF m_textColour;
    COLORREF m_backgroundColour;
    BrushHandle m_background;
    LONG m_messageAreaUnits = 0;
    int m_pressed = 0;
};

BEGIN_MESSAGE_MAP(CMessageBoxWindow, CDialog)
ON_WM_ERASEBKGND()
ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

MessageBoxLayout CMessageBoxWindow::Measure() const {
    const MessageBoxMetrics metrics = SystemMessageBoxMetrics();
    const WindowDc screen(nullptr);
    const SelectedObject font(screen.Get(), m_font ? m_font.Get() : GetStockObject(DEFAULT_GUI_FONT));
    RECT text{0, 0, MessageWidthLimit(metrics), 0};
    DrawTextA(screen.Get(), m_message.c_str(), -1, &text,
              DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS);
    std::vector<int> captionWidths;
    for (const Button& button : m_buttons) {
        SIZE extent{};
        GetTextExtentPoint32A(screen.Get(), button.caption, static_cast<int>(std::strlen(button.caption)),
                              &extent);
        captionWidths.push_back(extent.cx);
    }
    return LayOutMessageBox(metrics, {text.right, text.bottom}, captionWidths);
}

// Whole dialog units that hold the pixels; without a font of its own a dialog's units are the base units.
SIZE ToDialogUnits(SIZE pixels) {
    const SIZE base = SystemMessageBoxMetrics().baseUnits;
    return {(pixels.cx * 4 + base.cx - 1) / base.cx, (pixels.cy * 8 + base.cy - 1) / base.cy};
}

RECT ToDialogUnits(const RECT& pixels) {
    const SIZE from = ToDialogUnits(SIZE{pixels.left, pixels.top});
    const SIZE size = ToDialogUnits(SIZE{pixels.right - pixels.left, pixels.bottom - pixels.top});
    return {from.cx, from.cy, from.cx + size.cx, from.cy + size.cy};
}

bool CMessageBoxWindow::Create(HWND owner) {
    const MessageBoxLayout layout = Measure();
    const RECT message = ToDialogUnits(layout.message);
    // Whole units may make the message a little higher than its pixels; its area never ends above it.
    m_messageAreaUnits = std::max(ToDialogUnits(SIZE{0, layout.messageAreaHeight}).cy, message.bottom);
    CXDialogTemplate box(m_caption, kBoxStyle);
    box.SetSize(ToDialogUnits(layout.client));
    box.Add({"Static", WS_CHILD | WS_VISIBLE | SS_LEFT | SS_NOPREFIX, ToDialogUnits(layout.message),
             kMessageId, m_message});
    DWORD kind = BS_DEFPUSHBUTTON;
    for (std::size_t index = 0; index < m_buttons.size(); ++index) {
        box.Add({"Button", WS_CHILD | WS_VISIBLE | WS_TABSTOP | kind, ToDialogUnits(layout.buttons[index]),
                 m_buttons[index].id, m_buttons[index].caption});
        kind = BS_PUSHBUTTON;
    }
    const std::vector<std::byte> bytes = box.Build();
    return CreateIndirect(reinterpret_cast<const DLGTEMPLATE*>(bytes.data()), owner);
}

BOOL CMessageBoxWindow::OnInitDialog() {
    CDialog::OnInitDialog();
    for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child && m_font;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        ::SendMessageA(child, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.Get()), FALSE);
    }
    return TRUE;
}

BOOL CMessageBoxWindow::OnEraseBkgnd(HDC dc) {
    RECT area = GetClientRect();
    FillRect(dc, &area, GetSysColorBrush(COLOR_BTNFACE));
    RECT messageArea{0, 0, 0, m_messageAreaUnits};
    MapDialogRect(m_hWnd, &messageArea);
    area.bottom = messageArea.bottom;
    FillRect(dc, &area, m_background.Get());
    return TRUE;
}

HBRUSH CMessageBoxWindow::OnCtlColor(HDC dc, HWND control, UINT message) {
    if (control != GetDlgItem(kMessageId)) {
        return CDialog::OnCtlColor(dc, control, message);
    }
    SetTextColor(dc, m_textColour);
    SetBkColor(dc, m_backgroundColour);
    return m_background.Get();
}

int CMessageBoxWindow::Run() {
    while (m_hWnd && m_pressed == 0) {
        MSG message;
        if (!PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            WaitMessage();
        } else if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return IDCANCEL;
        } else if (!Handle(message)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
    return m_pressed != 0 ? m_pressed : IDCANCEL;
}

bool CMessageBoxWindow::Handle(MSG& message) {
    if (message.message == WM_KEYDOWN) {
        // The space bar must not press the button by accident.
        if (message.wParam == VK_SPACE || CopyOnKey(message)) {
            return true;
        }
    }
    return IsDialogMessage(&message);
}

std::string CMessageBoxWindow::TextToCopy() const {
    constexpr const char* separator = "---------------------------\r\n";
    constexpr std::size_t messageLimit = 4000;
    constexpr std::size_t textLimit = 8192;
    std::string text = separator + GetWindowText() + "\r\n" + separator;
    text += GetDlgItemText(kMessageId).substr(0, messageLimit) + "\r\n" + separator;
    for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (HasClass(child, "Button")) {
            std::string caption = TextOf(child);
            std::erase(caption, '&');
            text += caption + "   ";
        }
    }
    text += std::string("\r\n") + separator;
    return text.substr(0, textLimit - 1);
}

// Another program may be holding the clipboard for a moment.
bool OpenClipboardPatiently(HWND window) {
    for (int attempt = 0; attempt < 50; ++attempt) {
        if (OpenClipboard(window)) {
            return true;
        }
        Sleep(2);
    }
    return false;
}

bool PutOnClipboard(HWND window, const std::string& text) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    if (!memory || !OpenClipboardPatiently(window)) {
        GlobalFree(memory);
        return false;
    }
    std::memcpy(GlobalLock(memory), text.c_str(), text.size() + 1);
    GlobalUnlock(memory);
    EmptyClipboard();
    const bool given = SetClipboardData(CF_TEXT, memory) != nullptr;
    CloseClipboard();
    if (!given) {
        GlobalFree(memory);
    }
    return given;
}

bool CMessageBoxWindow::CopyOnKey(const MSG& key) const {
    const bool controlHeld = GetKeyState(VK_CONTROL) < 0;
    return controlHeld && key.wParam == 'C' && PutOnClipboard(m_hWnd, TextToCopy());
}

}  // namespace

int XMessageBox(HWND owner, const std::string& message, const std::string& caption, UINT style,
                const XMessageBoxParameters& parameters) {
    if (!(style & kXmbNoSound)) {
        MessageBeep(style & kIconBits);
    }
    if (!owner) {
        owner = GetLastActivePopup(GetActiveWindow());
    }
    CMessageBoxWindow box(message, caption, style, parameters);
    if (!box.Create(owner)) {
        return IDCANCEL;
    }
    int pressed = IDCANCEL;
    {
        // The owner comes back before the box goes, so that the system gives the activation back to it, and
        // however the box ends.
        const CallNote ownerOff(owner, [](void* window, std::intptr_t) {
            if (IsWindow(static_cast<HWND>(window))) {
                EnableWindow(static_cast<HWND>(window), TRUE);
            }
        });
        EnableWindow(owner, FALSE);
        pressed = box.Run();
    }
    box.DestroyWindow();
    return pressed;
}
