#pragma once
// Every clip of both banks, once they are built, by the name of its slot.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>
#include <vector>

#include "sound/bank_a.h"
#include "sound/bank_b.h"

inline std::vector<std::pair<std::string, std::span<SoundClip>>> slotsOfBanks()
{
#define ONE(name) std::pair(#name, std::span(&name, 1))
#define SLOT(name) std::pair(#name, std::span(name))
    return {ONE(tapClip),        ONE(markClipBell),     ONE(markClipTrill), ONE(actionClip),
            ONE(captureClip),    SLOT(wipeClips),       SLOT(penClips),     ONE(scatterClipHearts),
            ONE(scatterClipAny), ONE(scatterClipStars), SLOT(startClips),   SLOT(spaceClips),
            SLOT(keyClips),      SLOT(noteClips),       SLOT(strokeLoops),  SLOT(mascotNotes),
            ONE(mascotCall),     SLOT(mascotChatter),   ONE(mascotFanfare), SLOT(mascotRepertoire)};
#undef ONE
#undef SLOT
}

// The slot of a clip; of one made while playing, its samples, how often it crosses zero and its peak.
inline std::string nameOf(const void *bytes)
{
    for (const auto &[name, clips] : slotsOfBanks())
        for (size_t i = 0; i < clips.size(); ++i)
            if (clips[i].data() == bytes) return name + " " + std::to_string(i);
    uint32_t size = 0;
    std::memcpy(&size, static_cast<const uint8_t *>(bytes) + 40, 4);
    const int16_t *const samples = static_cast<const int16_t *>(bytes) + 22;
    int crossings = 0, peak = 0;
    for (size_t i = 1; i < size / 2; ++i) {
        crossings += (samples[i] < 0) != (samples[i - 1] < 0);
        peak = std::max(peak, std::abs(int(samples[i])));
    }
    return std::to_string(size / 2) + "/" + std::to_string(crossings) + "/" + std::to_string(peak / 16);
}
