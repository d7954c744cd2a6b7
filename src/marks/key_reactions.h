#pragma once
// Counting, waiting and settling of key presses, and the marks they leave: a calm press leaves a mark of its
// own, fast or held keys leave a spiral of notes.
#include "marks/primitives.h"
#include "shell/base/clock.h"
#include "shell/base/state.h"

// One set for all windows, since there is one child. Times are steady-clock nanoseconds.
inline int64_t lastMashTime = noTime;  // last event that updateKeyMash counted
inline uint32_t lastKeyCode = 0;       // virtual key that sameKeyCount counts
inline int64_t lastKeyTime = noTime;   // last fresh press counted
inline int64_t lastBumpTime = noTime;  // when sameKeyCount last rose or was set to 1
inline bool pendingKey = false;        // a letter or digit waits for its release or timer 6
inline uint32_t pendingKeyCode = 0;
inline LPARAM pendingKeyFlags = 0;  // lParam of its WM_KEYDOWN
inline DWORD lastSpiralTick = 0;    // last noteSpiral, GetTickCount; 0 means none
inline POINT spiralCentre = {};     // smoothed cursor, virtual-screen coordinates
inline bool spiralCentreValid = false;
inline constexpr float spiralStartRadius = 70.0f;
inline float spiralRadius = spiralStartRadius;  // pixels, grows by 7 at each step to at most 420
inline float spiralAngle = 0.0f;                // radians, grows by 0.1 at each step

// Each key's own fixed place on the launch monitor; without a surface, a random point. Virtual-screen point.
POINT keyPlacement(uint32_t key);

// Draws the shape or stamp of a key at keyPlacement. repeat is the press count, 1 to 6; from the fifth press
// on it adds taps.
void keyReaction(uint32_t key, int repeat);

// Counts one press or chord event; true if keyMashCount is now 2 or more.
bool updateKeyMash();

// Counts a press for sameKeyCount and returns the press count of this key, 1 to 6. An auto-repeat is not
// counted.
int countSameKey(uint32_t key, bool autoRepeat);

// Lets a letter or digit wait for its release or timer 6 of the window, so that a key that turns out to be
// part of a mash leaves no mark of its own. During a mash it steps the spiral. flags is the message's lParam.
void holdKey(HWND window, uint32_t key, LPARAM flags);

// The waiting key, if any, leaves its reaction; during a mash it steps the spiral instead.
void flushPendingKey();

// One step of the spiral: notes around a centre that follows the cursor slowly.
void noteSpiral();

// noteSpiral, at most every 40 ms; restarts timer 6 of the window.
void stepSpiral(HWND window);

// Timer 6, 210 ms after the last key: flushes the waiting key and lets a mash fade by one; resets all key
// state when no mash is left.
void settleKeys(HWND window);

// Release of any letter or digit: flushes the waiting key, stops timer 6, and resets the spiral or, in a
// mash, all key state.
void releaseKey(HWND window);

// Stops timer 6 of the window and resets all key state.
void resetKeyState(HWND window);
