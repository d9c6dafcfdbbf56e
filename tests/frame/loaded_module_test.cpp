#include "frame/loaded_module.h"
#include "support/leak_count.h"
#include "support/window_kit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <memory>

namespace {

using testing::ElementsAre;

constexpr WORD kEnglish = 1033;
constexpr int kFillOperation = 0;
constexpr int kOrderOperation = 1;
constexpr int kPreTranslateMessage = 0;
constexpr int kGetSafeHwnd = 1;
constexpr int kCancelButton = 1067;

struct Module : testing::Test {
    RawHost host;
    HostWindow desk;
    std::unique_ptr<LoadedModule> loaded = std::make_unique<LoadedModule>();
    void* api = nullptr;

    // Unloads the module, loads it again, and starts it as a host does.
    void Start(RawHost& with) {
        loaded.reset();
        ASSERT_EQ(GetModuleHandleA("EmendoOrd.dll"), nullptr);
        loaded = std::make_unique<LoadedModule>();
        loaded->load(kEnglish);
        loaded->init(with.Manager());
        api = loaded->createApi("1.0.0.1");
        ASSERT_NE(api, nullptr);
    }
    void Start() { Start(host); }
    void* OpenOrder(int mode, void* record = nullptr) {
        return CallSlot<void*>(api, kOrderOperation, mode, record, desk.Get());
    }
    void* OpenFill(int mode, void* record = nullptr, int kind = 1) {
        return CallSlot<void*>(api, kFillOperation, mode, record, kind, desk.Get());
    }
    static HWND Window(void* dialog) { return CallSlot<HWND>(dialog, kGetSafeHwnd); }
    static std::string Title(void* dialog) {
        char title[100] = "";
        GetWindowTextA(Window(dialog), title, sizeof(title));
        return title;
    }
    HostLoop Loop(void* dialog) {
        const HWND window = Window(dialog);
        return HostLoop([=](const MSG& message) {
            return IsWindow(window) && CallSlot<BOOL>(dialog, kPreTranslateMessage, &message) != FALSE;
        });
    }
    void Close(void* dialog) {
        const HWND window = Window(dialog);
        HostLoop().Click(GetDlgItem(window, kCancelButton));
        EXPECT_FALSE(IsWindow(window));
    }
};

TEST_F(Module, GivesItsInterfaceForItsVersionOnly) {
    Start();
    for (const char* version : {"1.0.0.10", "1.0.0", "1.0.0.2", "", " 1.0.0.1"}) {
        EXPECT_EQ(loaded->createApi(version), nullptr) << version;
    }
    EXPECT_EQ(loaded->createApi(nullptr), nullptr);
    loaded->freeApi(nullptr);
    loaded->freeApi(api);
    loaded->end();
}

TEST_F(Module, FetchesEveryServiceOnceInOrder) {
    loaded->init(nullptr);
    EXPECT_TRUE(host.requested.empty());
    host.services.erase("TradeList");
    loaded->init(host.Manager());
    EXPECT_THAT(host.requested,
                ElementsAre("TradeApi 1.0.0.1", "QuoteDataCenter 1.0.0.1", "SysConfig 9.0.3.1",
                            "Abnormal 9.0.3.1", "AuxiInsertOrder 9.0.3.1", "BatchOrder 1.0.0.1",
                            "GlobalMonitor 9.0.3.1", "TradeList 1.0.0.1"));
    EXPECT_EQ(host.quoteCalls, 1);
    host.requested.clear();
    host.services["TradeList"] = &host.list;
    loaded->init(host.Manager());
    loaded->init(host.Manager());
    EXPECT_THAT(host.requested, ElementsAre("TradeList 1.0.0.1"));
}

TEST_F(Module, OpensDialogsOnceThePositionListIsThere) {
    host.services.erase("TradeList");
    Start();
    EXPECT_EQ(OpenOrder(0), nullptr);
    EXPECT_EQ(OpenFill(0), nullptr);
    host.services["TradeList"] = &host.list;
    loaded->init(host.Manager());
    EXPECT_NE(OpenOrder(0), nullptr);
}

TEST_F(Module, DoesWithoutAnyOtherService) {
    for (const char* missing : {"TradeApi", "QuoteDataCenter", "SysConfig", "Abnormal"}) {
        RawHost poor;
        poor.services.erase(missing);
        Start(poor);
        for (void* dialog : {OpenOrder(0), OpenFill(0)}) {
            ASSERT_NE(dialog, nullptr) << missing;
            HostLoop().PumpUntilIdle();
            Close(dialog);
        }
        loaded.reset();
    }
}

TEST_F(Module, EveryModeShowsItsTemplate) {
    Start();
    const struct {
        int mode;
        const char* title;
    } rows[] = {
        {0, "Input Order"}, {1, "Carry"}, {5, "Input Exercise"}, {6, "Input Order"}, {-1, "Input Order"}};
    for (const auto& row : rows) {
        void* dialog = OpenOrder(row.mode);
        ASSERT_NE(dialog, nullptr) << row.mode;
        EXPECT_EQ(Title(dialog), row.title) << row.mode;
        EXPECT_TRUE(IsWindowVisible(Window(dialog)));
        EXPECT_EQ(GetWindow(Window(dialog), GW_OWNER), desk.Get());
        Close(dialog);
    }
}

// Copies the module's file, with the template of the order dialog under another id: in the directory of the
// dialogs each entry is an id and a place.
void CopyWithoutOrderTemplate(const char* original, const std::string& copy) {
    std::ifstream file(original, std::ios::binary);
    std::string bytes(std::istreambuf_iterator<char>(file), {});
    const auto idAt = [&](std::size_t at) { return *reinterpret_cast<const DWORD*>(bytes.data() + at); };
    std::size_t entry = 0;
    while (idAt(entry) != 278 || idAt(entry + 8) != 279 || idAt(entry + 16) != 280) {
        entry += 4;
        ASSERT_LT(entry + 20, bytes.size());
    }
    --bytes[entry];
    std::ofstream(copy, std::ios::binary) << bytes;
}

TEST_F(Module, MissingTemplateOpensNothing) {
    char original[MAX_PATH];
    GetModuleFileNameA(loaded->Handle(), original, sizeof(original));
    const std::string copy = std::string(original) + ".without_order.dll";
    CopyWithoutOrderTemplate(original, copy);
    loaded = std::make_unique<LoadedModule>(copy);
    loaded->load(kEnglish);
    loaded->init(host.Manager());
    api = loaded->createApi("1.0.0.1");
    EXPECT_EQ(OpenOrder(0), nullptr);
    EXPECT_TRUE(host.api.listeners.empty()) << "the dialog that could not open is still there";
    EXPECT_NE(OpenOrder(1), nullptr) << "the next dialog opens with its own arguments";
    HostLoop().PumpUntilIdle();
    loaded.reset();
    DeleteFileA(copy.c_str());
}

TEST_F(Module, KeepsOneDialogOfEachKind) {
    Start();
    void* order = OpenOrder(0);
    void* fill = OpenFill(0);
    EXPECT_NE(order, fill);
    EXPECT_EQ(OpenOrder(5), order);
    EXPECT_EQ(Title(order), "Input Order") << "the new arguments are not applied";
    EXPECT_EQ(OpenFill(0), fill);
    loaded->freeApi(api);
    EXPECT_TRUE(IsWindow(Window(order))) << "open dialogs outlive the interface";
    api = loaded->createApi("1.0.0.1");
    Close(order);
    EXPECT_TRUE(IsWindow(Window(fill)));
    void* exercise = OpenOrder(5);
    EXPECT_EQ(Title(exercise), "Input Exercise");
}

TEST_F(Module, DialogsEndWithTheHostsWindow) {
    Start();
    const HWND windows[] = {Window(OpenOrder(0)), Window(OpenFill(0))};
    const HWND gone = desk.Get();
    desk.Destroy();
    EXPECT_FALSE(IsWindow(windows[0]));
    EXPECT_FALSE(IsWindow(windows[1]));
    EXPECT_EQ(CallSlot<void*>(api, kOrderOperation, 0, nullptr, gone), nullptr);
    EXPECT_EQ(CallSlot<void*>(api, kFillOperation, 0, nullptr, 0, gone), nullptr);
    const HostWindow second;
    EXPECT_NE(CallSlot<void*>(api, kOrderOperation, 0, nullptr, second.Get()), nullptr);
    HostLoop().PumpUntilIdle();
}

TEST_F(Module, KeysOfTheHostsLoopReachTheDialog) {
    Start();
    const struct {
        void* dialog;
        int quantityEdit;
    } rows[] = {{OpenOrder(0), 1125}, {OpenFill(0), 1129}};
    for (const auto& [dialog, quantityEdit] : rows) {
        HostLoop loop = Loop(dialog);
        loop.PumpUntilIdle();
        const HWND edit = GetDlgItem(Window(dialog), quantityEdit);
        SetFocus(edit);
        ASSERT_EQ(GetFocus(), edit);
        loop.Key(VK_TAB);
        EXPECT_NE(GetFocus(), edit);
        EXPECT_TRUE(IsChild(Window(dialog), GetFocus()));

        const MSG foreign{desk.Get(), WM_KEYDOWN, VK_TAB, 0, 0, {}};
        EXPECT_FALSE(CallSlot<BOOL>(dialog, kPreTranslateMessage, &foreign));
        const MSG* none = nullptr;
        EXPECT_FALSE(CallSlot<BOOL>(dialog, kPreTranslateMessage, none));
    }
}

TEST_F(Module, LoadsAgainAfterUse) {
    for (int round = 0; round < 3; ++round) {
        RawHost other;
        Start(other);
        void* dialog = OpenOrder(1);
        ASSERT_NE(dialog, nullptr) << round;
        HostLoop().PumpUntilIdle();
        Close(dialog);
        EXPECT_TRUE(other.api.listeners.empty()) << "a listener stayed registered";
        loaded->freeApi(api);
        loaded->end();
        loaded.reset();
    }
}

TEST_F(Module, UnloadedWithOpenDialogsTakesThemAlong) {
    Start();
    const HWND windows[] = {Window(OpenOrder(0)), Window(OpenFill(0))};
    EXPECT_TRUE(IsWindow(windows[0]) && IsWindow(windows[1]));
    loaded.reset();
    EXPECT_FALSE(IsWindow(windows[0]) || IsWindow(windows[1]));
    HostLoop().PumpUntilIdle();
}

TEST_F(Module, OpeningAndClosingLeavesNothingBehind) {
    Start();
    KeptByEach(
        [&] {
            void* order = OpenOrder(0);
            void* fill = OpenFill(0);
            HostLoop().PumpUntilIdle();
            Close(order);
            Close(fill);
        },
        10);
}

}  // namespace
