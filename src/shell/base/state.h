#pragma once
// The flags and counters that rooms share. They stand below every room, so that whoever needs one includes
// this header and not the room that owns it. The owner, in brackets, is the one that writes it; a second
// writer is named. Ticks are GetTickCount milliseconds, compared as unsigned 32-bit differences.
#include "shell/base/windows_api.h"

inline DWORD lastInputTick = 0;         // last child input [hint/idle; a closing panel restarts it]
inline bool hintVisible = false;        // the exit hint is showing [hint/panel]
inline HWND hintFloatWindow = nullptr;  // its layered window, kept between showings [hint/panel]
inline bool menuOpen = false;           // the grown-ups menu is showing [menu; shutdown closes it]
inline bool dialogShowing = false;      // only while the save dialog's own loop runs [saving/save_dialog]
inline bool canvasDirty = false;        // drawn since the last auto-save [every mark; saving clears it]
inline bool soundEnabled = true;        // the setting [shell/startup]
inline bool shuttingDown = false;       // shutdownApp has run; a second call does nothing [shell/shutdown]
inline bool wipeRunning = false;        // timer 5 is alive [clearing/wipes]
inline int autoMode = 0;                // last action started, 0 to 3; 0 none [clearing/actions]
inline int autoStepsLeft = 0;           // steps left of action 1 or 3, 0 to 88 [clearing/actions]
inline int scatterShape = 0;            // of action 1: 0 any shape, 1 stars, 2 hearts [clearing/actions]
inline int keyMashCount = 0;            // fast presses in a row, 0 to 50; from 2 on a mash [marks keys]
inline int sameKeyCount = 0;            // presses of one key in a row, 1 to 6; 0 before any [marks keys]
