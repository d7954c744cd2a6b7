// A window that puts itself over the program; tells after how many milliseconds it is covered again.
#include <cstdio>
#include <windows.h>

int main()
{
    HWND window =
        CreateWindowExW(WS_EX_TOPMOST | WS_EX_NOACTIVATE, L"STATIC", L"", WS_POPUP | WS_VISIBLE | SS_NOTIFY,
                        100, 100, 200, 200, nullptr, nullptr, nullptr, nullptr);
    SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    const bool over = WindowFromPoint({150, 150}) == window;
    const DWORD begin = GetTickCount();
    MSG message;
    while (WindowFromPoint({150, 150}) == window && GetTickCount() - begin < 10000) {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        Sleep(5);
    }
    const DWORD taken = GetTickCount() - begin;
    std::printf("%d %lu\n", over, taken);
    return over && taken <= 1600 ? 0 : 1;  // the program looks every 1.5 s
}
