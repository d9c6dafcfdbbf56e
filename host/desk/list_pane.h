#pragma once

#include "desk/desk_list.h"
#include "desk/pane_layout.h"

#include <windows.h>

#include <commctrl.h>

// One list of the desk: a heading with the number of rows, and a virtual list view that asks for the cells it
// paints. Both are children of the desk and go with it.
class ListPane {
public:
    ListPane(DeskList& list, HWND parent, unsigned id, HFONT font);

    HWND Window() const { return m_list; }
    DeskList& List() { return m_model; }
    void Place(const PaneBox& box);
    bool HasFocus() const { return GetFocus() == m_list; }

    // Reads the rows again, without scrolling; the selected row stays selected when it is still there.
    // `follow`: when it is not, or none was, the last row is selected and brought into view.
    void Reload(bool follow);
    // The selected row; null for none.
    const void* Selected() const;
    void Select(int index);
    // Selects that row when it is there.
    void Reveal(const void* row);
    // Writes headings and cells in the language that is spoken now.
    void SayAnew();
    // A second sort by the same column turns the order round.
    void SortBy(int column);

    void Apply(const DeskSettings::List& settings);
    DeskSettings::List Settings() const;

    // A notification of the list view.
    LRESULT OnNotify(NMHDR& header);
    // Where a context menu belongs that was asked for with the keyboard, in screen coordinates.
    POINT MenuPlace() const;

private:
    void MakeColumns();
    void ShowSortMark(int column, bool show);
    void Show(const void* selected, bool reveal);
    int FindText(const NMLVFINDITEMW& find) const;

    DeskList& m_model;
    HWND m_heading;
    HWND m_list;
    std::wstring m_cell;  // of the last answer, which the list view reads after the call
};
