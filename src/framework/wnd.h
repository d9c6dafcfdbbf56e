#pragma once

#include "framework/call_note.h"
#include "framework/message_map.h"

#include <optional>
#include <string>

// Watches a window object across calls that may delete it: handlers, questions, anything that runs a message
// loop.
class WindowWatch {
public:
    explicit WindowWatch(const CWnd* object) : m_note(const_cast<CWnd*>(object), nullptr) {}

    // The object was not deleted.
    bool ObjectAlive() const { return m_note.Target() != nullptr; }
    // Neither the object nor its window is gone.
    bool WindowAlive() const;

private:
    CallNote m_note;
};

// A window and the object that handles its messages. The object is bound before the first message of a window
// that it creates and unbound after the last one, when PostNcDestroy runs (the place for DeleteWhenIdle).
// Used on the thread that created the window only. Other windows (parents, controls without an object) are
// plain handles.
class CWnd {
public:
    CWnd() = default;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    // Destroys the window when this object created it, lets go of it otherwise.
    virtual ~CWnd();

    HWND m_hWnd = nullptr;
    HWND GetSafeHwnd() const { return m_hWnd; }

    // --- creating and binding ---

    // Creates the window with this object bound to it. A null class name means the layer's own default class.
    // `idOrMenu` is the control id of a child. False when it could not be created; the object may then have
    // been deleted by its own PostNcDestroy.
    bool CreateEx(DWORD exStyle, const char* className, const char* title, DWORD style, const RECT& rect,
                  HWND parent, UINT_PTR idOrMenu = 0);
    bool Create(const char* className, const char* title, DWORD style, const RECT& rect, HWND parent,
                UINT id) {
        return CreateEx(0, className, title, style, rect, parent, id);
    }

    // Binds to an existing window and takes over its messages; PreSubclassWindow runs first. False when the
    // window is null, gone, or bound already.
    bool SubclassWindow(HWND window);
    bool SubclassDlgItem(int id, HWND parent) { return SubclassWindow(::GetDlgItem(parent, id)); }
    // Gives the messages back; the window lives on. Null when nothing was bound.
    HWND UnsubclassWindow();

    // The object bound to a window in this module; null for every other window.
    static CWnd* FromHandlePermanent(HWND window);

    virtual BOOL DestroyWindow();

    // Deletes the object as soon as no call runs in it or in an object below it: at once, or when the last of
    // those calls ends. For objects made with `new`; their window is gone or goes with them.
    void DeleteWhenIdle();
    // Keeps an object from being deleted by DeleteWhenIdle while a call runs in it. While a window message is
    // handled, the object of its window and those of the windows above are kept this way already.
    class RunningCall {
    public:
        explicit RunningCall(CWnd& object);

    private:
        static void End(void* object, std::intptr_t);
        CallNote m_note;
    };
    // The object of a window and those of its parents and owners, as far up as there are any.
    class RunningCalls;

    // --- override these ---

    // Offered a message of the host's loop before it is dispatched (see OfferToWindows). TRUE: it was
    // handled.
    virtual BOOL PreTranslateMessage(MSG* message);

protected:
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // The window's former procedure.
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // The message map; true when handled.
    virtual bool OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    // Called with a control's notification or a command. The base reflects it to the control's object first,
    // then looks into this object's map. TRUE: handled.
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    // May change what CreateEx asks for; FALSE gives the creation up.
    virtual BOOL PreCreateWindow(CREATESTRUCT& create);
    // Runs once the object is bound, before the window's messages arrive here.
    virtual void PreSubclassWindow() {}
    // Runs after the window's last message, unbound; may delete the object.
    virtual void PostNcDestroy() {}

public:
    // --- call these ---

    // The child with this control id; null when there is none.
    virtual HWND GetDlgItem(int id) const { return ::GetDlgItem(m_hWnd, id); }
    std::string GetDlgItemText(int id) const;
    // Sets the text only when it differs.
    void SetDlgItemText(int id, const std::string& text) const;
    std::string GetWindowText() const;
    void SetWindowText(const std::string& text) const;
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::SendMessageA(m_hWnd, message, wParam, lParam);
    }
    // Without a window nothing happens: the system would take the thread, or every window, instead.
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return m_hWnd && ::PostMessageA(m_hWnd, message, wParam, lParam);
    }
    UINT_PTR SetTimer(UINT_PTR id, UINT milliseconds) const {
        return m_hWnd ? ::SetTimer(m_hWnd, id, milliseconds, nullptr) : 0;
    }
    BOOL KillTimer(UINT_PTR id) const { return ::KillTimer(m_hWnd, id); }
    BOOL ShowWindow(int command) const { return ::ShowWindow(m_hWnd, command); }
    BOOL EnableWindow(bool enable) const { return ::EnableWindow(m_hWnd, enable); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    HWND SetFocus() const { return m_hWnd ? ::SetFocus(m_hWnd) : nullptr; }
    HWND GetParent() const { return ::GetParent(m_hWnd); }
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    RECT GetClientRect() const;
    RECT GetWindowRect() const;
    void SetFont(HFONT font, bool redraw = true) const {
        SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font), redraw);
    }
    HFONT GetFont() const { return reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)); }
    void Invalidate(bool erase = true) const {
        if (m_hWnd) {
            ::InvalidateRect(m_hWnd, nullptr, erase);
        }
    }
    void UpdateWindow() const {
        if (m_hWnd) {
            ::UpdateWindow(m_hWnd);
        }
    }
    // Exchanges values with the controls: out of them (true) or into them (false). Notifications that the
    // edits send meanwhile are not delivered, selections made by the exchange are. False when there is no
    // window.
    bool UpdateData(bool saveAndValidate = true);

protected:
    virtual void DoDataExchange(class CDataExchange*) {}

    // Hands the message that is being handled to the former procedure, as it came.
    LRESULT Default();

    // What the map macros call; each does the default handling.
    int OnCreate(LPCREATESTRUCT) { return static_cast<int>(Default()); }
    void OnDestroy() { Default(); }
    void OnClose() { Default(); }
    void OnPaint() { Default(); }
    void OnTimer(UINT_PTR) { Default(); }
    void OnSize(UINT, int, int) { Default(); }
    void OnActivate(UINT, HWND, bool) { Default(); }
    BOOL OnNcActivate(bool) { return static_cast<BOOL>(Default()); }
    LRESULT OnNcHitTest(POINT) { return Default(); }
    BOOL OnSetCursor(HWND, UINT, UINT) { return static_cast<BOOL>(Default()); }
    BOOL OnEraseBkgnd(HDC) { return static_cast<BOOL>(Default()); }
    HBRUSH OnCtlColor(HDC, HWND, UINT) { return reinterpret_cast<HBRUSH>(Default()); }
    void OnMouseMove(UINT, POINT) { Default(); }

    static const MessageMap& ThisMessageMap();
    virtual const MessageMap& GetMessageMap() const { return ThisMessageMap(); }

private:
    friend class CreationBinding;
    friend class CDialog;
    struct DispatchFrame;

    static LRESULT CALLBACK StaticWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    bool Bind(HWND window);
    void Unbind();
    LRESULT Dispatch(const WindowMessage& message);
    bool IsWholeCreation(HWND window, const WindowWatch& watch);
    LRESULT DispatchGuarded(const WindowMessage& message, const WindowWatch& watch);
    bool FindAndInvoke(MessageMapEntry::Kind kind, UINT code, UINT id, const WindowMessage& message,
                       LRESULT& result);

    bool m_createdHere = false;
    bool m_deleteWhenIdle = false;
    int m_runningCalls = 0;
    int m_exchangesRunning = 0;
};

// One run of DoDataExchange: the dialog and the direction.
class CDataExchange {
public:
    CDataExchange(CWnd& dialog, bool saveAndValidate)
        : m_pDlgWnd(&dialog), m_bSaveAndValidate(saveAndValidate) {}

    CWnd* m_pDlgWnd;
    bool m_bSaveAndValidate;  // true: out of the controls

    // The control; null when this template has none with the id, and the exchange then leaves the value
    // alone.
    HWND PrepareCtrl(int id) const { return m_pDlgWnd->GetDlgItem(id); }
};

class CWnd::RunningCalls {
public:
    explicit RunningCalls(CWnd& innermost);

private:
    // A part of a control, the control, its popup, the dialog. Let go of from the outermost on, so that an
    // object is still kept when the one that it is a member of goes.
    std::optional<RunningCall> m_calls[4];
};

// The way of a host message to this module's windows: from its target up the chain of parents, every window
// with an object is offered the message through PreTranslateMessage, `dialog` last. True when one handled it.
bool OfferToWindows(const CWnd& dialog, const MSG& message);
// The control of a dialog, found through the dialog's object where it has one.
HWND DialogItem(HWND dialog, int id);
// True when the target window or its direct parent has an object in this module.
bool IsNearOwnWindow(HWND target);
