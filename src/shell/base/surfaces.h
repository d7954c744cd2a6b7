#pragma once
// One full-screen window per monitor, each with the back buffer that holds its part of the picture.
// Windows hold nothing of their own: whatever happens to a window, the picture survives.
#include <vector>

#include "marks/random.h"
#include "shell/base/state.h"
#include "shell/base/windows_api.h"

struct MonitorSurface {
    HWND hwnd = nullptr;               // null if its creation failed: never hand that to InvalidateRect
    HDC canvasDC = nullptr;            // holds canvasBitmap; every mark is drawn here
    HBITMAP canvasBitmap = nullptr;    // width by height, compatible with the window
    HRGN windowRegion = nullptr;       // the client rectangle; null until the first newBackground
    HBITMAP backdropBitmap = nullptr;  // nothing ever fills it
    RECT rect = {};                    // the monitor in virtual-screen coordinates, fixed after creation
    int width = 0;                     // client size in pixels
    int height = 0;
};

inline HINSTANCE programInstance = nullptr;   // set first thing at start-up
inline std::vector<MonitorSurface> surfaces;  // in the system's order; filled once, emptied at the end
inline MarkColor backgroundColor = 0x37231E;  // of the cleared canvas
inline DWORD lastClearTick = 0;               // last clear that went through; 0 means none yet
inline bool backdropPending = false;          // flushBackdrop has work; nothing ever sets it

// Window of the first monitor enumerated and home of the standing timers; null without surfaces. It need
// not be the monitor that the system calls primary.
inline HWND primaryWindow()
{
    return surfaces.empty() ? nullptr : surfaces.front().hwnd;
}

// Timers of the primary window, ms milliseconds apart. Nothing happens without one: a timer that has no
// window could never be stopped.
void startPrimaryTimer(UINT_PTR id, UINT ms);
void stopPrimaryTimer(UINT_PTR id);

// All monitors together, in virtual-screen coordinates; left and top may be negative.
struct VirtualScreen {
    int left, top, width, height;
};
VirtualScreen virtualScreen();

// Callback of EnumDisplayMonitors: makes the window and back buffer of one monitor and appends its
// record, which exists even if its window does not. Always TRUE.
BOOL CALLBACK createSurface(HMONITOR monitor, HDC dc, LPRECT monitorRect, LPARAM data);

// Frees what a surface holds and clears each handle; leaves the window alone.
void freeSurfaceBuffers(MonitorSurface &surface);

// The monitor on which the program was started, as the launcher names it in ZUB_LAUNCH_MONITOR
// ("left,top,right,bottom"), else the system's primary one. False if the system knows no monitor.
bool launchMonitorRect(RECT &rect);

// The surface on the launch monitor, else the first one; null only without surfaces.
MonitorSurface *launchSurface();

// Repaints the part of every window that rect (virtual-screen coordinates) covers.
void invalidateVirtualRect(const RECT &rect);

// Repaints the part of one surface inside left, top, right, bottom (surface-local, clipped here).
// Nothing happens on a surface without window or size.
void invalidateMarkRect(const MonitorSurface &surface, int left, int top, int right, int bottom);

// Repaints a whole window; nothing happens if it does not exist.
void invalidateWhole(const MonitorSurface &surface);

// Lays the saved backdrop over every canvas if one is pending. Every mark calls it before it draws.
void flushBackdrop();

// Gives the window a fresh copy of windowRegion (the system owns what it is given) and makes it opaque.
void showWholeWindow(const MonitorSurface &surface);

// Clears every canvas to a new colour at once. False, and nothing happens, if the last clear was less
// than 260 ms ago and force is not set. A wipe or auto-drawing has to be stopped by the caller.
bool newBackground(bool force);
