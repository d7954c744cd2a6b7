#pragma once
// The ways out. Each undoes the same things in an order of its own; a missing step would leave the
// cursor clipped or the keyboard hooked.
#include "shell/base/state.h"
#include "shell/base/windows_api.h"

inline ULONG_PTR gdiplusToken = 0;  // non-zero between GdiplusStartup and GdiplusShutdown

// Alt+F4, or the launch allowance's timer.
void shutdownApp(bool fromTimer);

// WM_QUERYENDSESSION: everything that moves stops; the toy never holds up a logoff.
void prepareSessionEnd();

// WM_ENDSESSION with a true argument.
void endSession();

// The message loop has ended: what is left is undone.
void finishRun();

// Ends the hint panel and the timers of a window; nothing happens for a null one.
void stopAllTimers(HWND window);
