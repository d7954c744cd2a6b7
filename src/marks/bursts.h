#pragma once
// The larger reactions, picked by weighted chance. All points are virtual-screen points.
#include "marks/primitives.h"
#include "shell/base/state.h"

// A stamp, a big shape or a tangle of strokes around the point. The caller has set canvasDirty.
void burst(POINT point);

// The reaction to the Space key, in the middle of the launch monitor.
void spaceBurst();

// One mark at a random place on each monitor. withSound is true only in a scatter run.
void scatterMarks(bool withSound);

// One large star or turned square, on one surface only.
void popShape(POINT point);

// A curve; each monitor draws its own colour and width.
void bezierStroke(POINT p0, POINT p1, POINT p2, POINT p3);

// A wavy line made of brush strokes. Its end may miss the point by the height of the wave.
void wobblyStroke(POINT from, POINT to);

void spiralStroke(POINT centre);
void catParade(POINT point);
void stampRayBurst(POINT centre);
