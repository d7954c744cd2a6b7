#pragma once
// The timed actions from start to end: a run of scattered marks and auto-drawing on timer 3, and the wipe, an
// animated clear, on timer 5.

// Starts a TimedAction. A wipe ends a run on timer 3; nothing else that runs is stopped, so callers do that
// first, except the menu. Auto-drawing continues a scene that a stop left open.
void startAction(int action);

// Timer 3: one step of a scatter run or of auto-drawing, then the next pause or the end of the run.
void onTimer3();

// Ends a scatter run or auto-drawing; does nothing if neither runs.
void stopAutoDrawing();

// Stops scattering or auto-drawing, picks a style and starts timer 5; a running wipe starts over.
void startWipe();

// Timer 5, every 16 ms: one step of the wipe on every surface.
void wipeTick();

// Stops a running wipe; the canvas stays half wiped.
void stopWipe();
