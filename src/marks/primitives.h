#pragma once
// Points and shapes. Points between functions are virtual-screen points; shapes are drawn in
// surface-local coordinates. They do not invalidate: callers know how far a mark reaches.
#include "marks/gdi_plus.h"

// Marks the picture as changed and applies a pending backdrop. Marks call it before they draw, unless their
// callers have; paintSegments calls it afterwards.
inline void beginMark()
{
    canvasDirty = true;
    flushBackdrop();
}

// A random place on the surface, at least margin (raised to 24) pixels from its edges; its middle,
// without a draw, where that leaves no room.
POINT randomPointOn(const MonitorSurface &surface, int margin);

// The same on the launch surface; without surfaces, anywhere on the virtual screen.
POINT randomPointOnLaunch(int margin);

// The point moved by two draws, x before y, each from low to high.
POINT strayFrom(POINT point, int lowX, int highX, int lowY, int highY);

// Replaces a point that is not at least margin (raised to 24) pixels inside the launch surface by a
// random one that is: the point jumps and is not clamped.
void keepInside(POINT &point, int margin);

// Overload for a known surface: finding the launch surface costs several system calls.
void keepInside(const MonitorSurface &surface, POINT &point, int margin);

void clampToVirtualScreen(POINT &point);

// The same for a known screen: asking the system for it is slow.
void clampTo(const VirtualScreen &screen, POINT &point);

// The middle of a rectangle, truncated toward zero.
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

// These take a virtual-screen point, draw their random proportions and open their own scope.
void starOnSurface(const MonitorSurface &surface, POINT point, int size, MarkColor color);
void heartOnSurface(const MonitorSurface &surface, POINT point, int size, MarkColor color);
void diamondOnSurface(const MonitorSurface &surface, POINT point, int size, MarkColor color);

// In the order of the key and scatter tables.
enum class Shape { star, heart, diamond, cloud, flower };

// Any of the five, with its own draws if it has any.
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

// The first surface whose area, grown by 8 pixels, holds the point; null if none does.
MonitorSurface *surfaceHolding(POINT point);

// Overload for a RECT.
inline void invalidateMarkRect(const MonitorSurface &surface, const RECT &part)
{
    invalidateMarkRect(surface, part.left, part.top, part.right, part.bottom);
}

// Repaints reachX pixels to the left and right of a surface-local point and reachY above and below it.
inline void invalidateAround(const MonitorSurface &surface, POINT local, int reachX, int reachY)
{
    invalidateMarkRect(surface, local.x - reachX, local.y - reachY, local.x + reachX + 1,
                       local.y + reachY + 1);
}
