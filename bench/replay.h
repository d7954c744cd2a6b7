#pragma once
// The calls that drawing makes, kept so that they can be made once more without the program: the time of the
// program over the time of its bare calls tells what the program itself costs. While calls are recorded, the
// pointers of the import table lead here; otherwise nothing stands between.
#include <functional>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "shell/base/windows_api.h"

struct RecordedCall {
    bool draws;  // GDI and GDI+; the others ask for the screen's size or for a repaint
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
// A replay makes and deletes the brush as well, as the program does once a tick.
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

template <auto *import, bool draws, class Function> struct Hook;
template <auto *import, bool draws, class Result, class... Args>
struct Hook<import, draws, Result(WINAPI *)(Args...)> {
    static inline Result(WINAPI *real)(Args...) = nullptr;
    static Result WINAPI record(Args... args)
    {
        const Result result = real(args...);
        // The number after an array of points is their count.
        int count = 0;
        (..., [&] {
            if constexpr (std::is_same_v<Args, INT>) count = count == 0 ? args : count;
        }());
        recordedCalls.push_back({draws, [kept = std::tuple<Kept<Args>...>(Kept<Args>(args, count)...)] {
                                     std::apply([](const auto &...each) { real(each.get()...); }, kept);
                                 }});
        return result;
    }
    static void set(bool on)
    {
        DWORD old = 0;
        VirtualProtect(import, sizeof *import, PAGE_READWRITE, &old);
        if (on) real = *import;
        *import = on ? record : real;
    }
};

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
#define DECLARE(name) extern decltype(&name) __imp_##name;
extern "C" {
EACH_DRAWING_CALL(DECLARE)
EACH_QUESTION(DECLARE)
}
#undef DECLARE

inline void recordCalls(bool on)
{
    if (on) {
        recordedCalls.clear();
        slots.clear();
        slotOf.clear();
    }
#define SET_DRAWING(name) Hook<&__imp_##name, true, decltype(&name)>::set(on);
#define SET_QUESTION(name) Hook<&__imp_##name, false, decltype(&name)>::set(on);
    EACH_DRAWING_CALL(SET_DRAWING)
    EACH_QUESTION(SET_QUESTION)
#undef SET_DRAWING
#undef SET_QUESTION
}
