#pragma once

#include "app/host_app.h"
#include "desk/desk_commands.h"
#include "desk/list_pane.h"
#include "framework/owned_handle.h"
#include "review/second_look.h"

#include <array>
#include <memory>
#include <optional>

// The terminal's main window: five lists over the book and the journal, every dialog of the module on the
// selected record, and a status line with what the last request did. docs/desk.md describes it for its user.
class DeskWindow {
public:
    // `bookPath` is where the book is saved, empty when it is for reading only. Throws std::runtime_error
    // when the window cannot be made. The host must outlive the desk.
    DeskWindow(HostApp& host, std::string bookPath, DeskSettings settings);
    ~DeskWindow();
    DeskWindow(const DeskWindow&) = delete;
    DeskWindow& operator=(const DeskWindow&) = delete;

    // Null once it was closed.
    HWND Window() const { return m_window; }
    // `language`: in which the module was started.
    void Show(WORD language);
    // The message loop, until the desk is closed. By then no call into the module is under way any more.
    void Run();
    // One message of that loop.
    void Handle(MSG& message);

    ListPane& Pane(DeskListKind kind) { return *m_panes[kind]; }
    std::wstring StatusText() const;
    // Saves the book in that file now and at the end. False when it cannot be written, which is said.
    bool SaveAs(const std::string& path);
    // Where the book is saved at the end, empty for nowhere.
    const std::string& BookPath() const { return m_bookPath; }
    // The layout as it is, or as it was when the desk was closed.
    DeskSettings Settings() const;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

    // --- the window (desk_window.cpp) ---
    void MakeWindow();
    void MakePanes();
    void Arrange();
    PaneBox ListArea() const;
    int DividerAt(POINT point) const;
    bool OnSetCursor() const;
    void OnDrag(POINT point);
    LRESULT OnNotify(NMHDR& header);
    void OnDestroy();
    bool TranslateKeys(MSG& message);
    void SetStatus(const std::string& utf8);
    void ShowLanguage();
    void ShowTitle();
    // Writes all that it shows in the language that is spoken now.
    void SayAnew();

    // --- what it does (desk_actions.cpp) ---
    void OnCommand(unsigned id);
    void OpenDialog(const DialogCommand& command);
    OrderEntry* CurrentOrder() const;
    FillEntry* CurrentFill() const;
    bool HasSubject(Subject subject) const;
    void OnInitMenu(HMENU popup);
    void OnContextMenu(HWND list, POINT place, bool byKey);
    void Activate(int list);
    void MoveDivider(unsigned command);
    void ExplainEntry();
    void Save();
    void AskForName();
    void ChangeLanguage(WORD language);
    void ChangeLanguageNow();
    unsigned DefaultOf(int list) const;

    // --- what it hears of requests (desk_journal.cpp) ---
    void HearJournal();
    void OnJournalGrew();
    void Reveal(const Change& change);
    static constexpr UINT kJournalGrew = WM_APP + 1;

    HostApp& m_host;
    SecondLook m_secondLook;
    std::string m_bookPath;
    DeskSettings m_settings;
    std::vector<DeskList> m_lists;
    FontHandle m_font;
    HWND m_window = nullptr;
    HWND m_status = nullptr;
    HWND m_explanation = nullptr;
    HACCEL m_keys = nullptr;
    std::array<std::unique_ptr<ListPane>, kDeskListCount> m_panes;
    int m_active = kOrderList;  // the list that has or last had the focus
    int m_dragged = -1;         // a divider
    bool m_journalGrew = false;
    std::vector<Change> m_changes;       // since the lists were read
    std::vector<std::string> m_remarks;  // likewise
    WORD m_language = 0;
    std::optional<WORD> m_nextLanguage;
};
