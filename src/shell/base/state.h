#pragma once
// The flags and counters that rooms share, below all rooms so that a reader need not include the owner.
// Brackets name the owner, which is the only writer unless another is named. Ticks are GetTickCount
// milliseconds, compared as unsigned 32-bit differences.
#include "shell/base/windows_api.h"

inline DWORD lastInputTick = 0;         // last input of the child [hint/idle; hint/panel when it closes]
inline bool hintVisible = false;        // the exit hint is showing [hint/panel]
inline HWND hintFloatWindow = nullptr;  // the hint's layered window, kept between showings [hint/panel]
inline bool menuOpen = false;           // the grown-ups menu is showing [menu; shell/shutdown]
inline bool dialogShowing = false;      // the save dialog runs its own message loop [saving/save_dialog]
inline bool canvasDirty = false;        // drawn since the last auto-save [every mark; saving clears it]
inline bool soundEnabled = true;        // the setting [shell/startup]
inline bool shuttingDown = false;       // shutdownApp has run; a second call returns at once [shell/shutdown]
inline bool wipeRunning = false;        // timer 5 is alive [clearing/wipes]
inline int autoMode = 0;                // last action started, 0 to 3; 0 none [clearing/actions]
inline int autoStepsLeft = 0;           // steps left of action 1 or 3, 0 to 88 [clearing/actions]
inline bool leftButtonDown = false;     // a left press is being tracked [shell/window_proc]
inline bool dragMoved = false;          // it has left the dead zone: a stroke now [shell/window_proc]
inline int scatterShape = 0;            // of action 1: 0 any shape, 1 stars, 2 hearts [clearing/actions]
inline int keyMashCount = 0;            // fast presses in a row, 0 to 50; from 2 on a mash [marks keys]
inline int sameKeyCount = 0;            // presses of one key in a row, 1 to 6; 0 before any [marks keys]
