#include "frame/module_fixture.h"
#include "support/leak_count.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;

constexpr int kCancelButton = 1067;

struct OpenModule : Module {
    static std::string Title(void* dialog) {
        char title[100] = "";
        GetWindowTextA(Window(dialog), title, sizeof(title));
        return title;
    }
    void Close(void* dialog) {
        const HWND window = Window(dialog);
        HostLoop().Click(GetDlgItem(window, kCancelButton));
        EXPECT_FALSE(IsWindow(window));
    }
};

// The lines for a debugger while it lives, without the word before them: the system raises each as an
// exception that somebody may look at first.
class DebuggerLines {
public:
    DebuggerLines() : m_handler(AddVectoredExceptionHandler(1, &Look)) { s_lines.clear(); }
    ~DebuggerLines() { RemoveVectoredExceptionHandler(m_handler); }
    static const std::vector<std::string>& Get() { return s_lines; }

private:
    static LONG CALLBACK Look(EXCEPTION_POINTERS* raised) {
        constexpr DWORD kDebuggerLine = 0x40010006;
        const EXCEPTION_RECORD& record = *raised->ExceptionRecord;
        if (record.ExceptionCode != kDebuggerLine) {
            return EXCEPTION_CONTINUE_SEARCH;
        }
        const std::string line(reinterpret_cast<const char*>(record.ExceptionInformation[1]));
        const std::string prefix = "Emendo: ";
        s_lines.push_back(
            line.starts_with(prefix) ? line.substr(prefix.size(), line.find('\n') - prefix.size()) : line);
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    inline static std::vector<std::string> s_lines;
    void* m_handler;
};

TEST_F(OpenModule, TellsADebuggerWhatItIsAndWhatTheHostLacks) {
    const DebuggerLines lines;
    host.services.erase("Abnormal");
    UserRecord account{};
    host.api.users = {nullptr, &account};
    Start(host);
    loaded->onPluginLoad(0);
    EXPECT_EQ(loaded->createPluginApi("1.0.0.2"), nullptr);
    EXPECT_NE(OpenOrder(), nullptr);
    HostLoop().PumpUntilIdle();  // the account, which has the keyboard first, counts the host's accounts
    using testing::MatchesRegex;
    EXPECT_THAT(
        DebuggerLines::Get(),
        testing::IsSupersetOf({
            testing::Matcher<std::string>(
                MatchesRegex(R"(version .+ \(build .+\), language 1033, given by the terminal)")),
            testing::Matcher<std::string>(MatchesRegex("version .*, language 1033, that of the system")),
            testing::Matcher<std::string>("the terminal has no service SysConfig 9.0.3.1"),
            testing::Matcher<std::string>("the terminal has no service Abnormal 9.0.3.1"),
            testing::Matcher<std::string>("refused interface version 1.0.0.2, this is 1.0.0.1"),
            testing::Matcher<std::string>("GetUsers added 1 null entries"),
        }));
    HostLoop().PumpUntilIdle();
}

TEST_F(OpenModule, GivesItsInterfaceForItsVersionOnly) {
    Start(host);
    for (const char* version :
         {"1.0.0.10", "1.0.0", "1.0.0.2", "", " 1.0.0.1", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(loaded->createPluginApi(version), nullptr) << (version ? version : "null");
    }
    loaded->freePluginApi(nullptr);
    loaded->freePluginApi(static_cast<IEmendix*>(api));
    loaded->onPluginFree();
}

TEST_F(OpenModule, FetchesEveryServiceOnceInOrderAndOpensDialogsOnceThePositionListIsThere) {
    loaded->onPluginInit(nullptr);
    EXPECT_TRUE(host.requested.empty());
    host.services.erase("TradeList");
    Start(host);
    EXPECT_THAT(host.requested,
                ElementsAre("TradeApi 1.0.0.1", "QuoteDataCenter 1.0.0.1", "SysConfig 9.0.3.1",
                            "Abnormal 9.0.3.1", "AuxiInsertOrder 9.0.3.1", "BatchOrder 1.0.0.1",
                            "GlobalMonitor 9.0.3.1", "TradeList 1.0.0.1"));
    EXPECT_EQ(host.quoteCalls, 1);
    EXPECT_EQ(OpenOrder(), nullptr);
    EXPECT_EQ(OpenFill(), nullptr);
    host.requested.clear();
    host.services["TradeList"] = &host.list;
    loaded->onPluginInit(host.Manager());
    loaded->onPluginInit(host.Manager());
    EXPECT_THAT(host.requested, ElementsAre("TradeList 1.0.0.1"));
    EXPECT_NE(OpenOrder(), nullptr);
}

TEST_F(OpenModule, DoesWithoutAnyOtherServiceAndLoadsAgainAfterUse) {
    for (const char* missing : {"TradeApi", "QuoteDataCenter", "SysConfig", "Abnormal", "none"}) {
        SCOPED_TRACE(missing);
        RawHost poor;
        poor.services.erase(missing);
        Load();
        Start(poor);
        for (void* dialog : {OpenOrder(1), OpenFill()}) {
            ASSERT_NE(dialog, nullptr);
            HostLoop().PumpUntilIdle();
            Close(dialog);
        }
        EXPECT_TRUE(poor.api.listeners.empty()) << "a listener stayed registered";
        loaded->freePluginApi(static_cast<IEmendix*>(api));
        loaded->onPluginFree();
    }
}

TEST_F(OpenModule, EveryModeShowsItsTemplateInTheOneDialogOfItsKind) {
    Start(host);
    void* fill = OpenFill();
    const std::pair<int, const char*> rows[] = {
        {0, "Input Order"}, {1, "Carry"}, {5, "Input Exercise"}, {6, "Input Order"}, {-1, "Input Order"}};
    for (const auto& [mode, title] : rows) {
        void* order = OpenOrder(mode);
        ASSERT_NE(order, nullptr) << mode;
        EXPECT_TRUE(IsWindowVisible(Window(order)));
        EXPECT_EQ(GetWindow(Window(order), GW_OWNER), desk.Get());
        EXPECT_EQ(OpenOrder(mode ^ 1), order);
        EXPECT_EQ(Title(order), title) << mode << ": the new arguments are not applied";
        EXPECT_EQ(OpenFill(), fill);
        EXPECT_NE(order, fill);
        loaded->freePluginApi(static_cast<IEmendix*>(api));
        EXPECT_TRUE(IsWindow(Window(order))) << "open dialogs outlive the interface";
        api = loaded->createPluginApi("1.0.0.1");
        Close(order);
    }
    EXPECT_TRUE(IsWindow(Window(fill)));
}

TEST_F(OpenModule, DialogsEndWithTheHostsWindowAndWithTheModule) {
    Start(host);
    const HWND first[] = {Window(OpenOrder()), Window(OpenFill())};
    const HWND gone = desk.Get();
    desk.Destroy();
    EXPECT_FALSE(IsWindow(first[0]) || IsWindow(first[1]));
    EXPECT_EQ(OpenOrder(0, gone), nullptr);
    EXPECT_EQ(OpenFill(gone), nullptr);
    const HostWindow other;
    const HWND second[] = {Window(OpenOrder(0, other.Get())), Window(OpenFill(other.Get()))};
    EXPECT_TRUE(IsWindow(second[0]) && IsWindow(second[1]));
    loaded.reset();
    EXPECT_FALSE(IsWindow(second[0]) || IsWindow(second[1]));
    HostLoop().PumpUntilIdle();
}

TEST_F(OpenModule, KeysOfTheHostsLoopReachTheDialog) {
    Start(host);
    const std::pair<void*, int> rows[] = {{OpenOrder(), 1125}, {OpenFill(), 1129}};
    for (const auto& [dialog, quantityEdit] : rows) {
        const auto offer = [oper = dialog](const MSG* message) {
            return CallSlot<BOOL>(oper, Module::kPreTranslateMessage, message) != FALSE;
        };
        HostLoop loop([=](const MSG& message) { return offer(&message); });
        loop.PumpUntilIdle();
        const HWND edit = GetDlgItem(Window(dialog), quantityEdit);
        SetFocus(edit);
        ASSERT_EQ(GetFocus(), edit);
        loop.Key(VK_TAB);
        EXPECT_NE(GetFocus(), edit);
        EXPECT_TRUE(IsChild(Window(dialog), GetFocus()));

        const MSG foreign{desk.Get(), WM_KEYDOWN, VK_TAB, 0, 0, {}};
        EXPECT_FALSE(offer(&foreign));
        EXPECT_FALSE(offer(nullptr));
    }
}

TEST_F(OpenModule, OpeningAndClosingLeavesNothingBehind) {
    Start(host);
    KeptByEach(
        [&] {
            void* order = OpenOrder();
            void* fill = OpenFill();
            HostLoop().PumpUntilIdle();
            Close(order);
            Close(fill);
        },
        4);
}

}  // namespace
