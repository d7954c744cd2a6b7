#pragma once
// Told that the windows are full screen, the system's shell keeps its taskbar and notifications below them.
// Needs surfaces; nothing happens without a shell.
void markFullscreen();

// A second call does nothing.
void unmarkFullscreen();
