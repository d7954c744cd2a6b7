#include "hint/idle.h"

#include "hint/panel.h"

void noteChildInput()
{
    if (!hintVisible) lastInputTick = GetTickCount();
}

void armIdleHint(const MonitorSurface &surface)
{
    if (!surface.hwnd || surface.width < 64 || surface.height < 64) return;
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
        hintNotBefore = 0;  // it has passed; 24 days later the difference would call it a time to come
    }
    if (now - lastInputTick < 8000) return;
    showHintPanel(idleHintWindow, idleHintWidth, idleHintHeight);
}
