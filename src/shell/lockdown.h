#pragma once
// Keeps the child inside while grown-ups can still leave.
#include "shell/base/windows_api.h"

inline HHOOK keyboardHook = nullptr;     // set at start-up if blockShortcuts
inline HWND hookTargetWindow = nullptr;  // the primary window while running; null after every way out
inline bool blockShortcuts = true;       // the setting

inline constexpr UINT programKeyMessage = WM_APP + 1;  // posted by the hook; wParam is the key

LRESULT CALLBACK lowLevelKeyboardProc(int code, WPARAM message, LPARAM event);

// Keeps the screen awake and, if blockShortcuts is set, keeps away the system's keys, prompts, swipes,
// rotation and notifications. Needs surfaces. Skips what the system cannot do.
void takeLock();

// Undoes takeLock and frees the cursor; a second call only frees the cursor. Call it while the surfaces'
// windows still exist.
void releaseLock();

// Confines the cursor to the monitors while a surface is in front, and frees it otherwise.
void confineCursor();
