#pragma once
// The card that tells grown-ups how to quit. It floats in a window of its own, takes no focus and reacts
// to nothing but a click on its checkbox; the child plays on beneath. Coordinates are client coordinates
// of the owner, in pixels.
#include <cstdint>

#include "shell/base/state.h"
#include "shell/base/windows_api.h"

inline bool exitHintEnabled = true;     // the setting; off after the opt-out
inline bool hintOptOutChecked = false;  // the checkbox is ticked
inline bool hintBoxValid = false;       // hintBox has a positive size
inline uint8_t hintAlpha = 0;           // of the float window: 255 while shown, 0 otherwise
inline GpBitmap *hintBitmap = nullptr;  // the rendered card, owned; null if there is none
inline int hintBitmapWidth = 0;         // of hintBitmap
inline int hintBitmapHeight = 0;
inline RECT hintBox = {};               // the card with its margin
inline RectF hintPanelRect = {};        // the card
inline RectF hintCheckRect = {};        // the clickable row of the checkbox
inline HWND hintOwnerWindow = nullptr;  // the full-screen window it lies over

int readHintCount();  // launches on which it showed; 0 if absent, unreadable or negative
void writeHintCount(int count);

// Shows the panel over a full-screen window of that size for 10 seconds; nothing below 64 by 64 pixels.
void showHintPanel(HWND window, int width, int height);

// Ends a showing; a ticked checkbox takes effect now. Nothing happens while it is hidden.
void closeHintPanel();

// Ends a showing on the way out: no opt-out, and the float window is destroyed.
void discardHintPanel(HWND window);

// A click; true if it toggled the checkbox.
bool hintPanelClick(int x, int y);

// The card's place and size over an owner of that size, and hintCheckRect with it. False, and nothing is
// changed, if the owner is too small or there is no family to write with.
bool measureHintPanel(GpGraphics *graphics, int width, int height, RectF &rect);

// Draws the card at hintPanelRect. False if there is no family to write with.
bool drawHintPanel(GpGraphics *graphics);
