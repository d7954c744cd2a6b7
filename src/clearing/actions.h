#pragma once

// Begins a timed action: 1 a run of scattered marks, 2 a wipe, 3 auto-drawing. The caller has stopped
// what runs; a scene that a stop left open goes on.
void startAction(int action);
