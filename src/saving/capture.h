#pragma once
#include <cstdint>

#include "shell/base/windows_api.h"

// Handles the keys for grown-ups: PrintScreen (0x2C) copies the screen, F1 (0x70) opens the save dialog,
// F4 (0x73) quits. Any other key does nothing.
void captureOrExit(uint32_t key, HWND window);
