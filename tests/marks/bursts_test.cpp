#include "marks/bursts.h"

#include <gtest/gtest.h>

#include "sound/playback.h"
#include "support/fakes.h"

TEST(Burst, SoundsItsRareMarksBehindTheirGates)
{
    for (const DWORD gate : {200u, 180u}) {
        for (const DWORD since : {gate - 1, gate}) {
            const Desk desk(oneMonitor);
            for (uint32_t seed = 0;; ++seed) {
                Rng draws(seed);
                const int rare = drawInt(draws, 0, 999);
                markRng.seed(seed);
                if (gate == 200 ? rare < 18 : rare >= 18 && rare < 35) break;
            }
            const Having last(lastSoundTick, fakes.tick - since);
            burst({200, 300});
            EXPECT_EQ(lastSoundTick == fakes.tick, since == gate) << gate;
        }
    }
}

TEST(PopShape, LeavesASurfaceWithoutCanvasAlone)
{
    const Desk desk(oneMonitor);
    const Having nothing(surfaces[0].canvasDC, nullptr);
    popShape({400, 300});
    EXPECT_TRUE(recorded.draws.empty() && recorded.invalidations.empty());
    EXPECT_FALSE(canvasDirty);
}
