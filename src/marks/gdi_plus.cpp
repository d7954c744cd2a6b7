#include "marks/gdi_plus.h"

GraphicsScope::GraphicsScope(HDC dc)
{
    note(GdipCreateFromHDC(dc, &graphics));
    note(GdipSetSmoothingMode(graphics, SmoothingModeAntiAlias));
}

OwnedBrush solidBrush(uint32_t argb)
{
    GpSolidFill *brush = nullptr;
    GdipCreateSolidFill(argb, &brush);
    return OwnedBrush(brush);
}

OwnedPen plainPen(uint32_t argb, float width)
{
    GpPen *pen = nullptr;
    GdipCreatePen1(argb, width, UnitWorld, &pen);
    return OwnedPen(pen);
}

OwnedPen joinedPen(uint32_t argb, float width)
{
    OwnedPen pen = plainPen(argb, width);
    GdipSetPenLineJoin(pen.get(), LineJoinRound);
    return pen;
}

OwnedPen cappedPen(uint32_t argb, float width)
{
    OwnedPen pen = plainPen(argb, width);
    GdipSetPenStartCap(pen.get(), LineCapRound);
    GdipSetPenEndCap(pen.get(), LineCapRound);
    return pen;
}

OwnedPen strokePen(uint32_t argb, float width)
{
    OwnedPen pen = cappedPen(argb, width);
    GdipSetPenLineJoin(pen.get(), LineJoinRound);
    return pen;
}

OwnedPen dashCappedPen(uint32_t argb, float width)
{
    OwnedPen pen = plainPen(argb, width);
    GdipSetPenLineCap197819(pen.get(), LineCapRound, LineCapRound, DashCapRound);
    return pen;
}

OwnedPath newPath()
{
    GpPath *path = nullptr;
    GdipCreatePath(FillModeAlternate, &path);
    return OwnedPath(path);
}

OwnedPath roundedRect(float left, float top, float right, float bottom, float radius)
{
    const float d = 2.0f * radius;
    OwnedPath path = newPath();
    GdipAddPathArc(path.get(), left, top, d, d, 180.0f, 90.0f);
    GdipAddPathArc(path.get(), right - d, top, d, d, 270.0f, 90.0f);
    GdipAddPathArc(path.get(), right - d, bottom - d, d, d, 0.0f, 90.0f);
    GdipAddPathArc(path.get(), left, bottom - d, d, d, 90.0f, 90.0f);
    GdipClosePathFigure(path.get());
    return path;
}

void drawLine(GraphicsScope &scope, const OwnedPen &pen, float fromX, float fromY, float toX, float toY)
{
    scope.note(GdipDrawLine(scope.graphics, pen.get(), fromX, fromY, toX, toY));
}

void drawLine(GraphicsScope &scope, const OwnedPen &pen, POINT from, POINT to)
{
    drawLine(scope, pen, float(from.x), float(from.y), float(to.x), float(to.y));
}

void fillEllipse(GraphicsScope &scope, const OwnedBrush &fill, float left, float top, float width,
                 float height)
{
    scope.note(GdipFillEllipse(scope.graphics, fill.get(), left, top, width, height));
}

void fillCircle(GraphicsScope &scope, const OwnedBrush &fill, float left, float top, float diameter)
{
    fillEllipse(scope, fill, left, top, diameter, diameter);
}

void drawEllipse(GraphicsScope &scope, const OwnedPen &pen, float left, float top, float width, float height)
{
    scope.note(GdipDrawEllipse(scope.graphics, pen.get(), left, top, width, height));
}

void drawArc(GraphicsScope &scope, const OwnedPen &pen, float left, float top, float width, float height,
             float start, float sweep)
{
    scope.note(GdipDrawArc(scope.graphics, pen.get(), left, top, width, height, start, sweep));
}

void fillRect(GraphicsScope &scope, const OwnedBrush &fill, float left, float top, float width, float height)
{
    scope.note(GdipFillRectangle(scope.graphics, fill.get(), left, top, width, height));
}

void fillTriangle(GraphicsScope &scope, const OwnedBrush &fill, const Triangle &corners)
{
    scope.note(GdipFillPolygon(scope.graphics, fill.get(), corners, 3, FillModeAlternate));
}

void drawTriangle(GraphicsScope &scope, const OwnedPen &outline, const Triangle &corners)
{
    scope.note(GdipDrawPolygon(scope.graphics, outline.get(), corners, 3));
}

void paintTriangle(GraphicsScope &scope, const OwnedBrush &fill, const OwnedPen &outline,
                   const Triangle &corners)
{
    fillTriangle(scope, fill, corners);
    drawTriangle(scope, outline, corners);
}

void paintDisc(GraphicsScope &scope, const OwnedBrush &fill, const OwnedPen &outline, int left, int top,
               int diameter)
{
    scope.note(GdipFillEllipseI(scope.graphics, fill.get(), left, top, diameter, diameter));
    scope.note(GdipDrawEllipseI(scope.graphics, outline.get(), left, top, diameter, diameter));
}

void paintEllipse(GraphicsScope &scope, const OwnedBrush &fill, const OwnedPen &outline, float left,
                  float top, float width, float height)
{
    fillEllipse(scope, fill, left, top, width, height);
    drawEllipse(scope, outline, left, top, width, height);
}

void paintRect(GraphicsScope &scope, const OwnedBrush &fill, const OwnedPen &outline, float left, float top,
               float width, float height)
{
    fillRect(scope, fill, left, top, width, height);
    scope.note(GdipDrawRectangle(scope.graphics, outline.get(), left, top, width, height));
}

void paintPath(GraphicsScope &scope, const OwnedBrush &fill, const OwnedPen &outline, const OwnedPath &path)
{
    if (!path) return;  // GdipDrawPath may not check it
    scope.note(GdipFillPath(scope.graphics, fill.get(), path.get()));
    scope.note(GdipDrawPath(scope.graphics, outline.get(), path.get()));
}
