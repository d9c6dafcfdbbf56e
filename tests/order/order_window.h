#pragma once

#include "order/order_dialog.h"
#include "order/order_fixture.h"
#include "res/string_table.h"
#include "support/dialog_window.h"
#include "support/message_box_script.h"
#include "trade/fake_config.h"
#include "trade/host_services.h"

#include <sstream>

// A position list that remembers what it was told.
class FakeList : public ITradeListWindow {
public:
    PositionFilterRecord filter{};
    ISelectDataNotify* notify = nullptr;
    void Place(int, int, int, int, int) override {}
    void SetFilter(const PositionFilterRecord* record) override { filter = *record; }
    void SetNotify(ISelectDataNotify* listener) override { notify = listener; }
    // clang-format off
    RESERVED(0) RESERVED(1) RESERVED(2) RESERVED(3) RESERVED(4)
    // clang-format on
};

class FakeLists : public ITradeList {
public:
    FakeList lists[2];
    int created = 0;
    int released = 0;
    bool fails = false;
    ITradeListWindow* CreateListWindow(int, int, HWND, int) override {
        return fails ? nullptr : &lists[created++ % 2];
    }
    // A list may still report while it is released.
    void ReleaseListWindow(ITradeListWindow* list) override {
        ++released;
        static_cast<FakeList*>(list)->notify->OnSelectData(list, 0, nullptr);
    }
};

class OrderDialog : public OrderTest, protected DialogWindow {
protected:
    OrderDialog() {
        config.configs.emplace_back().name.Set("Main");
        config.count = 1;
        api.AddUser("200");
        api.AddUpper("U7");
        api.AddCurrency("USD");
        api.priceText = "97.5";
        g_pTradeApi = &api;
        g_pTradeService = &service;
        g_pTradeList = &lists;
        g_hostServices.sysConfig = &config;
    }
    ~OrderDialog() override {
        if (g_pOrderDialog) {
            g_pOrderDialog->DestroyWindow();
        }
        EXPECT_EQ(g_pOrderDialog, nullptr);
        EXPECT_TRUE(api.listeners.empty());
        EXPECT_EQ(lists.created, lists.released);
        g_pTradeApi = nullptr;
        g_pTradeService = nullptr;
        g_pTradeList = nullptr;
        g_hostServices.sysConfig = nullptr;
    }

    bool Create(OrderMode mode, OrderRecord* record, HWND parent) {
        g_pOrderDialog = new CEmendoOrder(static_cast<unsigned>(TraitsOf(mode).templateId),
                                          static_cast<int>(mode), record, parent);
        const bool created = g_pOrderDialog->Create();
        window = created ? g_pOrderDialog->m_hWnd : nullptr;
        if (!created && g_pOrderDialog) {
            delete g_pOrderDialog;
        }
        return created;
    }
    void Open(OrderMode mode, OrderRecord* record = nullptr) {
        ASSERT_TRUE(Create(mode, record, host.Get()));
        loop = HostLoop(g_pOrderDialog);
        Show();
    }
    // Everything of a limit order but state and fill, through the keyboard where there is an edit.
    void EnterOrder() {
        Choose(IDC_ACCOUNT, "100");
        Choose(IDC_UPPER, "U7");
        Typed(IDC_CONTRACT, "EXA CM 1509");
        Choose(IDC_DIRECTION, "Buy");
        Typed(IDC_ORDER_QTY, "5");
        Typed(IDC_ORDER_PRICE_WHOLE, "97.5");
    }
    void PressConfirm() {
        Focus(IDC_CONFIRM);
        loop.Key(VK_RETURN);
    }
    // What the only order that was sent says; empty when there is none.
    std::string Sent() const {
        EXPECT_EQ(service.orders.size(), 1u);
        if (service.orders.empty()) {
            return "";
        }
        const OrderRecord& order = service.orders[0];
        std::ostringstream text;
        for (const std::string& field : {order.key.sign.Str(), order.accountNo.Str(), order.upperNo.Str(),
                                         order.key.commodityNo.Str(), order.key.contractNo.Str()}) {
            text << field << ' ';
        }
        text << order.direction << order.orderType << order.orderState << order.validType << order.orderSource
             << ' ' << order.orderQty << " at " << order.orderPrice << " of " << order.orderNo;
        return text.str();
    }

    MessageBoxScript noOtherBoxes;
    HostWindow host;
    FakeLists lists;
    FakeConfig config;
};
