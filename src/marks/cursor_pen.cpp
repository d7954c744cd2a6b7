#include "marks/cursor_pen.h"

#include "autodraw/sequencer.h"
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
    POINT wrapped = from;  // where a pen that stands at the edge goes on
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
    if (!moves && isSame(wrapped, from)) return;  // a desktop too small for any step

    const bool styleOfPress = rainbowStroke;
    autoMode = 0;  // the child's own line: what draws by itself does not take the style back
    rainbowStroke = true;
    if (moves) {
        brushStroke(from, next, 14, 92);
    } else {
        tapMark(wrapped);  // a dot at the landing, no stroke across the screen
    }
    rainbowStroke = styleOfPress;
    penDotPoint = moves ? next : wrapped;
    if (soundEnabled) {
        if (passGate(lastPenStepTick, 36)) playPenSound(key);
        if (!moves) playMarkPair();
    }
    for (const MonitorSurface &surface : surfaces)
        invalidateWhole(surface);
}
