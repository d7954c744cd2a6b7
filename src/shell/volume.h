#pragma once

inline float volumeClamp = -1.0f;  // the limit of the master volume, 0 to 1; -1 for none

// Lowers a master volume above volumeClamp to it; never raises one.
void clampMasterVolume();
