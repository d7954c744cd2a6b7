#pragma once
// One full-screen window per monitor, each with the back buffer that holds its part of the picture. The
// picture survives whatever happens to a window.
#include <vector>

#include "marks/random.h"
#include "shell/base/state.h"
#include "shell/base/windows_api.h"

struct MonitorSurface {
    HWND hwnd = nullptr;               // null if its creation failed; never pass null to InvalidateRect
    HDC canvasDC = nullptr;            // holds canvasBitmap; every mark is drawn here
    HBITMAP canvasBitmap = nullptr;    // width by height, compatible with the window
    HRGN windowRegion = nullptr;       // the client rectangle; null until the first newBackground
    HBITMAP backdropBitmap = nullptr;  // nothing ever fills it
    RECT rect = {};                    // the monitor in virtual-screen coordinates, fixed after creation
    int width = 0;                     // client size in pixels
    int height = 0;
};

inline HINSTANCE programInstance = nullptr;   // set at start-up before any window exists
inline std::vector<MonitorSurface> surfaces;  // in the system's order; filled once, emptied on the way out
inline MarkColor backgroundColor = 0x37231E;  // of the cleared canvas
inline DWORD lastClearTick = 0;               // last clear that was not refused; 0 before the first
inline bool backdropPending = false;          // flushBackdrop has work; nothing ever sets it

// The window of the first monitor enumerated, which owns the standing timers; null without surfaces. It is
// not necessarily the system's primary monitor.
inline HWND primaryWindow()
{
    return surfaces.empty() ? nullptr : surfaces.front().hwnd;
}

// Timers of the primary window with a period of ms milliseconds. Without that window no timer starts, as
// nothing could stop it.
void startPrimaryTimer(UINT_PTR id, UINT ms);
void stopPrimaryTimer(UINT_PTR id);

// All monitors together, in virtual-screen coordinates; left and top may be negative.
struct VirtualScreen {
    int left, top, width, height;
};
VirtualScreen virtualScreen();

// Callback of EnumDisplayMonitors: creates window and back buffer of one monitor and appends its record,
// even if the window failed. Always TRUE.
BOOL CALLBACK createSurface(HMONITOR monitor, HDC dc, LPRECT monitorRect, LPARAM data);

// Frees everything that a surface owns except its window, and clears the handles.
void freeSurfaceBuffers(MonitorSurface &surface);

// The monitor that a launcher named in ZUB_LAUNCH_MONITOR ("left,top,right,bottom"), else the system's
// primary one. False if the system reports no monitor.
bool launchMonitorRect(RECT &rect);

// The surface on the launch monitor, else the first surface; null only without surfaces.
MonitorSurface *launchSurface();

// Repaints the part of every window that rect (virtual-screen coordinates) covers.
void invalidateVirtualRect(const RECT &rect);

// Repaints the part of one surface inside left, top, right, bottom (surface-local, clipped here).
// Does nothing on a surface without window or size.
void invalidateMarkRect(const MonitorSurface &surface, int left, int top, int right, int bottom);

// Repaints a whole window, if it exists.
void invalidateWhole(const MonitorSurface &surface);

// Copies the saved backdrop over every canvas if one is pending. Marks call it through beginMark.
void flushBackdrop();

// Gives the window a fresh copy of windowRegion, which the system then owns, and makes it opaque.
void showWholeWindow(const MonitorSurface &surface);

// Clears every canvas to a new colour at once. Without force it does nothing and returns false within
// 260 ms of the last clear. Callers first stop a running wipe or auto-drawing.
bool newBackground(bool force);
