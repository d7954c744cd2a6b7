#pragma once
// Points and shapes. Points between functions are virtual-screen points; shapes are drawn in
// surface-local coordinates. The shapes draw and do not invalidate: their callers know how far they reach.
#include "marks/gdi_plus.h"

// A random place on the surface, at least margin (raised to 24) pixels from its edges; its middle,
// without a draw, where that leaves no room.
POINT randomPointOn(const MonitorSurface &surface, int margin);

// The same on the launch monitor; anywhere on the virtual screen without surfaces.
POINT randomPointOnLaunch(int margin);

// Replaces a point that is not at least margin (raised to 24) pixels inside the launch surface by a
// random one that is: the point jumps, it is not clamped.
void keepInside(POINT &point, int margin);

// The same on a surface at hand. Looking for the launch surface asks the system several times, so who moves
// many points looks once.
void keepInside(const MonitorSurface &surface, POINT &point, int margin);

void clampToVirtualScreen(POINT &point);

// The same with the screen at hand: the system takes its time to tell it, so who moves many points asks once.
void clampTo(const VirtualScreen &screen, POINT &point);

// The middle of a rectangle, truncated; rectangles may lie at negative coordinates.
POINT middleOf(const RECT &rect);

// The middle of the launch surface; without surfaces, of the virtual screen.
POINT launchMiddle();

inline constexpr uint32_t outlineWhite = 0xDCFFFFFF;  // around every shape

void drawStarShape(GraphicsScope &scope, POINT centre, int outerRadius, int innerRadius, int vertexCount,
                   MarkColor color, float penWidth);
void drawHeartShape(GraphicsScope &scope, POINT centre, int size, MarkColor color, float widthScale,
                    float heightScale, float notch, float penWidth);
void drawCloudShape(GraphicsScope &scope, POINT centre, int size, MarkColor color);
void drawFlowerShape(GraphicsScope &scope, POINT centre, int size, MarkColor color);

// These take a virtual-screen point, draw their proportions and open a scope of their own.
void starOnSurface(const MonitorSurface &surface, POINT point, int size, MarkColor color);
void heartOnSurface(const MonitorSurface &surface, POINT point, int size, MarkColor color);
void diamondOnSurface(const MonitorSurface &surface, POINT point, int size, MarkColor color);

// In the order in which keys and scattering count them.
enum class Shape { star, heart, diamond, cloud, flower };

// Any of the five, with its own draws if it has some.
void shapeOnSurface(const MonitorSurface &surface, Shape shape, POINT point, int size, MarkColor color);

// A virtual-screen point in the surface's own coordinates.
inline POINT toLocal(const MonitorSurface &surface, POINT point)
{
    return {point.x - surface.rect.left, point.y - surface.rect.top};
}

// Whether a local coordinate lies on the surface grown by margin, its far edge included.
inline bool inReachX(const MonitorSurface &surface, int x, int margin)
{
    return x >= -margin && x <= surface.width + margin;
}
inline bool inReachY(const MonitorSurface &surface, int y, int margin)
{
    return y >= -margin && y <= surface.height + margin;
}
inline bool inReach(const MonitorSurface &surface, POINT local, int margin)
{
    return inReachX(surface, local.x, margin) && inReachY(surface, local.y, margin);
}

// How far a line of that width reaches beyond its end points, with some room.
int lineReach(int width);

// The box of two points, grown by reach.
RECT lineBounds(POINT a, POINT b, int reach);

// The first surface that holds the point with 8 pixels to spare, far edges excluded; null if none does.
MonitorSurface *surfaceHolding(POINT point);
