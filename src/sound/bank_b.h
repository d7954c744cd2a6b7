#pragma once
// The mascot's sounds. Only mascotCall and mascotChatter are ever played; the rest is built all the same.
#include <array>
#include <vector>

#include "sound/clip.h"

inline std::array<SoundClip, 10> mascotNotes;
inline SoundClip mascotCall;
inline std::array<SoundClip, 3> mascotChatter;  // they differ only in their noise
inline SoundClip mascotFanfare;
inline std::vector<SoundClip> mascotRepertoire;  // 26 clips

// Fills every slot above. Draws lengths and noise from clipRng.
void buildSoundBankB();
