#include "shell/base/launch_monitor.h"

#include <cwchar>

bool parseLaunchMonitor(const wchar_t *text, MonitorBounds &bounds)
{
    long values[4];
    for (int i = 0; i < 4; ++i) {
        wchar_t *end = nullptr;
        values[i] = std::wcstol(text, &end, 10);
        if (end == text) return false;
        if (i < 3 && *end != L',') return false;
        if (i == 3 && *end != L'\0' && *end != L' ') return false;
        text = end + 1;
    }
    if (values[2] <= values[0] || values[3] <= values[1]) return false;
    bounds = {values[0], values[1], values[2], values[3]};
    return true;
}
