#pragma once
// The ways out. Each undoes the same things in its own order; a missing step would leave the cursor confined
// or the keyboard hooked.
#include "shell/base/state.h"
#include "shell/base/windows_api.h"

inline ULONG_PTR gdiplusToken = 0;  // non-zero between GdiplusStartup and GdiplusShutdown

// Ends the program: Alt+F4, or the launch allowance's timer. A second call does nothing.
void shutdownApp(bool fromTimer);

// WM_QUERYENDSESSION: stops everything that moves. The program never delays a sign-out.
void prepareSessionEnd();

// WM_ENDSESSION with a true argument.
void endSession();

// After the message loop: undoes what is left.
void finishRun();

// Ends the hint panel and stops all timers of a window; does nothing for a null one.
void stopAllTimers(HWND window);
