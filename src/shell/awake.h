#pragma once
// A child watches the penguin without touching anything; the screen must not go dark meanwhile.
#include "shell/base/windows_api.h"

inline void keepScreenAwake()
{
    SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED | ES_DISPLAY_REQUIRED);
}
inline void letScreenSleep()
{
    SetThreadExecutionState(ES_CONTINUOUS);
}
