#pragma once
// Drawing without the child: timer 3 steps a counted run of scattered marks (action 1) or of
// auto-drawing (action 3). All points are virtual-screen points.
#include <vector>

#include "marks/primitives.h"
#include "shell/base/state.h"

inline int autoFlurryLeft = 0;  // steps left of a flurry: shorter pauses, longer steps of outlines

inline std::vector<POINT> penPath;  // the way the pen is walking
inline size_t penPathIndex = 0;     // its place in penPath
inline MarkColor penColor = 0;
inline int penColorLife = 0;       // pen steps that penColor stays
inline POINT penLastPoint = {};    // where the pen last stopped
inline bool penLastValid = false;  // penLastPoint holds a point

inline std::vector<std::vector<POINT>> outlineQueue;  // polylines of the picture being traced
inline size_t outlineStrokeIndex = 0;                 // the polyline being traced
inline size_t outlinePointIndex = 0;                  // the point reached in it
inline bool outlineTracing = false;                   // a picture is being traced
inline bool outlineQuick = false;                     // a large one: longer steps, a sound at its end
inline MarkColor outlineColor = 0;

// One firing of timer 3: one step, then the next interval or the end of the run.
void onTimer3();

// Milliseconds until the next step; may start a flurry of action 3, and counts its steps.
int nextStepPause();

// One step of action 3.
void autoDrawStep();

// Draws the next few points of outlineQueue; true if anything was drawn.
bool traceOutlineStep();

// Empties the pen's path and the picture being traced and ends a flurry; an open scene stays open and goes
// on later.
void resetPen();

// Ends action 1 or 3. Nothing happens while neither runs.
void stopAutoDrawing();
