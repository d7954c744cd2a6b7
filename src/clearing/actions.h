#pragma once

// Begins a timed action: 1 a run of scattered marks, 2 a wipe, 3 auto-drawing. What runs is
// stopped by the caller, where it is to stop: the menu's buttons start over it. A scene that a stop left
// open goes on.
void startAction(int action);
