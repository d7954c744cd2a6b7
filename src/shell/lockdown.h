#pragma once
// Keeps the child inside while grown-ups can still leave.
#include "shell/base/windows_api.h"

inline HHOOK keyboardHook = nullptr;     // set at start-up if blockShortcuts
inline HWND hookTargetWindow = nullptr;  // the primary window while running; null after every way out
inline bool blockShortcuts = true;       // the setting

LRESULT CALLBACK lowLevelKeyboardProc(int code, WPARAM message, LPARAM event);

// Keeps the system's keys, prompts, swipes, rotation and notifications away if blockShortcuts asks for it,
// and the screen awake in any case. Needs surfaces. What cannot be had is skipped.
void takeLock();

// Undoes takeLock and frees the cursor, while the surfaces' windows still exist; a second call only frees
// the cursor.
void releaseLock();

// Confines the cursor to the monitors while a surface is in front, and frees it otherwise.
void confineCursor();
