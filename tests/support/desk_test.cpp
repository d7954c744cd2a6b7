// What all other tests lean on.
#include "support/desk.h"

#include <gtest/gtest.h>

#include "autodraw/pen_paths.h"
#include "marks/gdi_plus.h"
#include "shell/base/clock.h"

TEST(Desk, StartsAnewAndMovesEveryClockTogether)
{
    for (int round = 0; round < 2; ++round) {
        Desk desk(twoMonitors);
        EXPECT_TRUE(surfaces.size() == 2 && penPath.empty() && autoMode == 0);
        penPath.assign(1000, {1, 2});
        autoMode = 3;
        const auto wall = std::chrono::system_clock::now();
        desk.moveClocks(1299);
        EXPECT_EQ(steadyNow(), Desk::firstSteady + 1'299'000'000);
        EXPECT_EQ(std::chrono::system_clock::now() - wall, std::chrono::milliseconds(1299));
        EXPECT_EQ(GetTickCount(), 1'001'299u);
    }
}

TEST(Desk, CountsWhatIsNotFreedAndWhatFails)
{
    Desk desk(oneMonitor);
    const OwnedPen pen = plainPen(0xFF000000u, 2.0f);
    const Failing brushes("GdipCreateSolidFill");
    EXPECT_EQ(solidBrush(0xFF000000u).get(), nullptr);
    EXPECT_EQ(leaks(), "1 GdipCreatePen1");
}
