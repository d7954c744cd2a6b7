#pragma once
// Scenes that are bolder than sketches and recognisable. Drawn a step at a time like them.

inline bool motifActive = false;

// Lays out a new motif; forgets an open scene of either kind.
void startMotif();

// Draws the next step; true on every step, false if no motif is open.
bool stepMotif();

// Forgets an open motif.
void clearMotif();
