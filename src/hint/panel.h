#pragma once
// The card that tells grown-ups how to quit. It floats in a window of its own, takes no focus and reacts
// to nothing but a click on its checkbox; the child plays on beneath.
#include "shell/windows_api.h"

inline bool exitHintEnabled = true;     // the setting; off after the opt-out
inline bool hintVisible = false;        // the panel is showing
inline bool hintOptOutChecked = false;  // the checkbox is ticked
inline HWND hintOwnerWindow = nullptr;  // the full-screen window it lies over
inline HWND hintFloatWindow = nullptr;  // the layered window
inline DWORD hintNotBefore = 0;         // GetTickCount before which the idle rule may not show it
inline HWND idleHintWindow = nullptr;   // where the idle rule shows it, set at start-up
inline int idleHintWidth = 0;
inline int idleHintHeight = 0;

int readHintCount();  // launches on which it showed; 0 if absent or unreadable
void writeHintCount(int count);

// Shows the panel over a full-screen window of that size for 10 seconds; nothing below 64 by 64 pixels.
void showHintPanel(HWND window, int width, int height);

// Ends a showing; a ticked checkbox takes effect now. Nothing happens while it is hidden.
void closeHintPanel();

// Ends a showing on the way out: no opt-out, and the float window is destroyed.
void discardHintPanel(HWND window);

// A click at client coordinates of the owner; true if it toggled the checkbox.
bool hintPanelClick(int x, int y);
