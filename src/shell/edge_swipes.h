#pragma once
// A swipe from the edge of a touch screen opens the system's panels over the picture; a full-screen window
// can turn that off. Needs surfaces. Does nothing where Windows does not offer it.
void stopEdgeSwipes();

// Undoes stopEdgeSwipes; a second call does nothing.
void allowEdgeSwipes();
