#pragma once
// What keeps the child inside while a grown-up can still leave.
#include "shell/base/windows_api.h"

inline HHOOK keyboardHook = nullptr;     // set at start-up if blockShortcuts
inline HWND hookTargetWindow = nullptr;  // the primary window while running; cleared at every way out
inline bool blockShortcuts = true;       // the setting
inline float volumeClamp = -1.0f;        // 0 to 1, or -1 for off

LRESULT CALLBACK lowLevelKeyboardProc(int code, WPARAM message, LPARAM event);

// Keeps the system's keys, prompts, swipes, rotation and notifications away if blockShortcuts asks for it,
// and the screen awake in any case. Needs surfaces. What cannot be had is skipped.
void takeLock();

// Undoes takeLock and frees the cursor, while the surfaces' windows still exist; a second call only frees
// the cursor.
void releaseLock();

// Clips the cursor to the monitors while a surface is in front; frees it otherwise.
void confineCursor();

// Surfaces back on top, the hint above them, volume and cursor held. Gives way to the save dialog.
void refreshTopmost();

// Lowers a master volume above volumeClamp to it; never raises one.
void clampMasterVolume();
