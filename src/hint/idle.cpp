#include "hint/idle.h"

#include "hint/panel.h"

void noteChildInput()
{
    if (!hintVisible) lastInputTick = GetTickCount();
}

void armIdleHint(const MonitorSurface &surface)
{
    if (!surface.hwnd || surface.width < minOwnerSide || surface.height < minOwnerSide) return;
    idleHintWindow = surface.hwnd;
    idleHintWidth = surface.width;
    idleHintHeight = surface.height;
    lastInputTick = GetTickCount();
    SetTimer(surface.hwnd, 11, 500, nullptr);
}

void idleTick(HWND window)
{
    if (!window || window != idleHintWindow || hintVisible) return;
    const DWORD now = GetTickCount();
    if (hintNotBefore != 0) {
        if (int32_t(now - hintNotBefore) < 0) return;
        hintNotBefore = 0;  // it has passed; in 24 days the difference would call it a time to come
    }
    if (now - lastInputTick < 8000) return;
    showHintPanel(idleHintWindow, idleHintWidth, idleHintHeight);
}
