#pragma once
// Keeps the screen on: a child may watch the penguin for a long time without touching anything.
#include "shell/base/windows_api.h"

inline void keepScreenAwake()
{
    SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED | ES_DISPLAY_REQUIRED);
}
inline void letScreenSleep()
{
    SetThreadExecutionState(ES_CONTINUOUS);
}
