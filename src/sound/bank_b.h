#pragma once
// The mascot's voice. Only mascotCall and mascotChatter are ever heard; the rest is its larger
// repertoire, built all the same.
#include <array>
#include <vector>

#include "sound/clip.h"

inline std::array<SoundClip, 10> mascotNotes;
inline SoundClip mascotCall;
inline std::array<SoundClip, 3> mascotChatter;  // alike but for their noise
inline SoundClip mascotFanfare;
inline std::vector<SoundClip> mascotRepertoire;  // 26 clips

// Fills every slot above; draws lengths and noise from clipRng.
void buildSoundBankB();
