#include "shell/fullscreen_mark.h"

#include "shell/base/surfaces.h"

static bool marked = false;

// False if there is no taskbar.
static bool markEachSurface(BOOL fullscreen)
{
    ITaskbarList2 *taskbar = nullptr;
    if (FAILED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&taskbar))) ||
        !taskbar)
        return false;
    const bool ready = SUCCEEDED(taskbar->HrInit());
    if (ready) {
        for (const MonitorSurface &surface : surfaces) {
            if (surface.hwnd) taskbar->MarkFullscreenWindow(surface.hwnd, fullscreen);
        }
    }
    taskbar->Release();
    return ready;
}

void markFullscreen()
{
    if (!marked) marked = markEachSurface(TRUE);
}

void unmarkFullscreen()
{
    if (marked) markEachSurface(FALSE);
    marked = false;
}
