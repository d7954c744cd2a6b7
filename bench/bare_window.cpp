// The floor of what a start can take: a Win32 program with one window over the whole screen and nothing else.
#include "shell/windows_api.h"

static LRESULT CALLBACK bareProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
}

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int)
{
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = bareProc;
    windowClass.hInstance = instance;
    windowClass.hbrBackground = HBRUSH(GetStockObject(BLACK_BRUSH));
    windowClass.lpszClassName = L"BareWindow";
    RegisterClassExW(&windowClass);
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    CreateWindowExW(WS_EX_TOPMOST, L"BareWindow", L"", WS_POPUP | WS_VISIBLE, 0, 0, width, height, nullptr,
                    nullptr, instance, nullptr);
    MSG message = {};
    while (GetMessageW(&message, nullptr, 0, 0))
        DispatchMessageW(&message);
    return 0;
}
