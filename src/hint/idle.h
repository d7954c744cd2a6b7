#pragma once
// Shows the exit hint again after 8 seconds without input.
#include "shell/base/surfaces.h"

// Call at every input of the child. Does nothing while the hint shows.
void noteChildInput();

// Lets the hint return on this surface from now on, unless it has no window or is too small for the card.
void armIdleHint(const MonitorSurface &surface);

// Timer 11, every 500 ms. Ticks of any window but idleHintWindow are ignored.
void idleTick(HWND window);
