#pragma once
// Marks of the pointer, and their relatives that auto-drawing uses. A stroke has no object of its own:
// each segment is drawn the moment its input arrives. All points are virtual-screen points.
#include <vector>

#include "marks/primitives.h"

// Per drag, set at each left press; touch and keys borrow what the last press chose.
inline MarkColor strokeColor = 0x0032C8FF;  // of every segment of a plain stroke
inline bool rainbowStroke = true;           // each segment takes a fresh colour
inline int rainbowCooldown = 0;             // presses that must pass before the next rainbow

// A left press chooses the style of its stroke.
void chooseStrokeStyle();

// A round dot of random size and colour, each monitor's own.
void tapMark(POINT point);

// One straight segment of random width between the two bounds, which may come in either order.
void brushStroke(POINT from, POINT to, int sizeA, int sizeB);

// A polyline, each segment on one surface only. True if any segment was drawn.
bool paintSegments(const std::vector<POINT> &points, MarkColor color, int sizeA, int sizeB);

// A filled ellipse with a dark edge.
void paintBlob(POINT centre, int radiusX, int radiusY, MarkColor color);

// An open curve with its ends pointing up: a smile.
void paintArc(POINT centre, int radiusX, int radiusY, MarkColor color);
