#pragma once
// The rules of playback. The system's player has one voice per process: a one-shot is dropped while another
// sound plays, a loop cuts in. Ticks are GetTickCount milliseconds with unsigned 32-bit differences.
#include <cstdint>

#include "shell/base/state.h"
#include "shell/base/windows_api.h"
#include "sound/clip.h"

inline DWORD lastSoundTick = 0;                  // last tap, click or mark sound
inline DWORD lastKeySoundTick = 0;               // last key sound
inline DWORD lastSpaceTick = 0;                  // last Space key that was not refused; 0 means never
inline DWORD lastScatterTick = 0;                // last playScatterSound that passed its gate
inline DWORD lastPenStepTick = 0;                // last step sound of the cursor-key or auto-drawing pen
inline DWORD lastNoteTick = 0;                   // last clip of noteClips
inline int noteClipCounter = 0;                  // noteClips played
inline unsigned keyVoiceNext = 0;                // next slot of the ring for key and pen sounds, 0 to 5
inline unsigned mashVoiceNext = 0;               // next slot of the ring for mash sounds, 0 to 3
inline bool strokeLoopActive = false;            // a stroke loop is playing
inline const uint8_t *strokeLoopClip = nullptr;  // its bytes, needed to stop it
inline bool wipeLoopPlaying = false;             // a wipe clip is looping
inline int wipeClipIndex = 0;                    // which of wipeClips, 0 to 11

// Plays a clip once if it is not empty; dropped while another sound plays.
void playClip(const SoundClip &clip);

// True if at least ms milliseconds have passed since tick, which then becomes now.
bool passGate(DWORD &tick, DWORD ms);

// The general sound of marks, one of two clips, without a gate; sets lastSoundTick.
void playMarkSound();

void playClick(const SoundClip &clip);  // without a gate; sets lastSoundTick
void playStartClip();
void playSpaceClip();
void playKeySound(uint32_t key, int pressCount);
void playPenSound(uint32_t key);
void playMashVoice();
void playScatterSound();
void playPenStepSound();  // draws from markRng even without sound, so that muting does not change the picture

void startStrokeLoop();
void stopStrokeLoop();
void startWipeLoop();
void stopWipeLoop();

void playMascotCall();  // cuts off any other sound
void playMascotChatter();
