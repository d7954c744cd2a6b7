#pragma once
#include "shell/base/windows_api.h"

// WM_PAINT: the canvas, with mascot, fireworks, pen dot and menu laid over it on the way.
void paintSurface(HWND window);
