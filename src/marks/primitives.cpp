#include "marks/primitives.h"

#include <algorithm>
#include <cmath>
#include <vector>

// A smaller margin would leave half of a mark off the screen.
static int atLeastFinger(int margin)
{
    return std::max(margin, 24);
}

POINT middleOf(const RECT &rect)
{
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

POINT launchMiddle()
{
    if (const MonitorSurface *surface = launchSurface()) return middleOf(surface->rect);
    const VirtualScreen screen = virtualScreen();
    return {screen.left + screen.width / 2, screen.top + screen.height / 2};
}

POINT randomPointOn(const MonitorSurface &surface, int margin)
{
    margin = atLeastFinger(margin);
    const int lowX = surface.rect.left + margin;
    const int highX = surface.rect.right - margin;
    const int lowY = surface.rect.top + margin;
    const int highY = surface.rect.bottom - margin;
    if (highX <= lowX + 8 || highY <= lowY + 8) return middleOf(surface.rect);
    const int x = randInt(lowX, highX - 1);
    const int y = randInt(lowY, highY - 1);
    return {x, y};
}

POINT randomPointOnLaunch(int margin)
{
    if (const MonitorSurface *surface = launchSurface()) return randomPointOn(*surface, margin);
    const VirtualScreen screen = virtualScreen();
    const int x = randInt(screen.left, screen.left + screen.width - 1);
    const int y = randInt(screen.top, screen.top + screen.height - 1);
    return {x, y};
}

POINT strayFrom(POINT point, int lowX, int highX, int lowY, int highY)
{
    const int dx = randInt(lowX, highX);
    const int dy = randInt(lowY, highY);
    return {point.x + dx, point.y + dy};
}

void keepInside(const MonitorSurface &surface, POINT &point, int margin)
{
    margin = atLeastFinger(margin);
    const POINT local = toLocal(surface, point);
    if (local.x >= margin && local.x < surface.width - margin && local.y >= margin &&
        local.y < surface.height - margin)
        return;
    point = randomPointOn(surface, margin);
}

void keepInside(POINT &point, int margin)
{
    if (const MonitorSurface *surface = launchSurface()) keepInside(*surface, point, margin);
}

void clampToVirtualScreen(POINT &point)
{
    clampTo(virtualScreen(), point);
}

void clampTo(const VirtualScreen &screen, POINT &point)
{
    // Not std::clamp: the bounds of a screen without size are crossed.
    point.x = std::max<LONG>(std::min<LONG>(point.x, screen.left + screen.width - 1), screen.left);
    point.y = std::max<LONG>(std::min<LONG>(point.y, screen.top + screen.height - 1), screen.top);
}

int lineReach(int width)
{
    return (std::max(width, 1) + 1) / 2 + 4;
}

RECT lineBounds(POINT a, POINT b, int reach)
{
    return {std::min(a.x, b.x) - reach, std::min(a.y, b.y) - reach, std::max(a.x, b.x) + 1 + reach,
            std::max(a.y, b.y) + 1 + reach};
}

MonitorSurface *surfaceHolding(POINT point)
{
    for (MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, point);
        if (local.x >= -8 && local.y >= -8 && local.x < surface.width + 8 && local.y < surface.height + 8)
            return &surface;
    }
    return nullptr;
}

static void paintPolygon(GraphicsScope &scope, const OwnedBrush &fill, const OwnedPen &outline,
                         const GpPoint *points, int count)
{
    scope.note(GdipFillPolygonI(scope.graphics, fill.get(), points, count, FillModeAlternate));
    scope.note(GdipDrawPolygonI(scope.graphics, outline.get(), points, count));
}

void drawStarShape(GraphicsScope &scope, POINT centre, int outerRadius, int innerRadius, int vertexCount,
                   MarkColor color, float penWidth)
{
    std::vector<GpPoint> vertices;
    vertices.reserve(size_t(vertexCount));
    for (int i = 0; i < vertexCount; ++i) {
        const float radius = float(i % 2 == 0 ? outerRadius : innerRadius);
        // A step below float pi, on purpose: every star uses it. The first vertex points up.
        const float angle = float(i) * 3.1415925f / (float(vertexCount) * 0.5f) - 1.5707963f;
        vertices.push_back(
            {int(centre.x) + int(cosf(angle) * radius), int(centre.y) + int(sinf(angle) * radius)});
    }
    const OwnedBrush fill = solidBrush(color, 0xE6);
    const OwnedPen outline = plainPen(outlineWhite, penWidth);
    paintPolygon(scope, fill, outline, vertices.data(), vertexCount);
}

void drawHeartShape(GraphicsScope &scope, POINT centre, int size, MarkColor color, float widthScale,
                    float heightScale, float notch, float penWidth)
{
    const auto [x, y] = toFloat(centre);
    const float s = float(size);
    const float tipY = y + s * 0.95f * heightScale;
    const float notchY = y + s * notch;
    const float lowerY = y + s * 0.25f * heightScale;
    const float upperY = y - s * 0.85f * heightScale;
    const float lowerReach = s * 1.45f * widthScale;
    const float upperReach = s * 1.1f * widthScale;
    const OwnedBrush fill = solidBrush(color, 0xE6);
    const OwnedPen outline = plainPen(outlineWhite, penWidth);
    const OwnedPath heart = newPath();
    GdipStartPathFigure(heart.get());
    GdipAddPathBezier(heart.get(), x, tipY, x - lowerReach, lowerY, x - upperReach, upperY, x, notchY);
    GdipAddPathBezier(heart.get(), x, notchY, x + upperReach, upperY, x + lowerReach, lowerY, x, tipY);
    GdipClosePathFigure(heart.get());
    paintPath(scope, fill, outline, heart);
}

void drawCloudShape(GraphicsScope &scope, POINT centre, int size, MarkColor color)
{
    const int x = centre.x;
    const int y = centre.y;
    const OwnedBrush fill = solidBrush(color, 0xDC);
    const OwnedPen outline = plainPen(outlineWhite, 2.0f);
    scope.note(GdipFillEllipseI(scope.graphics, fill.get(), x - size, y - size / 3, size, 2 * size / 3));
    scope.note(GdipFillEllipseI(scope.graphics, fill.get(), x - size / 2, y - size / 2, size, 3 * size / 4));
    scope.note(GdipFillEllipseI(scope.graphics, fill.get(), x, y - size / 3, size, 2 * size / 3));
    // Only the left lobe has an outline, on purpose.
    scope.note(GdipDrawEllipseI(scope.graphics, outline.get(), x - size, y - size / 3, size, 2 * size / 3));
}

void drawFlowerShape(GraphicsScope &scope, POINT centre, int size, MarkColor color)
{
    const auto [x, y] = toFloat(centre);
    const float s = float(size);
    const OwnedBrush petal = solidBrush(color, 0xDC);
    const OwnedBrush heart = solidBrush(0xE6FFE15A);
    const OwnedPen outline = plainPen(outlineWhite, 2.0f);
    for (int i = 0; i < 6; ++i) {
        const float angle = float(i) * 1.0471976f;  // petals stay horizontal
        fillEllipse(scope, petal, cosf(angle) * (0.45f * s) + x - 0.28f * s,
                    sinf(angle) * (0.45f * s) + y - 0.22f * s, 0.56f * s, 0.44f * s);
    }
    paintEllipse(scope, heart, outline, x - 0.24f * s, y - 0.24f * s, 0.48f * s, 0.48f * s);
}

void starOnSurface(const MonitorSurface &surface, POINT point, int size, MarkColor color)
{
    int vertexCount = 10;
    const int kind = randInt(0, 2);
    if (kind != 0) vertexCount = randInt(0, 1) == 1 ? 8 : 12;
    const int share = randInt(38, 62);
    int innerRadius = int(share / 100.0 * size);
    if (innerRadius < 7) innerRadius = 6;  // on purpose 6; an exact 7 stays
    GraphicsScope scope(surface);
    drawStarShape(scope, toLocal(surface, point), size, innerRadius, vertexCount, color, 3.0f);
}

void heartOnSurface(const MonitorSurface &surface, POINT point, int size, MarkColor color)
{
    const float widthScale = float(randInt(90, 125)) / 100.0f;
    const float heightScale = float(randInt(85, 120)) / 100.0f;
    const float notch = float(randInt(-26, -10)) / 100.0f;  // negative: above the centre
    GraphicsScope scope(surface);
    drawHeartShape(scope, toLocal(surface, point), size, color, widthScale, heightScale, notch, 3.0f);
}

void diamondOnSurface(const MonitorSurface &surface, POINT point, int size, MarkColor color)
{
    const POINT local = toLocal(surface, point);
    const int x = local.x;
    const int y = local.y;
    const GpPoint corners[] = {{x, y - size}, {x + size, y}, {x, y + size}, {x - size, y}};
    GraphicsScope scope(surface);
    const OwnedBrush fill = solidBrush(color, 0xE6);
    const OwnedPen outline = plainPen(outlineWhite, 3.0f);
    paintPolygon(scope, fill, outline, corners, 4);
}

void shapeOnSurface(const MonitorSurface &surface, Shape shape, POINT point, int size, MarkColor color)
{
    switch (shape) {
    case Shape::star: starOnSurface(surface, point, size, color); return;
    case Shape::heart: heartOnSurface(surface, point, size, color); return;
    case Shape::diamond: diamondOnSurface(surface, point, size, color); return;
    case Shape::cloud: {
        GraphicsScope scope(surface);
        drawCloudShape(scope, toLocal(surface, point), size, color);
        return;
    }
    case Shape::flower: {
        GraphicsScope scope(surface);
        drawFlowerShape(scope, toLocal(surface, point), size, color);
        return;
    }
    }
}
