#include "clearing/actions.h"

#include "autodraw/pen_paths.h"
#include "autodraw/sequencer.h"
#include "clearing/wipes.h"
#include "marks/bursts.h"
#include "sound/bank_a.h"
#include "sound/playback.h"

// Lengths of a run in steps, equally likely.
static constexpr int scatterRunSteps[] = {12, 24, 36, 48, 60};
static constexpr int autoDrawSteps[] = {42, 52, 62, 72, 88};

static void beginScatterRun()
{
    static constexpr ScatterShape shapes[] = {starsOnly, heartsOnly, anyShape, anyShape, anyShape};
    const int shape = randInt(0, 4);
    scatterShape = shapes[shape];
    const int length = randInt(0, 4);
    autoStepsLeft = scatterRunSteps[length];
}

static void beginAutoDrawing()
{
    const int length = randInt(0, 4);
    autoStepsLeft = autoDrawSteps[length];
    resetPen();
    penLastValid = false;  // the first path may begin anywhere
}

// Sets timer 3 for the next step; during auto-drawing it counts a flurry or may start one.
static void pauseForStep()
{
    int pause;
    if (autoMode != drawAction) {
        pause = randInt(82, 118);
    } else if (autoFlurryLeft > 0) {
        --autoFlurryLeft;
        pause = randInt(72, 98);
    } else if (randInt(0, 99) >= 17) {
        pause = randInt(88, 128);
    } else {
        autoFlurryLeft = randInt(6, 14);
        pause = randInt(72, 98);
    }
    startPrimaryTimer(3, UINT(pause));
}

void startAction(int action)
{
    autoMode = action;
    if (soundEnabled) playClick(actionClip);
    switch (action) {
    case scatterAction: beginScatterRun(); break;
    case wipeAction: startWipe(); return;
    case drawAction: beginAutoDrawing(); break;
    }
    pauseForStep();
}

static void scatterStep()
{
    if (randInt(0, 100) < 26) return scatterMarks(true);
    beginMark();
    const POINT place = randomPointOnLaunch(72);
    burst(place);
    playScatterSound();
}

void onTimer3()
{
    if (autoStepsLeft > 0) {
        if (autoMode == drawAction) {
            autoDrawStep();
        } else {
            scatterStep();
        }
        --autoStepsLeft;
        if (autoStepsLeft > 0) return pauseForStep();
    }
    // A picture left in the queue is dropped when auto-drawing next starts.
    stopPrimaryTimer(3);
    autoMode = noAction;
}

void stopAutoDrawing()
{
    if (surfaces.empty() || autoStepsLeft < 1) return;
    autoStepsLeft = 0;
    stopPrimaryTimer(3);
    autoMode = noAction;
    resetPen();
}

void startWipe()
{
    stopAutoDrawing();
    beginMark();
    revealWipe = false;
    if (randInt(0, 99) >= 4) {
        static constexpr WipeStyle plainStyles[] = {wipeFromLeft,   wipeFromRight,  wipeFromTop,
                                                    wipeFromBottom, wipeFromCorner, wipeBand};
        const int choice = randInt(0, 5);
        wipeStyle = plainStyles[choice];
    } else {
        wipeStyle = randInt(0, 1) == 0 ? wipeRing : wipeBubbles;
        revealWipe = true;
        revealColor = pickBackgroundColor();
    }
    wipeScale = randInt(0, 2);
    wipeCorner = randInt(0, 3);
    wipeStep = 0;
    wipeRunning = true;
    backgroundColor = pickBackgroundColor();
    startPrimaryTimer(5, 16);
    startWipeLoop();
}

static void haltWipe()
{
    stopPrimaryTimer(5);
    wipeRunning = false;
    stopWipeLoop();
}

static void floodWithRevealColor()
{
    backgroundColor = revealColor;
    HBRUSH brush = CreateSolidBrush(revealColor);
    for (const MonitorSurface &surface : surfaces) {
        const RECT whole = {0, 0, surface.width, surface.height};
        FillRect(surface.canvasDC, &whole, brush);
        invalidateWhole(surface);
    }
    DeleteObject(brush);
}

void wipeTick()
{
    if (!wipeRunning) return;  // a tick that was posted before the wipe was stopped
    HBRUSH brush = CreateSolidBrush(backgroundColor);
    bool done = false;
    for (const MonitorSurface &surface : surfaces)
        done = wipeSurface(surface, brush);  // only the last surface decides, on purpose
    DeleteObject(brush);
    ++wipeStep;
    if (!done && wipeStep <= 185) return;
    if (revealWipe) floodWithRevealColor();
    haltWipe();
    revealWipe = false;
}

void stopWipe()
{
    if (!wipeRunning || surfaces.empty()) return;
    haltWipe();
    for (const MonitorSurface &surface : surfaces)
        invalidateWhole(surface);
}
