#pragma once
// The ways that the auto-drawing pen wanders. All points are virtual-screen points.
#include "marks/primitives.h"

// Replaces penPath by a new one of at most 48 points and zeroes penPathIndex.
void newPenPath();

// Where a path or scene begins: away from where the pen last stopped, if it stopped. Becomes penLastPoint.
POINT freshPenStart();

// A place at least 360 pixels away, if one is found.
POINT farPointFrom(POINT from);
