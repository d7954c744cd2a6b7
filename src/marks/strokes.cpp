#include "marks/strokes.h"

#include <algorithm>
#include <cmath>

void chooseStrokeStyle()
{
    rainbowStroke = false;
    if (rainbowCooldown > 0) {
        --rainbowCooldown;
    } else if (randInt(0, 99) < 8) {
        rainbowStroke = true;
        rainbowCooldown = randInt(4, 8);
    }
    strokeColor = anyColor();
    randInt(24, 60);  // unused; the draw keeps the random sequence unchanged
}

void tapMark(POINT point)
{
    if (autoMode == drawAction) keepInside(point, 42);
    beginMark();
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, point);
        if (!inReach(surface, local, 200)) continue;
        const MarkColor color = anyColor();
        const int diameter = randInt(18, 92);
        GraphicsScope scope(surface);
        const OwnedBrush fill = solidBrush(color, 0xE6);
        fillCircle(scope, fill, float(local.x - diameter / 2), float(local.y - diameter / 2),
                   float(diameter));
        const int reach = std::max((diameter + 1) / 2, 0) + 4;
        invalidateAround(surface, local, reach, reach);
    }
}

void brushStroke(POINT from, POINT to, int sizeA, int sizeB)
{
    const int low = std::min(sizeA, sizeB);
    int high = std::max(sizeA, sizeB);
    if (autoMode == drawAction) {
        const double length = std::hypot(double(to.x - from.x), double(to.y - from.y));
        const int swell = randInt(8, 28);
        high = std::max(high, low + swell + int(length * 0.1));
        high = std::min(high, low + 95);
        const int margin = std::min((low + high) / 2 + 10, 32);
        keepInside(from, margin);  // separately, so a segment near an edge jumps
        keepInside(to, margin);
    }
    beginMark();
    for (const MonitorSurface &surface : surfaces) {
        const POINT a = toLocal(surface, from);
        const POINT b = toLocal(surface, to);
        if (!inReach(surface, a, 200)) continue;
        MarkColor color = strokeColor;
        if (autoMode == drawAction || rainbowStroke) color = anyColor();
        int width = randInt(low, high);
        if (autoMode == drawAction && randInt(0, 5) == 0) {
            const int extra = randInt(12, 36);
            width = randInt(low, extra + high);
        }
        GraphicsScope scope(surface);
        const OwnedPen pen = strokePen(toArgb(color, 0xEB), float(width));
        drawLine(scope, pen, a, b);
        invalidateMarkRect(surface, lineBounds(a, b, lineReach(width)));
    }
}

bool paintSegments(const std::vector<POINT> &points, MarkColor color, int sizeA, int sizeB)
{
    if (points.size() < 2) return false;
    const int low = std::min(sizeA, sizeB);
    const int high = std::max(sizeA, sizeB);
    std::vector<RECT> dirty(surfaces.size());  // surface-local; empty until something was drawn
    bool drawn = false;
    for (size_t i = 1; i < points.size(); ++i) {
        const POINT p = points[i - 1];
        const POINT q = points[i];
        const MonitorSurface *surface = surfaceHolding({(p.x + q.x) / 2, (p.y + q.y) / 2});
        if (!surface || !surface->canvasDC) continue;
        const POINT a = toLocal(*surface, p);
        const POINT b = toLocal(*surface, q);
        if (!inReach(*surface, a, 220)) continue;
        int width = low + int(i) * 5 % (high - low + 1);  // a sawtooth in four of five segments
        const bool atRandom = randInt(0, 4) == 0;
        if (atRandom) width = randInt(low, high);
        GraphicsScope scope(*surface);
        const OwnedPen pen = strokePen(toArgb(color, 0xEE), float(width));
        drawLine(scope, pen, a, b);
        drawn = true;
        const RECT bounds = lineBounds(a, b, lineReach(width));
        RECT &dirtyRect = dirty[size_t(surface - surfaces.data())];
        UnionRect(&dirtyRect, &dirtyRect, &bounds);
    }
    for (size_t i = 0; i < surfaces.size(); ++i) {
        if (!IsRectEmpty(&dirty[i])) invalidateMarkRect(surfaces[i], dirty[i]);
    }
    if (drawn) beginMark();  // here after the drawing, elsewhere before it
    return drawn;
}

void paintBlob(POINT centre, int radiusX, int radiusY, MarkColor color)
{
    if (autoMode == drawAction) keepInside(centre, std::max(radiusX, radiusY) + 12);
    beginMark();
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, centre);
        if (!inReachX(surface, local.x, 2 * radiusX) || !inReachY(surface, local.y, 2 * radiusY)) continue;
        GraphicsScope scope(surface);
        const OwnedBrush fill = solidBrush(color, 0xE4);
        const OwnedPen edge = plainPen(0xC81E1E1E, 2.2f);
        paintEllipse(scope, fill, edge, float(local.x - radiusX), float(local.y - radiusY),
                     float(2 * radiusX), float(2 * radiusY));
        invalidateAround(surface, local, radiusX + 6, radiusY + 6);
    }
}

void paintArc(POINT centre, int radiusX, int radiusY, MarkColor color)
{
    if (autoMode == drawAction) keepInside(centre, std::max(radiusX, radiusY) + 10);
    beginMark();
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, centre);
        const int width = randInt(8, 16);
        GraphicsScope scope(surface);
        const OwnedPen pen = dashCappedPen(toArgb(color, 0xEB), float(width));
        const int sweep = randInt(120, 200);
        const int start = randInt(0, 40);
        drawArc(scope, pen, float(local.x - radiusX), float(local.y - radiusY), float(2 * radiusX),
                float(2 * radiusY), float(start), float(sweep));
        const int reach = int((unsigned(width) + 1) >> 1) + 4;
        invalidateAround(surface, local, radiusX + reach, radiusY + reach);
    }
}
