#include "shown_is_sent/hands.h"

#include "res/resource_ids.h"
#include "trade/trade_spi.h"

#include <commctrl.h>

#include <array>
#include <cstring>
#include <thread>

namespace {

constexpr int kTree = 11100;
constexpr int kCells = 11101;
constexpr UINT kSelectCode = WM_USER + 110;

BOOL CALLBACK FindPopup(HWND window, LPARAM found) {
    if (IsWindowVisible(window) && GetDlgItem(window, kTree)) {
        *reinterpret_cast<HWND*>(found) = window;
    }
    return TRUE;
}

// The commodities of every exchange, laid open.
std::vector<HTREEITEM> CommodityNodes(HWND tree) {
    std::vector<HTREEITEM> nodes;
    for (HTREEITEM root = TreeView_GetRoot(tree); root; root = TreeView_GetNextSibling(tree, root)) {
        TreeView_Expand(tree, root, TVE_EXPAND);
        for (HTREEITEM node = TreeView_GetChild(tree, root); node;
             node = TreeView_GetNextSibling(tree, node)) {
            nodes.push_back(node);
        }
    }
    return nodes;
}

POINT MiddleOf(const RECT& place) {
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

POINT PlaceOf(HWND tree, HTREEITEM item) {
    RECT place{};
    TreeView_EnsureVisible(tree, item);
    TreeView_GetItemRect(tree, item, &place, TRUE);
    return MiddleOf(place);
}

}  // namespace

HWND View::Item(int id) const {
    HWND& item = m_items[id];
    item = IsWindow(item) ? item : GetDlgItem(dialog, id);
    return item;
}

HWND View::Edit(int id) const {
    HWND& edit = m_edits[id];
    if (!IsWindow(edit)) {
        const HWND item = Item(id);
        const HWND inner = FindWindowExA(item, nullptr, "Edit", nullptr);
        edit = inner ? inner : ClassOf(item) == "Edit" ? item : nullptr;
    }
    return edit;
}

std::string View::Text(int id) const {
    const HWND edit = Edit(id);
    if (!edit) {
        return TextOf(Item(id));
    }
    // The edit's own line, which nobody shortens on the way.
    std::array<wchar_t, 1000> line{static_cast<wchar_t>(999)};
    const LRESULT length = SendMessageW(edit, EM_GETLINE, 0, reinterpret_cast<LPARAM>(line.data()));
    return Utf8({line.data(), static_cast<std::size_t>(length)});
}

int View::FocusId() const {
    HWND focus = GetFocus();
    while (focus && GetParent(focus) != dialog) {
        focus = GetParent(focus);
    }
    return focus ? GetDlgCtrlID(focus) : 0;
}

std::string View::Everything() const {
    std::string all;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const int id = GetDlgCtrlID(child);
        const bool combo = ClassOf(child) == "ComboBox";
        if (IsWindowVisible(child) && (combo || ClassOf(child) == "Edit")) {
            const std::string field = "#" + std::to_string(id) + " '" + Text(id) + "'" +
                                      (combo ? " line " + std::to_string(Line(id)) : "");
            all += Usable(id) ? " " + field : " [" + field + "]";
        }
    }
    return all + "\n";
}

IEmendixOper* Opening::Open(IEmendix* api, World& world, HWND parent) const {
    if (fillDialog) {
        void* record = recordKind == kRecordKindFill ? static_cast<void*>(&world.fill) : &world.order;
        return api->OpenFillDialog(mode, record, recordKind, parent);
    }
    return api->OpenOrderDialog(mode, recordKind == kRecordKindOrder ? &world.order : nullptr, parent);
}

std::string Step::Words() const {
    static constexpr const char* kActs[] = {
        "choose",   "type",    "keys",    "wheel", "spin",  "click", "pick",   "date",         "account",
        "position", "changed", "confirm", "press", "point", "burst", "vanish", "lose the host"};
    return std::string(kActs[act]) + (id ? " #" + std::to_string(id) : "") +
           (text.empty() ? "" : " \"" + text + "\"") + " " + std::to_string(number);
}

bool Hands::Focus(int id) {
    if (!Open() || !view.Usable(id)) {
        return false;
    }
    if (view.FocusId() != id) {
        // As WM_NEXTDLGCTL does, without its search for a default button, which costs a hundred looks.
        const HWND item = view.Item(id);
        if (SendMessageA(item, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) {
            SendMessageA(item, EM_SETSEL, 0, -1);
        }
        SetFocus(item);
        Pump();
    }
    return Open() && view.FocusId() == id;
}

void Hands::Key(unsigned virtualKey) {
    PostMessageA(GetFocus(), WM_KEYDOWN, virtualKey,
                 static_cast<LPARAM>(1 | MapVirtualKeyA(virtualKey, 0) << 16));
    Pump();
}

void Hands::ClickAt(HWND window, POINT point) {
    POINT screen = point;
    ClientToScreen(window, &screen);
    SetCursorPos(screen.x, screen.y);
    m_loop.ClickAt(window, point);
}

void Hands::Press(int id, bool mouse) {
    if (mouse) {
        m_loop.Click(view.Item(id));
    } else {
        Key(VK_RETURN);
    }
}

// With the arrows, by a program, or from the open list.
void Hands::Choose(int id, int how, int line) {
    const HWND combo = view.Item(id);
    const int count = Focus(id) ? static_cast<int>(SendMessageA(combo, CB_GETCOUNT, 0, 0)) : 0;
    if (count <= 0) {
        return;
    }
    line %= count;
    if (how == 0) {
        for (int presses = 0; presses < 8 && Open() && view.Line(id) != line; ++presses) {
            Key(view.Line(id) < line ? VK_DOWN : VK_UP);
        }
    } else if (how == 1) {
        SendMessageA(combo, CB_SETCURSEL, static_cast<WPARAM>(line), 0);
        Pump();
    } else {
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        GetComboBoxInfo(combo, &info);
        RECT place{};
        SendMessageA(combo, CB_SHOWDROPDOWN, TRUE, 0);
        SendMessageA(info.hwndList, LB_SETTOPINDEX, static_cast<WPARAM>(line), 0);
        SendMessageA(info.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(line),
                     reinterpret_cast<LPARAM>(&place));
        ClickAt(info.hwndList, MiddleOf(place));
        SendMessageA(combo, CB_SHOWDROPDOWN, FALSE, 0);
    }
}

// Number 0 replaces the text, 1 goes on at its end, 2 types where the caret is.
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
    m_loop.Type(GetFocus(), step.text);
}

void Hands::PickByPopup(int number) {
    ClickAt(view.Item(IDC_CONTRACT_PICK), {3, 3});
    HWND popup = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &FindPopup, reinterpret_cast<LPARAM>(&popup));
    const HWND tree = GetDlgItem(popup, kTree);
    const std::vector<HTREEITEM> nodes = CommodityNodes(tree);
    if (!nodes.empty()) {
        const HTREEITEM node = nodes[static_cast<std::size_t>(number) % nodes.size()];
        ClickAt(tree, PlaceOf(tree, node));
        if (const HTREEITEM series = TreeView_GetChild(tree, node)) {
            ClickAt(tree, PlaceOf(tree, series));
        }
        if (number % 8 != 7 && IsWindowVisible(popup)) {
            RECT place{};
            ListView_GetSubItemRect(GetDlgItem(popup, kCells), number / 64 % 5 /* some are blank */,
                                    number / 512 % 2, LVIR_BOUNDS, &place);
            ClickAt(GetDlgItem(popup, kCells), {place.left + 5, (place.top + place.bottom) / 2});
        }
    }
    if (IsWindowVisible(popup)) {
        ClickAt(view.Item(IDC_CONTRACT_PICK), {3, 3});
    }
}

// Any thread may.
void Hands::Report(int times) {
    for (ITradeSpi* listener : m_world.listeners) {
        HWND window = nullptr;
        listener->GetNotifyWnd(&window);
        for (int i = 0; i < times; ++i) {
            PostMessageA(window, kWmTradeSpi, reinterpret_cast<WPARAM>(&m_world.changed),
                         kPositionChangedEvent << 24);
        }
    }
}

void Hands::Do(const Step& step) {
    const auto number = static_cast<unsigned>(step.number);
    const bool usable = view.Usable(step.act == Step::Pick ? IDC_CONTRACT_PICK : step.id);
    const HWND item = view.Item(step.id);
    RECT client{};
    GetClientRect(item, &client);
    switch (step.act) {
        case Step::Choose:
            return Choose(step.id, step.number % 3, step.number / 3);
        case Step::Type:
            return Type(step);
        case Step::Keys:
            for (int times = 0; times < step.number / 256 && Focus(step.id); ++times) {
                Key(number % 256);
            }
            return;
        case Step::Wheel:
            if (Focus(step.id)) {
                PostMessageA(GetFocus(), WM_MOUSEWHEEL, MAKEWPARAM(0, number ? 120 : -120), 0);
                Pump();
            }
            return;
        case Step::Spin:
            return usable ? ClickAt(item, {client.right / 2, number ? 2 : client.bottom - 3}) : void();
        case Step::Click:
            return usable ? ClickAt(item, MiddleOf(client)) : void();
        case Step::Pick:
            if (usable && !step.text.empty()) {
                SendMessageA(view.dialog, kSelectCode, reinterpret_cast<WPARAM>(step.text.c_str()),
                             reinterpret_cast<LPARAM>(number % 2 ? "SGB" : "SGA"));
                Pump();
            } else if (usable) {
                PickByPopup(step.number);
            }
            return;
        case Step::Date:
            if (usable) {
                const SYSTEMTIME time{2031,
                                      static_cast<WORD>(1 + number % 12),
                                      0,
                                      static_cast<WORD>(1 + number % 28),
                                      static_cast<WORD>(number % 24),
                                      5,
                                      6,
                                      0};
                SendMessageA(item, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
            }
            return;
        case Step::Account:
            return m_world.Toggle(step.number);
        case Step::Position:
            if (ListWindow& list = m_lists.windows[number % 2]; list.open && list.notify) {
                m_world.changed.price = step.number / 2;
                list.notify->OnSelectData(&list, 0, &m_world.changed);
                Pump();
            }
            return;
        case Step::Changed:
            Report(1);
            return Pump();
        case Step::Burst:
            std::thread([this] { Report(50); }).join();
            return Pump();
        case Step::Press:
            return Key(number);
        case Step::Point:
            if (const HWND any = ChildWindowFromPoint(view.dialog, {step.id, step.number})) {
                ClickAt(any, {5, 5});
            }
            return;
        case Step::Vanish:
            return m_world.Vanish(number);
        case Step::Lose:
            DestroyWindow(GetWindow(view.dialog, GW_OWNER));
            return Pump();
        case Step::Confirm:
            return;
    }
}
