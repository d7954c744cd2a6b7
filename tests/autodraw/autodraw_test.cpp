// The auto-drawing on known streams. The numbers stand for what is drawn there, call by call; they were
// recorded from code whose draws, sizes, spacing and ends longer tests had passed.
#include <gtest/gtest.h>

#include "autodraw/motifs.h"
#include "autodraw/outlines.h"
#include "autodraw/pen_paths.h"
#include "autodraw/scenes.h"
#include "autodraw/sequencer.h"
#include "autodraw/sketches.h"
#include "clearing/actions.h"
#include "clearing/wipes.h"
#include "marks/bursts.h"
#include "marks/strokes.h"
#include "sound/playback.h"
#include "support/fakes.h"

using Told = std::vector<int64_t>;

// Folds what a function draws, repaints and gives back, on so many streams, into one number.
static uint32_t hashOver(uint32_t seeds, const std::vector<RECT> &monitors, auto draw)
{
    std::wstring all;
    for (uint32_t seed = 1; seed <= seeds; ++seed) {
        const Desk desk(monitors);
        seedAll(seed);
        clearScene();
        resetPen();
        autoMode = scatterShape = wipeStyle = wipeScale = wipeCorner = penColorLife = 0;
        revealWipe = penLastValid = rainbowStroke = false;
        penColor = backgroundColor = revealColor = strokeColor = 0;
        lastPenStepTick = lastSoundTick = lastNoteTick = lastScatterTick = 0;
        for (const int64_t number : draw(seed))
            all += std::to_wstring(number) + L" ";
        const std::string text = textOfRecord();
        all.append(text.begin(), text.end());
        EXPECT_EQ(recorded.alive, 0) << seed;
    }
    return hashOf(all);
}

TEST(Outlines, AreTracedWithoutAGap)
{
    const std::pair<void (*)(POINT), uint32_t> pictures[] = {
        {outlineStar, 0x2af86676},   {outlineSquare, 0x032caaa8},  {outlineDiamond, 0x82e7a484},
        {outlineHeart, 0xbc91b6b3},  {outlineEllipse, 0xa6045c52}, {outlineTriangle, 0xa7108fcd},
        {outlineFlower, 0xe19425fb}, {outlineSun, 0x8a99248b},     {outlineFace, 0x1c6960bf},
        {outlineHouse, 0x100893bd},  {outlineRocket, 0x8a6c2c7d},  {outlineStickFigure, 0xcb889bba},
        {outlineRainbow, 0x98d2c1ba}};
    for (const auto &[build, hash] : pictures) {
        const auto trace = [build = build](uint32_t seed) {
            build(seed % 4 ? POINT{400, 300} : POINT{5, 590});        // or at the edge of the screen
            outlineQueue.insert(outlineQueue.begin() + 1, {{9, 9}});  // too short to be seen
            for (const std::vector<POINT> &polyline : outlineQueue) {
                for (size_t i = 1; i < polyline.size(); ++i)
                    EXPECT_LE(distanceBetween(polyline[i - 1], polyline[i]), 14.75);
            }
            autoFlurryLeft = seed % 3 == 0;
            const DWORD soundAtEnd = outlineQuick ? fakes.tick : 0;
            int steps = 0;
            for (; outlineTracing; ++steps)
                traceOutlineStep();
            EXPECT_EQ(lastSoundTick, soundAtEnd);
            EXPECT_FALSE(traceOutlineStep() || outlineQuick || penColor != outlineColor);
            return Told{steps, penColorLife};
        };
        EXPECT_EQ(hashOver(8, oneMonitor, trace), hash) << std::hex << hash;
    }
    const auto place = [](uint32_t) {
        placeOutline({400, 300});
        return Told{int(outlineQueue.front().size())};
    };
    EXPECT_EQ(hashOver(2000, {}, place), 3035467156u);
    std::vector<POINT> line;
    for (const LONG x : {0, 20, 20})  // a spacing of 8 at least; no way at all: the same point again
        appendSpaced(line, {x, 0}, 3);
    EXPECT_EQ(line.size() * 10 + size_t(line[1].x), 58u);
}

TEST(PenPaths, AreShortAndInsideTheLaunchMonitor)
{
    const auto walk = [](uint32_t) {
        for (int i = 0; i < 2; ++i) {  // anywhere, then away from the last place
            newPenPath();
            EXPECT_TRUE(penPath.size() >= 2 && penPath.size() <= 48 && penPathIndex == 0);
            EXPECT_EQ(distanceBetween(penLastPoint, penPath.back()), 0.0);
            for (const POINT &point : penPath)
                EXPECT_TRUE(point.x >= 52 && point.y >= 52 && point.x < 748 && point.y < 548);
            paintSegments(penPath, 0x808080, 1, 2);
        }
        return Told{penLastPoint.x, penLastPoint.y};
    };
    EXPECT_EQ(hashOver(40, twoMonitors, walk), 3806615638u);
    const auto place = [](uint32_t) {  // too small for the distances: the tries run out
        penLastValid = true;
        penLastPoint = {150, 150};
        const POINT from = freshPenStart(), to = farPointFrom(from);
        return Told{from.x, from.y, to.x, to.y};
    };
    EXPECT_EQ(hashOver(20, {{0, 0, 300, 300}}, place), 3777395839u);
}

TEST(Scenes, AreDrawnStepByStepAndGoOnAfterAStop)
{
    for (const auto &[motif, hash] : {std::pair(false, 96657707u), {true, 4046884430u}}) {
        for (const int stopAfter : {0, 2}) {
            const auto draw = [motif = motif, stopAfter](uint32_t) {
                autoMode = 3;
                motif ? startMotif() : startSketch();
                int step = 1;
                for (; motifActive || sketchActive; ++step) {
                    EXPECT_TRUE(motif ? stepMotif() : stepSketch() != sketchActive) << step;
                    if (step != stopAfter) continue;
                    const Rng stream = markRng;
                    autoStepsLeft = 5;
                    stopAutoDrawing();
                    startAction(3);
                    markRng = stream;
                }
                return Told{step};
            };
            EXPECT_EQ(hashOver(30, oneMonitor, draw), hash) << motif;  // all forms are among them
        }
    }
}

TEST(Runs, EndByTheirCountWithTheirPausesBetween)
{
    for (const auto &[action, begun, drawn] :
         {std::tuple(1, 2077555193u, 2265567027u), {2, 311842405u, 0u}, {3, 1395254596u, 786444461u}}) {
        const auto timer = std::pair(fakeWindow(0), UINT_PTR(3));
        const auto begin = [&, action = action](uint32_t) {
            penLastValid = true;
            penPath = {{1, 2}, {3, 4}};
            startAction(action);
            stopWipe();
            EXPECT_TRUE(lastSoundTick == fakes.tick && penPath.empty() == (action == 3));
            EXPECT_EQ(penLastValid, action != 3);
            const int pause = int(recorded.timers[timer]);
            return Told{autoStepsLeft, pause,     autoFlurryLeft, scatterShape,    wipeStyle,
                        revealWipe,    wipeScale, wipeCorner,     backgroundColor, revealColor};
        };
        EXPECT_EQ(hashOver(400, {{0, 0, 8, 8}}, begin), begun) << action;
        const auto run = [&, action = action](uint32_t) {
            startAction(action);
            const int steps = autoStepsLeft;
            int fired = 0, pauses = 0;
            for (; recorded.timers.contains(timer) && fired < 100; ++fired) {
                pauses += (fired + 1) * int(recorded.timers[timer]);
                fakes.passMs(recorded.timers[timer]);
                onTimer3();
            }
            EXPECT_EQ(fired, steps);
            EXPECT_TRUE(autoMode + autoStepsLeft + countCalls("InvalidateRect with") == 0 && canvasDirty);
            return Told{pauses};
        };
        if (action == 2) continue;
        EXPECT_EQ(hashOver(10, twoMonitors, run), drawn) << action;
    }
}

TEST(PenWalk, DrawsElsewhereWhenItFellOffAllMonitors)
{
    for (const bool blind : {false, true}) {  // a surface that cannot be drawn on
        const auto step = [blind](uint32_t) {
            autoMode = 3;
            penPath.assign(20, POINT{30000, 30000});
            Having dc(surfaces[0].canvasDC, blind ? nullptr : surfaces[0].canvasDC);
            autoDrawStep();
            if (motifActive || sketchActive) return Told{};
            EXPECT_EQ(recorded.draws.size(), blind ? 0u : 1u);
            EXPECT_EQ(penLastValid, !blind);
            EXPECT_EQ(lastPenStepTick + lastSoundTick > 0, !blind);
            EXPECT_TRUE(blind ? !outlineTracing : recorded.draws[0].numbers[2] == float(penLastPoint.x));
            return Told{outlineTracing};
        };
        EXPECT_EQ(hashOver(30, oneMonitor, step), blind ? 146579602u : 15276140u);
    }
}
