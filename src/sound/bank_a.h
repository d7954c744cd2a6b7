#pragma once
// The program's own sounds: keys, clicks, strokes, wipes, the start. Filled once at start-up and never moved
// afterwards, because the player reads the bytes while they sound.
#include <array>

#include "sound/clip.h"

inline SoundClip tapClip;                      // a tap with the left button or a finger
inline SoundClip markClipBell, markClipTrill;  // marks in general, equally likely
inline SoundClip actionClip;                   // the menu opens, a timed action starts
inline SoundClip captureClip;                  // the screen was copied or saved
inline std::array<SoundClip, 12> wipeClips;    // looped while a wipe runs
inline std::array<SoundClip, 6> penClips;      // the cursor-key pen; only entry 2 is played
inline SoundClip scatterClipAny, scatterClipStars, scatterClipHearts;
inline std::array<SoundClip, 3> startClips;
inline std::array<SoundClip, 3> spaceClips;
inline std::array<SoundClip, 14> keyClips;     // keys up to press count 4
inline std::array<SoundClip, 12> noteClips;    // steps of the auto-drawing pen, in turn
inline std::array<SoundClip, 10> strokeLoops;  // looped while a stroke is drawn

// Fills every slot above. Draws noise from soundRng.
void buildSoundBankA();
