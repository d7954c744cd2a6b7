#pragma once
// The recipes of the mascot's sounds. Frequencies are in Hz, amp is a gain from 0 to 1, boost is how many Hz
// above its base a tone starts. Noise comes from clipRng.
#include "sound/clip.h"

SoundClip genMascotNote(float freq, int ms, float amp);
SoundClip genMascotCall(float amp);
SoundClip genMascotChatter(float amp);
SoundClip genMascotFanfare();
SoundClip genMascotKnock(float boost, float amp);
SoundClip genMascotDrop(float boost, float amp);
SoundClip genMascotPluck(float freq, float amp);
SoundClip genMascotTrill(float amp);
SoundClip genMascotChirp(float amp);
SoundClip genMascotRiser(float amp);
SoundClip genMascotWobble(float amp);
