#pragma once
// The arrow keys and the keypad's 2, 4, 6 and 8 move a pen, so that a child can draw with the keyboard.
#include "marks/primitives.h"

inline bool penDotVisible = false;  // set by touch and the pen, never cleared
inline POINT penDotPoint = {};      // virtual-screen point

// One press of a pen key: a step of 56 pixels, or the wrap to the far edge of the desktop.
void penKey(uint32_t key);
