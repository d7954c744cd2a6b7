#pragma once
// The card with the texts of the exit hint: its layout and its drawing. Coordinates are client
// coordinates of the full-screen window below it, in pixels.
#include "shell/base/windows_api.h"

inline constexpr int minOwnerSide = 64;  // pixels; no card fits a smaller window

inline RectF hintPanelRect = {};        // the card
inline RectF hintCheckRect = {};        // the clickable row of the checkbox
inline bool hintOptOutChecked = false;  // the checkbox is ticked

// The card's place and size over a window of that size; sets hintCheckRect, too. False, with nothing
// changed, if the window is too small or no font family can be used.
bool measureHintPanel(GpGraphics *graphics, int width, int height, RectF &rect);

// Draws the card at hintPanelRect. False if no font family can be used.
bool drawHintPanel(GpGraphics *graphics);
