#pragma once
// A swipe from the edge of a touch screen brings up the system's panels over the picture. A full-screen
// window can ask for none. Needs surfaces; nothing happens on a Windows that cannot be asked.
void stopEdgeSwipes();

// A second call does nothing.
void allowEdgeSwipes();
