#pragma once

#include <windows.h>

#include <commctrl.h>

// Keywords of 16-bit compilers, still macros in the system's headers, and good names.
#undef near
#undef far

#include <type_traits>

class CWnd;

// The signed client or screen coordinates that a mouse message packs into one parameter. (<windowsx.h> has
// them as macros, among others that take the names of CWnd's functions; it is not included for that reason.)
inline POINT PackedPoint(LPARAM packed) {
    return {static_cast<short>(LOWORD(packed)), static_cast<short>(HIWORD(packed))};
}

// One window message on its way to a handler.
struct WindowMessage {
    UINT id;
    WPARAM wParam;
    LPARAM lParam;
};

// A row of a message map. `code` is the message for window messages, the notification code otherwise; the
// reflected kinds are for notifications that a control sent to its parent and handles itself.
struct MessageMapEntry {
    enum class Kind { End, Message, Command, Notify, ReflectedCommand, ReflectedNotify };

    Kind kind = Kind::End;
    UINT code = 0;
    UINT firstId = 0;
    UINT lastId = 0;
    // True when the message was handled and goes no further.
    bool (*invoke)(CWnd& window, const WindowMessage& message, LRESULT& result) = nullptr;
};

// The entries of one class and the way to its base class's.
struct MessageMap {
    const MessageMap& (*base)();
    const MessageMapEntry* entries;
};

// A handler that returns nothing has handled the message; one that returns a truth value says so itself.
template <typename Call>
bool Handles(Call&& call) {
    if constexpr (std::is_void_v<decltype(call())>) {
        call();
        return true;
    } else {
        return call() ? true : false;
    }
}

#define DECLARE_MESSAGE_MAP()                  \
protected:                                     \
    static const MessageMap& ThisMessageMap(); \
    const MessageMap& GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(Class, Base)                  \
    const MessageMap& Class::GetMessageMap() const {    \
        return ThisMessageMap();                        \
    }                                                   \
    const MessageMap& Class::ThisMessageMap() {         \
        using ThisClass [[maybe_unused]] = Class;       \
        constexpr auto baseMap = &Base::ThisMessageMap; \
        static const MessageMapEntry entries[] = {
#define END_MESSAGE_MAP()                          \
    MessageMapEntry {}                             \
    }                                              \
    ;                                              \
    static const MessageMap map{baseMap, entries}; \
    return map;                                    \
    }

// The class cast happens here and nowhere else; the handler itself is typed.
#define EMENDO_MAP_ROW(kind, code, first, last, ...)                                                 \
    MessageMapEntry{MessageMapEntry::Kind::kind, static_cast<UINT>(code), static_cast<UINT>(first),  \
                    static_cast<UINT>(last),                                                         \
                    []([[maybe_unused]] CWnd& window, [[maybe_unused]] const WindowMessage& message, \
                       [[maybe_unused]] LRESULT& result) -> bool {                                   \
                        [[maybe_unused]] auto& self = static_cast<ThisClass&>(window);               \
                        __VA_ARGS__                                                                  \
                    }},

#define EMENDO_MESSAGE_ROW(id, ...) EMENDO_MAP_ROW(Message, id, 0, 0, __VA_ARGS__ return true;)

// Any message, also a registered one: LRESULT OnX(WPARAM, LPARAM).
#define ON_MESSAGE(id, handler) \
    EMENDO_MESSAGE_ROW(id, result = (self.*(handler))(message.wParam, message.lParam);)

// Window messages with their arguments taken apart; the handlers' declarations stand in CWnd.
#define ON_WM_CREATE() \
    EMENDO_MESSAGE_ROW(WM_CREATE, result = self.OnCreate(reinterpret_cast<LPCREATESTRUCT>(message.lParam));)
#define ON_WM_DESTROY() EMENDO_MESSAGE_ROW(WM_DESTROY, self.OnDestroy();)
#define ON_WM_CLOSE() EMENDO_MESSAGE_ROW(WM_CLOSE, self.OnClose();)
#define ON_WM_PAINT() EMENDO_MESSAGE_ROW(WM_PAINT, self.OnPaint();)
#define ON_WM_TIMER() EMENDO_MESSAGE_ROW(WM_TIMER, self.OnTimer(static_cast<UINT_PTR>(message.wParam));)
#define ON_WM_SIZE()                                                                                      \
    EMENDO_MESSAGE_ROW(                                                                                   \
        WM_SIZE, self.OnSize(static_cast<UINT>(message.wParam), static_cast<int>(LOWORD(message.lParam)), \
                             static_cast<int>(HIWORD(message.lParam)));)
#define ON_WM_ACTIVATE()                                                                               \
    EMENDO_MESSAGE_ROW(WM_ACTIVATE,                                                                    \
                       self.OnActivate(LOWORD(message.wParam), reinterpret_cast<HWND>(message.lParam), \
                                       HIWORD(message.wParam) != 0);)
#define ON_WM_NCACTIVATE() EMENDO_MESSAGE_ROW(WM_NCACTIVATE, result = self.OnNcActivate(message.wParam != 0);)
#define ON_WM_NCHITTEST() \
    EMENDO_MESSAGE_ROW(WM_NCHITTEST, result = self.OnNcHitTest(PackedPoint(message.lParam));)
#define ON_WM_SETCURSOR()                                                                \
    EMENDO_MESSAGE_ROW(WM_SETCURSOR,                                                     \
                       result = self.OnSetCursor(reinterpret_cast<HWND>(message.wParam), \
                                                 LOWORD(message.lParam), HIWORD(message.lParam));)
#define ON_WM_ERASEBKGND() \
    EMENDO_MESSAGE_ROW(WM_ERASEBKGND, result = self.OnEraseBkgnd(reinterpret_cast<HDC>(message.wParam));)
// The three colour messages that dialogs use: HBRUSH OnCtlColor(HDC, HWND control, UINT message).
#define EMENDO_COLOUR_ROW(colourMessage)                                                  \
    EMENDO_MESSAGE_ROW(colourMessage, result = reinterpret_cast<LRESULT>(self.OnCtlColor( \
                                          reinterpret_cast<HDC>(message.wParam),          \
                                          reinterpret_cast<HWND>(message.lParam), message.id));)
#define ON_WM_CTLCOLOR() \
    EMENDO_COLOUR_ROW(WM_CTLCOLORSTATIC) EMENDO_COLOUR_ROW(WM_CTLCOLOREDIT) EMENDO_COLOUR_ROW(WM_CTLCOLORDLG)
#define ON_WM_MOUSEMOVE()            \
    EMENDO_MESSAGE_ROW(WM_MOUSEMOVE, \
                       self.OnMouseMove(static_cast<UINT>(message.wParam), PackedPoint(message.lParam));)

// Notifications of a control (WM_COMMAND): void OnX().
#define ON_CONTROL(code, id, handler) \
    EMENDO_MAP_ROW(Command, code, id, id, return Handles([&] { return (self.*(handler))(); });)
// The same for several controls: void OnX(UINT controlId).
#define ON_CONTROL_RANGE(code, first, last, handler) \
    EMENDO_MAP_ROW(Command, code, first, last,       \
                   return Handles([&] { return (self.*(handler))(LOWORD(message.wParam)); });)
#define ON_COMMAND(id, handler) ON_CONTROL(0, id, handler)
#define ON_BN_CLICKED(id, handler) ON_CONTROL(BN_CLICKED, id, handler)
#define ON_CBN_SELCHANGE(id, handler) ON_CONTROL(CBN_SELCHANGE, id, handler)
#define ON_CBN_SETFOCUS(id, handler) ON_CONTROL(CBN_SETFOCUS, id, handler)
#define ON_CBN_KILLFOCUS(id, handler) ON_CONTROL(CBN_KILLFOCUS, id, handler)
#define ON_CBN_EDITUPDATE(id, handler) ON_CONTROL(CBN_EDITUPDATE, id, handler)
#define ON_EN_CHANGE(id, handler) ON_CONTROL(EN_CHANGE, id, handler)
#define ON_EN_KILLFOCUS(id, handler) ON_CONTROL(EN_KILLFOCUS, id, handler)

// Notifications of a common control (WM_NOTIFY): void OnX(NMHDR*, LRESULT*), or a BOOL that says whether it
// was handled.
#define ON_NOTIFY(code, id, handler)                                                                \
    EMENDO_MAP_ROW(Notify, code, id, id, return Handles([&] {                                       \
                       return (self.*(handler))(reinterpret_cast<NMHDR*>(message.lParam), &result); \
                   });)
#define ON_NOTIFY_RANGE(code, first, last, handler)                                                 \
    EMENDO_MAP_ROW(Notify, code, first, last, return Handles([&] {                                  \
                       return (self.*(handler))(static_cast<UINT>(message.wParam),                  \
                                                reinterpret_cast<NMHDR*>(message.lParam), &result); \
                   });)

// A control's own notifications, handled by the control. A handler that returns nothing keeps the
// notification from the parent; one that returns a truth value keeps it when that is true.
#define ON_CONTROL_REFLECT(code, handler) \
    EMENDO_MAP_ROW(ReflectedCommand, code, 0, 0, return Handles([&] { return (self.*(handler))(); });)
#define ON_CBN_EDITUPDATE_REFLECT(handler) ON_CONTROL_REFLECT(CBN_EDITUPDATE, handler)
#define ON_CBN_SELCHANGE_REFLECT(handler) ON_CONTROL_REFLECT(CBN_SELCHANGE, handler)
#define ON_NOTIFY_REFLECT(code, handler)                                                            \
    EMENDO_MAP_ROW(ReflectedNotify, code, 0, 0, return Handles([&] {                                \
                       return (self.*(handler))(reinterpret_cast<NMHDR*>(message.lParam), &result); \
                   });)
