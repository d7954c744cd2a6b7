#pragma once
// One surface as large as the bench wants it, whatever the display's size is.
#include "shell/base/surfaces.h"
#include "support/imports.h"

// GDI+ runs afterwards, and surfaces.front() is cleared.
inline void openDesk(int width, int height)
{
    GdiplusStartupInput input;
    ULONG_PTR token = 0;
    GdiplusStartup(&token, &input, nullptr);
    static RECT monitor = {0, 0, width, height};
    static REPLACE(GetSystemMetrics, [](int index) {
        return index == SM_CXVIRTUALSCREEN   ? int(monitor.right)
               : index == SM_CYVIRTUALSCREEN ? int(monitor.bottom)
                                             : 0;
    });
    createSurface(nullptr, nullptr, &monitor, 0);
    newBackground(true);
}
