#include "shown_is_sent/hands.h"

#include "trade/trade_spi.h"

#include <commctrl.h>

#include <cstring>

namespace {

constexpr int kTree = 11100;
constexpr int kCells = 11101;
constexpr int kPickButton = 10000;
constexpr UINT kSelectCode = WM_USER + 110;

HWND EditOf(HWND control) {
    const HWND edit = FindWindowExA(control, nullptr, "Edit", nullptr);
    return edit ? edit : control;
}

std::string WindowText(HWND window) {
    char text[2000] = "";
    GetWindowTextA(window, text, sizeof text);
    return text;
}

BOOL CALLBACK FindPopup(HWND window, LPARAM found) {
    if (IsWindowVisible(window) && GetDlgItem(window, kTree)) {
        *reinterpret_cast<HWND*>(found) = window;
    }
    return TRUE;
}

HTREEITEM Next(HWND tree, UINT relation, HTREEITEM item) {
    return reinterpret_cast<HTREEITEM>(
        SendMessageA(tree, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

// The commodities of every exchange, laid open.
std::vector<HTREEITEM> Commodities(HWND tree) {
    std::vector<HTREEITEM> nodes;
    for (HTREEITEM root = Next(tree, TVGN_ROOT, nullptr); root; root = Next(tree, TVGN_NEXT, root)) {
        SendMessageA(tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(root));
        for (HTREEITEM node = Next(tree, TVGN_CHILD, root); node; node = Next(tree, TVGN_NEXT, node)) {
            nodes.push_back(node);
        }
    }
    return nodes;
}

POINT MiddleOf(const RECT& place) {
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

POINT PlaceOf(HWND tree, HTREEITEM item) {
    SendMessageA(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
    RECT place{};
    std::memcpy(&place, &item, sizeof item);
    SendMessageA(tree, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&place));
    return MiddleOf(place);
}

}  // namespace

std::string View::Text(int id) const {
    const HWND edit = EditOf(Item(id));
    char kind[16] = "";
    GetClassNameA(edit, kind, sizeof kind);
    if (lstrcmpiA(kind, "Edit") != 0) {
        return WindowText(edit);
    }
    // The edit's own line, which nobody shortens on the way.
    char line[2000] = "";
    const WORD room = sizeof line - 1;
    std::memcpy(line, &room, sizeof room);
    const auto length = SendMessageA(edit, EM_GETLINE, 0, reinterpret_cast<LPARAM>(line));
    return std::string(line, static_cast<std::size_t>(length));
}

std::string View::LineText(int id, int line) const {
    const auto length = SendMessageA(Item(id), CB_GETLBTEXTLEN, static_cast<WPARAM>(line), 0);
    if (length < 0) {
        return {};
    }
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    SendMessageA(Item(id), CB_GETLBTEXT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(text.data()));
    return text.c_str();
}

std::string View::Everything() const {
    std::string all;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        char kind[16] = "";
        GetClassNameA(child, kind, sizeof kind);
        const int id = GetDlgCtrlID(child);
        const bool combo = lstrcmpiA(kind, "ComboBox") == 0;
        if (IsWindowVisible(child) && (combo || lstrcmpiA(kind, "Edit") == 0)) {
            const std::string line = combo ? " line " + std::to_string(Line(id)) : "";
            const std::string field = "#" + std::to_string(id) + " '" + Text(id) + "'" + line;
            all += Usable(id) ? " " + field : " [" + field + "]";
        }
    }
    return all + "\n";
}

std::string Step::Words() const {
    static constexpr const char* kActs[] = {"choose", "type", "keys",    "wheel",    "spin",    "click",
                                            "pick",   "date", "account", "position", "changed", "confirm"};
    std::string words = kActs[act];
    if (id) {
        words += " #" + std::to_string(id);
    }
    if (!text.empty()) {
        words += " \"" + text + "\"";
    }
    return words + " " + std::to_string(number);
}

// --- boxes ---

BoxHook* BoxHook::s_current = nullptr;

BoxHook::BoxHook() : m_hook(SetWindowsHookExA(WH_CBT, &Procedure, nullptr, GetCurrentThreadId())) {
    s_current = this;
}

BoxHook::~BoxHook() {
    UnhookWindowsHookEx(m_hook);
    s_current = nullptr;
}

LRESULT CALLBACK BoxHook::Procedure(int code, WPARAM wParam, LPARAM lParam) {
    const auto window = reinterpret_cast<HWND>(wParam);
    if (s_current && code == HCBT_ACTIVATE && window != s_current->m_box) {
        char kind[16] = "";
        GetClassNameA(window, kind, sizeof kind);
        const HWND system = GetDlgItem(window, 0xFFFF);
        const HWND message = system ? system : GetDlgItem(window, 1001);
        if (message && std::strcmp(kind, "#32770") == 0) {
            s_current->m_box = window;
            s_current->Answer(window, message);
        }
    } else if (s_current && code == HCBT_DESTROYWND && window == s_current->m_box) {
        s_current->m_box = nullptr;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void BoxHook::Answer(HWND box, HWND message) {
    const bool ok = GetDlgItem(box, IDOK) != nullptr;
    const bool cancel = GetDlgItem(box, IDCANCEL) != nullptr;
    const bool yes = GetDlgItem(box, IDYES) != nullptr;
    bool affirmed = false;
    if (sequel) {
        affirmed = sequel->Box(WindowText(message), WindowText(box),
                               yes            ? "Yes/No"
                               : ok && cancel ? "OK/Cancel"
                                              : "OK");
    } else {
        ++unasked;
    }
    // The button of a system box with a single one answers to either number.
    const int button = yes ? (affirmed ? IDYES : IDNO) : affirmed || !cancel ? IDOK : IDCANCEL;
    PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(GetDlgItem(box, button) ? button : IDCANCEL),
                 reinterpret_cast<LPARAM>(GetDlgItem(box, button)));
}

// --- hands ---

int Hands::FocusId() const {
    HWND focus = GetFocus();
    while (focus && GetParent(focus) != view.dialog) {
        focus = GetParent(focus);
    }
    return focus ? GetDlgCtrlID(focus) : 0;
}

bool Hands::Focus(int id) {
    if (!Open() || !view.Usable(id)) {
        return false;
    }
    if (FocusId() != id) {
        SendMessageA(view.dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(view.Item(id)), TRUE);
        Pump();
    }
    // Leaving a control may shut the one that was meant.
    return Open() && FocusId() == id;
}

void Hands::Key(unsigned virtualKey) {
    const UINT scan = MapVirtualKeyA(virtualKey, 0);
    PostMessageA(GetFocus(), WM_KEYDOWN, virtualKey, static_cast<LPARAM>(1 | (scan << 16)));
    Pump();
}

void Hands::ClickAt(HWND window, POINT point) {
    const LPARAM where = MAKELPARAM(point.x, point.y);
    POINT screen = point;
    ClientToScreen(window, &screen);
    SetCursorPos(screen.x, screen.y);
    PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, where);
    PostMessageA(window, WM_LBUTTONUP, 0, where);
    Pump();
}

void Hands::Press(int id, bool mouse) {
    if (mouse) {
        ClickAt(view.Item(id), {5, 5});
    } else {
        Key(VK_RETURN);
    }
}

void Hands::Choose(const Step& step) {
    const HWND combo = view.Item(step.id);
    const int count = Focus(step.id) ? view.Lines(step.id) : 0;
    if (count <= 0) {
        return;
    }
    const int line = (step.number / 3) % count;
    if (step.number % 3 == 0) {  // with the arrows
        for (int presses = 0; presses < 8 && Open() && view.Line(step.id) != line; ++presses) {
            Key(view.Line(step.id) < line ? VK_DOWN : VK_UP);
        }
        return;
    }
    if (step.number % 3 == 1) {
        SendMessageA(combo, CB_SETCURSEL, static_cast<WPARAM>(line), 0);
        Pump();
        return;
    }
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(combo, &info);
    SendMessageA(combo, CB_SHOWDROPDOWN, TRUE, 0);
    RECT place{};
    SendMessageA(info.hwndList, LB_SETTOPINDEX, static_cast<WPARAM>(line), 0);
    SendMessageA(info.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&place));
    ClickAt(info.hwndList, MiddleOf(place));
    if (Open() && SendMessageA(combo, CB_GETDROPPEDSTATE, 0, 0)) {
        SendMessageA(combo, CB_SHOWDROPDOWN, FALSE, 0);
    }
}

// 0 replaces the text, 1 goes on at its end, 2 types where the caret is.
void Hands::Type(const Step& step) {
    if (!Focus(step.id)) {
        return;
    }
    if (step.number == 0) {
        SendMessageA(GetFocus(), EM_SETSEL, 0, -1);
    } else if (step.number == 1) {
        Key(VK_END);
    }
    PostMessageA(GetFocus(), WM_KEYDOWN, VK_SHIFT, 1);  // a key before the characters, as every operator has
    for (const char character : step.text) {
        PostMessageA(GetFocus(), WM_CHAR, static_cast<unsigned char>(character), 1);
    }
    Pump();
}

void Hands::PickByPopup(int number) {
    ClickAt(view.Item(kPickButton), {3, 3});
    HWND popup = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &FindPopup, reinterpret_cast<LPARAM>(&popup));
    if (!popup) {
        return;
    }
    const HWND tree = GetDlgItem(popup, kTree);
    const HWND cells = GetDlgItem(popup, kCells);
    const std::vector<HTREEITEM> nodes = Commodities(tree);
    if (!nodes.empty()) {
        const HTREEITEM node = nodes[static_cast<std::size_t>(number) % nodes.size()];
        ClickAt(tree, PlaceOf(tree, node));
        if (const HTREEITEM series = Next(tree, TVGN_CHILD, node)) {
            ClickAt(tree, PlaceOf(tree, series));
        }
        if (number % 8 != 7 && IsWindowVisible(popup)) {
            const int row = number / 64 % 5;  // some rows are blank
            RECT place{LVIR_BOUNDS, number / 512 % 2, 0, 0};
            SendMessageA(cells, LVM_GETSUBITEMRECT, static_cast<WPARAM>(row),
                         reinterpret_cast<LPARAM>(&place));
            ClickAt(cells, {place.left + 5, (place.top + place.bottom) / 2});
        }
    }
    if (Open() && IsWindowVisible(popup)) {
        ClickAt(view.Item(kPickButton), {3, 3});
    }
}

void Hands::Do(const Step& step) {
    const auto number = static_cast<unsigned>(step.number);
    switch (step.act) {
        case Step::Choose:
            return Choose(step);
        case Step::Type:
            return Type(step);
        case Step::Keys:
            for (int times = 0; times < step.number / 256 && Focus(step.id); ++times) {
                Key(number % 256);
            }
            return;
        case Step::Wheel:
            if (Focus(step.id)) {
                PostMessageA(GetFocus(), WM_MOUSEWHEEL, MAKEWPARAM(0, step.number > 0 ? 120 : -120), 0);
                Pump();
            }
            return;
        case Step::Spin:
        case Step::Click:
            if (view.Usable(step.id)) {
                RECT client{};
                GetClientRect(view.Item(step.id), &client);
                ClickAt(view.Item(step.id), {client.right / 2, step.act == Step::Click ? client.bottom / 2
                                                               : step.number > 0       ? 2
                                                                                       : client.bottom - 3});
            }
            return;
        case Step::Pick:
            if (!view.Usable(kPickButton)) {
                return;
            }
            if (step.text.empty()) {
                PickByPopup(step.number);
            } else {
                SendMessageA(view.dialog, kSelectCode, reinterpret_cast<WPARAM>(step.text.c_str()),
                             reinterpret_cast<LPARAM>(number % 2 ? "SGB" : "SGA"));
                Pump();
            }
            return;
        case Step::Date:
            if (view.Usable(step.id)) {
                SYSTEMTIME time{2031,
                                static_cast<WORD>(1 + number % 12),
                                0,
                                static_cast<WORD>(1 + number % 28),
                                static_cast<WORD>(number % 24),
                                5,
                                6,
                                0};
                SendMessageA(view.Item(step.id), DTM_SETSYSTEMTIME, GDT_VALID,
                             reinterpret_cast<LPARAM>(&time));
            }
            return;
        case Step::Account:
            return m_world.Toggle(step.number);
        case Step::Position:
            if (ListWindow& list = m_lists.windows[number % 2]; list.open && list.notify) {
                m_world.position_.price = step.number / 2;
                list.notify->OnSelectData(&list, 0, &m_world.position_);
                Pump();
            }
            return;
        case Step::Changed:
            for (ITradeSpi* listener : m_world.listeners) {
                HWND window = nullptr;
                if (listener->GetNotifyWnd(&window)) {
                    PostMessageA(window, kWmTradeSpi, reinterpret_cast<WPARAM>(&m_world.position_),
                                 kPositionChangedEvent << 24);
                }
            }
            return Pump();
        case Step::Confirm:
            return;
    }
}
