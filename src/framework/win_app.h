#pragma once

#include <windows.h>

// The module's application object: constructed with the library, told when it is loaded and unloaded.
class CWinApp {
public:
    CWinApp() = default;
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;
    virtual ~CWinApp() = default;

    // FALSE refuses the load.
    virtual BOOL InitInstance() { return TRUE; }
    // The library is about to be unloaded while the process lives on.
    virtual void ExitInstance() {}
};
