#include "autodraw/sequencer.h"

#include "autodraw/motifs.h"
#include "autodraw/outlines.h"
#include "autodraw/pen_paths.h"
#include "autodraw/scenes.h"
#include "autodraw/sketches.h"
#include "marks/strokes.h"
#include "sound/playback.h"

static bool penAtEnd()
{
    return penPathIndex + 1 >= penPath.size();
}

static void dropOutline()
{
    outlineTracing = false;
    outlineQueue.clear();
    outlineStrokeIndex = 0;
    outlinePointIndex = 0;
    outlineQuick = false;
}

void resetPen()
{
    penPath.clear();
    penPathIndex = 0;
    dropOutline();
    autoFlurryLeft = 0;
    // The open scene stays, on purpose: the next auto-drawing run continues it.
}

// A large picture ends with a sound.
static void finishOutline()
{
    const bool quick = outlineQuick;
    dropOutline();
    if (quick && soundEnabled) playMarkSound();
}

bool traceOutlineStep()
{
    if (!outlineTracing || outlineQueue.empty()) {
        dropOutline();
        return false;
    }
    while (outlineStrokeIndex < outlineQueue.size() && outlineQueue[outlineStrokeIndex].size() < 2) {
        ++outlineStrokeIndex;
        outlinePointIndex = 0;
    }
    if (outlineStrokeIndex >= outlineQueue.size()) {
        finishOutline();
        return false;
    }
    const std::vector<POINT> &polyline = outlineQueue[outlineStrokeIndex];
    int count = autoFlurryLeft > 0 ? 5 : 2;
    if (outlineQuick) ++count;
    // Each step begins where the last one ended, so the line has no gap.
    std::vector<POINT> points = {polyline[outlinePointIndex]};
    while (count-- > 0 && outlinePointIndex + 1 < polyline.size())
        points.push_back(polyline[++outlinePointIndex]);
    const int low = int(outlinePointIndex % 6) + 9;
    const int spread = randInt(10, 22);
    const bool drawn = paintSegments(points, outlineColor, low, low + spread);
    if (outlinePointIndex + 1 >= polyline.size()) {
        ++outlineStrokeIndex;
        outlinePointIndex = 0;
    }
    if (outlineStrokeIndex >= outlineQueue.size()) finishOutline();
    return drawn;
}

// Tracing begins on the next step.
static void queuePicture()
{
    POINT place = randomPointOnLaunch(116);
    for (int tries = 0; tries < 8; ++tries) {
        if (!penLastValid || distanceBetween(place, penLastPoint) >= 220.0) break;
        place = randomPointOnLaunch(116);
    }
    keepInside(place, 92);
    placeOutline(place);
}

// The next points of the path. A path that ends on the way is replaced at once, so the polyline may contain
// a long jump.
static std::vector<POINT> advancePen(int count)
{
    std::vector<POINT> points = {penPath[penPathIndex]};
    for (int i = 0; i < count; ++i) {
        if (penAtEnd()) newPenPath();
        if (penAtEnd()) break;
        points.push_back(penPath[++penPathIndex]);
    }
    return points;
}

static void chooseColor()
{
    if (penColorLife < 1) {
        if (randInt(0, 2) == 0) {
            penColor = brightColor();
        } else {
            penColor = anyColor();
        }
        penColorLife = randInt(4, 10);
    }
    --penColorLife;
}

// A short stroke at a random place, for a step that lay outside all monitors.
static bool drawElsewhere(int low, int high)
{
    POINT from = randomPointOnLaunch(72);
    POINT to = strayFrom(from, -200, 200, -160, 160);
    keepInside(from, 72);
    keepInside(to, 72);
    if (!paintSegments({from, to}, penColor, low, high)) return false;
    penLastPoint = to;
    return true;
}

static void walkPen()
{
    if (penPath.size() < 2 || penAtEnd()) newPenPath();
    const bool bold = randInt(0, 99) < 14;
    const int count = randInt(bold ? 5 : 3, bold ? 7 : 5);
    chooseColor();
    const std::vector<POINT> points = advancePen(count);
    // The width swells and thins along the path, by place and not at random.
    const int place = int(penPathIndex % 17);
    const int low = bold ? place % 6 + 10 : place % 7 + 6;
    const int spread = randInt(bold ? 18 : 10, bold ? 42 : 28);
    bool drawn = paintSegments(points, penColor, low, low + spread);
    if (drawn) {
        penLastPoint = points.back();
    } else {
        drawn = drawElsewhere(low, low + spread);
    }
    if (drawn) penLastValid = true;
    if (penAtEnd()) {
        penPath.clear();
        penPathIndex = 0;
    }
    if (!drawn) return;
    if (!outlineTracing && randInt(0, 99) < 34) queuePicture();
    playPenStepSound();
}

void autoDrawStep()
{
    if (outlineTracing) {
        if (traceOutlineStep()) playPenStepSound();
        return;
    }
    // An open scene continues; otherwise one may open, or the pen walks.
    if (!motifActive && !sketchActive) {
        if (randInt(0, 99) < 14) {
            startMotif();
        } else if (randInt(0, 99) < 12) {
            startSketch();
        }
    }
    if (motifActive) {
        if (stepMotif()) playPenStepSound();
    } else if (sketchActive) {
        if (stepSketch()) playPenStepSound();
    } else {
        walkPen();
    }
}
