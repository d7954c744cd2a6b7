#pragma once
// One surface of the size a bench needs, whatever the size of the display.
#include "shell/base/surfaces.h"
#include "support/imports.h"

// Starts GDI+ and leaves surfaces.front() cleared.
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
