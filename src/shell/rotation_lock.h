#pragma once
// A tablet that is turned would turn its desktop, and the windows, which keep their size, would leave a part
// of it bare. Nothing happens on a Windows that does not know of rotation.
void holdRotation();

// Gives back the preference that holdRotation found; a second call does nothing.
void releaseRotation();
