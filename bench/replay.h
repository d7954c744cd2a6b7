#pragma once
// Records the drawing calls so that they can be repeated without the program: the program's time over that of
// its bare calls shows what the program itself costs. While nothing is recorded, calls go straight to the
// system.
#include <unordered_map>

#include "shell/base/windows_api.h"
#include "support/imports.h"

struct RecordedCall {
    bool draws;  // GDI and GDI+; the others query the screen's size or request a repaint
    std::function<void()> again;
};
inline std::vector<RecordedCall> recordedCalls;

// Objects are kept as numbers of slots, since a replay makes its own.
inline std::vector<void *> slots;
inline std::unordered_map<void *, size_t> slotOf;  // of living objects

template <class T> struct Kept {  // plain numbers
    T value;
    Kept(T given, int) : value(given) {}
    T get() const { return value; }
};
template <class T> struct Kept<T *> {  // a GDI+ object
    size_t slot;
    Kept(T *given, int) : slot(slotOf.at(given)) {}
    T *get() const { return static_cast<T *>(slots[slot]); }
};
template <class T> struct Kept<T **> {  // a new one
    size_t slot;
    Kept(T **given, int) : slot(slots.size())
    {
        slots.push_back(nullptr);
        slotOf[*given] = slot;
    }
    T **get() const { return reinterpret_cast<T **>(&slots[slot]); }
};
template <class Handle> struct KeptHandle {
    Handle value;
    KeptHandle(Handle given, int) : value(given) {}
    Handle get() const { return value; }
};
template <> struct Kept<HDC> : KeptHandle<HDC> {
    using KeptHandle::KeptHandle;
};
template <> struct Kept<HWND> : KeptHandle<HWND> {
    using KeptHandle::KeptHandle;
};
template <class T> struct KeptArray {
    std::vector<T> items;
    KeptArray(const T *given, int count) : items(given, given + count) {}
    const T *get() const { return items.empty() ? nullptr : items.data(); }
};
template <> struct Kept<const GpPointF *> : KeptArray<GpPointF> {
    using KeptArray::KeptArray;
};
template <> struct Kept<const GpPoint *> : KeptArray<GpPoint> {
    using KeptArray::KeptArray;
};
template <> struct Kept<const RECT *> : KeptArray<RECT> {
    Kept(const RECT *given, int) : KeptArray(given, given ? 1 : 0) {}
};
// A replay creates and deletes the brush too, as the program does once a tick.
template <> struct Kept<HBRUSH> {
    LOGBRUSH traits = {};
    Kept(HBRUSH given, int) { GetObjectW(given, sizeof traits, &traits); }
    struct Made {
        HBRUSH brush;
        ~Made() { DeleteObject(brush); }
        operator HBRUSH() const { return brush; }
    };
    Made get() const { return {CreateSolidBrush(traits.lbColor)}; }
};

template <class Result, class... Args>
Replacement keeping(const char *name, bool draws, Result(WINAPI *)(Args...))
{
    const auto real = reinterpret_cast<Result(WINAPI *)(Args...)>(const_cast<void *>(importOf(name).system));
    return [real, draws](const Call &call) {
        const int64_t result = call.passOn();
        return [&]<size_t... I>(std::index_sequence<I...>) {
            // The number after an array of points is their count.
            int count = 0;
            (..., [&] {
                if constexpr (std::is_same_v<Args, INT>) count = count == 0 ? call.get<INT>(I) : count;
            }());
            const std::tuple<Kept<Args>...> kept(Kept<Args>(call.get<Args>(I), count)...);
            recordedCalls.push_back({draws, [real, kept] {
                                         std::apply([&](const auto &...each) { real(each.get()...); }, kept);
                                     }});
            return result;
        }(std::index_sequence_for<Args...>());
    };
}

// The formatter never settles on this list.
// clang-format off
#define EACH_DRAWING_CALL(DO)                                                                               \
    DO(GdipCreateFromHDC) DO(GdipSetSmoothingMode) DO(GdipDeleteGraphics) DO(GdipCreateSolidFill)           \
    DO(GdipDeleteBrush) DO(GdipCreatePen1) DO(GdipDeletePen) DO(GdipSetPenStartCap) DO(GdipSetPenEndCap)    \
    DO(GdipSetPenLineJoin) DO(GdipSetPenLineCap197819) DO(GdipCreatePath) DO(GdipDeletePath)                \
    DO(GdipStartPathFigure) DO(GdipClosePathFigure) DO(GdipAddPathBezier) DO(GdipAddPathPolygon)            \
    DO(GdipFillEllipse) DO(GdipFillEllipseI) DO(GdipDrawEllipse) DO(GdipDrawEllipseI)                       \
    DO(GdipFillRectangle) DO(GdipDrawRectangle) DO(GdipFillPolygon) DO(GdipFillPolygonI)                    \
    DO(GdipDrawPolygon) DO(GdipDrawPolygonI) DO(GdipDrawLine) DO(GdipDrawArc) DO(GdipDrawBezier)            \
    DO(GdipFillPath) DO(GdipDrawPath) DO(GdipTranslateWorldTransform) DO(GdipRotateWorldTransform)          \
    DO(FillRect)
// clang-format on
#define EACH_QUESTION(DO) DO(GetSystemMetrics) DO(InvalidateRect)

inline void recordCalls(bool on)
{
    if (on) {
        recordedCalls.clear();
        slots.clear();
        slotOf.clear();
    }
#define KEEP(name, draws)                                                                                    \
    if (imports().contains(#name))                                                                           \
        on ? importOf(#name).push(keeping(#name, draws, decltype (&name)())) : importOf(#name).pop();
#define KEEP_DRAWING(name) KEEP(name, true)
#define KEEP_QUESTION(name) KEEP(name, false)
    EACH_DRAWING_CALL(KEEP_DRAWING)
    EACH_QUESTION(KEEP_QUESTION)
#undef KEEP
#undef KEEP_DRAWING
#undef KEEP_QUESTION
}
