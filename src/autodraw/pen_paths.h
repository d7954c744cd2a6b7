#pragma once
// The auto-drawing pen and the paths it walks. All points are virtual-screen points.
#include <vector>

#include "marks/primitives.h"

inline std::vector<POINT> penPath;  // what the pen is walking
inline size_t penPathIndex = 0;     // its place in penPath
inline MarkColor penColor = 0;
inline int penColorLife = 0;       // pen steps until the next colour
inline POINT penLastPoint = {};    // where the pen last stopped
inline bool penLastValid = false;  // penLastPoint holds a point

// Replaces penPath by a new one of 2 to 48 points and zeroes penPathIndex.
void newPenPath();

// The start of a path or scene, away from penLastPoint if that is valid. Becomes penLastPoint.
POINT freshPenStart();

// A point at least 360 pixels away, if twelve tries find one.
POINT farPointFrom(POINT from);

// Two draws, x before y, each from -reach to reach.
POINT randomOffset(int reachX, int reachY);

// The rounded point of a cubic Bezier curve at u, 0 to 1.
POINT curvePoint(POINT p0, POINT p1, POINT p2, POINT p3, float u);

double distanceBetween(POINT a, POINT b);
