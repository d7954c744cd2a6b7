#pragma once
// The larger reactions, picked by weighted chance. All points are virtual-screen points.
#include "marks/primitives.h"
#include "shell/base/state.h"

// A stamp, a big shape or a tangle of strokes around the point. The caller has set canvasDirty.
void burst(POINT point);

// The big event of the Space key, in the middle of the launch monitor.
void spaceBurst();

// One mark somewhere on each monitor; withSound only in timed action 1.
void scatterMarks(bool withSound);

// One large star or turned square, on one surface only.
void popShape(POINT point);

// A curve with a colour and width of its own on each monitor.
void bezierStroke(POINT p0, POINT p1, POINT p2, POINT p3);

// A line that waves on its way, as a chain of brush strokes. Its end may be off by the wave.
void wobblyStroke(POINT from, POINT to);

void spiralStroke(POINT centre);
void catParade(POINT point);
void stampRayBurst(POINT centre);
