#pragma once

// What the dialogs' benchmarks share: a large book, and the bare calls that a dialog is compared with.

#include "framework/activation_context.h"
#include "framework/owned_handle.h"
#include "res/resource_loader.h"
#include "tests/trade/sample_book.h"

#include <algorithm>
#include <string>
#include <vector>

// A host with many accounts, all of one sign and group, and many commodities of one exchange.
struct LargeBook : SampleBook {
    OrderRecord order{};

    explicit LargeBook(int accounts = 10000, int commodityCount = 2000) : SampleBook("SG") {
        for (int i = 0; i < accounts; ++i) {
            AddUser(std::to_string(100000 + i), "Client number " + std::to_string(i));
        }
        AddExchange("EXA");
        for (int i = 0; i < commodityCount; ++i) {
            AddCommodity('F', "C" + std::to_string(i), 1, 1)
                .commodityName.Set("Commodity number " + std::to_string(i));
        }
        for (int i = 0; i < 20; ++i) {
            if (i > 0) {
                AddExchange(std::string("EX") + static_cast<char>('A' + i));
            }
            AddUpper("UP" + std::to_string(i));
            AddCurrency("CU" + std::to_string(i));
        }
        ParseContractText("EXA C1000 1509", order.key);
        order.key.sign.Set("SG");
        order.accountNo.Set("105000");
        order.upperNo.Set("UP3");
        order.orderSource = 'M';
        order.direction = 'B';
        order.orderQty = 5;
        order.fillPrice = 97;
    }
};

inline void Pump() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

inline void Show(HWND dialog) {
    SetWindowPos(dialog, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW | SWP_NOOWNERZORDER);
    Pump();
}

inline INT_PTR CALLBACK BareDialogProc(HWND, UINT message, WPARAM, LPARAM) {
    return message == WM_INITDIALOG;
}

inline void ListBare(HWND dialog, int id, const std::vector<std::string>& items) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    const HWND combo = GetDlgItem(dialog, id);
    GetComboBoxInfo(combo, &info);
    SendMessageA(info.hwndList, WM_SETREDRAW, FALSE, 0);
    for (const std::string& item : items) {
        SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
    }
    SendMessageA(info.hwndList, WM_SETREDRAW, TRUE, 0);
}

// The template's window without anything of the module in it.
inline HWND CreateBareDialog(unsigned templateId, HWND host) {
    const ScopedActivationContext commonControls6;
    return CreateDialogIndirectParamA(
        GetModuleHandleA(nullptr), static_cast<const DLGTEMPLATE*>(LockResource(LoadResDialog(templateId))),
        host, &BareDialogProc, 0);
}

// Measures the texts of a list, which the width of the open list needs.
inline void MeasureBare(HWND combo, const std::vector<std::string>& items) {
    WindowDc dc(combo);
    for (const std::string& item : items) {
        SIZE extent{};
        GetTextExtentPoint32A(dc.Get(), item.data(), static_cast<int>(item.size()), &extent);
    }
}

inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}
