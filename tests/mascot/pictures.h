#pragma once
// Pictures made by a test, and screens that hold what was really painted.
#include "mascot/frames.h"
#include "mascot/pixels.h"
#include "shell/painting.h"
#include "support/fakes.h"

inline uint32_t pixelOf(const ImageFrame &frame, int x, int y)  // 0xAARRGGBB
{
    ARGB argb = 0;
    GdipBitmapGetPixel(static_cast<GpBitmap *>(frame.image), x, y, &argb);
    return argb;
}

// A frame whose pixels are 0xAARRGGBB by place.
struct Picture : ImageFrame {
    Picture(int width, int height, auto colorAt) : ImageFrame(newBitmap(width, height).release())
    {
        const LockedPixels pixels(static_cast<GpBitmap *>(image));
        for (int i = 0; i < width * height; ++i)
            *reinterpret_cast<uint32_t *>(pixels.at(i % width, i / width)) = colorAt(i % width, i / width);
    }
    void save(const std::filesystem::path &path, bool asPng = true) const
    {
        const CLSID encoder = {asPng ? 0x557cf406u : 0x557cf400u,
                               0x1a04,
                               0x11d3,
                               {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
        GdipSaveImageToFile(image, path.c_str(), &encoder, nullptr);
    }
};

// What the monitors of a black desk show. Its few device contexts end with the test program.
struct Screens {
    std::vector<std::pair<HDC, uint32_t *>> shown;  // with their pixels

    Screens()
    {
        for (const MonitorSurface &surface : surfaces) {
            const BITMAPINFO info = {{40, surface.width, -surface.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
            void *bits = nullptr;
            HDC dc = CreateCompatibleDC(nullptr);
            SelectObject(dc, CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
            shown.push_back({dc, static_cast<uint32_t *>(bits)});
        }
    }
    // Paints what was invalidated, each rectangle by itself and no further, as WM_PAINT does.
    void paint()
    {
        for (const Invalidation &each : std::exchange(recorded.invalidations, {})) {
            fakes.paintDC = shown[each.window == fakeWindow(0) ? 0 : 1].first;
            fakes.paintRect = each.rect;
            paintSurface(each.window);
        }
    }
    // How many pixels outside the virtual-screen rectangle are not black.
    int strays(const RECT &allowed) const
    {
        int count = 0;
        for (size_t i = 0; i < surfaces.size(); ++i) {
            for (int p = 0; p < surfaces[i].width * surfaces[i].height; ++p) {
                const POINT local = {p % surfaces[i].width, p / surfaces[i].width};
                const POINT point = {local.x + surfaces[i].rect.left, local.y + surfaces[i].rect.top};
                count += (shown[i].second[p] & 0xFFFFFF) != 0 && !PtInRect(&allowed, point);
            }
        }
        return count;
    }
};
