#include "marks/primitives.h"

#include <gtest/gtest.h>

#include "support/fakes.h"

static bool operator==(POINT a, POINT b)
{
    return a.x == b.x && a.y == b.y;
}

TEST(RandomPoints, KeepTheirMarginOrTakeTheMiddleWithoutADraw)
{
    const Desk desk({{-640, 100, 0, 580}});
    const MonitorSurface &surface = surfaces[0];
    for (const int margin : {0, 24, 100}) {
        const int kept = std::max(margin, 24);
        for (int i = 0; i < 200; ++i) {
            const Rng before = markRng;
            const POINT point = randomPointOn(surface, margin);
            markRng = before;
            const int x = randInt(-640 + kept, 0 - kept - 1);
            const int y = randInt(100 + kept, 580 - kept - 1);
            EXPECT_TRUE(point == (POINT{x, y})) << margin;
        }
    }
    const Rng before = markRng;
    EXPECT_TRUE(randomPointOn(surface, 236) == (POINT{-320, 340}));  // exactly 8 pixels of height left
    EXPECT_EQ(markRng, before);
    EXPECT_FALSE(randomPointOn(surface, 235) == (POINT{-320, 340}));  // 10 are enough
}

TEST(RandomPoints, ComeFromTheWholeDesktopWithoutSurfaces)
{
    const Desk desk({});
    fakes.screen = {-100, -50, 300, 200};
    const POINT point = randomPointOnLaunch(90);
    markRng.seed(7);
    const int x = randInt(-100, 199);
    const int y = randInt(-50, 149);
    EXPECT_TRUE(point == (POINT{x, y}));
    EXPECT_TRUE(launchMiddle() == (POINT{50, 50}));
    POINT away = {5000, -5000};
    keepInside(away, 40);  // no launch surface: left alone
    EXPECT_EQ(away.x, 5000);
    clampToVirtualScreen(away);
    EXPECT_TRUE(away == (POINT{199, -50}));
}

TEST(KeepInside, LeavesWhatIsInsideTheLaunchSurfaceAndLetsTheRestJump)
{
    const Desk desk(twoMonitors);
    struct Row {
        POINT point;
        int margin;
        bool stays;
    };
    for (const Row &row : {Row{{40, 40}, 40, true}, Row{{39, 40}, 40, false}, Row{{759, 559}, 40, true},
                           Row{{760, 559}, 40, false}, Row{{759, 560}, 40, false}, Row{{24, 24}, 5, true},
                           Row{{23, 24}, 5, false}, Row{{-100, 300}, 40, false}}) {
        POINT point = row.point;
        const Rng before = markRng;
        keepInside(point, row.margin);
        EXPECT_EQ(point == row.point, row.stays) << row.point.x << "," << row.point.y;
        EXPECT_EQ(markRng == before, row.stays);
        EXPECT_GE(point.x, 24);
        EXPECT_LT(point.y, 576);
    }
}

TEST(SurfaceHolding, SparesEightPixels)
{
    const Desk desk(oneMonitor);
    EXPECT_TRUE(surfaceHolding({-8, 607}));
    EXPECT_FALSE(surfaceHolding({-9, 300}));
    EXPECT_FALSE(surfaceHolding({808, 300}));
    EXPECT_FALSE(surfaceHolding({300, 608}));
}

TEST(Star, PointsUpwardsAndHasOneOfThreeFormsEachAThirdOfTheTime)
{
    std::map<size_t, int> forms;
    for (uint32_t seed = 0; seed < 90; ++seed) {
        const Desk desk(oneMonitor);
        markRng.seed(seed);
        starOnSurface(surfaces[0], {400, 300}, seed == 0 ? 11 : 80, 0x0000FF);
        const Rng after = markRng;
        markRng.seed(seed);
        const int kind = randInt(0, 2);
        size_t vertices = 10;
        if (kind != 0) vertices = randInt(0, 1) == 1 ? 8 : 12;
        const int share = randInt(38, 62);
        EXPECT_EQ(markRng, after);
        const DrawCall &fill = recorded.draws.at(0);
        const DrawCall &outline = recorded.draws.at(1);
        ASSERT_EQ(fill.numbers.size(), 2 * vertices);
        EXPECT_EQ(fill.what, "FillPolygonI");
        EXPECT_EQ(fill.argb, 0xE6FF0000u);
        EXPECT_EQ(outline.what, "DrawPolygonI");
        EXPECT_EQ(outline.argb, 0xDCFFFFFFu);
        EXPECT_EQ(outline.penWidth, 3.0f);
        EXPECT_EQ(fill.numbers[1], seed == 0 ? 289.0f : 220.0f);  // the first vertex
        const double inner = seed == 0 ? 6 : int(share / 100.0 * 80);
        EXPECT_NEAR(std::hypot(fill.numbers[2] - 400, fill.numbers[3] - 300), inner, 1.5) << seed;
        EXPECT_NEAR(std::hypot(fill.numbers[4] - 400, fill.numbers[5] - 300), seed == 0 ? 11 : 80, 1.5);
        ++forms[vertices];
    }
    for (const auto &[vertices, count] : forms)
        EXPECT_NEAR(count, 30, 15) << vertices;
}

TEST(Shapes, AreMadeOfTheirPartsInOrder)
{
    const Desk desk(oneMonitor);
    heartOnSurface(surfaces[0], {400, 300}, 100, 0x00FF00);
    markRng.seed(7);
    const float wide = float(randInt(90, 125)) / 100;
    const float tall = float(randInt(85, 120)) / 100;
    const float notch = float(randInt(-26, -10)) / 100;
    const std::vector<float> &heart = recorded.draws.at(0).numbers;
    const float expected[] = {400,
                              300 + 95 * tall,
                              400 - 145 * wide,
                              300 + 25 * tall,
                              400 - 110 * wide,
                              300 - 85 * tall,
                              400,
                              300 + 100 * notch,
                              400,
                              300 + 100 * notch,
                              400 + 110 * wide,
                              300 - 85 * tall,
                              400 + 145 * wide,
                              300 + 25 * tall,
                              400,
                              300 + 95 * tall};
    ASSERT_EQ(heart.size(), 16u);
    for (size_t i = 0; i < 16; ++i)
        EXPECT_NEAR(heart[i], expected[i], 0.01f) << i;
    EXPECT_EQ(recorded.draws[0].argb, 0xE600FF00u);
    EXPECT_EQ(recorded.draws[1].what, "DrawPath");

    recorded.draws.clear();
    diamondOnSurface(surfaces[0], {400, 300}, 50, 0xFF0000);
    EXPECT_EQ(recorded.draws.at(0).numbers, (std::vector<float>{400, 250, 450, 300, 400, 350, 350, 300}));
    EXPECT_EQ(recorded.draws.at(1).penWidth, 3.0f);

    recorded.draws.clear();
    GraphicsScope scope(surfaces[0]);
    drawCloudShape(scope, {400, 300}, 50, 0xFF0000);
    const std::vector<std::vector<float>> lobes = {
        {350, 284, 50, 33}, {375, 275, 50, 37}, {400, 284, 50, 33}, {350, 284, 50, 33}};
    ASSERT_EQ(recorded.draws.size(), 4u);  // only the left lobe has an outline
    for (size_t i = 0; i < 4; ++i)
        EXPECT_EQ(recorded.draws[i].numbers, lobes[i]) << i;
    EXPECT_EQ(recorded.draws[3].what, "DrawEllipseI");
    EXPECT_EQ(recorded.draws[0].argb, 0xDC0000FFu);

    recorded.draws.clear();
    drawFlowerShape(scope, {400, 300}, 100, 0xFF0000);
    ASSERT_EQ(recorded.draws.size(), 8u);
    EXPECT_NEAR(recorded.draws[1].numbers[0], 400 + 22.5f - 28, 0.01f);
    EXPECT_NEAR(recorded.draws[1].numbers[1], 300 + 38.971f - 22, 0.01f);
    EXPECT_NEAR(recorded.draws[5].numbers[2], 56, 0.01f);
    EXPECT_EQ(recorded.draws[6].argb, 0xE6FFE15Au);
    EXPECT_NEAR(recorded.draws[7].numbers[3], 48, 0.01f);
}
