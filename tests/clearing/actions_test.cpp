#include "clearing/actions.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "clearing/wipes.h"
#include "marks/bursts.h"
#include "sound/playback.h"
#include "support/fakes.h"

TEST(StartAction, DrawsTheRunAndItsFirstPause)
{
    for (uint32_t seed = 1; seed <= 60; ++seed) {
        const bool scatter = seed % 2 == 0;
        const Desk desk(oneMonitor);
        seedAll(seed);
        penPath = {{1, 2}, {3, 4}};
        penLastValid = true;
        startAction(scatter ? 1 : 3);
        const int steps = autoStepsLeft, pause = int(recorded.timers[{fakeWindow(0), 3}]);
        seedAll(seed);
        EXPECT_EQ(lastSoundTick, fakes.tick);
        if (scatter) {
            EXPECT_EQ(scatterShape, (std::array{1, 2, 0, 0, 0}[size_t(randInt(0, 4))]));
            EXPECT_EQ(steps, (std::array{12, 24, 36, 48, 60}[size_t(randInt(0, 4))]));
            EXPECT_EQ(pause, randInt(82, 118));
            continue;
        }
        EXPECT_FALSE(penLastValid || !penPath.empty());
        EXPECT_EQ(steps, (std::array{42, 52, 62, 72, 88}[size_t(randInt(0, 4))]));
        const bool flurry = randInt(0, 99) < 17;
        EXPECT_EQ(autoFlurryLeft, flurry ? randInt(6, 14) : 0);
        EXPECT_EQ(pause, randInt(flurry ? 72 : 88, flurry ? 98 : 128));
    }
}

TEST(StartAction, WipesWithAClickUnlessSilent)
{
    for (const bool sound : {true, false}) {
        const Desk desk(oneMonitor);
        Having enabled(soundEnabled, sound);
        autoStepsLeft = int(lastSoundTick = 0);
        startAction(2);
        EXPECT_EQ(lastSoundTick, sound ? fakes.tick : 0);
        EXPECT_EQ(wipeLoopPlaying, sound);
        EXPECT_EQ(autoMode, 2);
        EXPECT_EQ((recorded.timers), (std::map<std::pair<HWND, UINT_PTR>, UINT>{{{fakeWindow(0), 5}, 16}}));
        stopWipe();
    }
}
