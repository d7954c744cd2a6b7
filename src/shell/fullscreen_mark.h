#pragma once
// Marks the windows as full screen, so that taskbar and notifications stay below them. Needs surfaces. Does
// nothing if the desktop has no taskbar.
void markFullscreen();

// Undoes markFullscreen; a second call does nothing.
void unmarkFullscreen();
