#include "shell/shutdown.h"

#include "clearing/actions.h"
#include "hint/panel.h"
#include "mascot/walker.h"
#include "menu/menu.h"
#include "saving/save_dialog.h"
#include "shell/allowance.h"
#include "shell/base/surfaces.h"
#include "shell/lockdown.h"
#include "sound/speech.h"

void stopAllTimers(HWND window)
{
    if (!window) return;
    KillTimer(window, 9);
    KillTimer(window, 11);
    discardHintPanel(window);
    for (const UINT_PTR id : {1, 3, 5, 6, 7, 10, 9, 11, 13, 12, 8})
        KillTimer(window, id);
}

static void closeSurface(MonitorSurface &surface)
{
    if (surface.hwnd) DestroyWindow(surface.hwnd);
    surface.hwnd = nullptr;
    freeSurfaceBuffers(surface);
}

// Destroying a window activates the next one, which confines the cursor again, so free it afterwards.
static void closeSurfaces()
{
    for (MonitorSurface &surface : surfaces)
        closeSurface(surface);
    surfaces.clear();
    ClipCursor(nullptr);
}

static void stopGdiplus()
{
    if (gdiplusToken) GdiplusShutdown(gdiplusToken);
    gdiplusToken = 0;
}

void shutdownApp(bool fromTimer)
{
    if (shuttingDown) return;
    shuttingDown = true;
    if (!surfaces.empty()) {
        stopAllTimers(primaryWindow());
        stopAutoDrawing();
        stopWipe();
        menuOpen = false;
        releaseLock();
        releaseVoice();
        for (MonitorSurface &surface : surfaces) {
            // Hidden first, so that the desktop shows at once instead of a frozen picture.
            if (surface.hwnd) ShowWindow(surface.hwnd, SW_HIDE);
            closeSurface(surface);
        }
        surfaces.clear();
    }
    consultAllowanceAtExit(fromTimer);
    PostQuitMessage(0);
}

void prepareSessionEnd()
{
    if (surfaces.empty()) return;
    stopAllTimers(primaryWindow());
    stopAutoDrawing();
    stopWipe();
}

void endSession()
{
    destroyDialogHost();
    stopAutoDrawing();
    stopWipe();
    shutdownMascot();
    menuOpen = false;
    autoStepsLeft = 0;
    releaseLock();
    releaseVoice();
    closeSurfaces();
    stopGdiplus();
    PostQuitMessage(0);
}

void finishRun()
{
    releaseLock();
    releaseVoice();
    shutdownMascot();
    destroyDialogHost();
    if (!gdiplusToken) return;
    closeSurfaces();
    stopGdiplus();
}
