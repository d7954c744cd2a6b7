#include "clearing/wipes.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "clearing/actions.h"
#include "sound/playback.h"
#include "support/desk.h"
#include "support/draws.h"
#include "support/recorded.h"

static constexpr MarkColor fresh = 0x78C8E6, revealed = 0x112233;

static void begin(int style, int corner = 0)
{
    startWipe();
    wipeStyle = style;
    wipeCorner = corner;
    revealWipe = style == 5 || style == 7;
    backgroundColor = fresh;
    revealColor = revealed;
    Desk::current->calls.clear();
}

TEST(StartWipe, ChoosesByItsDrawsAndStopsARun)
{
    const auto start = [] {
        autoStepsLeft = autoMode = 3;
        canvasDirty = false;
        startWipe();
        return ", style " + std::to_string(wipeStyle) + (revealWipe ? ", reveals" : "") +
               (canvasDirty ? joined({"SetTimer", "KillTimer"}) : "") + "; " + std::to_string(autoStepsLeft);
    };
    expectRecorded("clearing/chosen", chosen(99, {}, start) + chosen(5, {4}, start) + chosen(1, {3}, start));
}

// The canvases and the repaints of some ticks of each wipe, with its length.
TEST(Wipe, CoversEveryMonitorStepByStep)
{
    std::string text;
    for (const auto &[style, corner, scale] : {std::tuple(0, 0, 0),
                                               {1, 0, 0},
                                               {2, 0, 0},
                                               {3, 0, 0},
                                               {4, 0, 0},
                                               {4, 1, 0},
                                               {4, 2, 0},
                                               {4, 3, 0},
                                               {6, 0, 0},
                                               {5, 0, 0},
                                               {5, 0, 2},
                                               {7, 0, 0}}) {
        Desk desk({{0, 0, 100, 1300}, {-1580, 100, 0, 390}});
        Draws draws(0.3, {}, 0.618);
        begin(style, corner);
        draws.ranges.clear();
        wipeScale = scale;
        text += "- style " + std::to_string(style) + ", corner " + std::to_string(corner) + ", scale " +
                std::to_string(scale) + "\n";
        for (int tick = 1; wipeRunning; ++tick) {
            desk.calls.clear();
            wipeTick();
            const std::string calls =
                draws.take() + joined({"FillRect", "FillE", "Draw", "Invalidate", "KillTimer"});
            if (!wipeRunning || (revealWipe ? tick == 30 : tick == 1 || tick == 60))
                text += "tick " + std::to_string(tick) + ": " + calls + "\n";
            EXPECT_EQ(wipeLoopPlaying, wipeRunning);
        }
        EXPECT_EQ(leaks(), "");
        const MarkColor end = style == 5 || style == 7 ? revealed : fresh;
        for (const auto &[x, y] :
             {std::pair(0, 0), {99, 1299}, {50, 700}, {-1580, 100}, {-1, 389}, {-700, 250}})
            EXPECT_EQ(desk.pixel(x, y), end) << style << " at " << x << "," << y;
        EXPECT_TRUE(backgroundColor == end && !revealWipe && desk.timers.empty());
    }
    expectRecorded("clearing/wipes", text);
}

TEST(Wipe, EndsWithTheLastMonitorOrAfter186Ticks)
{
    for (const auto &[first, second, ticks] :
         {std::tuple(1280, 1920, 101), {1920, 1280, 107}, {50, 195, 186}}) {
        Desk desk({{0, 0, first, 50}, {first, 0, first + second, 50}});
        begin(0);
        while (wipeRunning)
            wipeTick();
        EXPECT_EQ(wipeStep, ticks) << second;
    }
}

TEST(StopWipe, LeavesTheCanvasHalfWiped)
{
    Desk desk(twoMonitors);
    begin(1);
    desk.wait(50 * 16);
    desk.calls.clear();
    stopWipe();
    stopWipe();  // nothing more happens
    wipeTick();
    EXPECT_EQ(desk.text(), "KillTimer w0 5\nInvalidateRect w0 all\nInvalidateRect w1 all\n");
    EXPECT_TRUE(desk.pixel(396, 5) == fresh && desk.pixel(395, 5) == 0);  // 50 steps of 8, and 4
}
