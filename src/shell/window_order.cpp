#include "shell/window_order.h"

#include "shell/base/state.h"
#include "shell/base/surfaces.h"
#include "shell/lockdown.h"
#include "shell/volume.h"

void refreshTopmost()
{
    if (dialogShowing) return;
    for (const MonitorSurface &surface : surfaces) {
        SetWindowPos(surface.hwnd, HWND_TOPMOST, surface.rect.left, surface.rect.top, surface.width,
                     surface.height, SWP_NOACTIVATE);
    }
    if (hintVisible && hintFloatWindow && IsWindow(hintFloatWindow)) {
        SetWindowPos(hintFloatWindow, HWND_TOPMOST, 0, 0, 0, 0,
                     SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    }
    clampMasterVolume();
    confineCursor();
}
