#pragma once
// Marks of the pointer and of auto-drawing. There is no stroke object: each segment is drawn when its
// input arrives. All points are virtual-screen points.
#include <vector>

#include "marks/primitives.h"

// Set at each left press. Touch and keys use what the last press chose.
inline MarkColor strokeColor = 0x0032C8FF;  // of all segments unless rainbowStroke is set
inline bool rainbowStroke = true;           // each segment draws a new colour
inline int rainbowCooldown = 0;             // presses before the next rainbow is possible

// A left press chooses the style of its stroke.
void chooseStrokeStyle();

// A round dot; each monitor draws its own size and colour.
void tapMark(POINT point);

// One straight segment of random width between the two bounds, which may come in either order.
void brushStroke(POINT from, POINT to, int sizeA, int sizeB);

// With the usual widths, 14 to 92.
inline void brushStroke(POINT from, POINT to)
{
    brushStroke(from, to, 14, 92);
}

// A polyline, each segment on one surface only; true if any segment was drawn.
bool paintSegments(const std::vector<POINT> &points, MarkColor color, int sizeA, int sizeB);

// A filled ellipse with a dark edge.
void paintBlob(POINT centre, int radiusX, int radiusY, MarkColor color);

// An open curve with its ends pointing up: a smile.
void paintArc(POINT centre, int radiusX, int radiusY, MarkColor color);
