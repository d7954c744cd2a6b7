#pragma once
// Every clip of both banks, once they are built, by the name of its slot.
#include <cstdlib>
#include <span>
#include <string>

#include "sound/bank_a.h"
#include "sound/bank_b.h"

inline std::vector<std::pair<std::string, std::span<SoundClip>>> slotsOfBanks()
{
#define ONE(name) std::pair(#name, std::span(&name, 1))
#define ALL(name) std::pair(#name, std::span(name))
    return {ONE(tapClip),        ONE(markClipBell),     ONE(markClipTrill), ONE(actionClip),
            ONE(captureClip),    ALL(wipeClips),        ALL(penClips),      ONE(scatterClipHearts),
            ONE(scatterClipAny), ONE(scatterClipStars), ALL(startClips),    ALL(spaceClips),
            ALL(keyClips),       ALL(noteClips),        ALL(strokeLoops),   ALL(mascotNotes),
            ONE(mascotCall),     ALL(mascotChatter),    ONE(mascotFanfare), ALL(mascotRepertoire)};
}

// The slot of a clip; of one made while playing, its samples, how often it crosses zero and its peak.
inline std::string nameOf(const void *bytes)
{
    for (const auto &[name, clips] : slotsOfBanks())
        for (size_t i = 0; i < clips.size(); ++i)
            if (clips[i].data() == bytes) return name + " " + std::to_string(i);
    const int16_t *const samples = static_cast<const int16_t *>(bytes) + 22;
    const int count = reinterpret_cast<const int32_t *>(samples)[-1] / 2;
    int crossings = 0, peak = 0;
    for (int i = 1; i < count; ++i) {
        crossings += (samples[i] < 0) != (samples[i - 1] < 0);
        peak = std::max(peak, std::abs(int(samples[i])));
    }
    return std::to_string(count) + "/" + std::to_string(crossings) + "/" + std::to_string(peak / 16);
}
