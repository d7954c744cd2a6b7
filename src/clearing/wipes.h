#pragma once
// The animated clear: eight styles that paint a fresh colour over what the child drew, on every monitor
// at once, one step each 16 ms.
#include "marks/gdi_plus.h"
#include "shell/base/state.h"

inline int wipeStyle = 0;                 // 0 to 7
inline int wipeStep = 0;                  // ticks since the wipe began
inline int wipeScale = 0;                 // 0 to 2, size class of the ring; drawn for every wipe
inline int wipeCorner = 0;                // 0 to 3; drawn for every wipe
inline bool revealWipe = false;           // it ends by flooding every canvas with revealColor
inline MarkColor revealColor = 0xFFFFFF;  // second colour of a reveal wipe

// Chooses a style and starts timer 5; stops a running action first.
void startWipe();

// Cuts a running wipe off; the canvas stays half wiped.
void stopWipe();

// One step on every surface: timer 5.
void wipeTick();

// Drawing passes of the reveal wipes; t runs from 0 to 1.
void drawRingBlobs(GraphicsScope &scope, const MonitorSurface &surface, float t);
void drawRevealRays(GraphicsScope &scope, const MonitorSurface &surface, float t, bool inward);
