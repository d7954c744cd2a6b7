#include "marks/strokes.h"

#include <algorithm>
#include <cmath>

#include "autodraw/sequencer.h"

void chooseStrokeStyle()
{
    rainbowStroke = false;
    if (rainbowCooldown > 0) {
        --rainbowCooldown;
    } else if (randInt(0, 99) < 8) {
        rainbowStroke = true;
        rainbowCooldown = randInt(4, 8);
    }
    strokeColor = randColor(50, 255);
    randInt(24, 60);  // nobody reads it; it moves the stream on
}

void tapMark(POINT point)
{
    if (autoMode == 3) keepInside(point, 42);
    canvasDirty = true;
    flushBackdrop();
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, point);
        if (!inReach(surface, local, 200)) continue;
        const int x = local.x;
        const int y = local.y;
        const MarkColor color = randColor(50, 255);
        const int diameter = randInt(18, 92);
        GraphicsScope scope(surface);
        const OwnedBrush fill = solidBrush(color, 0xE6);
        scope.note(GdipFillEllipse(scope.graphics, fill.get(), float(x - diameter / 2),
                                   float(y - diameter / 2), float(diameter), float(diameter)));
        const int reach = std::max((diameter + 1) / 2, 0) + 4;
        invalidateMarkRect(surface, x - reach, y - reach, x + reach + 1, y + reach + 1);
    }
}

void brushStroke(POINT from, POINT to, int sizeA, int sizeB)
{
    const int low = std::min(sizeA, sizeB);
    int high = std::max(sizeA, sizeB);
    if (autoMode == 3) {
        const double length = std::hypot(double(to.x - from.x), double(to.y - from.y));
        const int swell = randInt(8, 28);
        high = std::max(high, low + swell + int(length * 0.1));
        high = std::min(high, low + 95);
        const int margin = std::min((low + high) / 2 + 10, 32);
        keepInside(from, margin);  // each on its own, so a segment near an edge jumps
        keepInside(to, margin);
    }
    canvasDirty = true;
    flushBackdrop();
    for (const MonitorSurface &surface : surfaces) {
        const POINT a = toLocal(surface, from);
        const POINT b = toLocal(surface, to);
        if (!inReach(surface, a, 200)) continue;
        MarkColor color = strokeColor;
        if (autoMode == 3 || rainbowStroke) color = randColor(50, 255);
        int width = randInt(low, high);
        if (autoMode == 3 && randInt(0, 5) == 0) {
            const int extra = randInt(12, 36);
            width = randInt(low, extra + high);
        }
        GraphicsScope scope(surface);
        const OwnedPen pen = strokePen(toArgb(color, 0xEB), float(width));
        drawLine(scope, pen, a, b);
        const RECT bounds = lineBounds(a, b, lineReach(width));
        invalidateMarkRect(surface, bounds.left, bounds.top, bounds.right, bounds.bottom);
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
        int width;  // four in five follow a sawtooth, the fifth is free
        if (randInt(0, 4) == 0) {
            width = randInt(low, high);
        } else {
            width = low + int(i) * 5 % (high - low + 1);
        }
        GraphicsScope scope(*surface);
        const OwnedPen pen = strokePen(toArgb(color, 0xEE), float(width));
        drawLine(scope, pen, a, b);
        drawn = true;
        const RECT bounds = lineBounds(a, b, lineReach(width));
        RECT &dirtyRect = dirty[size_t(surface - surfaces.data())];
        UnionRect(&dirtyRect, &dirtyRect, &bounds);
    }
    for (size_t i = 0; i < surfaces.size(); ++i) {
        if (IsRectEmpty(&dirty[i])) continue;
        invalidateMarkRect(surfaces[i], dirty[i].left, dirty[i].top, dirty[i].right, dirty[i].bottom);
    }
    if (drawn) {
        canvasDirty = true;
        flushBackdrop();  // after the drawing here, before it in every other mark
    }
    return drawn;
}

void paintBlob(POINT centre, int radiusX, int radiusY, MarkColor color)
{
    if (autoMode == 3) keepInside(centre, std::max(radiusX, radiusY) + 12);
    canvasDirty = true;
    flushBackdrop();
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, centre);
        const int x = local.x;
        const int y = local.y;
        if (x < -2 * radiusX || y < -2 * radiusY || x > surface.width + 2 * radiusX ||
            y > surface.height + 2 * radiusY)
            continue;
        GraphicsScope scope(surface);
        const OwnedBrush fill = solidBrush(color, 0xE4);
        const OwnedPen edge = plainPen(0xC81E1E1E, 2.2f);
        paintEllipse(scope, fill, edge, float(x - radiusX), float(y - radiusY), float(2 * radiusX),
                     float(2 * radiusY));
        invalidateMarkRect(surface, x - radiusX - 6, y - radiusY - 6, x + radiusX + 7, y + radiusY + 7);
    }
}

void paintArc(POINT centre, int radiusX, int radiusY, MarkColor color)
{
    if (autoMode == 3) keepInside(centre, std::max(radiusX, radiusY) + 10);
    canvasDirty = true;
    flushBackdrop();
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, centre);
        const int x = local.x;
        const int y = local.y;
        const int width = randInt(8, 16);
        GraphicsScope scope(surface);
        const OwnedPen pen = dashCappedPen(toArgb(color, 0xEB), float(width));
        const int sweep = randInt(120, 200);
        const int start = randInt(0, 40);
        scope.note(GdipDrawArc(scope.graphics, pen.get(), float(x - radiusX), float(y - radiusY),
                               float(2 * radiusX), float(2 * radiusY), float(start), float(sweep)));
        const int reach = int((unsigned(width) + 1) >> 1) + 4;
        invalidateMarkRect(surface, x - radiusX - reach, y - radiusY - reach, x + radiusX + reach + 1,
                           y + radiusY + reach + 1);
    }
}
