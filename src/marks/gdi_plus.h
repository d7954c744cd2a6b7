#pragma once
// Owners of GDI+ objects and the few drawing calls that many marks share. If a creation fails the owner is
// null, and later calls that take it fail quietly.
#include <memory>

#include "marks/random.h"
#include "shell/base/surfaces.h"
#include "shell/base/windows_api.h"

template <auto freeIt> struct FreedBy {
    template <class T> void operator()(T *object) const { freeIt(object); }
};
using OwnedBrush = std::unique_ptr<GpSolidFill, FreedBy<GdipDeleteBrush>>;
using OwnedPen = std::unique_ptr<GpPen, FreedBy<GdipDeletePen>>;
using OwnedPath = std::unique_ptr<GpPath, FreedBy<GdipDeletePath>>;
using OwnedFontFamily = std::unique_ptr<GpFontFamily, FreedBy<GdipDeleteFontFamily>>;
using OwnedFont = std::unique_ptr<GpFont, FreedBy<GdipDeleteFont>>;
using OwnedStringFormat = std::unique_ptr<GpStringFormat, FreedBy<GdipDeleteStringFormat>>;

// An anti-aliased Graphics that lives for one mark on one surface, in surface-local coordinates.
struct GraphicsScope {
    GpGraphics *graphics = nullptr;
    GpStatus lastStatus = Ok;  // last status other than Ok; nothing acts on it

    explicit GraphicsScope(HDC dc);
    explicit GraphicsScope(const MonitorSurface &surface) : GraphicsScope(surface.canvasDC) {}
    ~GraphicsScope() { GdipDeleteGraphics(graphics); }
    GraphicsScope(const GraphicsScope &) = delete;
    GraphicsScope &operator=(const GraphicsScope &) = delete;

    void note(GpStatus status)
    {
        if (status != Ok) lastStatus = status;
    }
};

inline GpPointF toFloat(POINT point)
{
    return {float(point.x), float(point.y)};
}

OwnedBrush solidBrush(uint32_t argb);
inline OwnedBrush solidBrush(MarkColor color, int alpha)
{
    return solidBrush(toArgb(color, alpha));
}

// Widths are world units, which are pixels here. plainPen has flat ends; cappedPen has round ends;
// strokePen has round ends and joins; dashCappedPen has round ends and dashes.
OwnedPen plainPen(uint32_t argb, float width);
OwnedPen joinedPen(uint32_t argb, float width);  // flat ends, round joins
OwnedPen cappedPen(uint32_t argb, float width);
OwnedPen strokePen(uint32_t argb, float width);
OwnedPen dashCappedPen(uint32_t argb, float width);

// An empty path in alternate fill mode.
OwnedPath newPath();

// A closed rectangle whose corners are quarter circles.
OwnedPath roundedRect(float left, float top, float right, float bottom, float radius);

using Triangle = GpPointF[3];

void drawLine(GraphicsScope &scope, const OwnedPen &pen, POINT from, POINT to);
void drawLine(GraphicsScope &scope, const OwnedPen &pen, float fromX, float fromY, float toX, float toY);
void fillEllipse(GraphicsScope &scope, const OwnedBrush &fill, float left, float top, float width,
                 float height);
void fillCircle(GraphicsScope &scope, const OwnedBrush &fill, float left, float top, float diameter);
void drawEllipse(GraphicsScope &scope, const OwnedPen &pen, float left, float top, float width, float height);
void drawArc(GraphicsScope &scope, const OwnedPen &pen, float left, float top, float width, float height,
             float start, float sweep);  // degrees, clockwise from the right
void fillRect(GraphicsScope &scope, const OwnedBrush &fill, float left, float top, float width, float height);
void fillTriangle(GraphicsScope &scope, const OwnedBrush &fill, const Triangle &corners);
void drawTriangle(GraphicsScope &scope, const OwnedPen &outline, const Triangle &corners);

// Fill, then outline.
void paintTriangle(GraphicsScope &scope, const OwnedBrush &fill, const OwnedPen &outline,
                   const Triangle &corners);
void paintDisc(GraphicsScope &scope, const OwnedBrush &fill, const OwnedPen &outline, int left, int top,
               int diameter);
void paintEllipse(GraphicsScope &scope, const OwnedBrush &fill, const OwnedPen &outline, float left,
                  float top, float width, float height);
void paintRect(GraphicsScope &scope, const OwnedBrush &fill, const OwnedPen &outline, float left, float top,
               float width, float height);
void paintPath(GraphicsScope &scope, const OwnedBrush &fill, const OwnedPen &outline, const OwnedPath &path);
