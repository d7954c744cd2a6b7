#include "marks/strokes.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "marks/bursts.h"
#include "marks/cursor_pen.h"
#include "sound/playback.h"
#include "support/fakes.h"

TEST(Strokes, OfNoSurfaceInReachAreAChangeButForSegments)
{
    for (const std::vector<RECT> &monitors : {oneMonitor, {}}) {
        const Desk desk(monitors);
        EXPECT_FALSE(paintSegments({{5, 5}}, 0, 1, 2));
        EXPECT_FALSE(paintSegments({{5000, 5}, {5010, 5}}, 0, 1, 2));
        EXPECT_FALSE(canvasDirty);
        tapMark({1001, 300});
        EXPECT_TRUE(canvasDirty);
        canvasDirty = false;
        brushStroke({400, 801}, {400, 300}, 1, 2);
        EXPECT_TRUE(canvasDirty);
        EXPECT_TRUE(recorded.draws.empty() && sameStream(markRng, Rng(7)));
    }
}

TEST(PopShape, LeavesASurfaceWithoutCanvasAlone)
{
    const Desk desk(oneMonitor);
    const Having nothing(surfaces[0].canvasDC, nullptr);
    popShape({400, 300});
    EXPECT_TRUE(recorded.draws.empty() && recorded.invalidations.empty() && !canvasDirty);
}

TEST(CursorPen, SoundsWhereItWrapsAndBorrowsTheRainbow)
{
    const Desk desk(oneMonitor);
    const Having visible(penDotVisible, true);
    const Having mode(autoMode, 3);
    const Having plain(rainbowStroke, false);
    penDotPoint = {96, 9};
    for (const int x : {40, 0, 743}) {  // the second step is short
        lastSoundTick = 0;
        penKey(VK_LEFT);
        EXPECT_TRUE(penDotPoint.x == x && penDotPoint.y == 9) << penDotPoint.x;
        EXPECT_EQ(lastSoundTick == fakes.tick, x == 743);
        EXPECT_TRUE(!rainbowStroke && autoMode == 0);
    }
}

TEST(CursorPen, BeginsInTheMiddleAndStaysWhereNothingCanMoveOrTheKeyIsNoPen)
{
    const Desk desk({{0, 0, 1, 40}});
    const Having visible(penDotVisible, false);
    const Having mode(autoMode, 3);
    for (const uint32_t key : {VK_LEFT, VK_RIGHT, VK_NUMPAD5})
        penKey(key);
    EXPECT_TRUE(recorded.draws.empty() && recorded.sounds.empty() && recorded.invalidations.empty());
    EXPECT_TRUE(penDotVisible && penDotPoint.x == 0 && penDotPoint.y == 20 && autoMode == 3);
}
