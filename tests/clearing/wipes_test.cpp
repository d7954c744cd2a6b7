#include "clearing/wipes.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "clearing/actions.h"
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

TEST(StartWipe, StopsARunAndSoundsUnlessSilent)
{
    for (const bool sound : {true, false}) {
        const Desk desk(oneMonitor);
        Having enabled(soundEnabled, sound);
        lastSoundTick = 0;
        autoStepsLeft = 3;
        startAction(2);
        EXPECT_EQ(lastSoundTick, sound ? fakes.tick : 0);
        EXPECT_TRUE(wipeLoopPlaying == sound && autoStepsLeft == 0);
        EXPECT_EQ((recorded.timers), (std::map<std::pair<HWND, UINT_PTR>, UINT>{{{fakeWindow(0), 5}, 16}}));
        stopWipe();
    }
}

// After every tick the canvases show the colour exactly where the strips repainted so far lie.
TEST(PlainWipe, CoversBothMonitorsStripByStrip)
{
    for (const int row : {0, 1, 2, 3, 4, 14, 24, 34, 6}) {
        SCOPED_TRACE(row);
        const int style = row % 10, corner = row / 10;
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
        EXPECT_EQ(wipeStep, style < 2 ? 106 : style == 6 ? 182 : 119);
        for (const POINT end : {POINT{0, 0}, {799, 599}, {-640, 100}, {-1, 579}})
            EXPECT_TRUE(PtInRegion(shown, end.x, end.y));
        EXPECT_FALSE(wipeLoopPlaying || recorded.calls != std::vector<std::string>{"KillTimer 5 w0"});
        DeleteObject(shown);
    }
}

// The numbers stand for every call and repaint of every tick; they were taken while the calls were also
// checked against their formulas.
TEST(Wipe, EndsWithTheLastMonitorOrAfter185Steps)
{
    const std::vector<RECT> narrowFirst = {{0, 0, 1280, 50}, {1280, 0, 3200, 50}};
    for (const auto &[style, monitors, ticks, hash] : {std::tuple{0, narrowFirst, 101, 2207891105u},
                                                       {0, {{0, 0, 195, 50}}, 186, 3572871812u},
                                                       {5, twoMonitors, 51, 2319236235u},
                                                       {7, twoMonitors, 116, 2031384491u}}) {
        const Desk desk(monitors);
        begin(style);
        while (wipeRunning)
            wipeTick();
        const std::string text = textOfRecord();
        EXPECT_EQ(hashOf({text.begin(), text.end()}), hash) << style;
        EXPECT_EQ(wipeStep, ticks);
        if (style == 0) continue;
        EXPECT_TRUE(desk.pixel(400, 300) == revealColor && desk.pixel(-320, 340) == revealColor);
        EXPECT_FALSE(backgroundColor != revealColor || revealWipe || wipeLoopPlaying || recorded.alive != 0);
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
    // 50 steps of 8 and 4 more from the right
    EXPECT_TRUE(desk.pixel(396, 5) == wipeColor && desk.pixel(395, 5) == 0);
    EXPECT_FALSE(!revealWipe || wipeRunning || wipeLoopPlaying || backgroundColor != wipeColor);
}
