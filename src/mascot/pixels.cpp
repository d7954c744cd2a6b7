#include "mascot/pixels.h"

OwnedBitmap newBitmap(int width, int height)
{
    GpBitmap *bitmap = nullptr;
    GdipCreateBitmapFromScan0(std::max(width, 1), std::max(height, 1), 0, PixelFormat32bppARGB, nullptr,
                              &bitmap);
    return OwnedBitmap(bitmap);
}

LockedPixels::LockedPixels(GpBitmap *toLock) : bitmap(toLock)
{
    UINT imageWidth = 0;
    UINT imageHeight = 0;
    GdipGetImageWidth(bitmap, &imageWidth);
    GdipGetImageHeight(bitmap, &imageHeight);
    const GpRect whole(0, 0, int(imageWidth), int(imageHeight));
    status = GdipBitmapLockBits(bitmap, &whole, ImageLockModeRead | ImageLockModeWrite, PixelFormat32bppARGB,
                                &data);
    if (status != Ok) return;
    width = int(imageWidth);
    height = int(imageHeight);
}

LockedPixels::~LockedPixels()
{
    if (status == Ok) GdipBitmapUnlockBits(bitmap, &data);
}
