#pragma once
// Recognisable pictures as polylines in outlineQueue. The sequencer traces the queue line by line; the
// spacing of the points sets the speed. All points are virtual-screen points, lengths are pixels.
#include <vector>

#include "marks/primitives.h"

inline std::vector<std::vector<POINT>> outlineQueue;  // polylines of the picture being traced
inline size_t outlineStrokeIndex = 0;                 // the polyline being traced
inline size_t outlinePointIndex = 0;                  // the point reached in it
inline bool outlineTracing = false;                   // a picture is being traced
inline bool outlineQuick = false;                     // a large one: longer steps, a sound at its end
inline MarkColor outlineColor = 0;

// Chooses a picture and builds it around the point, which is moved inside the launch surface first.
void placeOutline(POINT point);

// Empties the queue and draws the picture's colour, which becomes the pen's. quick is for large pictures.
void beginOutline(bool quick);

// Adds a point, with evenly spaced points before it. A spacing below 8 counts as 8.
void appendSpaced(std::vector<POINT> &polyline, POINT point, int spacing);

// Adds a cubic curve from p0, the end of the polyline, clamped to the virtual screen.
void appendBezier(std::vector<POINT> &polyline, POINT p0, POINT p1, POINT p2, POINT p3);

// Adds an arc to the queue as a polyline, clamped to the virtual screen. Angles as in marks/angles.h.
void appendArc(POINT centre, int radius, float startAngle, float sweep, int segments, int spacing);

void outlineStar(POINT centre);
void outlineSquare(POINT centre);
void outlineDiamond(POINT centre);
void outlineHeart(POINT centre);
void outlineEllipse(POINT centre);
void outlineTriangle(POINT centre);
void outlineFlower(POINT centre);

// Large pictures: rare, with a sound at the end.
void outlineSun(POINT centre);
void outlineFace(POINT centre);
void outlineHouse(POINT centre);
void outlineRocket(POINT centre);
void outlineStickFigure(POINT centre);
void outlineRainbow(POINT centre);
