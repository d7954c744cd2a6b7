#pragma once
// The eight styles of the wipe, which paint a new colour over the canvases a step at a time.
#include "marks/gdi_plus.h"

enum WipeStyle {
    wipeFromLeft,
    wipeFromRight,
    wipeFromTop,
    wipeFromBottom,
    wipeFromCorner,
    wipeRing,
    wipeBand,
    wipeBubbles
};

inline int wipeStyle = wipeFromLeft;      // of the current or last wipe
inline int wipeStep = 0;                  // ticks since the wipe began
inline int wipeScale = 0;                 // 0 to 2, size class of the ring; drawn for every wipe
inline int wipeCorner = 0;                // bit 0 right, bit 1 bottom; drawn for every wipe
inline bool revealWipe = false;           // the wipe ends by filling every canvas with revealColor
inline MarkColor revealColor = 0xFFFFFF;  // second colour of a reveal wipe

// Paints the current step on one surface; true if the surface is done. brush has backgroundColor.
bool wipeSurface(const MonitorSurface &surface, HBRUSH brush);

// The drawing passes of the reveal wipes; t runs from 0 to 1.
void drawRingBlobs(GraphicsScope &scope, const MonitorSurface &surface, float t);
void drawRevealRays(GraphicsScope &scope, const MonitorSurface &surface, float t, bool inward);
