#include "mascot/walker.h"

void initMascot() {}
void shutdownMascot() {}
void mascotWalkTick() {}
bool mascotHit(POINT)
{
    return {};
}
void drawWalker(HDC, const MonitorSurface &, int, int) {}
