#pragma once

#include "trade/plugin_interface.h"

// The module's answer to CreatePluginApi. Several may exist; those that do are chained, so that a pointer
// that was freed before, or never was one, is recognised.
class IEmendoControl final : public IEmendix {
public:
    // Null without memory.
    static IEmendix* Create();
    // Ignores what is not there.
    static void Free(const IEmendix* control);

    IEmendixOper* OpenFillDialog(int mode, void* record, int recordKind, HWND parentWindow) override;
    IEmendixOper* OpenOrderDialog(int mode, OrderRecord* record, HWND parentWindow) override;

private:
    IEmendoControl() = default;

    IEmendoControl* m_next = nullptr;
    static inline IEmendoControl* s_first = nullptr;
};
