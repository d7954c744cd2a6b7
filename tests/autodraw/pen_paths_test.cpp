#include "autodraw/pen_paths.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "support/fakes.h"

TEST(PenStart, LooksForAPlaceAwayFromTheLastOneAndGivesUp)
{
    const Desk desk({{0, 0, 300, 300}});  // too small for 280 or 360 pixels from its middle
    // The last row ends with a jump and the way back inside.
    for (const auto &[valid, away, draws] :
         {std::tuple{false, false, 2}, {true, false, 22}, {true, true, 28}}) {
        seedAll(3);
        penLastPoint = {150, 150};
        penLastValid = valid;
        const POINT place = away ? farPointFrom({150, 150}) : freshPenStart();
        EXPECT_TRUE(place.x >= 72 && place.y >= 72 && place.x < 228 && place.y < 228);
        EXPECT_EQ(distanceBetween(penLastPoint, place) == 0.0, !away);
        Rng drawn(3);
        drawn.discard(size_t(draws));
        EXPECT_EQ(markRng, drawn);
    }
}

TEST(NewPenPath, IsDenseShortInsideAndOfItsForm)
{
    for (uint32_t seed = 1; seed <= 200; ++seed) {
        MonitorSurface large;  // room enough that no point jumps back inside
        large.rect = {-9000, -9000, 9000, 9000};
        large.width = large.height = 18000;
        SCOPED_TRACE(seed);
        const Desk desk({});
        Having room(surfaces, std::vector{large});
        fakes.monitors = {large.rect};
        fakes.screen = {-9000, -9000, 18000, 18000};
        seedAll(seed);
        penLastValid = false;
        newPenPath();
        const std::vector<POINT> path = penPath;
        ASSERT_TRUE(path.size() >= 2 && path.size() <= 48 && penPathIndex == 0);
        EXPECT_EQ(distanceBetween(penLastPoint, path.back()), 0.0);
        for (size_t i = 1; i < path.size() && path.size() < 48; ++i)
            EXPECT_LE(distanceBetween(path[i - 1], path[i]), 28.0 + 5.0);
        seedAll(seed);
        penLastValid = false;
        const int form = randInt(0, 5);
        const POINT start = freshPenStart();
        if (form == 0 || form == 2) {  // from the start to a far point, each a little off
            EXPECT_LE(distanceBetween(path.front(), start), form == 0 ? 8.0 : 29.0);
            EXPECT_LE(distanceBetween(path.back(), farPointFrom(start)), form == 0 ? 8.0 : 29.0);
        } else if (form == 3) {
            randInt(22, 34);
            const int right = start.x + randInt(200, 380);
            EXPECT_NEAR(path.front().x, right, 10.0);
            EXPECT_NEAR(path.back().x, right, 10.0);
        } else {
            EXPECT_EQ(distanceBetween(path.front(), start), 0.0);
        }
    }
    const Desk desk(twoMonitors);  // at least 52 pixels inside the launch monitor
    for (int i = 0; i < 100; ++i) {
        newPenPath();
        for (const POINT &point : penPath)
            EXPECT_TRUE(point.x >= 52 && point.y >= 52 && point.x < 748 && point.y < 548);
    }
}
