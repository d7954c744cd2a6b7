#pragma once
// The one window procedure: which input reaches which reaction, in which order and after which checks.
#include "shell/base/windows_api.h"

// One child, so one state for all windows. Points are virtual-screen points.
inline bool tapPending = false;      // the left press has not yet left a tap mark
inline POINT lastStrokePoint = {};   // the left press, then the last point of its stroke
inline bool rightPressSeen = false;  // a right press reached the menu; nothing reads it

LRESULT CALLBACK windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
