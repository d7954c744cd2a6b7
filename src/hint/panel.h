#pragma once
// The panel that shows grown-ups how to quit. Its card floats in a window of its own, takes no focus and
// reacts only to a click on its checkbox; the child plays on beneath. Coordinates are client coordinates
// of the full-screen window below it, in pixels.
#include <cstdint>

#include "hint/card.h"
#include "shell/base/state.h"

inline bool exitHintEnabled = true;     // the setting; off after the opt-out
inline bool hintBoxValid = false;       // hintBox has a positive size
inline uint8_t hintAlpha = 0;           // of the float window: 255 while shown, 0 otherwise
inline GpBitmap *hintBitmap = nullptr;  // the rendered card, owned; null if there is none
inline int hintBitmapWidth = 0;         // of hintBitmap
inline int hintBitmapHeight = 0;
inline RECT hintBox = {};               // the card with its margin
inline HWND hintOwnerWindow = nullptr;  // the full-screen window below it
inline DWORD hintNotBefore = 0;         // tick before which the idle hint stays away; 0 for none
inline HWND idleHintWindow = nullptr;   // where the idle hint shows; null while it may not
inline int idleHintWidth = 0;           // of idleHintWindow
inline int idleHintHeight = 0;

// Shows the panel over a full-screen window of that size for 10 seconds; does nothing below 64 by 64.
void showHintPanel(HWND window, int width, int height);

// Ends a showing and acts on a ticked checkbox. Does nothing while the panel is hidden.
void closeHintPanel();

// Ends a showing on the way out: ignores the checkbox and destroys the float window.
void discardHintPanel(HWND window);

// Handles a click; true if it toggled the checkbox.
bool hintPanelClick(int x, int y);
