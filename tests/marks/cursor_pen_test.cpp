#include "marks/cursor_pen.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "marks/strokes.h"
#include "sound/playback.h"
#include "support/fakes.h"

TEST(CursorPen, StepsFromTheMiddleAndWrapsAtEachEdge)
{
    struct Way {
        std::vector<uint32_t> keys;
        int dx, dy;
        POINT edge, landing;  // where it can go no further, and 56 pixels inside the far edge
    };
    const Way ways[] = {{{VK_LEFT, VK_NUMPAD4}, -1, 0, {-640, 300}, {743, 300}},
                        {{VK_RIGHT, VK_NUMPAD6}, 1, 0, {799, 300}, {-584, 300}},
                        {{VK_UP, VK_NUMPAD8}, 0, -1, {400, 0}, {400, 543}},
                        {{VK_DOWN, VK_NUMPAD2}, 0, 1, {400, 599}, {400, 56}}};
    for (const Way &way : ways) {
        for (const uint32_t key : way.keys) {
            const Desk desk(twoMonitors);
            const Having visible(penDotVisible, false);
            const Having mode(autoMode, 3);
            const Having plain(rainbowStroke, false);
            POINT at = {400, 300};
            for (int step = 0; step < 60; ++step) {
                recorded.draws.clear();
                recorded.invalidations.clear();
                const bool wraps = at.x == way.edge.x && at.y == way.edge.y;
                lastSoundTick = 0;
                lastPenStepTick = fakes.tick - (step % 2 == 0 ? 35 : 36);
                penKey(key);
                EXPECT_EQ(lastPenStepTick == fakes.tick, step % 2 == 1);
                EXPECT_EQ(lastSoundTick == fakes.tick, wraps);  // the landing has a sound of its own
                EXPECT_EQ(std::count_if(recorded.invalidations.begin(), recorded.invalidations.end(),
                                        [](const Invalidation &made) { return made.whole; }),
                          2);
                EXPECT_EQ(recorded.draws.at(0).what, wraps ? "FillEllipse" : "DrawLine");
                EXPECT_NE(recorded.draws.at(0).argb & 0xFFFFFF, toArgb(strokeColor, 0));
                if (wraps) {
                    at = way.landing;
                } else {
                    at.x = std::clamp<LONG>(at.x + 56 * way.dx, -640, 799);  // the last step is short
                    at.y = std::clamp<LONG>(at.y + 56 * way.dy, 0, 599);
                }
                ASSERT_TRUE(penDotPoint.x == at.x && penDotPoint.y == at.y) << key << " step " << step;
            }
            EXPECT_FALSE(rainbowStroke);
            EXPECT_EQ(autoMode, 0);
        }
    }
}

TEST(CursorPen, DoesNothingWhereNothingCanMoveOrTheKeyIsNoPen)
{
    const Desk desk({{0, 0, 1, 40}});
    const Having visible(penDotVisible, false);
    const Having mode(autoMode, 3);
    for (const uint32_t key : {uint32_t(VK_LEFT), uint32_t(VK_RIGHT), uint32_t(VK_NUMPAD5)})
        penKey(key);
    EXPECT_TRUE(recorded.draws.empty() && recorded.sounds.empty() && recorded.invalidations.empty());
    EXPECT_TRUE(penDotVisible);
    EXPECT_EQ(autoMode, 3);
}
