#include "sound/playback.h"

#include <algorithm>
#include <array>

#include "marks/random.h"
#include "sound/bank_a.h"
#include "sound/bank_b.h"
#include "sound/generators_a.h"

static constexpr DWORD playOnce = SND_ASYNC | SND_NODEFAULT | SND_MEMORY | SND_NOSTOP;
static constexpr DWORD playLooped = SND_ASYNC | SND_NODEFAULT | SND_MEMORY | SND_LOOP;
static constexpr DWORD playCutting = SND_ASYNC | SND_NODEFAULT | SND_MEMORY;
static constexpr DWORD stopLoop = SND_ASYNC | SND_MEMORY | SND_PURGE;

static bool handToPlayer(const uint8_t *bytes, DWORD flags)
{
    return PlaySoundW(reinterpret_cast<const wchar_t *>(bytes), nullptr, flags);
}

void playClip(const SoundClip &clip)
{
    if (isPlayable(clip)) handToPlayer(clip.data(), playOnce);
}

bool passGate(DWORD &tick, DWORD ms)
{
    const DWORD now = GetTickCount();
    if (now - tick < ms) return false;
    tick = now;
    return true;
}

void playMarkSound()
{
    lastSoundTick = GetTickCount();
    const int pick = soundRand(0, 1);
    playClip(pick == 1 ? markClipTrill : markClipBell);
}

void playClick(const SoundClip &clip)
{
    lastSoundTick = GetTickCount();
    playClip(clip);
}

void playStartClip()
{
    const int pick = soundRand(0, 2);
    playClip(startClips[size_t(pick)]);
}

void playSpaceClip()
{
    const int pick = soundRand(0, 2);
    playClip(spaceClips[size_t(pick)]);
}

// Clips computed during play. Plays that are dropped take a slot too, so a slot can be refilled while its old
// clip still sounds; the old clip lives on until sixteen more were replaced.
static std::array<SoundClip, 6> keyVoiceRing;   // upper levels of keys, and the pen
static std::array<SoundClip, 4> mashVoiceRing;  // mashing
static std::array<SoundClip, 16> replacedClips;
static size_t replacedNext = 0;

template <size_t size>
static void playFresh(std::array<SoundClip, size> &ring, unsigned &next, SoundClip clip)
{
    SoundClip &slot = ring[next];
    replacedClips[replacedNext] = std::move(slot);
    replacedNext = (replacedNext + 1) % replacedClips.size();
    slot = std::move(clip);
    playClip(slot);
    next = (next + 1) % unsigned(size);
}

// Each further press of a key is one level higher. From the fourth press on the note may leap, from the fifth
// on it is computed.
void playKeySound(uint32_t key, int pressCount)
{
    static constexpr int scale[] = {262, 294, 330, 349, 392, 440, 494, 523, 587, 659, 784, 880};
    const int level = std::clamp(pressCount - 1, 0, 5);
    const uint32_t base = key + uint32_t(level);
    uint32_t index = base % 14;
    if (level >= 3) {
        // Drawn at the upper levels too, which ignore the result.
        const int chance = soundRand(0, 99);
        if (chance < 8 * level + 25) {
            const uint32_t leap = uint32_t(soundRng()) >> 30;
            index = (index + 1 + leap) % 14;
        }
    }
    if (level < 4) return playClip(keyClips[index]);
    const uint32_t step = base % 12;
    const int freqA = scale[step];
    const int freqB = scale[(step + 3 + uint32_t(level) / 2) % 12];
    const int ms = int(5u * key % 56) + 6 * level + 112;
    const float amp = 0.009f * float(level) + 0.135f;
    playFresh(keyVoiceRing, keyVoiceNext, genChime(freqA, freqB, ms, amp));
}

static SoundClip genPenVoice(int freqA, int freqB)
{
    return genChime(freqA, freqB, 92, 0.12f);
}

static SoundClip penVoice(uint32_t key)
{
    switch (key) {
    case VK_LEFT:
    case VK_NUMPAD4: return genPenVoice(392, 494);
    case VK_UP:
    case VK_NUMPAD8: return genPenVoice(659, 784);
    case VK_RIGHT:
    case VK_NUMPAD6: return genPenVoice(523, 659);
    case VK_DOWN:
    case VK_NUMPAD2: return genPenVoice(330, 392);
    default: return genPenVoice(440, 554);
    }
}

void playPenSound(uint32_t key)
{
    const int chance = soundRand(0, 99);
    if (chance < 22) return playClip(penClips[2]);
    playFresh(keyVoiceRing, keyVoiceNext, penVoice(key));
}

// The hotter the mash, the higher, longer and louder.
void playMashVoice()
{
    static constexpr int scale[] = {392,  440,  523,  587,  659,  784,  880,
                                    1047, 1175, 1319, 1568, 1760, 2093, 2349};
    const int heat = std::clamp(sameKeyCount + keyMashCount, 2, 36);
    const int above = soundRand(1, 3);
    const int top = std::clamp((heat - 2) / 3 + above, 0, 13);
    const int below = soundRand(2, 4);
    const int low = std::clamp(top - below, 0, top);
    const int ms = std::clamp(6 * heat + 92, 96, 240);
    const float amp = std::min(0.004f * float(std::clamp(heat, 0, 22)) + 0.11f, 0.17f);
    playFresh(mashVoiceRing, mashVoiceNext, genChime(scale[low], scale[top], ms, amp));
}

void playScatterSound()
{
    if (!soundEnabled) return;
    if (!passGate(lastScatterTick, 95)) return;
    if (autoMode == scatterAction) {
        switch (scatterShape) {
        case anyShape: playClip(scatterClipAny); return;
        case starsOnly: playClip(scatterClipStars); return;
        case heartsOnly: playClip(scatterClipHearts); return;
        }
    }
    playMarkSound();
}

static void playNextNote()
{
    const DWORD now = GetTickCount();
    if (lastNoteTick != 0 && now - lastNoteTick < 44) return;
    lastNoteTick = now;
    ++noteClipCounter;
    playClip(noteClips[size_t(noteClipCounter % 12)]);
}

void playPenStepSound()
{
    const int form = randInt(0, 1);
    if (form == 1) {
        const int gate = randInt(70, 120);
        if (!soundEnabled) return;
        if (GetTickCount() - lastSoundTick >= DWORD(gate)) playMarkSound();
        return;
    }
    const int gate = randInt(32, 60);
    if (!soundEnabled) return;
    const DWORD now = GetTickCount();
    if (lastPenStepTick != 0 && now - lastPenStepTick < DWORD(gate)) return;
    lastPenStepTick = now;
    playNextNote();
}

void startStrokeLoop()
{
    if (!soundEnabled || strokeLoopActive) return;
    stopWipeLoop();
    const int pick = soundRand(0, 9);
    const SoundClip &clip = strokeLoops[size_t(pick)];
    if (!isPlayable(clip) || !handToPlayer(clip.data(), playLooped)) return;
    strokeLoopClip = clip.data();
    strokeLoopActive = true;
}

void stopStrokeLoop()
{
    if (strokeLoopClip) handToPlayer(strokeLoopClip, stopLoop);
    strokeLoopClip = nullptr;
    strokeLoopActive = false;
}

void startWipeLoop()
{
    if (!soundEnabled) return;
    stopStrokeLoop();
    wipeClipIndex = soundRand(0, 11);
    const SoundClip &clip = wipeClips[size_t(wipeClipIndex)];
    if (isPlayable(clip)) handToPlayer(clip.data(), playLooped);
    wipeLoopPlaying = true;
}

void stopWipeLoop()
{
    if (!wipeLoopPlaying) return;
    const SoundClip &clip = wipeClips[size_t(wipeClipIndex)];
    if (isPlayable(clip)) handToPlayer(clip.data(), stopLoop);
    wipeLoopPlaying = false;
}

void playMascotCall()
{
    if (soundEnabled && isPlayable(mascotCall)) handToPlayer(mascotCall.data(), playCutting);
}

void playMascotChatter()
{
    if (!soundEnabled) return;
    const int pick = drawInt(clipRng, 0, 2);
    playClip(mascotChatter[size_t(pick)]);
}
