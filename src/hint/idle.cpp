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
    // Not a difference: hintNotBefore starts at 0, which one would take for a time to come after 24 days
    // without a restart of the machine.
    if (now < hintNotBefore || now - lastInputTick < 8000) return;
    showHintPanel(idleHintWindow, idleHintWidth, idleHintHeight);
}
