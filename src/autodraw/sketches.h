#pragma once
// Scenes of thin strokes and blobs, laid out once and drawn a step at a time. An open scene survives a
// stop and goes on with its layout.
#include <vector>

#include "marks/primitives.h"

inline bool sketchActive = false;
inline std::vector<POINT> sketchPoints;  // virtual-screen points, laid out by startSketch

void startSketch();

// Draws the next step; true only on the last one, or if no sketch is open.
bool stepSketch();

// Forgets an open sketch.
void clearSketch();
