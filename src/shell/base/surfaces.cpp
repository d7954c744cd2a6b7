#include "shell/base/surfaces.h"

#include <algorithm>

#include "shell/base/launch_monitor.h"

void startPrimaryTimer(UINT_PTR id, UINT ms)
{
    if (const HWND window = primaryWindow()) SetTimer(window, id, ms, nullptr);
}

void stopPrimaryTimer(UINT_PTR id)
{
    if (const HWND window = primaryWindow()) KillTimer(window, id);
}

VirtualScreen virtualScreen()
{
    return {GetSystemMetrics(SM_XVIRTUALSCREEN), GetSystemMetrics(SM_YVIRTUALSCREEN),
            GetSystemMetrics(SM_CXVIRTUALSCREEN), GetSystemMetrics(SM_CYVIRTUALSCREEN)};
}

static void createCanvas(MonitorSurface &surface)
{
    HDC windowDC = GetDC(surface.hwnd);
    if (surface.width >= 1 && surface.height >= 1) {
        surface.canvasDC = CreateCompatibleDC(windowDC);
        surface.canvasBitmap = CreateCompatibleBitmap(windowDC, surface.width, surface.height);
        if (surface.canvasDC && surface.canvasBitmap) {
            SelectObject(surface.canvasDC, surface.canvasBitmap);
        } else {
            // Both or neither: a canvas without its bitmap is a single black pixel.
            if (surface.canvasDC) DeleteDC(surface.canvasDC);
            if (surface.canvasBitmap) DeleteObject(surface.canvasBitmap);
            surface.canvasDC = nullptr;
            surface.canvasBitmap = nullptr;
        }
    }
    ReleaseDC(surface.hwnd, windowDC);
}

BOOL CALLBACK createSurface(HMONITOR, HDC, LPRECT monitorRect, LPARAM)
{
    MonitorSurface surface;
    surface.rect = *monitorRect;
    surface.width = monitorRect->right - monitorRect->left;
    surface.height = monitorRect->bottom - monitorRect->top;
    surface.hwnd = CreateWindowExW(WS_EX_LAYERED | WS_EX_TOOLWINDOW | WS_EX_TOPMOST, L"ZubblyWindow",
                                   L"Zubbly", WS_POPUP | WS_VISIBLE, surface.rect.left, surface.rect.top,
                                   surface.width, surface.height, nullptr, nullptr, programInstance, nullptr);
    if (surface.hwnd) {
        RECT window = {};
        RECT client = {};
        if (GetWindowRect(surface.hwnd, &window) && GetClientRect(surface.hwnd, &client) &&
            client.right > 0 && client.bottom > 0) {
            surface.rect = window;
            surface.width = client.right;
            surface.height = client.bottom;
        }
    }
    createCanvas(surface);
    surfaces.push_back(surface);
    return TRUE;
}

template <class Handle> static void deleteAndClear(Handle &handle)
{
    if (handle) DeleteObject(handle);
    handle = nullptr;
}

void freeSurfaceBuffers(MonitorSurface &surface)
{
    deleteAndClear(surface.windowRegion);
    deleteAndClear(surface.backdropBitmap);
    if (surface.canvasDC && surface.canvasBitmap) {
        // A selected bitmap cannot be deleted, so another one takes its place first.
        HDC screen = GetDC(nullptr);
        HBITMAP placeholder = CreateCompatibleBitmap(screen, 1, 1);
        ReleaseDC(nullptr, screen);
        SelectObject(surface.canvasDC, placeholder);
        DeleteObject(placeholder);
    }
    if (surface.canvasDC) DeleteDC(surface.canvasDC);
    surface.canvasDC = nullptr;
    deleteAndClear(surface.canvasBitmap);
}

bool launchMonitorRect(RECT &rect)
{
    wchar_t text[64] = {};
    const DWORD length = GetEnvironmentVariableW(L"ZUB_LAUNCH_MONITOR", text, 64);
    MonitorBounds named = {};
    if (length >= 1 && length <= 63 && parseLaunchMonitor(text, named)) {
        rect = {named.left, named.top, named.right, named.bottom};
        return true;
    }
    MONITORINFO info = {};
    info.cbSize = sizeof info;
    if (GetMonitorInfoW(MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY), &info)) {
        rect = info.rcMonitor;
        return true;
    }
    rect = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    return rect.right >= 1 && rect.bottom >= 1;
}

MonitorSurface *launchSurface()
{
    if (surfaces.size() == 1) return &surfaces.front();  // saves the system calls
    for (MonitorSurface &surface : surfaces) {
        MONITORINFO info = {};
        info.cbSize = sizeof info;
        if (!GetMonitorInfoW(MonitorFromRect(&surface.rect, MONITOR_DEFAULTTONEAREST), &info)) continue;
        RECT launch = {};
        if (!launchMonitorRect(launch)) continue;
        if (launch.left == info.rcMonitor.left && launch.top == info.rcMonitor.top) return &surface;
    }
    return surfaces.empty() ? nullptr : &surfaces.front();
}

void invalidateVirtualRect(const RECT &rect)
{
    for (const MonitorSurface &surface : surfaces) {
        RECT part = {};
        if (!IntersectRect(&part, &rect, &surface.rect)) continue;
        OffsetRect(&part, -surface.rect.left, -surface.rect.top);
        if (surface.hwnd) InvalidateRect(surface.hwnd, &part, FALSE);
    }
}

void invalidateMarkRect(const MonitorSurface &surface, int left, int top, int right, int bottom)
{
    if (!surface.hwnd || surface.width <= 0 || surface.height <= 0) return;
    const RECT part = {std::max(left, 0), std::max(top, 0), std::min(right, surface.width),
                       std::min(bottom, surface.height)};
    if (part.left < part.right && part.top < part.bottom) InvalidateRect(surface.hwnd, &part, FALSE);
}

void invalidateWhole(const MonitorSurface &surface)
{
    if (surface.hwnd) InvalidateRect(surface.hwnd, nullptr, FALSE);
}

static void copyBackdrop(const MonitorSurface &surface)
{
    HDC windowDC = GetDC(surface.hwnd);
    HDC backdropDC = CreateCompatibleDC(windowDC);
    HGDIOBJ old = SelectObject(backdropDC, surface.backdropBitmap);
    BitBlt(surface.canvasDC, 0, 0, surface.width, surface.height, backdropDC, 0, 0, SRCCOPY);
    SelectObject(backdropDC, old);
    DeleteDC(backdropDC);
    ReleaseDC(surface.hwnd, windowDC);
}

void flushBackdrop()
{
    if (!backdropPending) return;
    for (const MonitorSurface &surface : surfaces) {
        if (surface.backdropBitmap && surface.canvasDC) copyBackdrop(surface);
    }
    backdropPending = false;
}

void showWholeWindow(const MonitorSurface &surface)
{
    HRGN copy = nullptr;
    if (surface.windowRegion) {
        copy = CreateRectRgn(0, 0, 0, 0);
        CombineRgn(copy, surface.windowRegion, nullptr, RGN_COPY);
    }
    if (!SetWindowRgn(surface.hwnd, copy, TRUE) && copy) DeleteObject(copy);
    SetLayeredWindowAttributes(surface.hwnd, 0, 255, LWA_ALPHA);
}

bool newBackground(bool force)
{
    const DWORD now = GetTickCount();
    if (!force && lastClearTick != 0 && now - lastClearTick < 260) return false;
    lastClearTick = now;
    backdropPending = false;
    backgroundColor = pickBackgroundColor();
    HBRUSH brush = CreateSolidBrush(backgroundColor);
    for (MonitorSurface &surface : surfaces) {
        deleteAndClear(surface.windowRegion);
        surface.windowRegion = CreateRectRgn(0, 0, surface.width, surface.height);
        if (surface.hwnd) showWholeWindow(surface);
        const RECT canvas = {0, 0, surface.width, surface.height};
        FillRect(surface.canvasDC, &canvas, brush);
        invalidateWhole(surface);
    }
    DeleteObject(brush);
    return true;
}
