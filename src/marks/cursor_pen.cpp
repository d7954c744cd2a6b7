#include "marks/cursor_pen.h"

#include "marks/strokes.h"
#include "sound/playback.h"

static bool isSame(POINT a, POINT b)
{
    return a.x == b.x && a.y == b.y;
}

void penKey(uint32_t key)
{
    if (!penDotVisible) {
        penDotVisible = true;
        penDotPoint = launchMiddle();
    }
    const POINT from = penDotPoint;
    const VirtualScreen screen = virtualScreen();
    POINT next = from;
    POINT wrapped = from;  // where a pen at the edge continues
    switch (key) {
    case VK_LEFT:
    case VK_NUMPAD4:
        next.x -= 56;
        wrapped.x = screen.left + screen.width - 57;
        break;
    case VK_UP:
    case VK_NUMPAD8:
        next.y -= 56;
        wrapped.y = screen.top + screen.height - 57;
        break;
    case VK_RIGHT:
    case VK_NUMPAD6:
        next.x += 56;
        wrapped.x = screen.left + 56;
        break;
    case VK_DOWN:
    case VK_NUMPAD2:
        next.y += 56;
        wrapped.y = screen.top + 56;
        break;
    default: return;
    }
    clampTo(screen, next);
    clampTo(screen, wrapped);
    const bool moves = !isSame(next, from);
    if (!moves && isSame(wrapped, from)) return;  // the desktop is too small for any step

    const bool styleOfPress = rainbowStroke;
    autoMode = noAction;  // otherwise brushStroke would treat the line as auto-drawing
    rainbowStroke = true;
    if (moves) {
        brushStroke(from, next);
    } else {
        tapMark(wrapped);  // no stroke across the whole screen
    }
    rainbowStroke = styleOfPress;
    penDotPoint = moves ? next : wrapped;
    if (soundEnabled) {
        if (passGate(lastPenStepTick, 36)) playPenSound(key);
        if (!moves) playMarkSound();
    }
    for (const MonitorSurface &surface : surfaces)
        invalidateWhole(surface);
}
