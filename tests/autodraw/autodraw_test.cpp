#include <gtest/gtest.h>

#include "autodraw/motifs.h"
#include "autodraw/outlines.h"
#include "autodraw/pen_paths.h"
#include "autodraw/scenes.h"
#include "autodraw/sequencer.h"
#include "autodraw/sketches.h"
#include "support/desk.h"
#include "support/draws.h"
#include "support/recorded.h"

// Of each polyline the number of its points, the first, one on the way, and the last.
static std::string shapesOf(const std::vector<std::vector<POINT>> &polylines)
{
    std::string text;
    for (const std::vector<POINT> &points : polylines) {
        text += "; " + std::to_string(points.size()) + " points";
        for (const POINT &at : {points.front(), points[points.size() / 3], points.back()})
            text += " " + std::to_string(at.x) + "," + std::to_string(at.y);
    }
    return text;
}

TEST(Outlines, FollowFromTheirDraws)
{
    const auto place = [] { return placeOutline({400, 300}), outlineQuick ? ", quick" : ""; };
    std::string text = chosen(999, {}, place) + chosen(5, {94}, place) + chosen(99, {95}, place);
    for (void (*outline)(POINT) :
         {outlineStar, outlineSquare, outlineDiamond, outlineTriangle, outlineFlower, outlineSun, outlineFace,
          outlineHouse, outlineRocket, outlineStickFigure, outlineRainbow})
        text += chosen(99, {6}, [outline] { return outline({400, 300}), shapesOf(outlineQueue); });
    expectRecorded("autodraw/outlines", text);
}

TEST(PenPaths, FollowFromTheirDraws)
{
    std::string text;
    // The form, and where the pen stopped before; then all places lie in the middle.
    for (const auto &[form, x] :
         {POINT{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}, {5, 0}, {2, 120}, {2, 121}, {3, -1}}) {
        Desk desk(oneMonitor);
        Draws draws(0.5, {int(form)}, x > 0 ? 0.0 : 0.618);
        penLastPoint = {x, 300};
        penLastValid = x > 0;
        if (x < 0) desk.screen = {300, 200, 60, 40};  // smaller than the monitor
        newPenPath();
        text += draws.take(0, 60) + shapesOf({penPath}) + "\n";
    }
    expectRecorded("autodraw/pen paths", text);
}

TEST(PenWalk, KeepsItsColourForSoManyStepsAsWereDrawn)
{
    Desk desk(oneMonitor);
    Draws draws(0.5);
    for (const int left : {6, 5, 4, 3, 2, 1, 0, 6}) {
        autoDrawStep();
        EXPECT_EQ(penColorLife, left);
    }
    EXPECT_NE(draws.take().find(" 4..10 "), std::string::npos);
}

TEST(Scenes, FollowFromTheirDraws)
{
    std::string text;
    // The form, 10 more for a motif, and how many steps differ.
    const std::pair<int, int> rows[] = {{0, 2},  {1, 2},  {2, 4},  {3, 3},  {4, 1}, {10, 2},
                                        {11, 3}, {12, 4}, {13, 2}, {14, 1}, {15, 4}};
    for (const auto &[form, kinds] : rows) {
        Desk desk(oneMonitor);
        const bool isSketch = form < 10;
        Draws draws(0.2, isSketch ? std::vector{form} : std::vector{711, 511, form - 10});
        isSketch ? startSketch() : startMotif();
        text += "- laid out: " + draws.take() + "\n";
        draws.stride = 0.35;
        for (int step = 0; sketchActive || motifActive; ++step) {
            desk.calls.clear();
            isSketch ? stepSketch() : stepMotif();
            const std::string said = draws.take(0, 12) + joined({"Fill", "DrawL", "DrawA"});
            if (step < kinds || !(sketchActive || motifActive))
                text += std::to_string(step) + ": " + said + "\n";
        }
    }
    expectRecorded("autodraw/scenes", text);
}
