#pragma once
// The one window procedure: which input reaches which reaction, in which order and behind which gates.
#include "shell/base/windows_api.h"

// A press is one child's, whichever window it began on. Points are virtual-screen points.
inline bool leftButtonDown = false;  // a left press is being tracked
inline bool tapPending = false;      // it has not yet left a tap mark
inline bool dragMoved = false;       // it has left the dead zone: a stroke now
inline POINT lastStrokePoint = {};   // the press, then the last point of the stroke
inline bool rightPressSeen = false;  // a right press reached the menu; nothing decides on it

LRESULT CALLBACK windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
