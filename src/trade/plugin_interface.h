#pragma once

#include "trade/order_record.h"
#include "trade/window_handle.h"

// What the module offers to the host.

// One open dialog, seen by the host; it lives exactly as long as the dialog's window. PreTranslateMessage
// returns nonzero when the message was handled and must not be dispatched.
class IEmendixOper {
public:
    virtual BOOL PreTranslateMessage(const MSG* message) = 0;  // slot 0
    virtual HWND GetSafeHwnd() = 0;                            // slot 1

protected:
    ~IEmendixOper() = default;
};

// What the record given to OpenFillDialog is; the record is ignored for any other value.
inline constexpr int kRecordKindOrder = 0;  // OrderRecord*: the order to which a fill is input
inline constexpr int kRecordKindFill = 2;   // FillRecord*: the fill to work on

// Opens the dialogs, or brings the open one of that kind forward with its own arguments unchanged. Null when
// the host has no position list service or the dialog could not be created.
class IEmendix {
public:
    virtual IEmendixOper* OpenFillDialog(int mode, void* record, int recordKind,
                                         HWND parentWindow) = 0;                                  // slot 0
    virtual IEmendixOper* OpenOrderDialog(int mode, OrderRecord* record, HWND parentWindow) = 0;  // slot 1

protected:
    ~IEmendix() = default;
};
