#pragma once

#include "framework/win_app.h"

// The module's one application object.
class CEmendoOrdApp : public CWinApp {
public:
    BOOL InitInstance() override;
    void ExitInstance() override;
};

extern CEmendoOrdApp theApp;
