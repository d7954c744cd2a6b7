#pragma once
// The recipes of the mascot's voice. Frequencies are in Hz, amp is a gain from 0 to 1; a boost is how far
// a tone starts above its base, in Hz. Noise is drawn from clipRng.
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
