#pragma once
// Recognisable pictures as polylines in outlineQueue. Nothing is drawn here: the sequencer traces the
// queue, so that the child sees the picture come into being line by line.
#include <vector>

#include "marks/primitives.h"

// Chooses a picture and builds it around the point (virtual-screen).
void placeOutline(POINT point);

// Empties the queue and draws the picture's colour. quick is for the large pictures.
void beginOutline(bool quick);

// Adds a point with evenly spaced ones on the way; a spacing below 8 counts as 8.
void appendSpaced(std::vector<POINT> &polyline, POINT point, int spacing);

// Adds a cubic curve, clamped to the virtual screen.
void appendBezier(std::vector<POINT> &polyline, POINT p0, POINT p1, POINT p2, POINT p3);

// Adds a polyline along an arc to the queue; angles in radians, y downwards.
void appendArc(POINT centre, int radius, double startAngle, double sweep, int segments, int spacing);

void outlineStar(POINT centre);
void outlineSquare(POINT centre);
void outlineDiamond(POINT centre);
void outlineHeart(POINT centre);
void outlineEllipse(POINT centre);
void outlineTriangle(POINT centre);
void outlineFlower(POINT centre);
void outlineSun(POINT centre);
void outlineFace(POINT centre);
void outlineHouse(POINT centre);
void outlineRocket(POINT centre);
void outlineStickFigure(POINT centre);
void outlineRainbow(POINT centre);
