// GDI+ on its way: every object's traits are kept while it lives, every drawing call is recorded with
// the traits of its brush or pen and passed on.
#include "support/fakes.h"

static std::map<const void *, DrawCall> traits;  // of brushes and pens; numbers of paths
static std::map<const GpGraphics *, HDC> targets;

static DrawCall call(const char *what, const GpGraphics *graphics, const void *paint,
                     std::vector<float> numbers)
{
    DrawCall made = traits.contains(paint) ? traits[paint] : DrawCall{};
    made.what = what;
    made.dc = targets.contains(graphics) ? targets[graphics] : nullptr;
    made.numbers = std::move(numbers);
    return made;
}

static void record(const char *what, const GpGraphics *graphics, const void *paint,
                   std::vector<float> numbers)
{
    recorded.draws.push_back(call(what, graphics, paint, std::move(numbers)));
}

template <class Point> static std::vector<float> flat(const Point *points, int count)
{
    std::vector<float> numbers;
    for (int i = 0; i < count; ++i) {
        numbers.push_back(float(points[i].X));
        numbers.push_back(float(points[i].Y));
    }
    return numbers;
}

static GpStatus made(GpStatus status, const void *object, DrawCall what = {})
{
    if (status == Ok && object) {
        ++recorded.alive;
        traits[object] = std::move(what);
    }
    return status;
}

template <class T> static void gone(T *object)
{
    if (object && traits.erase(object)) --recorded.alive;
}

static void addToPath(const GpPath *path, std::initializer_list<float> numbers)
{
    std::vector<float> &points = traits[path].numbers;
    points.insert(points.end(), numbers);
}

// WRAP declares the real function and opens the definition of ours; the build reads the names from
// these lines.
#define WRAP(name, parameters)                                                                               \
    extern "C" GpStatus WINGDIPAPI __real_##name parameters;                                                 \
    extern "C" GpStatus WINGDIPAPI __wrap_##name parameters;                                                 \
    extern "C" GpStatus WINGDIPAPI __wrap_##name parameters

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
    DrawCall what;
    what.argb = argb;
    return made(status, *brush, what);
}
WRAP(GdipDeleteBrush, (GpBrush * brush))
{
    gone(brush);
    return __real_GdipDeleteBrush(brush);
}
WRAP(GdipCreatePen1, (ARGB argb, REAL width, GpUnit unit, GpPen **pen))
{
    const GpStatus status = __real_GdipCreatePen1(argb, width, unit, pen);
    DrawCall what;
    what.argb = argb;
    what.penWidth = width;
    return made(status, *pen, what);
}
WRAP(GdipDeletePen, (GpPen * pen))
{
    gone(pen);
    return __real_GdipDeletePen(pen);
}
WRAP(GdipSetPenStartCap, (GpPen * pen, GpLineCap cap))
{
    traits[pen].startCap = cap;
    return __real_GdipSetPenStartCap(pen, cap);
}
WRAP(GdipSetPenEndCap, (GpPen * pen, GpLineCap cap))
{
    traits[pen].endCap = cap;
    return __real_GdipSetPenEndCap(pen, cap);
}
WRAP(GdipSetPenLineJoin, (GpPen * pen, GpLineJoin join))
{
    traits[pen].join = join;
    return __real_GdipSetPenLineJoin(pen, join);
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
WRAP(GdipDeletePath, (GpPath * path))
{
    gone(path);
    return __real_GdipDeletePath(path);
}
WRAP(GdipAddPathBezier, (GpPath * path, REAL a, REAL b, REAL c, REAL d, REAL e, REAL f, REAL g, REAL h))
{
    addToPath(path, {a, b, c, d, e, f, g, h});
    return __real_GdipAddPathBezier(path, a, b, c, d, e, f, g, h);
}
WRAP(GdipAddPathPolygon, (GpPath * path, const GpPointF *points, INT count))
{
    const std::vector<float> numbers = flat(points, count);
    traits[path].numbers.insert(traits[path].numbers.end(), numbers.begin(), numbers.end());
    return __real_GdipAddPathPolygon(path, points, count);
}
WRAP(GdipAddPathArc, (GpPath * path, REAL x, REAL y, REAL w, REAL h, REAL start, REAL sweep))
{
    addToPath(path, {x, y, w, h, start, sweep});
    return __real_GdipAddPathArc(path, x, y, w, h, start, sweep);
}

WRAP(GdipFillEllipse, (GpGraphics * graphics, GpBrush *brush, REAL x, REAL y, REAL w, REAL h))
{
    record("FillEllipse", graphics, brush, {x, y, w, h});
    return __real_GdipFillEllipse(graphics, brush, x, y, w, h);
}
WRAP(GdipFillEllipseI, (GpGraphics * graphics, GpBrush *brush, INT x, INT y, INT w, INT h))
{
    record("FillEllipseI", graphics, brush, {float(x), float(y), float(w), float(h)});
    return __real_GdipFillEllipseI(graphics, brush, x, y, w, h);
}
WRAP(GdipDrawEllipse, (GpGraphics * graphics, GpPen *pen, REAL x, REAL y, REAL w, REAL h))
{
    record("DrawEllipse", graphics, pen, {x, y, w, h});
    return __real_GdipDrawEllipse(graphics, pen, x, y, w, h);
}
WRAP(GdipDrawEllipseI, (GpGraphics * graphics, GpPen *pen, INT x, INT y, INT w, INT h))
{
    record("DrawEllipseI", graphics, pen, {float(x), float(y), float(w), float(h)});
    return __real_GdipDrawEllipseI(graphics, pen, x, y, w, h);
}
WRAP(GdipFillRectangle, (GpGraphics * graphics, GpBrush *brush, REAL x, REAL y, REAL w, REAL h))
{
    record("FillRectangle", graphics, brush, {x, y, w, h});
    return __real_GdipFillRectangle(graphics, brush, x, y, w, h);
}
WRAP(GdipDrawRectangle, (GpGraphics * graphics, GpPen *pen, REAL x, REAL y, REAL w, REAL h))
{
    record("DrawRectangle", graphics, pen, {x, y, w, h});
    return __real_GdipDrawRectangle(graphics, pen, x, y, w, h);
}
WRAP(GdipFillPolygon,
     (GpGraphics * graphics, GpBrush *brush, const GpPointF *points, INT count, GpFillMode mode))
{
    record("FillPolygon", graphics, brush, flat(points, count));
    return __real_GdipFillPolygon(graphics, brush, points, count, mode);
}
WRAP(GdipDrawPolygon, (GpGraphics * graphics, GpPen *pen, const GpPointF *points, INT count))
{
    record("DrawPolygon", graphics, pen, flat(points, count));
    return __real_GdipDrawPolygon(graphics, pen, points, count);
}
WRAP(GdipFillPolygonI,
     (GpGraphics * graphics, GpBrush *brush, const GpPoint *points, INT count, GpFillMode mode))
{
    record("FillPolygonI", graphics, brush, flat(points, count));
    return __real_GdipFillPolygonI(graphics, brush, points, count, mode);
}
WRAP(GdipDrawPolygonI, (GpGraphics * graphics, GpPen *pen, const GpPoint *points, INT count))
{
    record("DrawPolygonI", graphics, pen, flat(points, count));
    return __real_GdipDrawPolygonI(graphics, pen, points, count);
}
WRAP(GdipDrawLine, (GpGraphics * graphics, GpPen *pen, REAL x1, REAL y1, REAL x2, REAL y2))
{
    record("DrawLine", graphics, pen, {x1, y1, x2, y2});
    return __real_GdipDrawLine(graphics, pen, x1, y1, x2, y2);
}
WRAP(GdipDrawArc, (GpGraphics * graphics, GpPen *pen, REAL x, REAL y, REAL w, REAL h, REAL start, REAL sweep))
{
    record("DrawArc", graphics, pen, {x, y, w, h, start, sweep});
    return __real_GdipDrawArc(graphics, pen, x, y, w, h, start, sweep);
}
WRAP(GdipDrawBezier,
     (GpGraphics * graphics, GpPen *pen, REAL a, REAL b, REAL c, REAL d, REAL e, REAL f, REAL g, REAL h))
{
    record("DrawBezier", graphics, pen, {a, b, c, d, e, f, g, h});
    return __real_GdipDrawBezier(graphics, pen, a, b, c, d, e, f, g, h);
}
WRAP(GdipFillPath, (GpGraphics * graphics, GpBrush *brush, GpPath *path))
{
    record("FillPath", graphics, brush, traits[path].numbers);
    return __real_GdipFillPath(graphics, brush, path);
}
WRAP(GdipDrawPath, (GpGraphics * graphics, GpPen *pen, GpPath *path))
{
    record("DrawPath", graphics, pen, traits[path].numbers);
    return __real_GdipDrawPath(graphics, pen, path);
}
WRAP(GdipTranslateWorldTransform, (GpGraphics * graphics, REAL x, REAL y, GpMatrixOrder order))
{
    record("TranslateWorldTransform", graphics, nullptr, {x, y, float(order)});
    return __real_GdipTranslateWorldTransform(graphics, x, y, order);
}
WRAP(GdipRotateWorldTransform, (GpGraphics * graphics, REAL angle, GpMatrixOrder order))
{
    record("RotateWorldTransform", graphics, nullptr, {angle, float(order)});
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
           {layout->X, layout->Y, layout->Width, layout->Height, box.X, box.Y, box.Width, box.Height,
            float(fitted), float(length)});
    return __real_GdipDrawString(graphics, text, length, font, layout, format, brush);
}
