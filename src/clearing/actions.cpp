#include "clearing/actions.h"

#include "autodraw/sequencer.h"
#include "clearing/wipes.h"
#include "marks/bursts.h"
#include "sound/bank_a.h"
#include "sound/playback.h"

// Lengths of a run in steps, each as likely as the others.
static constexpr int scatterRunSteps[] = {12, 24, 36, 48, 60};
static constexpr int autoDrawSteps[] = {42, 52, 62, 72, 88};

static void beginScatterRun()
{
    const int shape = randInt(0, 4);
    scatterShape = shape < 2 ? shape + 1 : 0;  // stars only, hearts only, or any
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

void startAction(int action)
{
    autoMode = action;
    if (soundEnabled) playClick(actionClip);
    switch (action) {
    case 1: beginScatterRun(); break;
    case 2: startWipe(); return;
    case 3: beginAutoDrawing(); break;
    }
    const int pause = nextStepPause();
    startPrimaryTimer(3, UINT(pause));
}
