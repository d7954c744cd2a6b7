// Measures a tick of the fireworks and its paint with the most sparks there can be, on a monitor of 1920 by
// 1080 pixels, and the drawing beside bare AlphaBlend calls for the same sparks.
#include <cstdio>

#include "desk.h"
#include "figures.h"
#include "mascot/fireworks.h"
#include "mascot/sprites.h"
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

extern "C" int wmain(int, wchar_t **)
{
    openDesk(width, height);
    buildSprites();
    const MonitorSurface &surface = surfaces.front();
    // Every WM_PAINT covers the whole monitor, however small the display is; a bitmap stands for the window.
    static HDC windowDC = CreateCompatibleDC(nullptr);
    SelectObject(windowDC, CreateCompatibleBitmap(surface.canvasDC, width, height));
    REPLACE(BeginPaint, [](HWND, LPPAINTSTRUCT paint) {
        paint->rcPaint = {0, 0, width, height};
        return windowDC;
    });
    REPLACE(EndPaint, [] { return TRUE; });
    const auto repaint = [&] { paintSurface(surface.hwnd); };
    fillSky();
    const double bare = measure([&] { blendBare(surface.canvasDC); });
    const double drawn = measure([&] { drawShow(surface.canvasDC, 0, 0, width, height, 0, 0); });
    const double painted = measure(repaint);
    const double ticked = measure([] {
        showTick();
        showTicks = 0;
    });
    rockets.clear();
    sparks.clear();
    showActive = true;  // the same way to the window with nothing to blend
    const double copied = measure(repaint);
    std::printf("%zu sparks on %d by %d pixels\n", maxSparks, width, height);
    std::printf("AlphaBlend calls alone        %6.2f ms\n", bare);
    std::printf("drawShow                     %6.2f ms, ratio %.3f\n", drawn, drawn / bare);
    std::printf("WM_PAINT without any spark    %6.2f ms\n", copied);
    std::printf("WM_PAINT with them            %6.2f ms\n", painted);
    std::printf("showTick                     %6.2f ms\n", ticked);
    std::printf("tick and paint                %6.2f ms of 16\n", ticked + painted);
    printCost("A fireworks tick and its paint, 520 sparks at 1920x1080; floor: their AlphaBlend calls",
              ticked + painted, bare, "16 ms");
    printCost("Drawing those sparks over their AlphaBlend calls", drawn, bare, "1.2 times the floor");
    return 0;
}
