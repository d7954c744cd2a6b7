// Auto-drawing: the ranges of its draws, and what follows from them.
#include <gtest/gtest.h>

#include "autodraw/motifs.h"
#include "autodraw/outlines.h"
#include "autodraw/pen_paths.h"
#include "autodraw/scenes.h"
#include "autodraw/sequencer.h"
#include "autodraw/sketches.h"
#include "clearing/actions.h"
#include "marks/angles.h"
#include "marks/strokes.h"
#include "sound/playback.h"
#include "support/desk.h"
#include "support/draws.h"
#include "support/recorded.h"

// How many points, its ends, and the corners of its box.
static std::string shapeOf(const std::vector<POINT> &points)
{
    RECT box = {points[0].x, points[0].y, points[0].x, points[0].y};
    for (const POINT &each : points)
        box = {std::min(box.left, each.x), std::min(box.top, each.y), std::max(box.right, each.x),
               std::max(box.bottom, each.y)};
    std::string text = std::to_string(points.size()) + " points:";
    for (const LONG number : {points[0].x, points[0].y, points.back().x, points.back().y, box.left, box.top,
                              box.right, box.bottom})
        text += " " + std::to_string(number);
    return text;
}

static constexpr void (*outlines[])(POINT) = {
    outlineStar,     outlineSquare,      outlineDiamond, outlineHeart, outlineEllipse,
    outlineTriangle, outlineFlower,      outlineSun,     outlineFace,  outlineHouse,
    outlineRocket,   outlineStickFigure, outlineRainbow};

TEST(Outlines, FollowFromTheirDraws)
{
    std::string text;
    for (const auto &outline : outlines) {
        for (const double share : {0.2, 0.7}) {
            Desk desk(oneMonitor);
            Draws draws(share);
            outline({400, 300});
            text += "- " + draws.take() + (outlineQuick ? ", quick" : "");
            for (const auto &polyline : outlineQueue)
                text += "; " + shapeOf(polyline);
            text += "\n";
        }
    }
    expectRecorded("autodraw/outlines", text);
    const auto place = [] { return placeOutline({87, 300}), ""; };
    text = chosen(999, {88, 300}, place) + "- large\n" + chosen(5, {88, 300, 94}, place) + "- simple\n" +
           chosen(99, {88, 300, 95}, place) + "- size classes\n";
    for (const auto &outline : outlines)
        if (outline != outlineHeart && outline != outlineEllipse)
            text += chosen(99, {6}, [&] { return outline({400, 300}), ""; });
    expectRecorded("autodraw/outlines chosen", text);
}

TEST(Outlines, AreTracedWithoutAGapAndFasterInAFlurry)
{
    std::string text;
    for (const auto &[flurry, quick] : {std::pair(0, false), {1, false}, {0, true}, {1, true}}) {
        Desk desk(oneMonitor);
        Draws draws(0.0);
        beginOutline(quick);
        outlineQueue = {{{9, 9}}, {}, {{9, 9}}};  // too short to be seen
        for (const LONG x : {0, 20, 20})          // 8 pixels apart at least, the same point once more
            appendSpaced(outlineQueue[1], {100 + x, 100}, 3);
        appendArc({100, 100}, 50, 0.0f, pi, 9, 20);
        for (autoFlurryLeft = flurry; outlineTracing;)
            EXPECT_TRUE(traceOutlineStep());
        text += draws.take() + joined({"Draw"}) + "\n";
        EXPECT_EQ(lastSoundTick, quick ? desk.tick : 0);
        EXPECT_FALSE(traceOutlineStep() || outlineQuick || penColor != outlineColor || penColorLife != 6);
    }
    expectRecorded("autodraw/traces", text);
}

TEST(PenPaths, FollowFromTheirDraws)
{
    std::string text;
    for (const int form : {0, 1, 2, 3, 4, 5}) {
        Desk desk(oneMonitor);
        Draws draws(0.4, {form}, 0.618);
        newPenPath();
        text += "- " + draws.take() + "; " + shapeOf(penPath) + "\n";
    }
    std::vector<int> firstLeg = {1, 400, 300, 6, 0, 160, 110, 0, 0, 8};
    firstLeg.resize(firstLeg.size() + 16);
    text += chosen(100, firstLeg, [] {  // whether a zigzag turns
        penLastValid = false;
        newPenPath();
        return "; " + shapeOf(penPath);
    });
    expectRecorded("autodraw/pen paths", text);
    for (const auto &[x, starts, ends] : {std::tuple(120, 2, 26), {121, 22, 26}, {40, 2, 2}, {41, 2, 28}}) {
        Desk desk(oneMonitor);
        Draws draws(0.5);  // all draws lie in the middle, at 400
        penLastPoint = {x, 300};
        penLastValid = true;
        freshPenStart();
        EXPECT_EQ(int(draws.ranges.size()), starts) << x;
        draws.ranges.clear();
        farPointFrom({x, 300});
        EXPECT_EQ(int(draws.ranges.size()), ends) << x;
    }
}

TEST(Scenes, FollowFromTheirDrawsAndGoOnAfterAStop)
{
    std::string text;
    for (int form = 0; form < 11; ++form) {
        Desk desk(oneMonitor);
        Draws draws(0.2, form < 5 ? std::vector{form} : std::vector{711, 511, form - 5});
        form < 5 ? startSketch() : startMotif();
        text += "- laid out: " + draws.take() + "\n";
        draws.stride = 0.35;
        for (int step = 0; sketchActive || motifActive; ++step) {
            if (step == 2) {  // neither a stop nor the start of a run drops it
                autoStepsLeft = 1;
                stopAutoDrawing();
                startAction(3);
                draws.ranges.clear();
                autoMode = 0;
            }
            desk.calls.clear();
            EXPECT_TRUE(form < 5 ? stepSketch() != sketchActive : stepMotif());
            const std::string said = draws.take() + joined({"Fill", "Draw", "InvalidateRect w0 all"});
            if (step < 4 || !(sketchActive || motifActive)) text += std::to_string(step) + ": " + said + "\n";
        }
        EXPECT_EQ(leaks(), "");
    }
    expectRecorded("autodraw/scenes", text);
}

static std::string step(int last, const std::vector<int> &forced, void (*draw)())
{
    return chosen(last, forced, [&] {
        resetPen();
        clearScene();
        penColorLife = forced.size() == 4 ? 0 : 2;
        penLastValid = canvasDirty = false;
        lastSoundTick = lastScatterTick = 0;
        for (LONG x = 150; x < 300; x += 5)
            penPath.push_back({x, 300});
        penPathIndex = 14;
        draw();
        return std::string(outlineTracing ? ", a picture" : "") + (lastSoundTick ? ", heard" : "") + ", " +
               std::to_string(autoStepsLeft) + " steps, shape " + std::to_string(scatterShape) +
               ", colour for " + std::to_string(penColorLife);
    });
}

TEST(Runs, ChooseByTheirDraws)
{
    const auto scatter = [] { autoMode = autoStepsLeft = 1, onTimer3(); };
    const auto pause = [] {  // and the next one
        autoMode = autoStepsLeft = 3;
        for (int i = 0; i < 2; ++i) {
            outlineTracing = true;
            onTimer3();
        }
    };
    const auto run = [] { startAction(1); };
    const auto drawing = [] { startAction(3); };
    expectRecorded("autodraw/runs",
                   "- motif\n" + step(99, {}, autoDrawStep) + "- sketch\n" + step(99, {14}, autoDrawStep) +
                       "- bold pen\n" + step(99, {14, 12}, autoDrawStep) + "- pen colour\n" +
                       step(2, {14, 12, 14, 3}, autoDrawStep) + "- picture\n" +
                       step(99, {14, 12, 14, 3, 10, 1, 1, 1}, autoDrawStep) + "- scattering\n" +
                       step(100, {}, scatter) + "- pause\n" + step(99, {}, pause) + "- run of marks\n" +
                       step(4, {}, run) + step(4, {0}, run) + "- run of drawing\n" + step(4, {}, drawing));
}

TEST(Runs, EndByTheirCount)
{
    for (const int action : {1, 3}) {
        Desk desk(oneMonitor);
        penLastValid = true;
        outlineQueue = {{{1, 2}, {3, 4}}};
        startAction(action);
        EXPECT_TRUE(outlineQueue.empty() == (action == 3) && penLastValid == (action == 1));
        for (int left = autoStepsLeft; left > 0; --left) {
            EXPECT_EQ(autoStepsLeft, left);
            desk.wait(desk.timers[{primaryWindow(), 3}].period);
        }
        EXPECT_TRUE(desk.timers.empty() && autoMode == 0 && canvasDirty);
    }
}

TEST(PenWalk, DrawsElsewhereWhenItFellOffAllMonitors)
{
    for (const bool blind : {false, true}) {  // a surface that cannot be drawn on
        Desk desk(oneMonitor);
        Draws draws(0.9);
        penPath.assign(20, POINT{30000, 30000});
        HDC canvas = std::exchange(surfaces[0].canvasDC, blind ? nullptr : surfaces[0].canvasDC);
        autoDrawStep();
        EXPECT_EQ(desk.count("DrawLine"), !blind) << desk.text({"Draw"});
        EXPECT_EQ(penLastValid, !blind);
        EXPECT_EQ(penLastPoint.x == 0, blind);
        surfaces[0].canvasDC = canvas;
    }
}
