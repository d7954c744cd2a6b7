#pragma once
// The ways that the auto-drawing pen wanders. All points are virtual-screen points.
#include "marks/primitives.h"

inline constexpr float pi = 3.1415927f;

// Replaces penPath by a new one of 2 to 48 points and zeroes penPathIndex.
void newPenPath();

// Where a path or scene begins: away from where the pen last stopped, if it stopped. Becomes penLastPoint.
POINT freshPenStart();

// A place at least 360 pixels away, if one is found.
POINT farPointFrom(POINT from);

// Two draws, x before y, each up to its reach in both directions.
POINT randomOffset(int reachX, int reachY);

// The point of a cubic curve at u, 0 to 1, rounded.
POINT curvePoint(POINT p0, POINT p1, POINT p2, POINT p3, float u);

double distanceBetween(POINT a, POINT b);
