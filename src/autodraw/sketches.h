#pragma once
// Scenes of thin strokes and blobs.

// Lays out a new sketch; drops an open scene of either kind.
void startSketch();

// Draws the next step; true only on the last one, or if no sketch is open.
bool stepSketch();
