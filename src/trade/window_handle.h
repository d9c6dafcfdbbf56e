#pragma once

// The window types that cross the border, declared as <windows.h> declares them, so that code without windows
// can name them.
struct HWND__;
using HWND = HWND__*;
struct tagMSG;
using MSG = tagMSG;
using BOOL = int;
