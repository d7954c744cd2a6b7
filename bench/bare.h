#pragma once
// A window over the whole screen, as bare as one can be.
#include "shell/base/windows_api.h"

inline HWND openBareWindow(HINSTANCE instance, WNDPROC proc)
{
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = proc;
    windowClass.hInstance = instance;
    windowClass.hbrBackground = HBRUSH(GetStockObject(BLACK_BRUSH));
    windowClass.lpszClassName = L"BareWindow";
    RegisterClassExW(&windowClass);
    return CreateWindowExW(WS_EX_TOPMOST, L"BareWindow", L"", WS_POPUP | WS_VISIBLE, 0, 0,
                           GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN), nullptr, nullptr,
                           instance, nullptr);
}

inline int pumpBareMessages()
{
    MSG message = {};
    while (GetMessageW(&message, nullptr, 0, 0))
        DispatchMessageW(&message);
    return 0;
}
