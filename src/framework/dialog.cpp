#include "framework/dialog.h"

#include "framework/activation_context.h"
#include "framework/guard.h"
#include "framework/module_instance.h"
#include "framework/scoped_value.h"
#include "framework/window_creation.h"

#include <cstdint>
#include <cstring>
#include <new>
#include <span>
#include <utility>

BEGIN_MESSAGE_MAP(CDialog, CWnd)
ON_COMMAND(IDOK, &CDialog::OnOK)
ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
END_MESSAGE_MAP()

namespace {

void RegisterCommonControls() {
    const INITCOMMONCONTROLSEX classes{sizeof(INITCOMMONCONTROLSEX),
                                       ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_LISTVIEW_CLASSES |
                                           ICC_TREEVIEW_CLASSES | ICC_UPDOWN_CLASS};
    InitCommonControlsEx(&classes);
}

// One entry of the initialisation resource: control id, message, byte count, then the text with its
// terminator. An id of 0 ends the list.
struct InitEntry {
    std::uint16_t controlId = 0;
    std::uint16_t message = 0;
    std::string text;
};

bool TakeEntry(std::span<const std::byte>& rest, InitEntry& entry) {
    constexpr std::size_t headSize = 8;
    std::uint32_t length = 0;
    if (rest.size() < headSize) {
        return false;
    }
    std::memcpy(&entry.controlId, rest.data(), sizeof(entry.controlId));
    std::memcpy(&entry.message, rest.data() + 2, sizeof(entry.message));
    std::memcpy(&length, rest.data() + 4, sizeof(length));
    rest = rest.subspan(headSize);
    if (entry.controlId == 0 || length > rest.size()) {
        return false;
    }
    const auto* text = reinterpret_cast<const char*>(rest.data());
    entry.text.assign(text, strnlen(text, length));
    rest = rest.subspan(length);
    return true;
}

// The resource names the list messages by their 16-bit numbers, which differ from today's.
UINT ListMessage(std::uint16_t number) {
    switch (number) {
        case 0x0403:
        case CB_ADDSTRING:
            return CB_ADDSTRING;
        case 0x0401:
        case LB_ADDSTRING:
            return LB_ADDSTRING;
        default:
            return 0;
    }
}

std::string ToAnsi(const std::string& text, UINT codePage) {
    if (codePage == CP_ACP || codePage == GetACP() || text.empty()) {
        return text;
    }
    std::wstring wide(text.size(), L'\0');
    const int wideLength = MultiByteToWideChar(codePage, 0, text.data(), static_cast<int>(text.size()),
                                               wide.data(), static_cast<int>(wide.size()));
    std::string ansi(static_cast<std::size_t>(wideLength) * 2, '\0');
    const int length = WideCharToMultiByte(CP_ACP, 0, wide.data(), wideLength, ansi.data(),
                                           static_cast<int>(ansi.size()), nullptr, nullptr);
    ansi.resize(static_cast<std::size_t>(length));
    return ansi;
}

}  // namespace

CDialog::~CDialog() {
    CallNote::ForgetTarget(&m_hostContext);
}

bool CDialog::CreateIndirect(const DLGTEMPLATE* dialogTemplate, HWND parent, const void* initData,
                             std::size_t initSize, UINT initCodePage) {
    if (!dialogTemplate || m_hWnd) {
        return false;
    }
    m_initData = static_cast<const std::byte*>(initData);
    m_initSize = initData ? initSize : 0;
    m_initCodePage = initCodePage;
    m_setUp = false;
    const WindowWatch watch(this);
    HWND window = nullptr;
    {
        const FormerActivationContext hostContext;
        const ScopedValue during(m_hostContext, &hostContext);
        const ScopedActivationContext commonControls6;
        RegisterCommonControls();
        const CreationBinding binding(*this, nullptr);
        window = ::CreateDialogIndirectParamA(ModuleInstance(), dialogTemplate, parent,
                                              &CDialog::StaticDialogProc, 0);
    }
    if (!IsWholeCreation(window, watch)) {
        return false;
    }
    m_initData = nullptr;
    if (!m_setUp) {
        // Controls without their values and rules are not for use.
        DestroyWindow();
        return false;
    }
    return true;
}

INT_PTR CALLBACK CDialog::StaticDialogProc(HWND window, UINT message, WPARAM, LPARAM) {
    if (message != WM_INITDIALOG) {
        return FALSE;
    }
    return Guarded(
        {"OnInitDialog", message},
        [&]() -> INT_PTR {
            auto* dialog = static_cast<CDialog*>(FromHandlePermanent(window));
            if (!dialog || !dialog->m_hostContext) {
                return FALSE;
            }
            const WindowWatch watch(dialog);
            const BOOL focusFirst = dialog->m_hostContext->Run([=] { return dialog->OnInitDialog(); });
            if (watch.ObjectAlive()) {
                dialog->m_setUp = true;
            }
            return focusFirst;
        },
        INT_PTR{FALSE});
}

BOOL CDialog::OnInitDialog() {
    ExecuteInitData();
    UpdateData(false);
    return TRUE;
}

void CDialog::ExecuteInitData() {
    std::span<const std::byte> rest(m_initData, m_initSize);
    InitEntry entry;
    while (TakeEntry(rest, entry)) {
        const HWND control = GetDlgItem(entry.controlId);
        if (const UINT message = ListMessage(entry.message); message && control) {
            ::SendMessageA(control, message, 0,
                           reinterpret_cast<LPARAM>(ToAnsi(entry.text, m_initCodePage).c_str()));
        }
    }
}

HWND CDialog::GetDlgItem(int id) const {
    const auto known = m_items.find(id);
    if (known != m_items.end() && ::GetDlgCtrlID(known->second) == id &&
        ::GetParent(known->second) == m_hWnd) {
        return known->second;
    }
    const HWND item = ::GetDlgItem(m_hWnd, id);
    if (item) {
        try {
            m_items[id] = item;
        } catch (const std::bad_alloc&) {
            // It is searched for again the next time.
        }
    }
    return item;
}

BOOL CDialog::PreTranslateMessage(MSG* message) {
    if (CWnd::PreTranslateMessage(message)) {
        return TRUE;
    }
    const bool isInput = (message->message >= WM_KEYFIRST && message->message <= WM_KEYLAST) ||
                         (message->message >= WM_MOUSEFIRST && message->message <= WM_MOUSELAST);
    return isInput && IsDialogMessage(message);
}
