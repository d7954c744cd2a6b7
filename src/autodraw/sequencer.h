#pragma once
// Auto-drawing: what one step of it draws. clearing/actions.h starts, paces and stops it.

inline int autoFlurryLeft = 0;  // steps left of a flurry: shorter pauses, longer steps of outlines

// One step: continues the open picture or scene, else opens a scene or walks the pen.
void autoDrawStep();

// Draws the next few points of outlineQueue; true if anything was drawn.
bool traceOutlineStep();

// Drops the pen's path and the picture being traced and ends a flurry. An open scene stays open.
void resetPen();
