#pragma once

#include "entry/coded_text.h"
#include "framework/controls.h"

#include <optional>
#include <string>
#include <vector>

// The message "WM_LBUTTONCLK", registered when the module is loaded: a combo box sends it to its own window
// when it was clicked once. wParam as in WM_LBUTTONUP, lParam the point of the click.
extern const UINT g_uLButtonClick;

// Pixels of the widest line in `font`; null: the font of a fresh device context.
int WidestLine(HWND window, HFONT font, const std::vector<std::string>& lines);

// A drop-down combo box of coded lines ("SHFE Shanghai Futures Exchange"). It shows and returns the code,
// completes a typed code, aligns the names into one column, and tells the nearest dialog above it about every
// selection that a program makes (CB_SETCURSEL, CB_SELECTSTRING) as if the operator had made it.
class CxComboBox : public CComboBox {
public:
    CxComboBox() = default;
    ~CxComboBox() override;

    // --- options ---

    // Nothing can be typed; a click opens the list.
    void SetListOnly(bool listOnly) { m_listOnly = listOnly; }
    void SetNoContextMenu(bool noContextMenu) { m_noContextMenu = noContextMenu; }
    void SetNoUndo(bool noUndo) { m_noUndo = noUndo; }
    void SetNoDelete(bool noDelete) { m_noDelete = noDelete; }
    // Off: lines have no code, nothing is completed or aligned.
    void SetSplit(bool split) { m_split = split; }
    // The edit part shows the whole line of the selected item instead of its code; its text reads as the code
    // either way.
    void SetShowFullText(bool showFullText);
    // 0: no separator, the whole line is the code.
    void SetSeparator(char separator) { m_format.separator = separator; }
    // Lines that the open list shows before it scrolls.
    void SetMinVisibleItems(int count);
    int GetMinVisibleItems() const;

    // --- items ---

    // Replaces all items by these lines, aligned; the same as adding them and calling AlignColumns, in one
    // pass. Nothing is selected and the edit part is empty afterwards.
    void SetItems(std::vector<std::string> lines, bool fitWidth);
    // Replaces all items by these lines as they are; the open list becomes as wide as the widest. Nothing is
    // selected and the edit part is empty afterwards.
    void SetLines(const std::vector<std::string>& lines);
    // Replaces all items by these lines under the operator's hands: text, marked range and caret stay, and so
    // does the selection as long as its line (of equal lines the one in the same place among them), or else a
    // line of its code, is listed. Nothing is reported.
    void ReplaceLines(const std::vector<std::string>& lines);
    // Brings the names into one column. Item data, selection and the text shown are kept, and nothing is
    // reported. `fitWidth`: the open list becomes as wide as its text.
    void AlignColumns(bool fitWidth);
    // Pixels of the widest line in `font` (null: the font of a fresh device context).
    int WidestItem(HFONT font) const;

    // In the letters of the line as it was given: an upper-case box turns its items into upper case. Empty
    // for an index that does not exist.
    std::string GetItemCode(int index) const;
    // The first item that begins with the code, if it has exactly that code; otherwise -1.
    int FindItemByCode(const std::string& code) const;
    // The first item of this very code; without one, the first whose code differs in case alone; -1 for none
    // and for an empty code.
    int FindCode(const std::string& code) const;
    // The item that was selected, by the operator or by a program, as long as the text shown is its code (an
    // upper-case box shows it in other letters); -1 otherwise. CB_GETCURSEL answers the same.
    int GetSelectedIndex() const;
    // The item that is shown: the selected one, else the item whose whole code is the text shown; -1 for
    // none.
    int GetCurrentIndex() const;
    // The code of the item that is shown; without one, of the text shown.
    std::string GetCurrentCode() const;
    std::string GetText() const;
    // True when the text shown is this one, or the code of this line.
    bool Shows(std::string_view line) const;
    // SetCurSel without telling the dialog.
    void SelectQuietly(int index);

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL PreCreateWindow(CREATESTRUCT& create) override;
    void PreSubclassWindow() override;

    void OnTimer(UINT_PTR id);
    void OnDestroy();
    bool OnEditUpdate();
    bool OnOpening();
    bool OnOperatorSelection();
    bool OnFocusReport();
    BOOL OnSetCursor(HWND window, UINT hitTest, UINT message);

    DECLARE_MESSAGE_MAP()

private:
    void AttachEdit();
    void DetachEdit();
    static LRESULT CALLBACK EditProc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnEditMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleEditMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnEditFocus(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT MarkText(int start, int end);
    bool SwallowsEditMessage(UINT message, WPARAM wParam) const;
    template <typename Char>
    LRESULT OnSetEditText(WPARAM wParam, const Char* text);
    template <typename Char>
    LRESULT OnGetEditText(WPARAM size, Char* buffer);
    LRESULT OpenFromEdit(WPARAM wParam, LPARAM lParam);
    void AfterOpening();
    void GiveBack();

    template <typename Char>
    void Complete();
    void NotifyDialog(UINT notification) const;
    void Report();
    void StopClickTimer();

    // Bypasses the reporting of selections and the dispatch of messages.
    LRESULT ListMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    void FillLines(const std::vector<std::string>& lines);
    void FitList(const std::vector<std::string>& lines, std::size_t blanks);
    // What the operator sees of the box.
    struct KeptText {
        std::string text;
        EditSelection marked;
        int selected = -1;
    };
    KeptText KeepText() const;
    void RestoreText(const KeptText& kept);

    bool ChangesCase() const;
    std::string LineAt(int index) const;
    void KeepLine(UINT message, LRESULT index, const std::string& line);

    std::string ShownCode() const;
    bool IsSameCode(std::string_view shown, std::string_view code) const;
    bool IsShown(int index) const;
    void SelectInList(int index);
    void FollowText();

    HWND m_edit = nullptr;
    bool m_editFocused = false;
    CodedTextFormat m_format;
    bool m_listOnly = false;
    bool m_noContextMenu = false;
    bool m_noUndo = false;
    bool m_noDelete = false;
    bool m_split = true;
    bool m_showFullText = false;
    bool m_typing = true;              // the last key was neither Delete nor Backspace
    mutable bool m_ownText = false;    // the control itself reads or sets the edit's whole text
    std::vector<std::string> m_lines;  // of a box that changes their case, as they were given
    int m_selected = -1;               // the item selected last; counts while it is shown
    std::optional<KeptText> m_before;  // when the list was opened
    bool m_opening = false;
    bool m_clicking = false;   // the left button goes down in the edit part
    int m_messageDepth = 0;    // messages of the control and its edit part that are being handled
    bool m_reporting = false;  // the dialog is being told about a selection by program
    int m_minVisibleItems = 0;

    bool m_clickTimerRunning = false;
    bool m_clickPending = false;
    WPARAM m_clickKeys = 0;
    LPARAM m_clickPoint = 0;
};
