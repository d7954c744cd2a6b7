#pragma once
#include "marks/primitives.h"

// A music note with a spark beside it. point is a virtual-screen point, kind 0 to 2 (plain, with a flag,
// two under a beam), held the press count, which makes it larger.
void drawMusicNote(POINT point, int kind, MarkColor color, int held);
