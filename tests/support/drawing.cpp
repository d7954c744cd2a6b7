// GDI+ on its way: every object's traits are kept while it lives, every drawing call is recorded with
// the traits of its brush or pen and passed on.
#include <concepts>

#include "support/fakes.h"

static std::map<const void *, DrawCall> traits;  // of brushes and pens; numbers of paths
static std::map<const GpGraphics *, HDC> targets;

static void record(const char *what, const GpGraphics *graphics, const void *paint,
                   std::vector<float> numbers)
{
    DrawCall call = traits.contains(paint) ? traits[paint] : DrawCall{};
    call.what = what;
    call.dc = targets.contains(graphics) ? targets[graphics] : nullptr;
    call.numbers = std::move(numbers);
    recorded.draws.push_back(std::move(call));
}

// The numbers of a call: as they are, or those of its points or path.
template <std::convertible_to<float>... Numbers> static std::vector<float> flat(Numbers... numbers)
{
    return {float(numbers)...};
}
template <class Point> static std::vector<float> flat(const Point *points, INT count, int = 0)
{
    std::vector<float> numbers;
    for (int i = 0; i < count; ++i) {
        numbers.push_back(float(points[i].X));
        numbers.push_back(float(points[i].Y));
    }
    return numbers;
}
static std::vector<float> flat(const GpPath *path)
{
    return traits[path].numbers;
}

static GpStatus made(GpStatus status, const void *object, DrawCall what = {})
{
    if (status != Ok || !object) return status;
    ++recorded.alive;
    traits[object] = std::move(what);
    return status;
}

static void gone(const void *object)
{
    if (object && traits.erase(object)) --recorded.alive;
}

static void addToPath(const GpPath *path, const std::vector<float> &numbers)
{
    std::vector<float> &points = traits[path].numbers;
    points.insert(points.end(), numbers.begin(), numbers.end());
}

// WRAP declares the real function and opens the definition of ours; DRAW and PATH define all of it. The
// build reads the names from these lines.
#define LIST(...) __VA_ARGS__
#define WRAP(name, parameters)                                                                               \
    extern "C" GpStatus WINGDIPAPI __real_##name parameters;                                                 \
    extern "C" GpStatus WINGDIPAPI __wrap_##name parameters;                                                 \
    extern "C" GpStatus WINGDIPAPI __wrap_##name parameters
#define DRAW(name, Paint, parameters, ...)                                                                   \
    WRAP(name, (GpGraphics * graphics, Paint * paint, LIST parameters))                                      \
    {                                                                                                        \
        record(#name + 4, graphics, paint, flat(__VA_ARGS__));                                               \
        return __real_##name(graphics, paint, __VA_ARGS__);                                                  \
    }
#define PATH(name, parameters, ...)                                                                          \
    WRAP(name, (GpPath * path, LIST parameters))                                                             \
    {                                                                                                        \
        addToPath(path, flat(__VA_ARGS__));                                                                  \
        return __real_##name(path, __VA_ARGS__);                                                             \
    }
#define FREE(name, Type)                                                                                     \
    WRAP(name, (Type * object))                                                                              \
    {                                                                                                        \
        gone(object);                                                                                        \
        return __real_##name(object);                                                                        \
    }
#define PEN(name, Value, trait)                                                                              \
    WRAP(name, (GpPen * pen, Value value))                                                                   \
    {                                                                                                        \
        traits[pen].trait = value;                                                                           \
        return __real_##name(pen, value);                                                                    \
    }

// clang-format off
DRAW(GdipFillEllipse, GpBrush, (REAL x, REAL y, REAL w, REAL h), x, y, w, h)
DRAW(GdipFillEllipseI, GpBrush, (INT x, INT y, INT w, INT h), x, y, w, h)
DRAW(GdipDrawEllipse, GpPen, (REAL x, REAL y, REAL w, REAL h), x, y, w, h)
DRAW(GdipDrawEllipseI, GpPen, (INT x, INT y, INT w, INT h), x, y, w, h)
DRAW(GdipFillRectangle, GpBrush, (REAL x, REAL y, REAL w, REAL h), x, y, w, h)
DRAW(GdipDrawRectangle, GpPen, (REAL x, REAL y, REAL w, REAL h), x, y, w, h)
DRAW(GdipFillPolygon, GpBrush, (const GpPointF *points, INT count, GpFillMode mode), points, count, mode)
DRAW(GdipDrawPolygon, GpPen, (const GpPointF *points, INT count), points, count)
DRAW(GdipFillPolygonI, GpBrush, (const GpPoint *points, INT count, GpFillMode mode), points, count, mode)
DRAW(GdipDrawPolygonI, GpPen, (const GpPoint *points, INT count), points, count)
DRAW(GdipDrawLine, GpPen, (REAL x1, REAL y1, REAL x2, REAL y2), x1, y1, x2, y2)
DRAW(GdipDrawArc, GpPen, (REAL x, REAL y, REAL w, REAL h, REAL start, REAL sweep), x, y, w, h, start, sweep)
DRAW(GdipDrawBezier, GpPen, (REAL a, REAL b, REAL c, REAL d, REAL e, REAL f, REAL g, REAL h), a, b, c, d, e, f, g, h)
DRAW(GdipFillPath, GpBrush, (GpPath *path), path)
DRAW(GdipDrawPath, GpPen, (GpPath *path), path)
PATH(GdipAddPathBezier, (REAL a, REAL b, REAL c, REAL d, REAL e, REAL f, REAL g, REAL h), a, b, c, d, e, f, g, h)
PATH(GdipAddPathPolygon, (const GpPointF *points, INT count), points, count)
PATH(GdipAddPathArc, (REAL x, REAL y, REAL w, REAL h, REAL start, REAL sweep), x, y, w, h, start, sweep)
FREE(GdipDeleteBrush, GpBrush)
FREE(GdipDeletePen, GpPen)
FREE(GdipDeletePath, GpPath)
PEN(GdipSetPenStartCap, GpLineCap, startCap)
PEN(GdipSetPenEndCap, GpLineCap, endCap)
PEN(GdipSetPenLineJoin, GpLineJoin, join)
// clang-format on

WRAP(GdipCreateFromHDC, (HDC dc, GpGraphics **graphics))
{
    const GpStatus status = __real_GdipCreateFromHDC(dc, graphics);
    if (status == Ok) targets[*graphics] = dc;
    return made(status, *graphics);
}
WRAP(GdipDeleteGraphics, (GpGraphics * graphics))
{
    gone(graphics);
    targets.erase(graphics);
    return __real_GdipDeleteGraphics(graphics);
}
WRAP(GdipCreateSolidFill, (ARGB argb, GpSolidFill **brush))
{
    const GpStatus status = __real_GdipCreateSolidFill(argb, brush);
    return made(status, *brush, {.argb = argb});
}
WRAP(GdipCreatePen1, (ARGB argb, REAL width, GpUnit unit, GpPen **pen))
{
    const GpStatus status = __real_GdipCreatePen1(argb, width, unit, pen);
    return made(status, *pen, {.argb = argb, .penWidth = width});
}
WRAP(GdipSetPenLineCap197819, (GpPen * pen, GpLineCap start, GpLineCap end, GpDashCap dash))
{
    traits[pen].startCap = start;
    traits[pen].endCap = end;
    traits[pen].dashCap = dash;
    return __real_GdipSetPenLineCap197819(pen, start, end, dash);
}
WRAP(GdipCreatePath, (GpFillMode mode, GpPath **path))
{
    const GpStatus status = __real_GdipCreatePath(mode, path);
    return made(status, *path);
}
WRAP(GdipTranslateWorldTransform, (GpGraphics * graphics, REAL x, REAL y, GpMatrixOrder order))
{
    record("TranslateWorldTransform", graphics, nullptr, flat(x, y, order));
    return __real_GdipTranslateWorldTransform(graphics, x, y, order);
}
WRAP(GdipRotateWorldTransform, (GpGraphics * graphics, REAL angle, GpMatrixOrder order))
{
    record("RotateWorldTransform", graphics, nullptr, flat(angle, order));
    return __real_GdipRotateWorldTransform(graphics, angle, order);
}
// numbers: the layout rectangle, the text's own inside it, the characters that fitted, and all of them.
WRAP(GdipDrawString, (GpGraphics * graphics, const WCHAR *text, INT length, const GpFont *font,
                      const RectF *layout, const GpStringFormat *format, const GpBrush *brush))
{
    RectF box;
    INT fitted = 0;
    GdipMeasureString(graphics, text, length, font, layout, format, &box, &fitted, nullptr);
    record("DrawString", graphics, brush,
           flat(layout->X, layout->Y, layout->Width, layout->Height, box.X, box.Y, box.Width, box.Height,
                fitted, length));
    return __real_GdipDrawString(graphics, text, length, font, layout, format, brush);
}
