#include "marks/strokes.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "support/fakes.h"

static void expectRect(const Invalidation &invalidation, int window, RECT rect)
{
    EXPECT_EQ(invalidation.window, fakeWindow(window));
    EXPECT_FALSE(invalidation.whole);
    EXPECT_TRUE(EqualRect(&invalidation.rect, &rect))
        << invalidation.rect.left << "," << invalidation.rect.top << "," << invalidation.rect.right << ","
        << invalidation.rect.bottom;
}

TEST(TapMark, HasAColourAndSizeOfItsOwnOnEachMonitorInReach)
{
    const Desk desk(twoMonitors);
    tapMark({2, 300});
    markRng.seed(7);  // the same draws once more, by hand
    ASSERT_EQ(recorded.draws.size(), 2u);
    for (size_t i = 0; i < 2; ++i) {
        const MarkColor color = randColor(50, 255);
        const int size = randInt(18, 92);
        const int x = i == 0 ? 2 : 642;
        const int y = i == 0 ? 300 : 200;
        const DrawCall &dot = recorded.draws[i];
        EXPECT_EQ(dot.argb, toArgb(color, 0xE6));
        EXPECT_EQ(dot.dc, surfaces[i].canvasDC);
        EXPECT_EQ(dot.numbers,
                  (std::vector<float>{float(x - size / 2), float(y - size / 2), float(size), float(size)}));
        const int reach = (size + 1) / 2 + 4;
        const RECT right = {0, y - reach, x + reach + 1, y + reach + 1};
        const RECT left = {x - reach, y - reach, 640, y + reach + 1};
        expectRect(recorded.invalidations[i], int(i), i == 0 ? right : left);
    }
    EXPECT_EQ(recorded.alive, 0);
    EXPECT_TRUE(canvasDirty);
    EXPECT_NE(desk.pixel(3, 300), 0u);
    EXPECT_NE(desk.pixel(-3, 300), 0u);
}

TEST(TapMark, DrawsNothingOutOfReachAndIsStillAChange)
{
    for (const POINT point : {POINT{1001, 300}, POINT{400, 801}, POINT{400, -201}}) {
        const Desk desk(oneMonitor);
        const Rng before = markRng;
        tapMark(point);
        EXPECT_TRUE(recorded.draws.empty());
        EXPECT_EQ(markRng, before);
        EXPECT_TRUE(canvasDirty);
    }
    const Desk desk({});
    tapMark({1, 1});
    EXPECT_TRUE(canvasDirty);
}

TEST(BrushStroke, IsOneRoundLineInTheColourOfThePress)
{
    const Desk desk(twoMonitors);
    Having plain(rainbowStroke, false);
    Having color(strokeColor, MarkColor(0x112233));
    brushStroke({200, 300}, {-100, 250}, 92, 14);  // bounds in either order
    brushStroke({-201, 300}, {400, 300}, 14, 92);  // only the from-point is tested
    markRng.seed(7);
    const int width = randInt(14, 92);
    const int farWidth = randInt(14, 92);
    ASSERT_EQ(recorded.draws.size(), 3u);
    const int leftWidth = randInt(14, 92);
    const DrawCall &line = recorded.draws[0];
    EXPECT_EQ(line.argb, 0xEB332211u);
    EXPECT_EQ(line.penWidth, float(width));
    EXPECT_EQ(line.startCap + line.endCap + line.join, 6);  // all round
    EXPECT_EQ(line.numbers, (std::vector<float>{200, 300, -100, 250}));
    EXPECT_EQ(recorded.draws[1].penWidth, float(farWidth));
    EXPECT_EQ(recorded.draws[1].numbers, (std::vector<float>{840, 200, 540, 150}));
    EXPECT_EQ(recorded.draws[2].dc, surfaces[1].canvasDC);
    EXPECT_EQ(recorded.draws[2].penWidth, float(leftWidth));
    const int reach = (width + 1) / 2 + 4;
    expectRect(recorded.invalidations[0], 0, {0, 250 - reach, 201 + reach, 301 + reach});
    EXPECT_EQ(recorded.alive, 0);
}

TEST(BrushStroke, OfARainbowHasAFreshColourOnEachMonitor)
{
    const Desk desk(twoMonitors);
    Having rainbow(rainbowStroke, true);
    brushStroke({0, 300}, {5, 300}, 20, 20);
    markRng.seed(7);
    for (const DrawCall &line : recorded.draws) {
        EXPECT_EQ(line.argb, toArgb(randColor(50, 255), 0xEB));
        EXPECT_EQ(line.penWidth, float(randInt(20, 20)));  // equal bounds still draw
    }
    EXPECT_EQ(recorded.draws.size(), 2u);
}

TEST(BrushStroke, SwellsWithItsLengthWhileTheProgramDrawsByItself)
{
    int extraWide = 0;
    for (uint32_t seed = 0; seed < 60; ++seed) {
        const Desk desk(oneMonitor);
        Having drawing(autoMode, 3);
        markRng.seed(seed);
        brushStroke({100, 300}, {700, 301}, 3, 24);
        const Rng after = markRng;
        markRng.seed(seed);
        const int high = 3 + randInt(8, 28) + 60;  // a tenth of the length
        const MarkColor color = randColor(50, 255);
        int width = randInt(3, high);
        if (randInt(0, 5) == 0) {
            const int extra = randInt(12, 36);
            width = randInt(3, extra + high);
            extraWide += width > high;
        }
        EXPECT_EQ(recorded.draws.at(0).argb, toArgb(color, 0xEB)) << seed;
        EXPECT_EQ(recorded.draws.at(0).penWidth, float(width)) << seed;
        EXPECT_EQ(markRng, after) << seed;
    }
    EXPECT_GT(extraWide, 0);
    const Desk desk(oneMonitor);  // and jumps inside at an edge, each end on its own
    Having drawing(autoMode, 3);
    brushStroke({2, 300}, {400, 598}, 12, 88);
    const std::vector<float> &ends = recorded.draws.at(0).numbers;
    EXPECT_GE(ends[0], 32.0f);
    EXPECT_LT(ends[3], 568.0f);
}

TEST(PaintSegments, DrawsEachSegmentOnOneSurfaceAndRepaintsOnce)
{
    const Desk desk(twoMonitors);
    EXPECT_FALSE(paintSegments({{5, 5}}, 0, 1, 2));
    EXPECT_FALSE(paintSegments({{5000, 5}, {5010, 5}}, 0, 1, 2));
    EXPECT_FALSE(canvasDirty);
    const std::vector<POINT> points = {{-300, 300}, {-200, 320}, {-100, 300}, {300, 310}, {350, 300}};
    EXPECT_TRUE(paintSegments(points, 0x0000FF, 30, 10));
    ASSERT_EQ(recorded.draws.size(), 4u);
    markRng.seed(7);
    RECT left = {};
    for (int i = 1; i <= 4; ++i) {
        int width = 10 + i * 5 % 21;
        if (randInt(0, 4) == 0) width = randInt(10, 30);
        const DrawCall &line = recorded.draws[size_t(i - 1)];
        EXPECT_EQ(line.penWidth, float(width)) << i;
        EXPECT_EQ(line.argb, 0xEEFF0000u);
        EXPECT_EQ(line.startCap + line.endCap + line.join, 6);
        EXPECT_EQ(line.dc, surfaces[i <= 2 ? 1 : 0].canvasDC) << i;
        const int reach = (width + 1) / 2 + 4;
        const RECT part = {340 + (i - 1) * 100 - reach, 200 - reach, 340 + i * 100 + 1 + reach, 221 + reach};
        if (i <= 2) UnionRect(&left, &left, &part);
    }
    ASSERT_EQ(recorded.invalidations.size(), 2u);
    expectRect(recorded.invalidations[1], 1, left);
    EXPECT_TRUE(canvasDirty);
    EXPECT_EQ(recorded.alive, 0);
}

TEST(PaintBlobAndArc, DrawWhatTheyTellAndInvalidateALittleMore)
{
    const Desk desk(oneMonitor);
    paintBlob({100, 200}, 30, 20, 0x0000FF);
    paintBlob({-61, 200}, 30, 20, 0x0000FF);  // out of reach
    ASSERT_EQ(recorded.draws.size(), 2u);
    EXPECT_EQ(recorded.draws[0].argb, 0xE4FF0000u);
    EXPECT_EQ(recorded.draws[0].numbers, (std::vector<float>{70, 180, 60, 40}));
    EXPECT_EQ(recorded.draws[1].argb, 0xC81E1E1Eu);
    EXPECT_EQ(recorded.draws[1].penWidth, 2.2f);
    expectRect(recorded.invalidations[0], 0, {64, 174, 137, 227});
    markRng.seed(9);
    paintArc({300, 200}, 40, 25, 0x00FF00);
    paintArc({-900, 200}, 40, 25, 0x00FF00);  // no rejection at all: it draws, and moves the stream
    const Rng after = markRng;
    markRng.seed(9);
    for (size_t i : {size_t(2), size_t(3)}) {
        const int width = randInt(8, 16);
        const int sweep = randInt(120, 200);
        const int start = randInt(0, 40);
        const DrawCall &arc = recorded.draws.at(i);
        EXPECT_EQ(arc.argb, 0xEB00FF00u);
        EXPECT_EQ(arc.penWidth, float(width));
        EXPECT_EQ(arc.startCap + arc.endCap + arc.dashCap, 6);
        EXPECT_EQ(arc.numbers[4], float(start));
        EXPECT_EQ(arc.numbers[5], float(sweep));
        if (i != 2) continue;
        const int reach = (width + 1) / 2 + 4;
        expectRect(recorded.invalidations[1], 0, {260 - reach, 175 - reach, 341 + reach, 226 + reach});
    }
    EXPECT_EQ(markRng, after);
}

TEST(StrokeStyle, LeavesAtLeastFourPlainPressesBetweenRainbows)
{
    Having cooldown(rainbowCooldown, 0);
    Having rainbow(rainbowStroke, true);
    Having color(strokeColor, MarkColor(0));
    int rainbows = 0;
    int sinceRainbow = 100;
    for (uint32_t press = 0; press < 3000; ++press) {
        markRng.seed(press);
        const int before = rainbowCooldown;
        chooseStrokeStyle();
        const Rng after = markRng;
        markRng.seed(press);
        bool expected = false;
        int expectedCooldown = before - 1;
        if (before == 0) {
            expected = randInt(0, 99) < 8;
            expectedCooldown = 0;
            if (expected) expectedCooldown = randInt(4, 8);
        }
        EXPECT_EQ(rainbowStroke, expected);
        EXPECT_EQ(rainbowCooldown, expectedCooldown);
        EXPECT_EQ(strokeColor, randColor(50, 255));
        randInt(24, 60);
        EXPECT_EQ(markRng, after);
        ++sinceRainbow;
        if (!rainbowStroke) continue;
        EXPECT_GT(sinceRainbow, 4);
        sinceRainbow = 0;
        ++rainbows;
    }
    EXPECT_NEAR(rainbows, 160, 40);
}
