#pragma once
#include "shell/base/windows_api.h"

// WM_PAINT: copies the canvas and draws mascot, fireworks, pen dot and menu over it.
void paintSurface(HWND window);
