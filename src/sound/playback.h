#pragma once
// What sounds and what stays silent. The system's player has one voice per process: a one-shot yields to
// whatever sounds, a loop cuts in. Ticks are GetTickCount, differences unsigned 32-bit.
#include <cstdint>

#include "shell/base/state.h"
#include "shell/base/windows_api.h"
#include "sound/clip.h"

inline DWORD lastSoundTick = 0;                  // last click-like sound: tap, action, capture, mark pair
inline DWORD lastKeySoundTick = 0;               // last key sound
inline DWORD lastSpaceTick = 0;                  // last accepted Space key; 0 means never
inline DWORD lastScatterTick = 0;                // last sound that passed the gate of playScatterSound
inline DWORD lastPenStepTick = 0;                // last step of a pen, of the cursor keys or of auto-drawing
inline DWORD lastNoteTick = 0;                   // last clip of noteClips
inline int noteClipCounter = 0;                  // noteClips played
inline unsigned keyVoiceNext = 0;                // next slot of the ring of key and pen sounds, 0 to 5
inline unsigned mashVoiceNext = 0;               // next slot of the ring of mash sounds, 0 to 3
inline bool strokeLoopActive = false;            // a stroke loop has started
inline const uint8_t *strokeLoopClip = nullptr;  // its bytes, for stopping it
inline bool wipeLoopPlaying = false;             // a wipe clip has started
inline int wipeClipIndex = 0;                    // which of wipeClips, 0 to 11

// Plays a clip once, if it has a header; yields to what already sounds.
void playClip(const SoundClip &clip);

// Opens a gate: true, and tick becomes now, if at least ms have passed since tick.
bool passGate(DWORD &tick, DWORD ms);

// The general sound of marks: one of the two mark clips, without a gate; sets lastSoundTick.
void playMarkPair();

void playClick(const SoundClip &clip);  // a click-like sound without a gate; sets lastSoundTick
void playStartClip();
void playSpaceClip();
void playKeySound(uint32_t key, int pressCount);
void playPenSound(uint32_t key);
void playMashVoice();
void playScatterSound();
void playPenStepSound();  // draws from markRng even in silence, so that silence changes no picture

void startStrokeLoop();
void stopStrokeLoop();
void startWipeLoop();
void stopWipeLoop();

void playMascotCall();  // cuts off whatever sounds
void playMascotChatter();
