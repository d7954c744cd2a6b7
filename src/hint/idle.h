#pragma once
// The exit hint comes back by itself when nothing was touched for a while.
#include "shell/base/state.h"
#include "shell/base/surfaces.h"

inline DWORD hintNotBefore = 0;        // GetTickCount before which the hint may not come back; 0 if it may
inline HWND idleHintWindow = nullptr;  // where it comes back; null while it may not
inline int idleHintWidth = 0;
inline int idleHintHeight = 0;

// A child did something. While the hint shows, the idle clock stands still.
void noteChildInput();

// From now on the hint comes back on this surface, unless it has no window or is too small for the card.
void armIdleHint(const MonitorSurface &surface);

// Timer 11 of a window, every 500 ms.
void idleTick(HWND window);
