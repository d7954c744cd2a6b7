#include "clearing/wipes.h"

void startWipe() {}
void stopWipe() {}
void wipeTick() {}
void drawRingBlobs(GraphicsScope &, const MonitorSurface &, float) {}
void drawRevealRays(GraphicsScope &, const MonitorSurface &, float, bool) {}
