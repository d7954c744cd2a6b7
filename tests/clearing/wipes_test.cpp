#include "clearing/wipes.h"

#include <cmath>
#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "sound/playback.h"
#include "support/fakes.h"

static const MarkColor wipeColor = 0x78C8E6;

static void begin(int style, int corner = 0)
{
    startWipe();
    wipeStyle = style;
    wipeCorner = corner;
    wipeScale = 2;
    revealWipe = style == 5 || style == 7;
    backgroundColor = wipeColor;
    revealColor = 0x112233;
    recorded = {};
}

TEST(StartWipe, DrawsItsTraitsInOrderAndStopsARun)
{
    for (uint32_t seed = 1; seed <= 150; ++seed) {
        const Desk desk(oneMonitor);
        seedAll(seed);
        autoMode = autoStepsLeft = 3;
        startWipe();
        EXPECT_EQ(autoMode + autoStepsLeft, 0);
        seedAll(seed);
        const bool reveal = randInt(0, 99) < 4;
        EXPECT_EQ(revealWipe, reveal);
        EXPECT_EQ(wipeStyle,
                  (std::array{0, 1, 2, 3, 4, 6, 5, 7}[size_t(randInt(0, reveal ? 1 : 5) + reveal * 6)]));
        const MarkColor second = reveal ? pickBackgroundColor() : revealColor;
        EXPECT_EQ(revealColor, second);
        EXPECT_EQ(wipeScale, randInt(0, 2));
        EXPECT_EQ(wipeCorner, randInt(0, 3));
        EXPECT_EQ(backgroundColor, pickBackgroundColor());
        stopWipe();
    }
}

// After every tick the canvases show the colour exactly where the strips repainted so far lie.
TEST(PlainWipe, CoversBothMonitorsStripByStrip)
{
    for (const auto &[style, corner, ticks] : {std::array{0, 0, 106},
                                               {1, 0, 106},
                                               {2, 0, 119},
                                               {3, 0, 119},
                                               {4, 0, 119},
                                               {4, 1, 119},
                                               {4, 2, 119},
                                               {4, 3, 119},
                                               {6, 0, 182}}) {
        SCOPED_TRACE(testing::Message() << "style " << style << " corner " << corner);
        const Desk desk(twoMonitors);
        begin(style, corner);
        HRGN shown = CreateRectRgn(0, 0, 0, 0);  // virtual-screen coordinates
        while (wipeRunning) {
            recorded.invalidations.clear();
            wipeTick();
            for (auto [window, whole, strip] : recorded.invalidations) {
                const RECT &monitor = twoMonitors[window != fakeWindow(0)];
                OffsetRect(&strip, monitor.left, monitor.top);
                EXPECT_TRUE(!whole && (style == 6 || !RectInRegion(shown, &strip)));  // nothing twice
                HRGN part = CreateRectRgnIndirect(&strip);
                CombineRgn(shown, shown, part, RGN_OR);
                DeleteObject(part);
            }
            for (int i = 0; i < 900; ++i) {
                const int x = -640 + i % 30 * 48 + wipeStep % 48, y = i / 30 * 20 + wipeStep % 20;
                ASSERT_EQ(desk.pixel(x, y) == wipeColor, PtInRegion(shown, x, y)) << x << "," << y;
            }
        }
        EXPECT_EQ(wipeStep, ticks);
        for (const POINT end : {POINT{0, 0}, {799, 599}, {-640, 100}, {-1, 579}})
            EXPECT_TRUE(PtInRegion(shown, end.x, end.y));
        EXPECT_FALSE(wipeLoopPlaying || recorded.calls != std::vector<std::string>{"KillTimer 5 w0"});
        DeleteObject(shown);
    }
}

TEST(PlainWipe, EndsWithTheLastMonitorOrAfter185Steps)
{
    const std::vector<RECT> narrowFirst = {{0, 0, 1280, 50}, {1280, 0, 3200, 50}};
    for (const auto &[monitors, ticks, reached] : {std::tuple{narrowFirst, 101, 1216},
                                                   {{{0, 0, 195, 50}}, 186, 190},
                                                   {{{0, 0, 1920, 50}}, 101, 1920}}) {
        const Desk desk(monitors);
        begin(0);
        while (wipeRunning)
            wipeTick();
        EXPECT_EQ(wipeStep, ticks);
        EXPECT_EQ(desk.pixel(reached - 1, 20), wipeColor);
        EXPECT_NE(desk.pixel(reached, 20), wipeColor);
    }
}

static void expectNear(const DrawCall &call, std::vector<double> numbers)
{
    ASSERT_EQ(call.numbers.size(), numbers.size());
    for (size_t i = 0; i < numbers.size(); ++i)
        EXPECT_NEAR(call.numbers[i], numbers[i], 0.05) << call.what << " " << i;
}

TEST(RevealWipe, PilesUpVeilsAndFloodsEveryCanvas)
{
    for (const auto &[style, ticks, before] :
         {std::array{5, 51, 18}, {7, 116, 6}}) {  // calls before the veil
        SCOPED_TRACE(style);
        const Desk desk(twoMonitors);
        begin(style);
        for (int tick = 0; wipeRunning; ++tick) {
            recorded.draws.clear();
            recorded.invalidations.clear();
            seedAll(9);
            wipeTick();
            ASSERT_EQ(recorded.draws.size(), size_t(2 * (before + 15)));
            EXPECT_EQ(recorded.invalidations.size(), wipeRunning ? 2u : 4u);
            const DrawCall &first = recorded.draws[0], &veil = recorded.draws[size_t(before)];
            const DrawCall &ray = recorded.draws[size_t(before) + 1];
            const double t = double(tick) / (ticks - 1), bend = t * 1.8;
            EXPECT_NEAR(veil.argb >> 24, std::clamp((t - 0.45) * 420.0, 0.0, 170.0), 1.0);
            expectNear(veil, {0, 0, 800, 600});
            const double start = 580.0 * (style == 5 ? 0.95 - t * 0.72 : t * 0.7 + 0.25);
            const double end = start * (style == 5 ? 0.34 : 0.88);
            expectNear(ray, {cos(bend) * start + 400, sin(bend) * start + 300, cos(bend + 0.35) * end + 400,
                             sin(bend + 0.35) * end + 300});
            EXPECT_NEAR(ray.penWidth * 100 + float(ray.startCap * 10 + ray.endCap), t * 500 + 322, 0.01);
            seedAll(9);
            if (style == 7) {
                const double x = sin(t * 35) * 280 + 400 + sin(22 * t) * 42.5;
                const double y = cos(t * 42) * 36 + (t * 0.65 + 0.2) * 600 + cos(25 * t) * 19.8;
                expectNear(first, {x - 59, y - 32, 118, 64});
                expectNear(recorded.draws[1], {x - 55, y - 28, 110, 56});
            } else {
                const double radius = randInt(-11, 11) + 600 * (0.58 * t + 0.035);
                const double width = randInt(-7, 9) + 102 * t + 22;
                const double height = randInt(-5, 7) + 72 * t + 14;
                expectNear(first, {cos(1.6 * t) * radius + 400 - width / 2,
                                   sin(1.8 * t) * radius + 300 - height / 2, width, height});
                markRng.discard(51);  // the other blobs
            }
            EXPECT_NEAR(ray.argb >> 24, std::clamp(randInt(-18, 16) + t * 150 + 40, 28.0, 205.0), 1.0);
        }
        EXPECT_EQ(wipeStep, ticks);
        EXPECT_EQ(backgroundColor, revealColor);
        EXPECT_EQ(desk.pixel(400, 300), revealColor);
        EXPECT_EQ(desk.pixel(-320, 340), revealColor);
        EXPECT_FALSE(revealWipe || wipeLoopPlaying || recorded.alive != 0);
    }
}

TEST(StopWipe, LeavesTheCanvasHalfWiped)
{
    const Desk desk(twoMonitors);
    begin(1);
    revealWipe = true;
    for (int i = 0; i < 50; ++i)
        wipeTick();
    recorded.invalidations.clear();
    stopWipe();
    stopWipe();  // nothing more happens
    EXPECT_EQ(recorded.calls, (std::vector<std::string>{"KillTimer 5 w0"}));
    EXPECT_TRUE(recorded.invalidations.size() == 2 && recorded.invalidations[1].whole);
    EXPECT_EQ(desk.pixel(396, 5), wipeColor);  // 50 steps of 8 and 4 more from the right
    EXPECT_EQ(desk.pixel(395, 5), 0u);
    EXPECT_EQ(backgroundColor, wipeColor);
    EXPECT_FALSE(!revealWipe || wipeRunning || wipeLoopPlaying);
}
