#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

#include "marks/bursts.h"
#include "marks/stamps.h"
#include "marks/strokes.h"
#include "sound/playback.h"
#include "support/fakes.h"

// What `draw` leaves on the record from the stream's state after the first draws of `seed`.
static std::string recordOf(uint32_t seed, const std::function<void()> &draw)
{
    const Desk desk(twoMonitors);
    const Having plain(rainbowStroke, false);
    markRng.seed(seed);
    draw();
    return textOfRecord();
}

// The first seed whose draws are the wanted ones.
static uint32_t seedWhere(const std::function<bool()> &wanted)
{
    for (uint32_t seed = 0;; ++seed) {
        markRng.seed(seed);
        if (wanted()) return seed;
    }
}

struct Row {
    int first, last;
    void (*draw)(POINT);
};

static void plainShape(POINT point)
{
    const int kind = randInt(0, 3);
    const int size = randInt(56, 110);
    const MarkColor color = randColor(50, 255);
    const Shape shapes[] = {Shape::star, Shape::heart, Shape::flower, Shape::cloud};
    for (const MonitorSurface &surface : surfaces)
        shapeOnSurface(surface, shapes[kind], point, size, color);
}
static void zigzag(POINT point)
{
    for (int left = randInt(4, 7); left > 0; --left) {
        POINT next = point;
        next.x += randInt(-130, 130);
        next.y += randInt(-110, 110);
        brushStroke(point, next, 14, 92);
        point = next;
    }
}

TEST(Burst, PicksItsMarkByTwoDrawsAtEveryBoundary)
{
    const POINT point = {200, 300};
    const Row rare[] = {{0, 17, stampBigFace}, {18, 34, catParade}};
    for (const Row &row : rare) {
        for (const int draw : {row.first, row.last}) {
            const uint32_t seed = seedWhere([&] { return randInt(0, 999) == draw; });
            EXPECT_EQ(recordOf(seed, [&] { burst(point); }), recordOf(seed,
                                                                      [&] {
                                                                          randInt(0, 999);
                                                                          row.draw(point);
                                                                      }))
                << draw;
        }
    }
    const Row rows[] = {{0, 6, popShape},       {7, 16, stampFace},       {17, 24, stampSun},
                        {25, 32, stampRainbow}, {33, 39, stampHouse},     {40, 46, stampBalloon},
                        {47, 53, stampTree},    {54, 60, plainShape},     {61, 67, stampStickFigure},
                        {68, 73, stampCat},     {74, 82, stampBlushFace}, {83, 86, stampRocket},
                        {87, 90, stampCar},     {91, 93, stampTrain},     {94, 96, stampFish},
                        {97, 97, spiralStroke}, {98, 98, zigzag},         {99, 99, stampRayBurst}};
    for (const Row &row : rows) {
        for (const int draw : {row.first, row.last}) {
            const uint32_t seed = seedWhere([&] { return randInt(0, 999) >= 35 && randInt(0, 99) == draw; });
            EXPECT_EQ(recordOf(seed, [&] { burst(point); }), recordOf(seed,
                                                                      [&] {
                                                                          randInt(0, 999);
                                                                          randInt(0, 99);
                                                                          row.draw(point);
                                                                      }))
                << draw;
        }
    }
}

TEST(Burst, SoundsItsRareMarksBehindTheirGates)
{
    const std::pair<int, DWORD> gates[] = {{17, 200}, {18, 180}};
    for (const auto &[draw, gate] : gates) {
        for (const DWORD since : {gate - 1, gate}) {
            const Desk desk(oneMonitor);
            markRng.seed(seedWhere([draw = draw] { return randInt(0, 999) == draw; }));
            const Having last(lastSoundTick, fakes.tick - since);
            burst({200, 300});
            EXPECT_EQ(lastSoundTick == fakes.tick, since == gate) << draw;
        }
    }
}

TEST(SpaceBurst, PicksItsEventByOneDrawInTheMiddleOfTheLaunchMonitor)
{
    const auto big = [](Shape shape) {
        const int size = randInt(150, 220);
        const MarkColor color = randColor(120, 245);
        for (const MonitorSurface &surface : surfaces) {
            shapeOnSurface(surface, shape, {400, 300}, size, color);
            invalidateWhole(surface);
        }
    };
    for (const int draw : {0, 33, 34, 51, 52, 69, 70, 84, 85, 99}) {
        const uint32_t seed = seedWhere([&] { return randInt(0, 99) == draw; });
        const std::string expected = recordOf(seed, [&] {
            randInt(0, 99);
            if (draw < 34) return stampBigFace({400, 300});
            if (draw < 52) return catParade({400, 300});
            if (draw < 70) return stampRocket({400, 300});
            big(draw < 85 ? Shape::star : Shape::heart);
        });
        EXPECT_EQ(recordOf(seed, spaceBurst), expected) << draw;
    }
}

TEST(Stamps, ReachTheMonitorsThatTheirMarginsTell)
{
    struct Reach {
        void (*stamp)(POINT);
        int low, high;                  // of its first size
        int perSize, marginX, marginY;  // margins are perSize times that size, plus these; -1: not tested
    };
    const Reach rows[] = {{stampFace, 48, 92, 2, 0, 0},          {stampSun, 36, 72, 0, 200, 200},
                          {stampHouse, 100, 200, 0, 250, -1},    {stampBalloon, 35, 70, 0, 160, -1},
                          {stampTree, 14, 28, 0, 200, -1},       {stampCat, 38, 72, 0, 150, -1},
                          {stampBlushFace, 44, 80, 0, 170, 170}, {stampRocket, 36, 58, 0, 220, 220},
                          {stampFish, 120, 210, 0, 250, 180},    {stampBigFace, 130, 210, 3, 0, 0}};
    for (const Reach &row : rows) {
        markRng.seed(7);
        const int size = randInt(row.low, row.high);
        const int x = row.perSize * size + row.marginX;
        const int y = row.marginY < 0 ? 9000 : row.perSize * size + row.marginY;
        const bool yCounts = row.marginY >= 0;
        const std::pair<POINT, bool> points[] = {{{-x, -y}, true},          {{800 + x, 600 + y}, true},
                                                 {{-x - 1, 300}, false},    {{801 + x, 300}, false},
                                                 {{400, -y - 1}, !yCounts}, {{400, 601 + y}, !yCounts}};
        for (const auto &[point, drawn] : points) {
            const Desk desk(oneMonitor);
            row.stamp(point);
            EXPECT_EQ(!recorded.draws.empty(), drawn) << &row - rows << " at " << point.x << "," << point.y;
        }
    }
}
