#pragma once
// Scenes of thin strokes and blobs, laid out once and drawn a step at a time. An open scene survives a
// stop and goes on with its layout.

inline bool sketchActive = false;

// Lays out a new sketch; forgets an open scene of either kind.
void startSketch();

// Draws the next step; true only on the last one, or if no sketch is open.
bool stepSketch();

// Forgets an open sketch.
void clearSketch();
