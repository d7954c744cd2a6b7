// What only the story of a whole play tells: GDI, pictures and traits, each told and passed on. Texts have
// the same sizes whatever fonts there are while a story is told.
#include <cstdio>

#include "mascot/frames.h"
#include "mascot/sprites.h"
#include "support/fakes.h"

template <class... Numbers> static void tellCall(const char *what, Numbers... numbers)
{
    if (!story) return;
    std::string line = what;
    [[maybe_unused]] const auto add = [&line](double number) {
        char text[32];
        std::snprintf(text, sizeof text, " %.2f", number);
        line += text;
    };
    (..., add(double(numbers)));
    tell(line);
}

// The build reads the names from these lines.
#define REPLACE_IMPORT(name, parameters, arguments, ...)                                                     \
    extern "C" {                                                                                             \
    extern decltype(&name) __real___imp_##name;                                                              \
    extern decltype(&name) __wrap___imp_##name;                                                              \
    }                                                                                                        \
    decltype(&name) __wrap___imp_##name = [] parameters {                                                    \
        tellCall(#name __VA_OPT__(, ) __VA_ARGS__);                                                          \
        return __real___imp_##name arguments;                                                                \
    }
#define WRAP(name, parameters, arguments, ...)                                                               \
    extern "C" GpStatus WINGDIPAPI __real_##name parameters;                                                 \
    extern "C" GpStatus WINGDIPAPI __wrap_##name parameters;                                                 \
    extern "C" GpStatus WINGDIPAPI __wrap_##name parameters                                                  \
    {                                                                                                        \
        tellCall(#name __VA_OPT__(, ) __VA_ARGS__);                                                          \
        return __real_##name arguments;                                                                      \
    }

static COLORREF colorOf(HBRUSH brush)
{
    LOGBRUSH traits = {};
    GetObjectW(brush, sizeof traits, &traits);
    return traits.lbColor;
}

// The surface whose canvas it is; -1 for a window, -2 for the rest.
static int placeOf(HDC dc)
{
    for (size_t i = 0; i < surfaces.size(); ++i)
        if (surfaces[i].canvasDC == dc) return int(i);
    return dc == fakes.paintDC ? -1 : -2;
}
// Sprites have numbers from 1 on.
static int numberOf(HGDIOBJ object)
{
    int number = 0;
    for (const auto *sprites : {&glowSprites, &starSprites, &heartSprites}) {
        for (const Sprite &sprite : *sprites) {
            ++number;
            if (object && sprite.bitmap == object) return number;
        }
    }
    return 0;
}
static int numberOf(const GpImage *image)
{
    int number = 0;
    for (const ImageFrame *frame : {bubbleFrame, mainFrame, happyFrame, cheerFrame}) {
        ++number;
        if (frame && frame->image == image) return number;
    }
    return 0;
}

// clang-format off
REPLACE_IMPORT(BitBlt, (HDC to, int x, int y, int w, int h, HDC from, int fx, int fy, DWORD rop), (to, x, y, w, h, from, fx, fy, rop), placeOf(to), placeOf(from), x, y, w, h, fx, fy, rop);
REPLACE_IMPORT(AlphaBlend, (HDC to, int x, int y, int w, int h, HDC from, int fx, int fy, int fw, int fh, BLENDFUNCTION blend), (to, x, y, w, h, from, fx, fy, fw, fh, blend), placeOf(to), x, y, w, h, fx, fy, fw, fh, blend.SourceConstantAlpha);
REPLACE_IMPORT(FillRect, (HDC dc, const RECT *rect, HBRUSH brush), (dc, rect, brush), placeOf(dc), rect->left, rect->top, rect->right, rect->bottom, colorOf(brush));
REPLACE_IMPORT(CreateSolidBrush, (COLORREF color), (color), color);
REPLACE_IMPORT(DeleteObject, (HGDIOBJ object), (object));
REPLACE_IMPORT(CreateCompatibleDC, (HDC dc), (dc));
REPLACE_IMPORT(GdiFlush, (), ());
REPLACE_IMPORT(DeleteDC, (HDC dc), (dc));
REPLACE_IMPORT(CreateCompatibleBitmap, (HDC dc, int w, int h), (dc, w, h), w, h);
REPLACE_IMPORT(CreateDIBSection, (HDC dc, const BITMAPINFO *info, UINT use, VOID **bits, HANDLE file, DWORD at), (dc, info, use, bits, file, at), info->bmiHeader.biWidth, info->bmiHeader.biHeight);
REPLACE_IMPORT(SelectObject, (HDC dc, HGDIOBJ object), (dc, object), placeOf(dc), numberOf(object));
REPLACE_IMPORT(CreateRectRgn, (int left, int top, int right, int bottom), (left, top, right, bottom), left, top, right, bottom);
REPLACE_IMPORT(UpdateLayeredWindow, (HWND window, HDC to, POINT *at, SIZE *size, HDC from, POINT *source, COLORREF key, BLENDFUNCTION *blend, DWORD flags), (window, to, at, size, from, source, key, blend, flags), at->x, at->y, size->cx, size->cy, blend->SourceConstantAlpha, flags);
REPLACE_IMPORT(CreateDirectoryW, (LPCWSTR path, LPSECURITY_ATTRIBUTES traits), (path, traits));
REPLACE_IMPORT(CopyFileW, (LPCWSTR from, LPCWSTR to, BOOL keep), (from, to, keep), keep);
REPLACE_IMPORT(DeleteFileW, (LPCWSTR path), (path));
REPLACE_IMPORT(WritePrivateProfileStringW, (LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR file), (section, key, value, file), value[0]);
WRAP(GdipDrawImageRect, (GpGraphics *graphics, GpImage *image, REAL x, REAL y, REAL w, REAL h), (graphics, image, x, y, w, h), numberOf(image), x, y, w, h)
WRAP(GdipDrawImageRectRect, (GpGraphics *graphics, GpImage *image, REAL x, REAL y, REAL w, REAL h, REAL fx, REAL fy, REAL fw, REAL fh, GpUnit unit, const GpImageAttributes *traits, DrawImageAbort abort, VOID *data), (graphics, image, x, y, w, h, fx, fy, fw, fh, unit, traits, abort, data), numberOf(image), x, y, w, h, fx, fy, fw, fh)
WRAP(GdipDrawImageRectRectI, (GpGraphics *graphics, GpImage *image, INT x, INT y, INT w, INT h, INT fx, INT fy, INT fw, INT fh, GpUnit unit, const GpImageAttributes *traits, DrawImageAbort abort, VOID *data), (graphics, image, x, y, w, h, fx, fy, fw, fh, unit, traits, abort, data), numberOf(image), x, y, w, h, fx, fy, fw, fh)
WRAP(GdipScaleWorldTransform, (GpGraphics *graphics, REAL x, REAL y, GpMatrixOrder order), (graphics, x, y, order), x, y, order)
WRAP(GdipGraphicsClear, (GpGraphics *graphics, ARGB color), (graphics, color), color)
WRAP(GdipStartPathFigure, (GpPath *path), (path))
WRAP(GdipClosePathFigure, (GpPath *path), (path))
WRAP(GdipSetSmoothingMode, (GpGraphics *graphics, SmoothingMode mode), (graphics, mode), mode)
WRAP(GdipSetCompositingMode, (GpGraphics *graphics, CompositingMode mode), (graphics, mode), mode)
WRAP(GdipSetInterpolationMode, (GpGraphics *graphics, InterpolationMode mode), (graphics, mode), mode)
WRAP(GdipSetPixelOffsetMode, (GpGraphics *graphics, PixelOffsetMode mode), (graphics, mode), mode)
WRAP(GdipSetCompositingQuality, (GpGraphics *graphics, CompositingQuality quality), (graphics, quality), quality)
WRAP(GdipSetTextRenderingHint, (GpGraphics *graphics, TextRenderingHint hint), (graphics, hint), hint)
WRAP(GdipCreateFont, (const GpFontFamily *family, REAL size, INT style, Unit unit, GpFont **font), (family, size, style, unit, font), size, unit)
WRAP(GdipSetStringFormatAlign, (GpStringFormat *format, StringAlignment align), (format, align), align)
WRAP(GdipSetStringFormatLineAlign, (GpStringFormat *format, StringAlignment align), (format, align), align)
WRAP(GdipSetStringFormatFlags, (GpStringFormat *format, INT flags), (format, flags), flags)
WRAP(GdipSetStringFormatTrimming, (GpStringFormat *format, StringTrimming trimming), (format, trimming), trimming)
// clang-format on
#undef WRAP
#define WRAP(name, parameters)                                                                               \
    extern "C" GpStatus WINGDIPAPI __real_##name parameters;                                                 \
    extern "C" GpStatus WINGDIPAPI __wrap_##name parameters;                                                 \
    extern "C" GpStatus WINGDIPAPI __wrap_##name parameters
WRAP(GdipMeasureString,
     (GpGraphics * graphics, const WCHAR *text, INT length, const GpFont *font, const RectF *layout,
      const GpStringFormat *format, RectF *box, INT *fitted, INT *lines))
{
    if (!story) {
        return __real_GdipMeasureString(graphics, text, length, font, layout, format, box, fitted, lines);
    }
    tellCall("MeasureString", layout->X, layout->Y, layout->Width, layout->Height);
    *box = RectF(layout->X, layout->Y, 7.0f * float(length), 20.0f + float(length % 5));
    if (fitted) *fitted = length;
    return Ok;
}
