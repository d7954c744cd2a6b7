#pragma once
// The flags and counters that rooms share, below all rooms so that a reader need not include the owner.
// Brackets name the owner, which is the only writer unless another is named. Ticks are GetTickCount
// milliseconds, compared as unsigned 32-bit differences.
#include "shell/base/windows_api.h"

enum TimedAction { noAction, scatterAction, wipeAction, drawAction };
enum ScatterShape { anyShape, starsOnly, heartsOnly };

inline DWORD lastInputTick = 0;         // last input of the child [hint/idle; hint/panel when it closes]
inline bool hintVisible = false;        // the exit hint is showing [hint/panel]
inline HWND hintFloatWindow = nullptr;  // the hint's layered window, kept between showings [hint/panel]
inline bool menuOpen = false;           // the grown-ups menu is showing [menu; shell/shutdown]
inline bool dialogShowing = false;      // the save dialog runs its own message loop [saving/save_dialog]
inline bool canvasDirty = false;        // drawn since the last auto-save [every mark; saving clears it]
inline bool soundEnabled = true;        // the setting [shell/startup]
inline bool shuttingDown = false;       // shutdownApp has run; a second call returns at once [shell/shutdown]
inline bool wipeRunning = false;        // timer 5 is alive [clearing/actions]
inline int autoMode = noAction;         // last timed action started [clearing/actions; marks/cursor_pen]
inline int autoStepsLeft = 0;           // left of a scatter run or auto-drawing, 0 to 88 [clearing/actions]
inline bool leftButtonDown = false;     // a left press is being tracked [shell/window_proc]
inline bool dragMoved = false;          // it has left the dead zone: a stroke now [shell/window_proc]
inline int scatterShape = anyShape;     // of the last scatter run [clearing/actions]
inline int keyMashCount = 0;            // fast presses in a row, 0 to 50; from 2 on a mash [marks keys]
inline int sameKeyCount = 0;            // presses of one key in a row, 1 to 6; 0 before any [marks keys]
