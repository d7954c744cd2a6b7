#include <cmath>
#include <cstdio>

#include "marks/cursor_pen.h"
#include "menu/menu.h"
#include "support/fakes.h"

void seedAll(uint32_t seed)
{
    markRng.seed(seed);
    soundRng.seed(seed + 1);
    clipRng.seed(seed + 2);
}

TestFolder::TestFolder()
    : path(std::filesystem::temp_directory_path() / ("zubbly" + std::to_string(GetCurrentProcessId())))
{
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);  // of a process that was ended and had the same number
    std::filesystem::create_directories(path);
    fakes.folder = path;
}

TestFolder::~TestFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
    fakes.folder.clear();
}

static std::string formatted(const char *format, auto... values)
{
    char text[64];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

std::string textOf(const DrawCall &call)
{
    std::string text = call.what + formatted(" %08X", call.argb);
    if (call.penWidth != 0.0f) text += formatted(" wide %.2f", double(call.penWidth));
    if (call.startCap == 2 && call.endCap == 2) text += call.dashCap == 2 ? " all caps" : " caps";
    if (call.join == 2) text += " join";
    text += " at";
    for (const float number : call.numbers)
        text += formatted(std::floor(number) == number ? " %.0f" : " %.2f", double(number));
    for (size_t i = 1; i < surfaces.size(); ++i)
        if (surfaces[i].canvasDC == call.dc) text += formatted(" on %d", int(i));
    return text;
}

std::string textOf(const Invalidation &each)
{
    const RECT &rect = each.rect;
    return formatted("repaint %d", int(intptr_t(each.window) - firstFakeWindow) / 2) +
           (each.whole ? " whole"
                       : formatted(" %ld %ld %ld %ld", rect.left, rect.top, rect.right, rect.bottom));
}

std::string textOfRecord()
{
    std::string text;
    for (const DrawCall &call : recorded.draws)
        text += textOf(call) + "\n";
    for (const Invalidation &each : recorded.invalidations)
        text += textOf(each) + "\n";
    Rng next = markRng;
    return text + formatted("next %u\n", unsigned(next()));
}

Desk::Desk(const std::vector<RECT> &monitors, MarkColor background)
{
    fakes = {};
    fakes.monitors = monitors;
    RECT all = {};
    HDC screenDC = GetDC(nullptr);
    HBRUSH brush = CreateSolidBrush(background);
    for (const RECT &monitor : monitors) {
        UnionRect(&all, &all, &monitor);
        MonitorSurface &surface = surfaces.emplace_back();
        surface.hwnd = fakeWindow(int(surfaces.size()) - 1);
        surface.rect = monitor;
        surface.width = monitor.right - monitor.left;
        surface.height = monitor.bottom - monitor.top;
        surface.canvasDC = CreateCompatibleDC(screenDC);
        surface.canvasBitmap = CreateCompatibleBitmap(screenDC, surface.width, surface.height);
        SelectObject(surface.canvasDC, surface.canvasBitmap);
        const RECT canvas = {0, 0, surface.width, surface.height};
        FillRect(surface.canvasDC, &canvas, brush);
    }
    DeleteObject(brush);
    ReleaseDC(nullptr, screenDC);
    fakes.screen = {all.left, all.top, all.right - all.left, all.bottom - all.top};
    recorded = {};
    canvasDirty = penDotVisible = menuOpen = false;
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
