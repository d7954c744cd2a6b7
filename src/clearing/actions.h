#pragma once
// The timed actions from start to end: a run of scattered marks and auto-drawing on timer 3, and the wipe, an
// animated clear, on timer 5.

// Starts one of TimedAction. Callers stop what runs if it is to stop; the menu's buttons do not. A scene that
// a stop left open continues.
void startAction(int action);

// Timer 3: one step of a scatter run or of auto-drawing, then the next pause or the end of the run.
void onTimer3();

// Ends a scatter run or auto-drawing; does nothing if neither runs.
void stopAutoDrawing();

// Stops the other actions, picks a style and starts timer 5.
void startWipe();

// Timer 5, every 16 ms: one step of the wipe on every surface.
void wipeTick();

// Stops a running wipe; the canvas stays half wiped.
void stopWipe();
