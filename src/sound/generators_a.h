#pragma once
// The recipes of the program's own sounds. Frequencies are in Hz, amp is a gain from 0 to 1, boost is how
// many Hz above its base a tone starts. Noise comes from soundRng.
#include <span>

#include "sound/clip.h"

SoundClip genDecaySine(int freq, int ms, float amp);

// Two notes and a ringing tenth above the first. Also computed during play, so it must be fast.
SoundClip genChime(int freqA, int freqB, int ms, float amp);

SoundClip genTrill(int ms, float amp);
SoundClip genBoop(int ms, float amp);
SoundClip genKnock(int boost, float amp);
SoundClip genTick(float boost, float amp);
SoundClip genPluck(int freq, int ms, float amp);
SoundClip genDropTone(float boost, float amp);
SoundClip genDrum(float amp);
SoundClip genWobble(float amp);
SoundClip genSwish(float amp);
SoundClip genRiser(float amp);
SoundClip genBrushNoise(float amp);
SoundClip genBuzz(float amp);
SoundClip genZap(float amp);
SoundClip genHum(float amp);
SoundClip genHiss(float amp);
SoundClip genFuzzRiser(float amp);

// Notes one after another, each cut off when the next begins.
SoundClip genArpeggio(std::span<const int> notes, int noteMs, float amp);
SoundClip genStartJingle(int index);

SoundClip genKnocks(float amp);
SoundClip genPings(float amp);

// A texture of 250 ms that loops without a gap; variant 0 to 8.
SoundClip genLoopVoice(int variant, float amp);
SoundClip genBirdChirps(float amp);
