#pragma once

#include "fill/fill_book.h"
#include "fill/fill_dialog.h"
#include "framework/window_helpers.h"
#include "res/language.h"
#include "res/resource_ids.h"
#include "support/message_box_script.h"
#include "support/window_kit.h"
#include "trade/host_services.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

// A fill dialog in a host window, over the small book.
class FillWindow : public testing::Test {
protected:
    FillWindow() {
        g_wResLanguage = kEnglish;
        g_pTradeApi = &book;
        g_pTradeService = &service;
        book.longQty = book.shortQty = 9;
        group.tradable = 'Y';
        for (const char* account : {"100010", "10001", "10002"}) {
            UserRecord& user = userStore.emplace_back();
            user.sign.Set("SG");
            user.accountNo.Set(account);
            user.accountName.Set(std::string("Client ") + account);
            user.group = &group;
            book.users.push_back(&user);
        }
        for (const char* upper : {"UP1", "UP2"}) {
            UpperRecord& record = upperStore.emplace_back();
            record.upperNo.Set(upper);
            record.upperName.Set("Clearing");
            book.uppers.push_back(&record);
        }
        for (const char* currency : {"EUR", "USD"}) {
            CurrencyRecord& record = currencyStore.emplace_back();
            record.currencyNo.Set(currency);
            record.currencyName.Set("Money");
            book.currencies.push_back(&record);
        }
        order = OrderOf("EXA CM 1509");
    }
    ~FillWindow() override {
        if (g_pFillDialog) {
            g_pFillDialog->DestroyWindow();
        }
        g_pTradeApi = nullptr;
        g_pTradeService = nullptr;
    }

    // An order for 5 lots, 2 of them filled at 97.
    static OrderRecord OrderOf(const char* contract) {
        OrderRecord record{};
        ParseContractText(contract, record.key);
        record.key.sign.Set("SG");
        record.accountNo.Set("10001");
        record.upperNo.Set("UP2");
        record.orderSource = 'M';
        record.direction = 'B';
        record.orderQty = 5;
        record.fillQty = 2;
        record.fillPrice = 97;
        record.orderNo = 4711;
        record.systemNo.Set("SYS7");
        return record;
    }
    FillRecord FillOf(const char* contract) {
        const OrderRecord from = OrderOf(contract);
        FillRecord record{};
        record.key = FirstLegOf(from.key);
        record.fillNo.Set("F77");
        record.accountNo = from.accountNo;
        record.upperNo = from.upperNo;
        record.fillSource = 'E';
        record.direction = 'S';
        record.fillQty = 4;
        record.fillPrice = 97;
        record.exchangeFillNo.Set("X9");
        record.order = &order;
        return record;
    }
    static FillRecord As(FillRecord fill, char source) {
        fill.fillSource = source;
        return fill;
    }

    void Open(int mode, void* record = nullptr, int kind = -1) {
        g_pFillDialog = new CEmendoMatch(mode, record, kind, host->Get());
        ASSERT_TRUE(g_pFillDialog->Create());
        window = g_pFillDialog->m_hWnd;
        SetWindowPos(window, HWND_TOP, 0, 0, 0, 0,
                     SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW | SWP_NOOWNERZORDER);
        loop.emplace(g_pFillDialog);
        loop->PumpUntilIdle();
    }
    void OpenOn(int mode, OrderRecord& record) { Open(mode, &record, kRecordKindOrder); }
    void OpenOn(int mode, FillRecord& record) { Open(mode, &record, kRecordKindFill); }
    void Close() {
        SendMessageA(window, WM_CLOSE, 0, 0);
        EXPECT_EQ(g_pFillDialog, nullptr);
    }

    // The one message box that is expected.
    static std::deque<ExpectedBox> Box(const char* text, const char* caption, int button = IDOK,
                                       std::function<void(HWND)> act = {}) {
        return {ExpectedBox{text, caption, button, std::move(act)}};
    }

    HWND Item(int id) const { return GetDlgItem(window, id); }
    std::string Text(int id) const { return TextOf(Item(id)); }
    bool Shown(int id) const { return (GetWindowLongA(Item(id), GWL_STYLE) & WS_VISIBLE) != 0; }
    bool Usable(int id) const { return Shown(id) && IsWindowEnabled(Item(id)); }
    void SetText(int id, const char* text) { SetWindowTextA(Item(id), text); }
    // Picks a list item as the operator does.
    void Choose(int id, const char* prefix) {
        SendMessageA(Item(id), CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(prefix));
    }
    void Press(int id) { SendMessageA(Item(id), BM_CLICK, 0, 0); }
    void Focus(int id) { ::SetFocus(Item(id)); }
    // The control that has the focus, a combo box for its edit part.
    int FocusId() const {
        HWND focus = GetFocus();
        if (focus && GetParent(focus) != window) {
            focus = GetParent(focus);
        }
        return focus ? GetDlgCtrlID(focus) : 0;
    }
    HWND EditOf(int comboId) const { return FindWindowExA(Item(comboId), nullptr, "Edit", nullptr); }

    FillBook book;
    FakeTradeService service;
    GroupRecord group{};
    std::deque<UserRecord> userStore;
    std::deque<UpperRecord> upperStore;
    std::deque<CurrencyRecord> currencyStore;
    OrderRecord order{};
    std::optional<HostWindow> host{std::in_place};
    HWND window = nullptr;
    std::optional<HostLoop> loop;
};
