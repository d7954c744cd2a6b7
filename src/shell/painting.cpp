#include "shell/painting.h"

#include <algorithm>

#include "marks/cursor_pen.h"
#include "mascot/fireworks.h"
#include "mascot/walker.h"
#include "menu/menu.h"

// Moving sprites are composed off screen to avoid flicker. One bitmap serves all windows, because each
// WM_PAINT ends before the next starts. It only grows and is never freed.
static HDC compositeDC = nullptr;
static HBITMAP compositeBitmap = nullptr;
static HGDIOBJ initialBitmap = nullptr;  // the one that compositeDC was created with
static int compositeWidth = 0;
static int compositeHeight = 0;

static const MonitorSurface *surfaceOf(HWND window)
{
    for (const MonitorSurface &surface : surfaces) {
        if (surface.hwnd == window) return &surface;
    }
    return nullptr;
}

static bool mascotShows()
{
    return walkerActive || showActive || !rockets.empty() || !sparks.empty();
}

static void drawPenDot(HDC dc, const MonitorSurface &surface)
{
    if (!penDotVisible || !PtInRect(&surface.rect, penDotPoint)) return;
    const POINT local = toLocal(surface, penDotPoint);
    GraphicsScope scope(dc);
    const OwnedBrush fill = solidBrush(0xD2FFEB5A);
    const OwnedPen outline = plainPen(0xFF463741, 4.0f);
    paintEllipse(scope, fill, outline, float(local.x - 18), float(local.y - 18), 36.0f, 36.0f);
}

// Makes the composite at least this large; false on failure.
static bool growComposite(HDC windowDC, int width, int height)
{
    if (compositeDC && width <= compositeWidth && height <= compositeHeight) return true;
    if (!compositeDC) {
        compositeDC = CreateCompatibleDC(windowDC);
        if (!compositeDC) return false;
    } else if (compositeBitmap) {
        SelectObject(compositeDC, initialBitmap);
        DeleteObject(compositeBitmap);
    }
    const int newWidth = std::max(width, compositeWidth);
    const int newHeight = std::max(height, compositeHeight);
    compositeBitmap = CreateCompatibleBitmap(windowDC, newWidth, newHeight);
    // Without a bitmap the size is 0, so that the next paint tries again.
    compositeWidth = compositeBitmap ? newWidth : 0;
    compositeHeight = compositeBitmap ? newHeight : 0;
    if (compositeBitmap) initialBitmap = SelectObject(compositeDC, compositeBitmap);
    return compositeBitmap != nullptr;
}

static void paintDirect(HDC dc, const MonitorSurface &surface, const RECT &part)
{
    BitBlt(dc, part.left, part.top, part.right - part.left, part.bottom - part.top, surface.canvasDC,
           part.left, part.top, SRCCOPY);
    drawPenDot(dc, surface);
    drawWalker(dc, surface, 0, 0);
}

static void paintComposite(HDC dc, const MonitorSurface &surface, const RECT &part)
{
    const int width = part.right - part.left;
    const int height = part.bottom - part.top;
    if (!growComposite(dc, width, height)) return paintDirect(dc, surface, part);  // without the fireworks
    BitBlt(compositeDC, 0, 0, width, height, surface.canvasDC, part.left, part.top, SRCCOPY);
    drawWalker(compositeDC, surface, part.left, part.top);
    drawShow(compositeDC, surface.rect.left, surface.rect.top, surface.width, surface.height, part.left,
             part.top);
    BitBlt(dc, part.left, part.top, width, height, compositeDC, 0, 0, SRCCOPY);
    drawPenDot(dc, surface);
}

void paintSurface(HWND window)
{
    PAINTSTRUCT paint = {};
    HDC dc = BeginPaint(window, &paint);
    const MonitorSurface *surface = surfaceOf(window);
    const RECT &part = paint.rcPaint;
    if (surface && surface->canvasDC && part.right > part.left && part.bottom > part.top) {
        if (mascotShows()) {
            paintComposite(dc, *surface, part);
        } else {
            paintDirect(dc, *surface, part);
        }
        drawMenu(dc, surface->rect);
    }
    EndPaint(window, &paint);
}
