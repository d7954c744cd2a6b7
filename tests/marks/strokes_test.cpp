#include "marks/strokes.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "support/fakes.h"

static void expectRect(const Invalidation &invalidation, HWND window, RECT rect)
{
    EXPECT_EQ(invalidation.window, window);
    EXPECT_FALSE(invalidation.whole);
    EXPECT_TRUE(EqualRect(&invalidation.rect, &rect));
}

TEST(TapMark, HasAColourAndSizeOfItsOwnOnEachMonitorInReach)
{
    const Desk desk(twoMonitors);
    tapMark({2, 300});
    markRng.seed(7);  // the same draws once more, by hand
    const MarkColor right = randColor(50, 255);
    const int rightSize = randInt(18, 92);
    const MarkColor left = randColor(50, 255);
    const int leftSize = randInt(18, 92);
    ASSERT_EQ(recorded.draws.size(), 2u);
    EXPECT_EQ(recorded.draws[0].argb, toArgb(right, 0xE6));
    EXPECT_EQ(recorded.draws[0].numbers,
              (std::vector<float>{float(2 - rightSize / 2), float(300 - rightSize / 2), float(rightSize),
                                  float(rightSize)}));
    EXPECT_EQ(recorded.draws[1].argb, toArgb(left, 0xE6));
    EXPECT_EQ(recorded.draws[1].numbers[0], float(642 - leftSize / 2));
    EXPECT_EQ(recorded.draws[1].numbers[1], float(200 - leftSize / 2));
    EXPECT_EQ(recorded.draws[1].dc, surfaces[1].canvasDC);
    EXPECT_EQ(recorded.alive, 0);
    EXPECT_TRUE(canvasDirty);
    const int reach = (rightSize + 1) / 2 + 4;
    expectRect(recorded.invalidations[0], fakeWindow(0), {0, 300 - reach, 2 + reach + 1, 300 + reach + 1});
    EXPECT_EQ(desk.pixel(3, 300) == 0, false);
}
