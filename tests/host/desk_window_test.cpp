#include "app/language_choice.h"
#include "book/book_file.h"
#include "desk/desk_session.h"
#include "host/sample.h"
#include "scenario/window_text.h"
#include "support/message_box_script.h"
#include "support/window_kit.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

namespace {

constexpr int kConfirm = 1061;
constexpr char kBookFile[] = "desk_window_test.json";

void Do(const DeskWindow& desk, unsigned command) {
    SendMessageA(desk.Window(), WM_COMMAND, command, 0);
}

// The loop of a desk.
HostLoop LoopOf(DeskWindow& desk) {
    return HostLoop([&](MSG message) {
        desk.Handle(message);
        return true;
    });
}

// A desk on the sample book that is saved to a file of its own.
class DeskWindowTest : public testing::Test {
protected:
    void Run(const std::function<void(DeskWindow&)>& ready) {
        RunDesk(host, {ProgramFolder() + "EmendoOrd.dll", kBookFile, "", 1033}, ready);
        // Whatever happened: no module is left, and the file holds the whole book.
        EXPECT_FALSE(host.Loaded());
        EXPECT_EQ(host.Services().listeners.Count(), 0u);
        EXPECT_EQ(BookText(*ReadBookFile(kBookFile)), BookText(*book));
        EXPECT_FALSE(std::ifstream(std::string(kBookFile) + ".new").is_open());
    }
    void TearDown() override { std::remove(kBookFile); }

    // The title of the only dialog.
    std::string OnlyTitle() {
        return host.Dialogs().size() == 1 ? TextOf(host.Dialogs()[0])
                                          : std::to_string(host.Dialogs().size()) + " dialogs";
    }

    // Opens a dialog on the order in that row of the list and presses its confirm button once it runs.
    void Confirm(DeskWindow& desk, int row, unsigned command) {
        desk.Pane(kOrderList).Select(row);
        Do(desk, command);
        ASSERT_EQ(host.Dialogs().size(), 1u);
        PostMessageA(host.Dialogs()[0], WM_COMMAND, kConfirm,
                     reinterpret_cast<LPARAM>(GetDlgItem(host.Dialogs()[0], kConfirm)));
    }

    std::unique_ptr<Book> book = Sample();
    HostApp host{*book};
};

TEST_F(DeskWindowTest, ShowsAndSelectsWhatARequestChanged) {
    Run([&](DeskWindow& desk) {
        HWND orders = desk.Pane(kOrderList).Window();
        const int before = ListView_GetItemCount(orders);
        desk.Pane(kOrderList).Select(2);
        for (const char* number : {"S_desk1", "S_desk2"}) {
            OrderRecord order = MakeOrder("800101", "NWX F WH 2505", 'B', 2514, 5, number);
            EXPECT_EQ(host.Services().trade.SendOrder(&order), 0);
        }
        LoopOf(desk).PumpUntilIdle();
        EXPECT_EQ(ListView_GetItemCount(orders), before + 2);
        EXPECT_NE(desk.StatusText().find(L"second look: the same was entered"), std::wstring::npos)
            << "the remark on the second order";
        const DeskList& lines = desk.Pane(kJournalList).List();
        ASSERT_EQ(lines.Count(), 2u);
        EXPECT_TRUE(lines.Text(1, 3).starts_with("the same was entered")) << lines.Text(1, 3);
        EXPECT_TRUE(!lines.marked(lines.Row(0)) && lines.marked(lines.Row(1)));
        desk.Pane(kOrderList).SortBy(0);
        desk.Pane(kOrderList).SortBy(0);
        EXPECT_EQ(CellText(orders, 0, 0), "1010");
        EXPECT_EQ(desk.Pane(kOrderList).Selected(), book->ledger.FindOrder(1010)) << "what was changed";
        EXPECT_EQ(CellText(desk.Pane(kAccountList).Window(), 1, 1), "\u9752\u77f3\u7cae\u6cb9")
            << "on every code page";
        PostMessageA(desk.Window(), WM_CLOSE, 0, 0);
    });
}

TEST_F(DeskWindowTest, IsReachedWithKeysAndOpensDialogsOnTheSelectedRecord) {
    Run([&](DeskWindow& desk) {
        EXPECT_EQ(GetFocus(), desk.Pane(kOrderList).Window());
        LoopOf(desk).Key(VK_TAB);
        EXPECT_EQ(GetFocus(), desk.Pane(kFillList).Window());
        LoopOf(desk).Key(VK_RETURN);
        EXPECT_EQ(OnlyTitle(), "Modify Filled - [FillNo:F00000001]")
            << "removing is what can be done with a fill";
        Do(desk, kInputFill);
        EXPECT_NE(desk.StatusText().find(L"close the dialog"), std::wstring::npos)
            << "one of a kind at a time";
        host.CloseDialogs();
        Do(desk, kInputFill);
        EXPECT_EQ(OnlyTitle(), "Input Filled - [OrderNo:1001]") << "the order of the selected fill";
        host.CloseDialogs();
        Do(desk, kFirstList);

        const std::pair<unsigned, const char*> rows[] = {
            {kInputExercise, "Input Exercise"},
            {kMoveOrder, "Move Order - [OrderNo:1002  Original account:800102]"},
            {kInputFill, "Input Filled - [OrderNo:1002]"},
            {kModifyFill, "Modify Filled"},
        };
        desk.Pane(kOrderList).Select(1);
        for (const auto& [command, title] : rows) {
            Do(desk, command);
            EXPECT_EQ(OnlyTitle(), title);
            host.CloseDialogs();
        }
        Do(desk, kCloseDesk);
    });
}

TEST_F(DeskWindowTest, ChangesTheLanguageAndClosesWithAQuestionOpen) {
    constexpr wchar_t kDone[] = L"Module started again";
    const auto ask = [&](const std::function<void(DeskWindow&)>& meanwhile,
                         const std::function<void(DeskWindow&)>& then) {
        DeskWindow* asking = nullptr;
        const MessageBoxScript boxes({{"The Order isn't Input,Are you sure to take this operation?",
                                       "Operational quaification", 0, [&](HWND) { meanwhile(*asking); }}});
        Run([&](DeskWindow& desk) {
            asking = &desk;
            Confirm(desk, 2, kModifyOrder);
            then(desk);
        });
        EXPECT_TRUE(host.Services().journal.Lines().empty()) << "an end is no consent";
    };
    ask([](DeskWindow& desk) { SendMessageA(desk.Window(), WM_CLOSE, 0, 0); }, [](DeskWindow&) {});
    ask(
        [&](DeskWindow& desk) {
            Do(desk, kFirstLanguage + 2);
            EXPECT_NE(desk.StatusText(), kDone) << "the module is still asking";
        },
        [&](DeskWindow& desk) {
            LoopOf(desk).PumpUntilIdle();
            EXPECT_EQ(desk.StatusText(), kDone);
            Do(desk, kModifyFill);
            EXPECT_EQ(host.Dialogs().size(), 1u);
            Do(desk, kCloseDesk);
        });
}

// On a Western code page "Buy" and "Sell" would both be "??" in Chinese.
TEST_F(DeskWindowTest, OffersOnlyWhatTheSystemCanShow) {
    ASSERT_EQ(GetACP(), 1252u);
    EXPECT_THROW(RunDesk(host, {ProgramFolder() + "EmendoOrd.dll", "", "", 1028}), std::runtime_error);
    Run([&](DeskWindow& desk) {
        HMENU languages = GetSubMenu(GetMenu(desk.Window()), 3);
        SendMessageA(desk.Window(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(languages), 3);
        for (unsigned i = 0; i < Languages().size(); ++i) {
            const bool english = LanguageOf(Languages()[i].id) == 1033;
            EXPECT_EQ(GetMenuState(languages, i, MF_BYPOSITION) & MF_GRAYED, english ? 0u : MF_GRAYED) << i;
        }
        Do(desk, kFirstLanguage);
        EXPECT_EQ(desk.StatusText(), L"This system cannot show that language");
        Do(desk, kCloseDesk);
    });
}

// What the record no longer tells is read off the dialog.
TEST_F(DeskWindowTest, RemarksOnWhatTheDialogShows) {
    Run([&](DeskWindow& desk) {
        desk.Pane(kOrderList).Select(2);
        Do(desk, kInputFill);
        ASSERT_EQ(host.Dialogs().size(), 1u);
        HWND dialog = host.Dialogs()[0];
        SetDlgItemTextA(dialog, 1145, "448");
        SetDlgItemTextA(dialog, 1148, "14");
        PostMessageA(dialog, WM_COMMAND, kConfirm, reinterpret_cast<LPARAM>(GetDlgItem(dialog, kConfirm)));
        LoopOf(desk).PumpUntilIdle();
        EXPECT_NE(desk.StatusText().find(L"numerator 14 of the fill price is not below its denominator 8"),
                  std::wstring::npos);
        Do(desk, kCloseDesk);
    });
}

// The user closes the desk while the send sleeps, or it goes by itself.
TEST_F(DeskWindowTest, KeepsWhatWasSentWhenItClosesDuringTheSend) {
    const std::pair<const char*, std::uint32_t> rows[] = {{"DeleteOrder slow 5 for 1", 1001},
                                                          {"DeleteOrder destroy-parent for 1", 1002}};
    FaultPlan& faults = host.Services().faults;
    for (const auto& [fault, orderNo] : rows) {
        faults.Set(std::string_view(fault));
        Run([&](DeskWindow& desk) {
            faults.sleep = [&](unsigned) { PostMessageA(desk.Window(), WM_CLOSE, 0, 0); };
            Confirm(desk, static_cast<int>(orderNo - 1001), kRemoveFilled);
        });
        EXPECT_EQ(+ReadBookFile(kBookFile)->ledger.FindOrder(orderNo)->record.fillQty, 0u) << fault;
    }
    EXPECT_EQ(host.Services().journal.Lines().size(), 2u);
}

}  // namespace
