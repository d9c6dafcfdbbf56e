// What the host does in the middle of an opening: in each call that the opening makes it opens another dialog
// or raises an exception that it catches behind the module.

#include "fill/fill_book.h"
#include "frame/module_fixture.h"
#include "trade/plugin_interface.h"

#include <csetjmp>
#include <vector>

namespace {

// One of the ways in which a dialog is opened.
struct Way {
    const char* what;
    bool fill;
    int mode;
    bool onRecord;
};
constexpr Way kWays[] = {{"input", false, 0, false}, {"carry", false, 1, false}, {"fill", true, 0, true}};

BOOL CALLBACK CollectDialog(HWND window, LPARAM found) {
    char name[40] = "";
    GetClassNameA(window, name, sizeof name);
    if (std::string(name) == "#32770") {
        reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
    }
    return TRUE;
}

// The module over a small book, its dialogs opened in every way.
struct Openings : Module {
    FillBook book;
    FillRecord fill = book.FillOf("EXA CM 1509");
    std::unique_ptr<HostWindow> parent;

    Openings() {
        host.service.api = &book;
        Start(host);
    }
    ~Openings() override { book.whileAsked = nullptr; }

    void* Open(const Way& way) {
        void* record = !way.onRecord ? nullptr : way.fill ? static_cast<void*>(&fill) : &book.order;
        return way.fill ? OpenFill(parent->Get(), way.mode, record, kRecordKindFill)
                        : OpenOrder(way.mode, parent->Get(), record);
    }
    static std::vector<HWND> Dialogs() {
        std::vector<HWND> all;
        EnumThreadWindows(GetCurrentThreadId(), &CollectDialog, reinterpret_cast<LPARAM>(&all));
        return all;
    }
    static void CloseAll() {
        for (const HWND dialog : Dialogs()) {
            DestroyWindow(dialog);
        }
    }
    void ExpectNothingLeft() {
        parent.reset();
        HostLoop().PumpUntilIdle();
        EXPECT_TRUE(Dialogs().empty());
        EXPECT_TRUE(book.listeners.empty());
    }
};

TEST_F(Openings, LeavesAtMostOneDialogOfTheKindAndReturnsThatOne) {
    for (const Way& way : {kWays[1], kWays[2]}) {
        int asked = 1;
        for (int at = 0; asked > at; ++at) {
            SCOPED_TRACE(std::string(way.what) + std::to_string(at));
            parent = std::make_unique<HostWindow>();
            void* nested = nullptr;  // what the request within the opening got
            asked = 0;
            book.whileAsked = [&] { nested = asked++ == at ? Open(way) : nested; };
            void* outer = Open(way);
            book.whileAsked = nullptr;
            ASSERT_EQ(Dialogs().size(), 1u);
            EXPECT_EQ(Window(outer), Dialogs()[0]);
            EXPECT_EQ(Open(way), outer);
            EXPECT_TRUE(!nested || nested == outer) << "the host keeps a dialog that is gone";
            ExpectNothingLeft();
        }
        EXPECT_GT(asked, 5) << "the opening made no calls";
    }
}

TEST_F(Openings, EndsWithAHostThatClosesAndOpensForEver) {
    for (const Way& way : {kWays[0], kWays[2]}) {
        parent = std::make_unique<HostWindow>();
        book.whileAsked = [&] {
            CloseAll();
            Open(way);
        };
        Open(way);
        book.whileAsked = nullptr;
        EXPECT_LE(Dialogs().size(), 1u);
        ExpectNothingLeft();
    }
}

jmp_buf g_behindTheModule;

struct LostOpening : Openings {
    // True when one of the host's calls did not return.
    bool IsLost(const Way& way) {
        if (setjmp(g_behindTheModule) != 0) {
            return true;
        }
        Open(way);
        return false;
    }
};

// As if the host's operation had raised a structured exception that the host catches behind the module.
TEST_F(LostOpening, IsForgotten) {
    for (const Way& way : {kWays[0], kWays[2]}) {
        bool lost = true;
        for (int at = way.fill ? 0 : 1; lost; at += 1 + at / 4) {  // the first call of an order registers it
            SCOPED_TRACE(at);
            parent = std::make_unique<HostWindow>();
            int asked = 0;
            book.whileAsked = [&] {
                if (asked++ == at) {
                    longjmp(g_behindTheModule, 1);
                }
            };
            lost = IsLost(way);
            book.whileAsked = nullptr;
            EXPECT_TRUE(lost || at > 5) << "the opening made no calls";
            HostLoop().PumpUntilIdle();
            void* dialog = Open(way);
            ASSERT_TRUE(dialog);
            EXPECT_EQ(Dialogs().size(), 1u);
            char title[100] = "";
            GetWindowTextA(Window(dialog), title, sizeof title);
            EXPECT_STREQ(title, way.fill ? "Input Fill" : "Input Order");
            ExpectNothingLeft();
        }
    }
}

}  // namespace
