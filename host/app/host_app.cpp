#include "app/host_app.h"

#include "app/language_choice.h"
#include "services/wording.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr char kEventClass[] = "EmendoHostEvents";
constexpr UINT kEventsHandled = WM_APP + 2;  // wParam: serial of the last event that was posted before

HWND MakeEventWindow(WNDPROC procedure, void* host) {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = kEventClass;
    RegisterClassA(&windowClass);  // fails quietly when it is already there
    HWND window = CreateWindowExA(0, kEventClass, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                  windowClass.hInstance, nullptr);
    if (!window) {
        throw std::runtime_error("no window can be made (error " + std::to_string(GetLastError()) + ")");
    }
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(host));
    return window;
}

}  // namespace

HostApp::HostApp(Book& book)
    : m_book(book),
      m_eventWindow(MakeEventWindow(EventProcedure, this)),
      m_services(book, Posting()),
      m_lists(book, m_services.faults) {
    m_services.manager.Offer("TradeList", "1.0.0.1", static_cast<ITradeList*>(&m_lists));
    m_services.trade.onRequest = [this](const Outcome& outcome) {
        if (!outcome.positions.empty()) {
            m_lists.RefreshAll();
        }
    };
    m_services.faults.sleep = [](unsigned milliseconds) { Sleep(milliseconds); };
    m_services.faults.destroyParent = [this] {
        if (IsWindow(m_lastParent)) {
            DestroyWindow(m_lastParent);
        }
    };
}

HostApp::~HostApp() {
    Unload();
    SetWindowLongPtrA(m_eventWindow, GWLP_USERDATA, 0);
    DestroyWindow(m_eventWindow);
}

EventPosting HostApp::Posting() {
    HWND eventWindow = m_eventWindow;
    return {[](HWND window, void* record, std::uint32_t code) {
                return PostMessageA(window, kWmTradeSpi, reinterpret_cast<WPARAM>(record),
                                    static_cast<LPARAM>(code)) != FALSE;
            },
            [eventWindow](std::uint32_t serial) {
                return PostMessageA(eventWindow, kEventsHandled, serial, 0) != FALSE;
            }};
}

LRESULT CALLBACK HostApp::EventProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<HostApp*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (self && message == kEventsHandled) {
        self->m_services.events.Handled(static_cast<std::uint32_t>(wParam));
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

void HostApp::Load(const std::string& modulePath, WORD language) {
    Unload();
    m_module = std::make_unique<ModuleHandle>(modulePath);
    m_modulePath = modulePath;
    SpeakLanguage(LanguageOf(language));
    m_module->onPluginLoad(language);
    m_module->onPluginInit(&m_services.manager);
    m_api = m_module->createPluginApi("1.0.0.1");
    if (!m_api) {
        Unload();
        throw std::runtime_error(modulePath + " gives no interface of version 1.0.0.1");
    }
}

void HostApp::Unload() {
    if (!m_module) {
        return;
    }
    CloseDialogs();
    if (m_api) {
        m_module->freePluginApi(m_api);
        m_api = nullptr;
    }
    m_module->onPluginFree();
    m_module.reset();
}

void HostApp::Reload(WORD language) {
    const std::string path = m_modulePath;
    Load(path, language);
}

IEmendixOper* HostApp::OpenOrderDialog(int mode, OrderRecord* record, HWND parent) {
    m_lastParent = parent;
    return Remember(m_api ? m_api->OpenOrderDialog(mode, record, parent) : nullptr);
}

IEmendixOper* HostApp::OpenFillDialog(int mode, void* record, int recordKind, HWND parent) {
    m_lastParent = parent;
    return Remember(m_api ? m_api->OpenFillDialog(mode, record, recordKind, parent) : nullptr);
}

IEmendixOper* HostApp::Remember(IEmendixOper* oper) {
    ForgetClosed();
    if (!oper) {
        return nullptr;
    }
    HWND window = oper->GetSafeHwnd();
    const bool known = std::any_of(m_dialogs.begin(), m_dialogs.end(), [&](const OpenDialog& dialog) {
        return dialog.oper == oper && dialog.window == window;
    });
    if (!known) {
        m_dialogs.push_back({oper, window});
    }
    return oper;
}

void HostApp::ForgetClosed() {
    std::erase_if(m_dialogs, [](const OpenDialog& dialog) { return !IsWindow(dialog.window); });
}

std::vector<HWND> HostApp::Dialogs() {
    ForgetClosed();
    std::vector<HWND> windows;
    for (const OpenDialog& dialog : m_dialogs) {
        windows.push_back(dialog.window);
    }
    return windows;
}

void HostApp::CloseDialogs() {
    for (HWND window : Dialogs()) {
        SendMessageA(window, WM_CLOSE, 0, 0);
        if (IsWindow(window)) {
            DestroyWindow(window);
        }
    }
    m_dialogs.clear();
}

bool HostApp::Offer(MSG& message) {
    // A dialog may open or close another one on its way: the list is read by index, and anew each time.
    for (std::size_t i = 0; i < m_dialogs.size(); ++i) {
        const OpenDialog dialog = m_dialogs[i];
        if (IsWindow(dialog.window) && dialog.oper->PreTranslateMessage(&message)) {
            return true;
        }
    }
    return false;
}

bool HostApp::Handle(MSG& message) {
    if (message.message == WM_QUIT) {
        m_quit = true;
        return false;
    }
    if (!Offer(message)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return true;
}

bool HostApp::PumpUntilIdle() {
    MSG message;
    while (!m_quit && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        Handle(message);
    }
    ForgetClosed();
    return !m_quit;
}

bool HostApp::PumpUntil(const std::function<bool()>& condition, unsigned milliseconds) {
    const DWORD start = GetTickCount();
    while (PumpUntilIdle() && !condition()) {
        const DWORD gone = GetTickCount() - start;
        if (gone >= milliseconds) {
            return false;
        }
        // A condition may come true without a message, so it is asked again now and then.
        const DWORD wait = milliseconds - gone < 20 ? milliseconds - gone : 20;
        MsgWaitForMultipleObjectsEx(0, nullptr, wait, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
    return condition();
}

int HostApp::Run() {
    MSG message{};
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        Handle(message);
        ForgetClosed();
    }
    return static_cast<int>(message.wParam);
}

std::string ProgramFolder() {
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string full(path, length);
    return full.substr(0, full.find_last_of("\\/") + 1);
}
