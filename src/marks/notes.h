#pragma once
#include "marks/primitives.h"

// A music note with a spark beside it. point is a virtual-screen point; kind is 0 (plain), 1 (with a flag)
// or 2 (two under a beam); held is the press count, and up to 6 the note grows with it.
void drawMusicNote(POINT point, int kind, MarkColor color, int held);
