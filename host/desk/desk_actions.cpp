#include "desk/desk_window.h"

#include "app/language_choice.h"
#include "book/book_file.h"
#include "book/host_text.h"
#include "services/explain.h"
#include "services/wide_text.h"
#include "services/wording.h"

#include <commdlg.h>

namespace {

constexpr double kDividerStep = 0.03;

Subject SubjectOf(int list) {
    return list == kOrderList ? Subject::kOrder : list == kFillList ? Subject::kFill : Subject::kNone;
}

// Which border a list is made taller or wider by, and which way.
struct Border {
    int divider;
    int direction;
};
constexpr Border kHeightOf[kDeskListCount] = {
    {kBelowOrders, 1}, {kBelowFills, 1}, {kBelowFills, 1}, {kBelowFills, -1}, {kBelowFills, -1}};
constexpr Border kWidthOf[kDeskListCount] = {
    {-1, 0}, {kBesideFills, 1}, {kBesideFills, -1}, {kBesideAccounts, 1}, {kBesideAccounts, -1}};

}  // namespace

void DeskWindow::OnCommand(unsigned id) {
    for (const DialogCommand& command : DialogCommands()) {
        if (command.id == id) {
            OpenDialog(command);
            return;
        }
    }
    if (id >= kFirstSort) {
        m_panes[static_cast<std::size_t>(m_active)]->SortBy(static_cast<int>(id - kFirstSort));
    } else if (id >= kFirstLanguage && id - kFirstLanguage < Languages().size()) {
        ChangeLanguage(Languages()[id - kFirstLanguage].id);
    } else if (id >= kFirstList && id - kFirstList < kDeskListCount) {
        Activate(static_cast<int>(id - kFirstList));
    }
    switch (id) {
        case kSaveBook:
            Save();
            break;
        case kSaveBookAs:
            AskForName();
            break;
        case kCloseDesk:
            SendMessageW(m_window, WM_CLOSE, 0, 0);
            break;
        case kRefresh:
            for (const auto& pane : m_panes) {
                pane->Reload(false);
            }
            break;
        case kNextList:
            Activate((m_active + 1) % kDeskListCount);
            break;
        case kPreviousList:
            Activate((m_active + kDeskListCount - 1) % kDeskListCount);
            break;
        case kDefaultAction:
            OnCommand(DefaultOf(m_active));
            break;
        case kExplainEntry:
            ExplainEntry();
            break;
        case kTaller:
        case kShorter:
        case kWider:
        case kNarrower:
            MoveDivider(id);
            break;
        default:
            break;
    }
}

unsigned DeskWindow::DefaultOf(int list) const {
    return DefaultCommand(SubjectOf(list), list == kJournalList);
}

// In the list of fills a command for an order means that of the selected fill.
OrderEntry* DeskWindow::CurrentOrder() const {
    if (m_active == kFillList) {
        const FillEntry* fill = CurrentFill();
        return fill ? fill->order : nullptr;
    }
    const auto* order = static_cast<const OrderEntry*>(m_panes[kOrderList]->Selected());
    return order ? m_host.TheBook().ledger.FindOrder(order->record.orderNo) : nullptr;
}

FillEntry* DeskWindow::CurrentFill() const {
    const auto* fill = static_cast<const FillEntry*>(m_panes[kFillList]->Selected());
    return fill ? m_host.TheBook().ledger.FindFill(fill->record.fillNo.View()) : nullptr;
}

bool DeskWindow::HasSubject(Subject subject) const {
    return subject == Subject::kNone ||
           (subject == Subject::kOrder ? CurrentOrder() != nullptr : CurrentFill() != nullptr);
}

void DeskWindow::OpenDialog(const DialogCommand& command) {
    if (!HasSubject(command.subject)) {
        SetStatus(Say(command.subject == Subject::kOrder ? "Select an order first" : "Select a fill first"));
        return;
    }
    const std::vector<HWND> before = m_host.Dialogs();
    OrderEntry* order = command.subject == Subject::kOrder ? CurrentOrder() : nullptr;
    FillEntry* fill = command.subject == Subject::kFill ? CurrentFill() : nullptr;
    IEmendixOper* dialog = nullptr;
    if (!command.fillDialog) {
        dialog = m_host.OpenOrderDialog(command.mode, order ? &order->record : nullptr, m_window);
    } else if (fill) {
        dialog = m_host.OpenFillDialog(command.mode, &fill->record, kRecordKindFill, m_window);
    } else {
        dialog = m_host.OpenFillDialog(command.mode, &order->record, kRecordKindOrder, m_window);
    }
    if (!dialog) {
        SetStatus(Say("The module opened nothing"));
    } else if (m_host.Dialogs() == before) {
        // One dialog of a kind at a time: the module brings it forward as it is.
        SetStatus(Say("Finish or close the dialog that is open first"));
    }
}

void DeskWindow::OnInitMenu(HMENU popup) {
    for (const DialogCommand& command : DialogCommands()) {
        EnableMenuItem(popup, command.id, HasSubject(command.subject) ? MF_ENABLED : MF_GRAYED);
    }
    const bool entry = m_panes[kJournalList]->Selected() != nullptr;
    EnableMenuItem(popup, kExplainEntry, entry ? MF_ENABLED : MF_GRAYED);
    unsigned id = kFirstLanguage;
    for (const LanguageChoice& choice : Languages()) {
        CheckMenuItem(popup, id, choice.id == m_language ? MF_CHECKED : MF_UNCHECKED);
        EnableMenuItem(popup, id++, CanShow(choice.id) ? MF_ENABLED : MF_GRAYED);
    }
    if (popup == SortMenuOf(GetMenu(m_window))) {
        while (DeleteMenu(popup, 0, MF_BYPOSITION)) {
        }
        const DeskList& list = m_panes[static_cast<std::size_t>(m_active)]->List();
        for (std::size_t i = 0; i < list.Columns().size(); ++i) {
            const UINT check = static_cast<int>(i) == list.SortColumn() ? MF_CHECKED : MF_UNCHECKED;
            AppendMenuW(popup, MF_STRING | check, kFirstSort + i, Wide(Say(list.Columns()[i].title)).c_str());
        }
    }
}

void DeskWindow::OnContextMenu(HWND list, POINT place, bool byKey) {
    for (int i = 0; i < kDeskListCount; ++i) {
        const ListPane& pane = *m_panes[static_cast<std::size_t>(i)];
        if (pane.Window() != list) {
            continue;
        }
        Activate(i);
        if (byKey) {
            place = pane.MenuPlace();
        }
        HMENU menu = MakeContextMenu(SubjectOf(i), i == kJournalList);
        TrackPopupMenu(menu, TPM_RIGHTBUTTON, place.x, place.y, 0, m_window, nullptr);
        DestroyMenu(menu);
        return;
    }
}

void DeskWindow::Activate(int list) {
    m_active = list;
    SetFocus(m_panes[static_cast<std::size_t>(list)]->Window());
}

void DeskWindow::MoveDivider(unsigned command) {
    const bool height = command == kTaller || command == kShorter;
    const Border border = (height ? kHeightOf : kWidthOf)[m_active];
    if (border.divider < 0) {
        return;
    }
    const int way = command == kTaller || command == kWider ? border.direction : -border.direction;
    m_settings.panes.Move(border.divider,
                          m_settings.panes.at[static_cast<std::size_t>(border.divider)] + way * kDividerStep);
    Arrange();
}

// Field by field, in a window that stays beside the desk until it is closed.
void DeskWindow::ExplainEntry() {
    const auto* row = static_cast<const JournalRow*>(m_panes[kJournalList]->Selected());
    if (!row) {
        SetStatus(Say("Select a line of the journal first"));
        return;
    }
    std::string text = Explain({"journal", m_host.Services().journal.Lines()[row->line], std::nullopt});
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2) {
        text.replace(at, 1, "\r\n");
    }
    if (!IsWindow(m_explanation)) {
        m_explanation =
            CreateWindowExW(0, L"EDIT", Wide(Say("Journal")).c_str(),
                            WS_OVERLAPPEDWINDOW | WS_VSCROLL | ES_MULTILINE | ES_READONLY, CW_USEDEFAULT, 0,
                            Scaled(560), Scaled(520), m_window, nullptr, GetModuleHandleW(nullptr), nullptr);
        RECT desk{};
        GetWindowRect(m_window, &desk);
        SetWindowPos(m_explanation, nullptr, desk.left + Scaled(80), desk.top + Scaled(80), 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER);
        SendMessageW(m_explanation, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(ANSI_FIXED_FONT)),
                     FALSE);
    }
    SetWindowTextW(m_explanation, Wide(text).c_str());
    ShowWindow(m_explanation, SW_SHOW);
    SetFocus(m_explanation);
    SendMessageW(m_explanation, EM_SETSEL, 0, 0);
}

void DeskWindow::Save() {
    if (m_bookPath.empty()) {
        SetStatus(Say("The sample book is for reading; save it under a name to keep what is entered"));
        return;
    }
    SaveAs(m_bookPath);
}

bool DeskWindow::SaveAs(const std::string& path) {
    try {
        WriteBookFile(m_host.TheBook(), path);
    } catch (const std::exception& error) {
        SetStatus(Say("The book was not saved: %1", {Utf8FromAnsi(error.what())}));
        return false;
    }
    m_bookPath = path;
    ShowTitle();
    SetStatus(Say("Book saved"));
    return true;
}

// From then on it is a book of one's own, also when it began as the sample.
void DeskWindow::AskForName() {
    char path[MAX_PATH] = "";
    OPENFILENAMEA choice{};
    choice.lStructSize = sizeof choice;
    choice.hwndOwner = m_window;
    choice.lpstrFilter = "*.json\0*.json\0";
    choice.lpstrFile = path;
    choice.nMaxFile = sizeof path;
    choice.lpstrDefExt = "json";
    choice.Flags = OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR | OFN_HIDEREADONLY;
    if (GetSaveFileNameA(&choice)) {
        SaveAs(path);
    }
}

// The module ends only when none of its functions is running: a question that is open ends with its dialog,
// and the change itself waits for the desk's own loop.
void DeskWindow::ChangeLanguage(WORD language) {
    if (!CanShow(language)) {
        SetStatus(Say("This system cannot show that language"));
        return;
    }
    m_nextLanguage = language;
    m_host.CloseDialogs();
}

void DeskWindow::ChangeLanguageNow() {
    m_language = *m_nextLanguage;
    m_nextLanguage.reset();
    try {
        m_host.Reload(m_language);
        SetStatus(Say("Module started again"));
    } catch (const std::exception& error) {
        SetStatus(Say("The module could not be started again: %1", {Utf8FromAnsi(error.what())}));
    }
    SayAnew();
}
