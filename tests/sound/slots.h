#pragma once
// Every clip of both banks, once they are built, by the name of its slot.
#include <span>
#include <string>
#include <vector>

#include "sound/bank_a.h"
#include "sound/bank_b.h"

inline std::span<const SoundClip> clipsOf(const SoundClip &clip)
{
    return {&clip, 1};
}
inline std::span<const SoundClip> clipsOf(std::span<const SoundClip> clips)
{
    return clips;
}

inline std::vector<std::pair<std::string, std::span<const SoundClip>>> slotsOfBanks()
{
#define SLOT(name) std::pair(#name, clipsOf(name))
    return {SLOT(tapClip),        SLOT(markClipBell),     SLOT(markClipTrill), SLOT(actionClip),
            SLOT(captureClip),    SLOT(wipeClips),        SLOT(penClips),      SLOT(scatterClipHearts),
            SLOT(scatterClipAny), SLOT(scatterClipStars), SLOT(startClips),    SLOT(spaceClips),
            SLOT(keyClips),       SLOT(noteClips),        SLOT(strokeLoops),   SLOT(mascotNotes),
            SLOT(mascotCall),     SLOT(mascotChatter),    SLOT(mascotFanfare), SLOT(mascotRepertoire)};
#undef SLOT
}
