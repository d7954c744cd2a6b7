#include "marks/primitives.h"

#include <gtest/gtest.h>

#include "support/fakes.h"

static bool operator==(POINT a, POINT b)
{
    return a.x == b.x && a.y == b.y;
}

TEST(RandomPoints, TakeTheMiddleWithoutADrawWhereThereIsNoRoom)
{
    const Desk desk({{-640, 100, 0, 580}});
    EXPECT_TRUE(randomPointOn(surfaces[0], 236) == (POINT{-320, 340}));  // 8 pixels of height
    EXPECT_TRUE(sameStream(markRng, Rng(7)));
    const POINT point = randomPointOn(surfaces[0], 235);
    markRng.seed(7);
    const int x = randInt(-640 + 235, 0 - 235 - 1);
    const int y = randInt(100 + 235, 580 - 235 - 1);
    EXPECT_TRUE(point == (POINT{x, y}));
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
    EXPECT_TRUE(away == (POINT{5000, -5000}));
    clampToVirtualScreen(away);
    EXPECT_TRUE(away == (POINT{199, -50}));
}

TEST(KeepInside, LeavesWhatIsInsideTheLaunchSurfaceAndLetsTheRestJump)
{
    const Desk desk(twoMonitors);
    const std::tuple<POINT, int, bool> rows[] = {
        {{40, 40}, 40, true},    {{39, 40}, 40, false},   {{40, 39}, 40, false}, {{759, 559}, 40, true},
        {{760, 559}, 40, false}, {{759, 560}, 40, false}, {{24, 24}, 5, true},   {{23, 24}, 5, false}};
    for (const auto &[from, margin, stays] : rows) {
        POINT point = from;
        keepInside(point, margin);
        EXPECT_EQ(point == from, stays) << from.x << "," << from.y;
        EXPECT_TRUE(point.x >= 24 && point.y < 576);
    }
}

TEST(SurfaceHolding, SparesEightPixels)
{
    const Desk desk(oneMonitor);
    for (const int past : {0, 1}) {
        for (const POINT at :
             {POINT{-8 - past, 9}, POINT{807 + past, 9}, POINT{9, -8 - past}, POINT{9, 607 + past}})
            EXPECT_EQ(surfaceHolding(at) != nullptr, past == 0) << at.x << "," << at.y;
    }
}
