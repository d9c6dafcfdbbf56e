#pragma once

#include "trade/plugin_interface.h"

// The module's answer to CreatePluginApi. It holds nothing; several may exist.
class IEmendoControl final : public IEmendix {
public:
    IEmendixOper* OpenFillDialog(int mode, void* record, int recordKind, HWND parentWindow) override;
    IEmendixOper* OpenOrderDialog(int mode, OrderRecord* record, HWND parentWindow) override;
};
