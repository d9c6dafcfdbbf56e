#pragma once

#include "fill/fill_book.h"
#include "fill/fill_dialog.h"
#include "framework/format_text.h"
#include "res/language.h"
#include "res/resource_ids.h"
#include "res/string_table.h"
#include "support/dialog_window.h"
#include "support/fake_requests.h"
#include "support/message_box_script.h"
#include "trade/host_services.h"

#include <gmock/gmock.h>

inline constexpr const char* kAboveRemaining =
    "FillQty cann't be greater than OrderQty,do you want to modify this order?";

// A fill dialog in a host window, over the small book.
class FillWindow : public testing::Test, protected DialogWindow {
protected:
    FillBook book;
    OrderRecord& order = book.order;
    FakeTradeService service;
    HostWindow host;

    FillWindow() {
        g_wResLanguage = kEnglish;
        g_pTradeApi = &book;
        g_pTradeService = &service;
    }
    ~FillWindow() override {
        if (g_pFillDialog) {
            g_pFillDialog->DestroyWindow();
        }
        g_pTradeApi = nullptr;
        g_pTradeService = nullptr;
    }

    void Open(int mode, void* record = nullptr, int kind = -1) {
        g_pFillDialog = new CEmendoMatch(mode, record, kind, host.Get());
        ASSERT_TRUE(g_pFillDialog->Create());
        window = g_pFillDialog->m_hWnd;
        loop = HostLoop(g_pFillDialog);
        Show();
    }
    void OpenOn(int mode, OrderRecord& record) { Open(mode, &record, kRecordKindOrder); }
    void OpenOn(int mode, FillRecord& record) { Open(mode, &record, kRecordKindFill); }
    void Close() {
        SendMessageA(window, WM_CLOSE, 0, 0);
        EXPECT_EQ(g_pFillDialog, nullptr);
    }

    // The one message box that is expected.
    static std::deque<ExpectedBox> Box(const std::string& text, const std::string& caption, int button = IDOK,
                                       std::function<void(HWND)> act = {}) {
        return {ExpectedBox{text, caption, button, std::move(act)}};
    }
};
