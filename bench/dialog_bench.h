#pragma once

// What the dialogs' benchmarks share: a large book, and the bare calls that a dialog is compared with.

#include "framework/activation_context.h"
#include "framework/owned_handle.h"
#include "res/resource_loader.h"
#include "tests/trade/fake_trade.h"

#include <algorithm>
#include <deque>
#include <string>
#include <vector>

// A host with many accounts, all of one sign and group, and many commodities of one exchange.
struct LargeBook : FakeTradeApi {
    GroupRecord group{};
    std::deque<UserRecord> userStore;
    std::deque<CommodityRecord> commodityStore;
    std::deque<ExchangeRecord> exchangeStore;
    std::deque<UpperRecord> upperStore;
    std::deque<CurrencyRecord> currencyStore;
    OrderRecord order{};

    explicit LargeBook(int accounts = 10000, int commodityCount = 2000) {
        group.tradable = 'Y';
        for (int i = 0; i < accounts; ++i) {
            UserRecord& user = userStore.emplace_back();
            user.sign.Set("SG");
            user.accountNo.Set(std::to_string(100000 + i));
            user.accountName.Set("Client number " + std::to_string(i));
            user.group = &group;
            users.push_back(&user);
        }
        for (int i = 0; i < commodityCount; ++i) {
            CommodityRecord& commodity = commodityStore.emplace_back();
            commodity.sign.Set("SG");
            commodity.exchangeNo.Set("EXA");
            commodity.commodityType = 'F';
            commodity.commodityNo.Set("C" + std::to_string(i));
            commodity.commodityName.Set("Commodity number " + std::to_string(i));
            commodity.tickNumerator = commodity.tickDenominator = 1;
            commodities.push_back(&commodity);
        }
        for (int i = 0; i < 20; ++i) {
            ExchangeRecord& exchange = exchangeStore.emplace_back();
            exchange.sign.Set("SG");
            exchange.exchangeNo.Set(std::string("EX") + static_cast<char>('A' + i));
            exchange.exchangeName.Set("Exchange");
            exchanges.push_back(&exchange);
            UpperRecord& upper = upperStore.emplace_back();
            upper.upperNo.Set("UP" + std::to_string(i));
            upper.upperName.Set("Clearing");
            uppers.push_back(&upper);
            CurrencyRecord& currency = currencyStore.emplace_back();
            currency.currencyNo.Set("CU" + std::to_string(i));
            currency.currencyName.Set("Money");
            currencies.push_back(&currency);
        }
        order.key.sign.Set("SG");
        order.key.exchangeNo.Set("EXA");
        order.key.commodityType = 'F';
        order.key.commodityNo.Set("C1000");
        order.key.contractNo.Set("1509");
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

inline void FillBare(HWND dialog, int id, const std::vector<std::string>& items) {
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
