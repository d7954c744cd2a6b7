#pragma once
// The GDI and GDI+ calls that drawing makes, kept so that they can be made once more without the program:
// the time of the program over the time of its bare calls tells what the program itself costs. The
// functions are replaced at link time by being defined here, so include this once.
#include <functional>
#include <map>
#include <vector>

#include "shell/windows_api.h"

inline bool recordingCalls = false;
inline std::vector<std::function<void()>> recordedCalls;
inline std::vector<void *> replayedObjects;           // brushes, pens and the like of a replay, by number
inline std::map<const void *, size_t> objectNumbers;  // of the objects alive while recording

template <class T> struct Kept {
    T value;
    explicit Kept(T given) : value(given) {}
    T again() const { return value; }
};
template <class T> struct KeptObject {
    size_t number;
    explicit KeptObject(T *object) : number(objectNumbers[object]) {}
    T *again() const { return static_cast<T *>(replayedObjects[number]); }
};
template <> struct Kept<GpGraphics *> : KeptObject<GpGraphics> {
    using KeptObject::KeptObject;
};
template <> struct Kept<GpBrush *> : KeptObject<GpBrush> {
    using KeptObject::KeptObject;
};
template <> struct Kept<GpPen *> : KeptObject<GpPen> {
    using KeptObject::KeptObject;
};
template <class T> struct Kept<T **> {  // a function that makes an object
    size_t number;
    explicit Kept(T **made) : number(replayedObjects.size())
    {
        replayedObjects.push_back(nullptr);
        objectNumbers[*made] = number;
    }
    T **again() const { return reinterpret_cast<T **>(&replayedObjects[number]); }
};

template <class Function> Function realFunction(const wchar_t *library, const char *name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void *>(GetProcAddress(LoadLibraryW(library), name)));
}

template <class Function, class... Arguments> GpStatus passOn(Function real, Arguments... arguments)
{
    const GpStatus status = real(arguments...);
    if (recordingCalls) {
        recordedCalls.push_back([real, ... kept = Kept<Arguments>(arguments)] { real(kept.again()...); });
    }
    return status;
}
#define REPLAYED(name, parameters, ...)                                                                      \
    extern "C" GpStatus WINGDIPAPI name parameters                                                           \
    {                                                                                                        \
        static const auto real = realFunction<decltype(&Gdiplus::DllExports::name)>(L"gdiplus", #name);      \
        return passOn(real, __VA_ARGS__);                                                                    \
    }
REPLAYED(GdipCreateFromHDC, (HDC dc, GpGraphics **g), dc, g)
REPLAYED(GdipDeleteGraphics, (GpGraphics * g), g)
REPLAYED(GdipSetSmoothingMode, (GpGraphics * g, SmoothingMode mode), g, mode)
REPLAYED(GdipCreateSolidFill, (ARGB argb, GpSolidFill **brush), argb, brush)
REPLAYED(GdipDeleteBrush, (GpBrush * brush), brush)
REPLAYED(GdipCreatePen1, (ARGB argb, REAL width, GpUnit unit, GpPen **pen), argb, width, unit, pen)
REPLAYED(GdipDeletePen, (GpPen * pen), pen)
REPLAYED(GdipSetPenStartCap, (GpPen * pen, GpLineCap cap), pen, cap)
REPLAYED(GdipSetPenEndCap, (GpPen * pen, GpLineCap cap), pen, cap)
REPLAYED(GdipSetPenLineJoin, (GpPen * pen, GpLineJoin join), pen, join)
REPLAYED(GdipSetPenLineCap197819, (GpPen * pen, GpLineCap a, GpLineCap b, GpDashCap c), pen, a, b, c)
REPLAYED(GdipFillRectangle, (GpGraphics * g, GpBrush *b, REAL x, REAL y, REAL w, REAL h), g, b, x, y, w, h)
REPLAYED(GdipFillEllipse, (GpGraphics * g, GpBrush *b, REAL x, REAL y, REAL w, REAL h), g, b, x, y, w, h)
REPLAYED(GdipDrawEllipse, (GpGraphics * g, GpPen *p, REAL x, REAL y, REAL w, REAL h), g, p, x, y, w, h)
REPLAYED(GdipDrawLine, (GpGraphics * g, GpPen *p, REAL x, REAL y, REAL w, REAL h), g, p, x, y, w, h)
REPLAYED(GdipDrawArc, (GpGraphics * g, GpPen *p, REAL x, REAL y, REAL w, REAL h, REAL start, REAL sweep), g,
         p, x, y, w, h, start, sweep)

extern "C" GpStatus WINGDIPAPI GdipFillPolygon(GpGraphics *g, GpBrush *brush, const GpPointF *points,
                                               INT count, GpFillMode mode)
{
    static const auto real =
        realFunction<decltype(&Gdiplus::DllExports::GdipFillPolygon)>(L"gdiplus", "GdipFillPolygon");
    const GpStatus status = real(g, brush, points, count, mode);
    if (recordingCalls) {
        recordedCalls.push_back(
            [=, corners = std::vector<GpPointF>(points, points + count), graphics = Kept(g),
             fill = Kept(brush)] { real(graphics.again(), fill.again(), corners.data(), count, mode); });
    }
    return status;
}

// A replay makes and deletes the brush as well, as the program does once a tick.
static int WINAPI recordFillRect(HDC dc, const RECT *rect, HBRUSH brush)
{
    static const auto real = realFunction<decltype(&FillRect)>(L"user32", "FillRect");
    if (recordingCalls) {
        LOGBRUSH traits = {};
        GetObjectW(brush, sizeof traits, &traits);
        recordedCalls.push_back([dc, part = *rect, color = traits.lbColor] {
            HBRUSH again = CreateSolidBrush(color);
            real(dc, &part, again);
            DeleteObject(again);
        });
    }
    return real(dc, rect, brush);
}
extern "C" {
int(WINAPI *__imp_FillRect)(HDC, const RECT *, HBRUSH) = recordFillRect;
}
