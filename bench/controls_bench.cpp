// What the controls cost beside the bare system calls that their work needs, in one run. A ratio near 1 means
// that nothing is wasted; the figures of one line grow with the number of items.

#include "bench/indexed_book.h"
#include "bench/stopwatch.h"
#include "controls/sele_code_wnd.h"
#include "controls/x_combo_box.h"
#include "tests/controls/control_dialog.h"
#include "trade/data_container.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr double kFillLimit = 1.3;
constexpr double kKeyLimit = 1.2;
constexpr double kPopupLimit = 1.3;

Report g_report;

// The best of alternating runs, so that a busy machine disturbs both alike; short work is run more often.
template <typename Bare, typename Ours>
void Compare(const char* name, int items, double limit, Bare bare, Ours ours) {
    constexpr double kEnough = 4e8;  // nanoseconds of our work altogether
    constexpr int kLeastRuns = 9;
    double spent = 0;
    double bareTime = 1e18;
    double ourTime = 1e18;
    for (int i = 0; i < kLeastRuns || spent < kEnough; ++i) {
        bareTime = std::min(bareTime, NanosecondsOf(bare, 1, 1));
        const double time = NanosecondsOf(ours, 1, 1);
        ourTime = std::min(ourTime, time);
        spent += time;
    }
    g_report.Ratio((std::string(name) + ", " + std::to_string(items) + " items").c_str(), ourTime, bareTime,
                   limit);
}

std::vector<std::string> Lines(int count) {
    std::vector<std::string> lines;
    for (int i = 0; i < count; ++i) {
        lines.push_back("CODE" + std::to_string(100000 + i) + " Name of the item " + std::to_string(i));
    }
    return lines;
}

LPARAM Text(const std::string& text) {
    return reinterpret_cast<LPARAM>(text.c_str());
}

void BareAdd(HWND comboBox, HWND list, const std::vector<std::string>& lines) {
    ::SendMessageA(list, WM_SETREDRAW, FALSE, 0);
    ::SendMessageA(comboBox, CB_RESETCONTENT, 0, 0);
    for (const std::string& line : lines) {
        ::SendMessageA(comboBox, CB_ADDSTRING, 0, Text(line));
    }
    ::SendMessageA(list, WM_SETREDRAW, TRUE, 0);
}

void BareRead(HWND comboBox, int count) {
    char text[256];
    for (int i = 0; i < count; ++i) {
        ::SendMessageA(comboBox, CB_GETLBTEXTLEN, static_cast<WPARAM>(i), 0);
        ::SendMessageA(comboBox, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
        ::SendMessageA(comboBox, CB_GETITEMDATA, static_cast<WPARAM>(i), 0);
    }
}

void BenchComboBox(int count) {
    EmptyDialog dialog;
    constexpr DWORD style = WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL;
    const HWND plain = dialog.Add("COMBOBOX", style, 0, {10, 10, 160, 310});
    dialog.Add("COMBOBOX", style, 1, {10, 50, 160, 350});
    CxComboBox combo;
    combo.SubclassDlgItem(1, dialog.m_hWnd);
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    ::GetComboBoxInfo(plain, &info);
    const std::vector<std::string> lines = Lines(count);

    Compare(
        "fill at once, aligned", count, kFillLimit, [&] { BareAdd(plain, info.hwndList, lines); },
        [&] { combo.SetItems(lines, true); });
    Compare(
        "align what is there", count, kFillLimit,
        [&] {
            BareRead(plain, count);
            BareAdd(plain, info.hwndList, lines);
        },
        [&] { combo.AlignColumns(true); });

    // The last item matches, so that the whole list is searched. The key itself is part of both.
    const std::string typed = lines.back().substr(0, 9);
    const auto type = [&](HWND edit) {
        ::SendMessageA(edit, WM_SETTEXT, 0, Text(typed));
        ::SendMessageA(edit, EM_SETSEL, 9, 9);
        ::SendMessageA(edit, WM_CHAR, static_cast<WPARAM>(lines.back()[9]), 1);
    };
    constexpr int kKeys = 20;
    Compare(
        "20 keys with completion", count, kKeyLimit,
        [&] {
            ::SetFocus(info.hwndItem);
            for (int i = 0; i < kKeys; ++i) {
                type(info.hwndItem);
                ::SendMessageA(plain, CB_FINDSTRING, static_cast<WPARAM>(-1), Text(typed + lines.back()[9]));
                ::SendMessageA(info.hwndItem, WM_SETTEXT, 0, Text(typed + lines.back()[9]));
            }
        },
        [&] {
            ::SetFocus(combo.EditWindow());
            for (int i = 0; i < kKeys; ++i) {
                type(combo.EditWindow());
            }
        });
    dialog.DestroyWindow();
}

IndexedBook* g_api = nullptr;

TradeData BenchTrade() {
    return TradeData(g_api);
}

void BareInsert(HWND tree, const std::vector<CatalogNode>& nodes, HTREEITEM parent) {
    for (const CatalogNode& node : nodes) {
        TVINSERTSTRUCTA insert{};
        insert.hParent = parent;
        insert.hInsertAfter = TVI_LAST;
        insert.item.mask = TVIF_TEXT | TVIF_PARAM;
        insert.item.pszText = const_cast<char*>(node.text.c_str());
        BareInsert(tree, node.children,
                   reinterpret_cast<HTREEITEM>(
                       ::SendMessageA(tree, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insert))));
    }
}

// Every list that the tree is made of, asked for and thrown away.
void BareHostCalls(IndexedBook& api) {
    CDataContainer exchanges;
    api.GetExchanges(&exchanges, "");
    for (std::uint32_t e = 0; e < exchanges.Count(); ++e) {
        CDataContainer commodities;
        api.GetCommodities(exchanges.At(e), &commodities);
        for (std::uint32_t c = 0; c < commodities.Count(); ++c) {
            CDataContainer contracts;
            api.GetContracts(commodities.At(c), &contracts);
        }
    }
}

void BenchPopup(int exchanges, int commoditiesEach, int contractsEach) {
    IndexedBook api(exchanges, commoditiesEach, contractsEach);
    g_api = &api;
    EmptyDialog dialog;
    CSeleCodeWnd popup(&BenchTrade);
    popup.CreatePopup(dialog.m_hWnd);
    CWnd hidden;  // like the popup, whose tree is filled before it is shown
    hidden.Create(nullptr, "", WS_POPUP, {0, 0, 438, 400}, dialog.m_hWnd, 0);
    CTreeCtrl tree;
    tree.Create(WS_CHILD | WS_VISIBLE | TVS_HASBUTTONS | TVS_HASLINES, {0, 0, 280, 390}, hidden.m_hWnd, 9);
    const std::vector<CatalogNode> nodes = BuildCatalog(BenchTrade(), "", false);
    Compare(
        "popup refresh", exchanges * commoditiesEach * contractsEach, kPopupLimit,
        [&] {
            BareHostCalls(api);
            tree.SendMessage(WM_SETREDRAW, FALSE);
            tree.DeleteAllItems();
            BareInsert(tree.m_hWnd, nodes, TVI_ROOT);
            tree.SendMessage(WM_SETREDRAW, TRUE);
            tree.UpdateWindow();
        },
        [&] { popup.Refresh(""); });
    hidden.DestroyWindow();
    popup.DestroyWindow();
    dialog.DestroyWindow();
    g_api = nullptr;
}

}  // namespace

int main() {
    if (!EmptyDialog().m_hWnd) {
        std::puts("no windows here");
        return 1;
    }
    for (const int count : {100, 1000, 10000}) {
        BenchComboBox(count);
    }
    BenchPopup(5, 8, 25);
    BenchPopup(25, 20, 20);
    BenchPopup(50, 40, 50);
    return g_report.Missed();
}
