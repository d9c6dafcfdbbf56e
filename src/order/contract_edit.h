#pragma once

#include "framework/wnd.h"

// The edit in which a contract is typed. Its keys for the contract picker are those that open a list; they
// work whether or not the host forwards the messages of its loop.
class CContractEdit : public CWnd {
public:
    // Notification code to the dialog: the operator asks for the picker by key.
    static constexpr UINT kPickerAsked = 0x7F00;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};
