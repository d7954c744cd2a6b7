// GDI+ on its way: every object's traits are kept while it lives, every drawing call is recorded with
// the traits of its brush or pen and passed on.
#include <concepts>

#include "support/fakes.h"

static std::map<const void *, DrawCall> traits;  // of brushes, pens and Graphics; numbers of paths

static DrawCall traitsOf(const void *object)
{
    return traits.contains(object) ? traits[object] : DrawCall{};
}

static void record(const char *what, const GpGraphics *graphics, const void *paint,
                   std::vector<float> numbers)
{
    DrawCall call = traitsOf(paint);
    call.what = what;
    call.dc = traitsOf(graphics).dc;
    call.numbers = std::move(numbers);
    if (story) tell(textOf(call));
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

// WRAP declares the real function and opens the definition of ours, AFTER does something first; the others
// define all of it. The build reads the names from these lines.
#define LIST(...) __VA_ARGS__
#define WRAP(name, parameters)                                                                               \
    extern "C" GpStatus WINGDIPAPI __real_##name parameters;                                                 \
    extern "C" GpStatus WINGDIPAPI __wrap_##name parameters;                                                 \
    extern "C" GpStatus WINGDIPAPI __wrap_##name parameters
#define AFTER(name, parameters, arguments, first)                                                            \
    WRAP(name, parameters)                                                                                   \
    {                                                                                                        \
        first;                                                                                               \
        return __real_##name arguments;                                                                      \
    }
#define DRAW(name, Paint, parameters, ...)                                                                   \
    AFTER(name, (GpGraphics * graphics, Paint * paint, LIST parameters), (graphics, paint, __VA_ARGS__),     \
          record(#name + 4, graphics, paint, flat(__VA_ARGS__)))
#define TURN(name, parameters, ...)                                                                          \
    AFTER(name, (GpGraphics * graphics, LIST parameters), (graphics, __VA_ARGS__),                           \
          record(#name + 4, graphics, nullptr, flat(__VA_ARGS__)))
#define PATH(name, parameters, ...)                                                                          \
    AFTER(name, (GpPath * path, LIST parameters), (path, __VA_ARGS__), addToPath(path, flat(__VA_ARGS__)))
#define FREE(name, Type) AFTER(name, (Type * object), (object), gone(object))
#define PEN(name, Value, trait)                                                                              \
    AFTER(name, (GpPen * pen, Value value), (pen, value), traits[pen].trait = value)
#define MAKE(name, parameters, arguments, object, ...)                                                       \
    WRAP(name, parameters)                                                                                   \
    {                                                                                                        \
        const GpStatus status = __real_##name arguments;                                                     \
        return made(status, *object, {__VA_ARGS__});                                                         \
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
FREE(GdipDeleteGraphics, GpGraphics)
MAKE(GdipCreateFromHDC, (HDC dc, GpGraphics **graphics), (dc, graphics), graphics, .dc = dc)
MAKE(GdipCreateSolidFill, (ARGB argb, GpSolidFill **brush), (argb, brush), brush, .argb = argb)
MAKE(GdipCreatePen1, (ARGB argb, REAL width, GpUnit unit, GpPen **pen), (argb, width, unit, pen), pen, .argb = argb, .penWidth = width)
MAKE(GdipCreatePath, (GpFillMode mode, GpPath **path), (mode, path), path)
TURN(GdipTranslateWorldTransform, (REAL x, REAL y, GpMatrixOrder order), x, y, order)
TURN(GdipRotateWorldTransform, (REAL angle, GpMatrixOrder order), angle, order)
// clang-format on

WRAP(GdipSetPenLineCap197819, (GpPen * pen, GpLineCap start, GpLineCap end, GpDashCap dash))
{
    traits[pen].startCap = start;
    traits[pen].endCap = end;
    traits[pen].dashCap = dash;
    return __real_GdipSetPenLineCap197819(pen, start, end, dash);
}
// numbers: the layout rectangle, the text's own inside it, the characters that fitted, and all of them.
WRAP(GdipDrawString, (GpGraphics * graphics, const WCHAR *text, INT length, const GpFont *font,
                      const RectF *layout, const GpStringFormat *format, const GpBrush *brush))
{
    RectF box;
    INT fitted = 0;
    GdipMeasureString(graphics, text, length, font, layout, format, &box, &fitted, nullptr);
    if (story) tell(std::to_string(hashOf({text, size_t(length)})));
    record("DrawString", graphics, brush,
           flat(layout->X, layout->Y, layout->Width, layout->Height, box.X, box.Y, box.Width, box.Height,
                fitted, length));
    return __real_GdipDrawString(graphics, text, length, font, layout, format, brush);
}
