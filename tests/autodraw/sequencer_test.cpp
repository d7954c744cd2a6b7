#include "autodraw/sequencer.h"

#include <gtest/gtest.h>

#include "autodraw/motifs.h"
#include "autodraw/outlines.h"
#include "autodraw/sketches.h"
#include "clearing/actions.h"
#include "sound/playback.h"
#include "support/fakes.h"

TEST(Run, EndsByItsCountWithItsPausesBetween)
{
    for (uint32_t seed = 1; seed <= 24; ++seed) {
        const bool scatter = seed % 2 == 0;
        SCOPED_TRACE(testing::Message() << (scatter ? "scatter" : "auto-drawing") << " seed " << seed);
        const Desk desk(twoMonitors);
        seedAll(seed);
        autoFlurryLeft = 0;
        startAction(scatter ? 1 : 3);
        const int steps = autoStepsLeft;
        const auto timer = std::pair(fakeWindow(0), UINT_PTR(3));
        int fired = 0;
        for (; recorded.timers.contains(timer) && fired < 100; ++fired) {
            const int pause = int(recorded.timers[timer]), flurry = autoFlurryLeft;
            fakes.passMs(DWORD(pause));
            onTimer3();
            if (!recorded.timers.contains(timer)) continue;
            const int next = int(recorded.timers[timer]);
            const bool calm = flurry == 0 && autoFlurryLeft == 0;
            EXPECT_TRUE(flurry == 0 || autoFlurryLeft == flurry - 1);
            EXPECT_TRUE(next >= (scatter ? 82
                                 : calm  ? 88
                                         : 72) &&
                        next <= (scatter ? 118
                                 : calm  ? 128
                                         : 98))
                << next;
        }
        EXPECT_EQ(fired, steps);
        EXPECT_TRUE(autoMode + autoStepsLeft + recorded.alive == 0 && canvasDirty);
        EXPECT_EQ(countCalls("InvalidateRect with"), 0);
    }
}

TEST(TraceOutline, AddsAFewPointsAStepWithoutAGap)
{
    struct Row {
        int flurry;
        bool quick;
        std::vector<size_t> segments;  // of each step
    };
    for (const auto &[flurry, quick, segments] : {Row{0, false, {2, 2, 2, 2}},
                                                  {0, true, {3, 3, 2}},
                                                  {9, false, {5, 1, 2}},
                                                  {9, true, {6, 2}},
                                                  {0, true, {}}}) {
        const Desk desk(oneMonitor);
        beginOutline(quick);
        outlineQueue = {{{9, 9}}};  // too short to be seen
        if (!segments.empty()) {
            outlineQueue.push_back(
                {{100, 50}, {110, 50}, {120, 50}, {130, 50}, {140, 50}, {150, 50}, {160, 50}});
            outlineQueue.push_back({{300, 300}, {310, 310}, {320, 320}});
        }
        autoFlurryLeft = flurry;
        lastSoundTick = 0;
        float x = 100.0f;
        for (const size_t count : segments) {
            recorded.draws.clear();
            EXPECT_TRUE(outlineTracing && traceOutlineStep());
            ASSERT_EQ(recorded.draws.size(), count);
            for (const DrawCall &line : recorded.draws) {
                if (x == 160.0f) x = 300.0f;  // the next polyline
                EXPECT_EQ(line.numbers[0], x);
                x += 10.0f;
                EXPECT_EQ(line.numbers[2], x);
                EXPECT_TRUE(line.penWidth >= 9.0f && line.penWidth <= 36.0f);
                EXPECT_EQ(line.argb, toArgb(outlineColor, 0xEE));
            }
        }
        EXPECT_EQ(outlineTracing, segments.empty());
        EXPECT_FALSE(traceOutlineStep() || outlineTracing || outlineQuick);
        EXPECT_EQ(lastSoundTick, quick ? fakes.tick : 0);
    }
}

TEST(PenWalk, DrawsElsewhereWhenItFellOffAllMonitors)
{
    int pictures = 0;
    for (uint32_t seed = 1; seed <= 60; ++seed) {
        const Desk desk(oneMonitor);
        const bool blind = seed % 2 == 0;  // a surface that cannot be drawn on
        clearMotif();
        clearSketch();
        resetPen();
        seedAll(seed);
        autoMode = 3;
        penPath.assign(20, POINT{30000, 30000});
        penLastValid = false;
        lastPenStepTick = lastSoundTick = lastNoteTick = 0;
        Having dc(surfaces[0].canvasDC, blind ? nullptr : surfaces[0].canvasDC);
        autoDrawStep();
        if (motifActive || sketchActive) continue;
        pictures += outlineTracing;
        EXPECT_EQ(recorded.draws.size(), blind ? 0u : 1u);
        EXPECT_EQ(penLastValid, !blind);
        EXPECT_EQ(lastPenStepTick + lastSoundTick > 0, !blind);
        EXPECT_FALSE(blind && outlineTracing);
        EXPECT_TRUE(blind || recorded.draws[0].numbers[2] == float(penLastPoint.x));
    }
    EXPECT_GT(pictures, 3);
}
