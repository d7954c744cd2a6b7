#pragma once
// One surface as large as the bench wants it, whatever the display's size is. The import is replaced by
// being defined here, so include this once.
#include "shell/base/surfaces.h"

inline RECT deskMonitor = {};

static int WINAPI deskMetric(int index)
{
    return index == SM_CXVIRTUALSCREEN   ? deskMonitor.right
           : index == SM_CYVIRTUALSCREEN ? deskMonitor.bottom
                                         : 0;
}
extern "C" {
int(WINAPI *__imp_GetSystemMetrics)(int) = deskMetric;
}

// GDI+ runs afterwards, and surfaces.front() is cleared.
inline void openDesk(int width, int height)
{
    GdiplusStartupInput input;
    ULONG_PTR token = 0;
    GdiplusStartup(&token, &input, nullptr);
    deskMonitor = {0, 0, width, height};
    createSurface(nullptr, nullptr, &deskMonitor, 0);
    newBackground(true);
}
