#pragma once
// 32-bit GDI+ bitmaps and access to their pixels.
#include <cstdint>

#include "marks/gdi_plus.h"

using OwnedBitmap = std::unique_ptr<GpBitmap, FreedBy<GdipDisposeImage>>;

// A 32-bit ARGB bitmap of at least 1 by 1 pixels; null when GDI+ refuses.
OwnedBitmap newBitmap(int width, int height);

struct PixelSize {
    UINT width, height;
};

// 0 replaces a side that GDI+ cannot report.
PixelSize pixelSize(GpImage *image);

// Locks the whole bitmap for reading and writing. If that fails, width and height are 0.
struct LockedPixels {
    GpBitmap *bitmap = nullptr;
    BitmapData data = {};
    GpStatus status = Ok;
    int width = 0;
    int height = 0;

    explicit LockedPixels(GpBitmap *toLock);
    ~LockedPixels();
    LockedPixels(const LockedPixels &) = delete;
    LockedPixels &operator=(const LockedPixels &) = delete;

    // Four bytes: blue, green, red, alpha, not premultiplied.
    uint8_t *at(int x, int y) const
    {
        return static_cast<uint8_t *>(data.Scan0) + ptrdiff_t(data.Stride) * y + ptrdiff_t(4) * x;
    }
};
