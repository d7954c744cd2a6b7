// Measures a tick of the fireworks and its paint with the most sparks there can be, and a tick of the
// penguin's walk and its paint, on a monitor of 1920 by 1080 pixels, beside the bare calls that draw the
// same.
#include <cstdio>

#include "desk.h"
#include "figures.h"
#include "mascot/fireworks.h"
#include "mascot/frames.h"
#include "mascot/sprites.h"
#include "mascot/walker.h"
#include "shell/base/files.h"
#include "shell/painting.h"

static const int width = 1920;
static const int height = 1080;

// The mixture that bursts make, three stars and a heart among ten, but spread over the whole monitor.
static void fillSky()
{
    rockets.clear();
    sparks.clear();
    showActive = true;
    showTicks = 0;
    while (sparks.size() < maxSparks) {
        Spark spark = {};
        spark.x = float(randInt(0, width));
        spark.y = float(randInt(0, height));
        spark.life = spark.maxLife = 1000.0f;
        spark.color = randInt(0, 7);
        const int form = randInt(0, 9);
        spark.shape = form < 3 ? 1 : form == 3 ? 2 : 0;
        spark.size = float(spark.shape == 0 ? randInt(7, 15) : randInt(18, 34));
        sparks.push_back(spark);
    }
}

// The least that painting these sparks takes.
static void blendBare(HDC dc)
{
    HGDIOBJ before = GetCurrentObject(spriteDC, OBJ_BITMAP);
    for (const Spark &spark : sparks) {
        const auto &sprites = spark.shape == 0 ? glowSprites : spark.shape == 1 ? starSprites : heartSprites;
        const Sprite &sprite = sprites[size_t(spark.color)];
        const int side = int(spark.size * (spark.shape == 0 ? 3.4f : 2.5f));
        SelectObject(spriteDC, sprite.bitmap);
        AlphaBlend(dc, int(spark.x) - side / 2, int(spark.y) - side / 2, side, side, spriteDC, 0, 0,
                   sprite.size, sprite.size, {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA});
    }
    SelectObject(spriteDC, before);
}

// Mean processor time of a hundred runs in milliseconds, kernel included. Other processes do not count.
static double measure(auto work)
{
    const auto spent = [] {
        FILETIME begin, end, kernel, user;
        GetThreadTimes(GetCurrentThread(), &begin, &end, &kernel, &user);
        return double(kernel.dwLowDateTime) + double(user.dwLowDateTime);  // units of 100 ns
    };
    const double before = spent();
    for (int i = 0; i < 100; ++i)
        work();
    return (spent() - before) / 1e4 / 100;
}

static HDC windowDC = nullptr;  // a bitmap stands for the window
static RECT painted = {};       // what WM_PAINT has to paint

static void repaint()
{
    paintSurface(surfaces.front().hwnd);
}

static void measureFireworks()
{
    painted = {0, 0, width, height};  // however small the display is
    fillSky();
    const HDC canvas = surfaces.front().canvasDC;
    const double bare = measure([=] { blendBare(canvas); });
    const double drawn = measure([=] { drawShow(canvas, 0, 0, width, height, 0, 0); });
    const double whole = measure(repaint);
    const double ticked = measure([] {
        showTick();
        showTicks = 0;
    });
    rockets.clear();
    sparks.clear();
    const double copied = measure(repaint);  // composed in the same way, with nothing to blend
    showActive = false;
    std::printf("%zu sparks on %d by %d pixels\n", maxSparks, width, height);
    std::printf("AlphaBlend calls alone        %6.2f ms\n", bare);
    std::printf("drawShow                     %6.2f ms, ratio %.3f\n", drawn, drawn / bare);
    std::printf("WM_PAINT without any spark    %6.2f ms\n", copied);
    std::printf("WM_PAINT with them            %6.2f ms\n", whole);
    std::printf("showTick                     %6.2f ms\n", ticked);
    std::printf("tick and paint                %6.2f ms of 16\n", ticked + whole);
    printCost("A fireworks tick and its paint, 520 sparks at 1920x1080; floor: their AlphaBlend calls",
              ticked + whole, bare, "16 ms");
    printCost("Drawing those sparks over their AlphaBlend calls", drawn, bare, "1.2 times the floor");
}

// Copies the part, draws the penguin once and copies the part to the window.
static void walkBare(HDC composite)
{
    const int partWidth = painted.right - painted.left;
    const int partHeight = painted.bottom - painted.top;
    BitBlt(composite, 0, 0, partWidth, partHeight, surfaces.front().canvasDC, painted.left, painted.top,
           SRCCOPY);
    GpGraphics *graphics = nullptr;
    GdipCreateFromHDC(composite, &graphics);
    GdipSetInterpolationMode(graphics, InterpolationModeHighQualityBilinear);
    GdipSetPixelOffsetMode(graphics, PixelOffsetModeHalf);
    GdipSetCompositingQuality(graphics, CompositingQualityHighQuality);
    GdipSetSmoothingMode(graphics, SmoothingModeHighQuality);
    const struct FrameRect rect =
        frameRect(mainFrame, walkerX - float(painted.left), walkerY - float(painted.top), walkerSize, 0.0f);
    GdipDrawImageRect(graphics, mainFrame->image, rect.x, rect.y, rect.width, rect.height);
    GdipDeleteGraphics(graphics);
    BitBlt(windowDC, painted.left, painted.top, partWidth, partHeight, composite, 0, 0, SRCCOPY);
}

static void measureWalk()
{
    loadMascotFrames(inFolder(programFolder(), L"..\\assets\\penguin"));
    mascotEnabled = walkerActive = true;
    walkerSize = 237.6f;
    walkerY = float(height - 8);
    walkerX = 300.0f;
    const double walked = measure([] {
        const RECT before = walkerRect;
        mascotWalkTick();
        UnionRect(&painted, &walkerRect, &before);
        painted.bottom = std::min<LONG>(painted.bottom, height);
        repaint();
    });
    HDC composite = CreateCompatibleDC(nullptr);
    SelectObject(composite, CreateCompatibleBitmap(windowDC, width, height));
    const double bare = measure([=] { walkBare(composite); });  // where it stands now
    printCost("A tick of the penguin's walk and its paint at 1920x1080; floor: its bare calls", walked, bare,
              "1.15 times the floor");
}

extern "C" int wmain(int, wchar_t **)
{
    openDesk(width, height);
    buildSprites();
    windowDC = CreateCompatibleDC(nullptr);
    SelectObject(windowDC, CreateCompatibleBitmap(surfaces.front().canvasDC, width, height));
    REPLACE(BeginPaint, [](HWND, LPPAINTSTRUCT paint) {
        paint->rcPaint = painted;
        return windowDC;
    });
    REPLACE(EndPaint, [] { return TRUE; });
    measureFireworks();
    measureWalk();
    return 0;
}
