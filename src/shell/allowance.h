#pragma once
// The free edition decides here whether the program may start, continue and quit. This edition always
// may; the calls mark the places where the other one decides.
#include "shell/base/windows_api.h"

inline bool allowLaunch()
{
    return true;
}
inline void consultAllowance(HWND) {}
inline void consultAllowanceAtExit(bool /*fromTimer*/) {}
