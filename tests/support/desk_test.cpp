// What all other tests lean on.
#include "support/desk.h"

#include <gtest/gtest.h>

#include "autodraw/pen_paths.h"
#include "marks/gdi_plus.h"
#include "shell/base/clock.h"

TEST(Desk, MovesEveryClockTogether)
{
    Desk desk(oneMonitor);
    const int64_t before = steadyNow();
    const auto wall = std::chrono::system_clock::now();
    desk.moveClocks(1299);
    EXPECT_EQ(steadyNow() - before, 1'299'000'000);
    EXPECT_EQ(steadyNow(), desk.steady);
    EXPECT_EQ(std::chrono::system_clock::now() - wall, std::chrono::milliseconds(1299));
    EXPECT_EQ(GetTickCount(), 1'001'299u);
}

TEST(Desk, PutsTheProgramsVariablesBack)
{
    for (int round = 0; round < 2; ++round) {
        Desk desk(twoMonitors);
        EXPECT_EQ(surfaces.size(), 2u);
        EXPECT_TRUE(penPath.empty() && autoMode == 0 && lastInputTick == 0);
        penPath.assign(1000, {1, 2});
        autoMode = 3;
        lastInputTick = 7;
    }
}

TEST(Desk, CountsWhatIsNotFreedAndWhatFails)
{
    Desk desk(oneMonitor);
    {
        const Failing brushes("GdipCreateSolidFill");
        EXPECT_EQ(solidBrush(0xFF000000u).get(), nullptr);
    }
    GpPen *pen = nullptr;
    GdipCreatePen1(0xFF000000, 2.0f, UnitWorld, &pen);
    EXPECT_EQ(leaks(), "1 GdipCreatePen1");
    GdipDeletePen(pen);
    EXPECT_EQ(leaks(), "");
    REPLACE(GetSystemMetrics, [](int index) { return 1000 + index; });
    EXPECT_EQ(virtualScreen().width, 1000 + SM_CXVIRTUALSCREEN);
}
