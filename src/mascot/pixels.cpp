#include "mascot/pixels.h"

OwnedBitmap newBitmap(int width, int height)
{
    GpBitmap *bitmap = nullptr;
    GdipCreateBitmapFromScan0(std::max(width, 1), std::max(height, 1), 0, PixelFormat32bppARGB, nullptr,
                              &bitmap);
    return OwnedBitmap(bitmap);
}

PixelSize pixelSize(GpImage *image)
{
    PixelSize size = {};
    GdipGetImageWidth(image, &size.width);
    GdipGetImageHeight(image, &size.height);
    return size;
}

LockedPixels::LockedPixels(GpBitmap *toLock) : bitmap(toLock)
{
    const PixelSize size = pixelSize(bitmap);
    const GpRect whole(0, 0, int(size.width), int(size.height));
    status = GdipBitmapLockBits(bitmap, &whole, ImageLockModeRead | ImageLockModeWrite, PixelFormat32bppARGB,
                                &data);
    if (status != Ok) return;
    width = int(size.width);
    height = int(size.height);
}

LockedPixels::~LockedPixels()
{
    if (status == Ok) GdipBitmapUnlockBits(bitmap, &data);
}
