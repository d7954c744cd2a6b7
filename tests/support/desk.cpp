#include "support/fakes.h"

#include <cmath>
#include <cstdio>

void seedAll(uint32_t seed)
{
    markRng.seed(seed);
    soundRng.seed(seed + 1);
    clipRng.seed(seed + 2);
}

TestFolder::TestFolder()
    : path(std::filesystem::temp_directory_path() / ("zubbly" + std::to_string(GetCurrentProcessId())))
{
    std::filesystem::create_directories(path);
    fakes.folder = path;
}

TestFolder::~TestFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
    fakes.folder.clear();
}

std::string textOf(const DrawCall &call)
{
    char part[64];
    std::snprintf(part, sizeof part, "%s %08X", call.what.c_str(), call.argb);
    std::string text = part;
    if (call.penWidth != 0.0f) {
        std::snprintf(part, sizeof part, " wide %.2f", double(call.penWidth));
        text += part;
    }
    if (call.startCap == 2 && call.endCap == 2) text += call.dashCap == 2 ? " all caps" : " caps";
    if (call.join == 2) text += " join";
    text += " at";
    for (const float number : call.numbers) {
        std::snprintf(part, sizeof part, std::floor(number) == number ? " %.0f" : " %.2f", double(number));
        text += part;
    }
    for (size_t i = 1; i < surfaces.size(); ++i) {
        if (surfaces[i].canvasDC == call.dc) text += " on " + std::to_string(i);
    }
    return text;
}

std::string textOfRecord()
{
    std::string text;
    for (const DrawCall &call : recorded.draws)
        text += textOf(call) + "\n";
    for (const auto &[window, whole, rect] : recorded.invalidations) {
        text += "repaint " + std::to_string((intptr_t(window) - firstFakeWindow) / 2);
        if (whole) {
            text += " whole\n";
        } else {
            text += " " + std::to_string(rect.left) + " " + std::to_string(rect.top) + " " +
                    std::to_string(rect.right) + " " + std::to_string(rect.bottom) + "\n";
        }
    }
    Rng next = markRng;
    return text + "next " + std::to_string(next()) + "\n";
}

Desk::Desk(const std::vector<RECT> &monitors, MarkColor background)
{
    fakes = {};
    fakes.monitors = monitors;
    RECT all = {};
    HDC screenDC = GetDC(nullptr);
    HBRUSH brush = CreateSolidBrush(background);
    for (size_t i = 0; i < monitors.size(); ++i) {
        UnionRect(&all, &all, &monitors[i]);
        MonitorSurface surface;
        surface.hwnd = fakeWindow(int(i));
        surface.rect = monitors[i];
        surface.width = monitors[i].right - monitors[i].left;
        surface.height = monitors[i].bottom - monitors[i].top;
        surface.canvasDC = CreateCompatibleDC(screenDC);
        surface.canvasBitmap = CreateCompatibleBitmap(screenDC, surface.width, surface.height);
        SelectObject(surface.canvasDC, surface.canvasBitmap);
        const RECT canvas = {0, 0, surface.width, surface.height};
        FillRect(surface.canvasDC, &canvas, brush);
        surfaces.push_back(surface);
    }
    DeleteObject(brush);
    ReleaseDC(nullptr, screenDC);
    fakes.screen = {all.left, all.top, all.right - all.left, all.bottom - all.top};
    recorded = {};
    canvasDirty = false;
    seedAll(7);
}

Desk::~Desk()
{
    for (MonitorSurface &surface : surfaces)
        freeSurfaceBuffers(surface);
    surfaces.clear();
}

MarkColor Desk::pixel(int x, int y) const
{
    for (const MonitorSurface &surface : surfaces) {
        if (PtInRect(&surface.rect, {x, y}))
            return GetPixel(surface.canvasDC, x - surface.rect.left, y - surface.rect.top);
    }
    return CLR_INVALID;
}

void Desk::save(const wchar_t *path) const
{
    HDC screenDC = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screenDC);
    HBITMAP bitmap = CreateCompatibleBitmap(screenDC, fakes.screen.width, fakes.screen.height);
    HGDIOBJ old = SelectObject(dc, bitmap);
    for (const MonitorSurface &surface : surfaces) {
        BitBlt(dc, surface.rect.left - fakes.screen.left, surface.rect.top - fakes.screen.top, surface.width,
               surface.height, surface.canvasDC, 0, 0, SRCCOPY);
    }
    SelectObject(dc, old);
    GpBitmap *picture = nullptr;
    GdipCreateBitmapFromHBITMAP(bitmap, nullptr, &picture);
    const CLSID png = {0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
    GdipSaveImageToFile(picture, path, &png, nullptr);
    GdipDisposeImage(picture);
    DeleteObject(bitmap);
    DeleteDC(dc);
    ReleaseDC(nullptr, screenDC);
}
