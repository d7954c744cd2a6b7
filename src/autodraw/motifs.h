#pragma once
// Scenes that are bolder than sketches and recognisable.

// Lays out a new motif; drops an open scene of either kind.
void startMotif();

// Draws the next step; true on every step, false if no motif is open.
bool stepMotif();
