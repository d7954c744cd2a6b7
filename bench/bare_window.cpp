// The least that a program can cost under Wine: one window over the whole screen. When a key or button is
// released it fills itself at once; during a drag it draws a small square at the pointer.
#include "bare.h"

static void fill(HWND window, const RECT &part)
{
    static COLORREF color = 0;
    color = ~color & 0xFFFFFF;
    HDC dc = GetDC(window);
    HBRUSH brush = CreateSolidBrush(color);
    FillRect(dc, &part, brush);
    DeleteObject(brush);
    ReleaseDC(window, dc);
}

static void fillWhole(HWND window)
{
    RECT client = {};
    GetClientRect(window, &client);
    fill(window, client);
}

static void fillAt(HWND window, int x, int y)
{
    fill(window, {x - 10, y - 10, x + 10, y + 10});
}

static LRESULT CALLBACK bareProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_KEYUP:
    case WM_LBUTTONUP: fillWhole(window); break;
    case WM_MOUSEMOVE:
        if (wParam & MK_LBUTTON) fillAt(window, short(LOWORD(lParam)), short(HIWORD(lParam)));
        break;
    case WM_DESTROY: PostQuitMessage(0); break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int)
{
    openBareWindow(instance, bareProc);
    return pumpBareMessages();
}
