#pragma once
// The free edition asks here whether it may start, go on, and leave. This edition is never refused, so
// the answers are fixed; the calls keep the places at which another edition decides.
#include "shell/base/windows_api.h"

inline bool allowLaunch()
{
    return true;
}
inline void consultAllowance(HWND) {}
inline void consultAllowanceAtExit(bool /*fromTimer*/) {}
