#pragma once
// Turning a tablet rotates its desktop, and our windows, which keep their size, would no longer cover it.
// Does nothing where Windows does not support rotation.
void holdRotation();

// Restores the preference that holdRotation found; a second call does nothing.
void releaseRotation();
