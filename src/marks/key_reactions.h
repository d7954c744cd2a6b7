#pragma once
// Counting of key presses, and what keys leave: calm presses a mark of their own, fast or held ones a
// spiral of notes.
#include "marks/primitives.h"
#include "shell/base/clock.h"
#include "shell/base/state.h"

// One child, so one set for all windows. Times are steady-clock nanoseconds.
inline int64_t lastMashTime = noTime;  // last event that updateKeyMash counted
inline uint32_t lastKeyCode = 0;       // virtual key of those presses
inline int64_t lastKeyTime = noTime;   // last fresh press counted
inline int64_t lastBumpTime = noTime;  // when sameKeyCount last rose or was set to 1
inline bool pendingKey = false;        // a letter or digit waits for its reaction
inline uint32_t pendingKeyCode = 0;
inline LPARAM pendingKeyFlags = 0;  // lParam of its WM_KEYDOWN
inline DWORD lastSpiralTick = 0;    // last noteSpiral, GetTickCount; 0 means none
inline POINT spiralCentre = {};     // smoothed cursor, virtual-screen coordinates
inline bool spiralCentreValid = false;
inline float spiralRadius = 70.0f;  // pixels, 7 more at each step, at most 420
inline float spiralAngle = 0.0f;    // radians, 0.1 more at each step

// Where a key's mark lands: the same key always in the same spot of the launch monitor.
POINT keyPlacement(uint32_t key);

// Draws the shape or stamp of a key at the key's own place and sets canvasDirty. repeat is the press
// count, 1 to 6; from the fifth on it adds taps.
void keyReaction(uint32_t key, int repeat);

// Counts one press or chord event; true when keyMashCount is 2 or more.
bool updateKeyMash();

// Counts a press of key for sameKeyCount and returns the press count that goes with it. An auto-repeat
// counts nothing.
int countSameKey(uint32_t key, bool autoRepeat);

// A letter that waited leaves its reaction now, or is lost to the mash that it became part of.
void flushPendingKey();

// Notes around a centre that lags behind the cursor, one step of the spiral.
void noteSpiral();

// Timer 6 of the window, which settles a burst of keys, starts over.
void restartSettling(HWND window);

// One step of the spiral, at most every 40 ms; restarts timer 6.
void stepSpiral(HWND window);

// The spiral starts over; keys keep their counts.
void resetSpiral();

// Ends a burst of keys: stops timer 6 of the window and forgets every count.
void resetKeyState(HWND window);
