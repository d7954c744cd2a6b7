#pragma once
// What keeps the child inside while a grown-up can still leave.
#include "shell/base/windows_api.h"

inline HHOOK keyboardHook = nullptr;     // set at start-up if blockShortcuts
inline HWND hookTargetWindow = nullptr;  // the primary window while running; cleared at every way out
inline bool blockShortcuts = true;       // the setting
inline float volumeClamp = -1.0f;        // 0 to 1, or -1 for off

LRESULT CALLBACK lowLevelKeyboardProc(int code, WPARAM message, LPARAM event);

// Installs the hook if the setting asks for it and none exists.
void installKeyboardHook();
void removeKeyboardHook();

// Clips the cursor to the monitors while a surface is in front; frees it otherwise.
void confineCursor();

// Surfaces back on top, the hint above them, volume and cursor held. Gives way to the save dialog.
void refreshTopmost();

// Lowers a master volume above volumeClamp to it; never raises one.
void clampMasterVolume();
