#pragma once
// Recognisable pictures as polylines in outlineQueue. Nothing is drawn here: the sequencer traces the
// queue, so that the child sees the picture come into being line by line. The spacing of the points is
// the speed of the pen. All points are virtual-screen points, lengths pixels.
#include <vector>

#include "marks/primitives.h"

// Chooses a picture and builds it around the point, which is moved inside the launch surface first.
void placeOutline(POINT point);

// Empties the queue and draws the picture's colour, which the pen takes over. quick is for the large
// pictures.
void beginOutline(bool quick);

// Adds a point with evenly spaced ones on the way; a spacing below 8 counts as 8.
void appendSpaced(std::vector<POINT> &polyline, POINT point, int spacing);

// Adds a cubic curve, clamped to the virtual screen. p0 is where the polyline ends.
void appendBezier(std::vector<POINT> &polyline, POINT p0, POINT p1, POINT p2, POINT p3);

// Adds a polyline along an arc to the queue, clamped to the virtual screen; angles in radians, growing
// clockwise on the screen.
void appendArc(POINT centre, int radius, float startAngle, float sweep, int segments, int spacing);

void outlineStar(POINT centre);
void outlineSquare(POINT centre);
void outlineDiamond(POINT centre);
void outlineHeart(POINT centre);
void outlineEllipse(POINT centre);
void outlineTriangle(POINT centre);
void outlineFlower(POINT centre);

// The large ones, rare and heard when they are done.
void outlineSun(POINT centre);
void outlineFace(POINT centre);
void outlineHouse(POINT centre);
void outlineRocket(POINT centre);
void outlineStickFigure(POINT centre);
void outlineRainbow(POINT centre);
