#pragma once
// Every clip of both banks, once they are built, by the name of its slot.
#include <span>
#include <string>
#include <vector>

#include "sound/bank_a.h"
#include "sound/bank_b.h"

using Slots = std::vector<std::pair<std::string, std::span<const SoundClip>>>;

inline Slots slotsOfBanks()
{
    Slots slots = {{"wipeClips", wipeClips},         {"penClips", penClips},
                   {"startClips", startClips},       {"spaceClips", spaceClips},
                   {"keyClips", keyClips},           {"noteClips", noteClips},
                   {"strokeLoops", strokeLoops},     {"mascotNotes", mascotNotes},
                   {"mascotChatter", mascotChatter}, {"mascotRepertoire", mascotRepertoire}};
    using One = std::pair<const char *, const SoundClip *>;
    const One alone[] = {{"tapClip", &tapClip},
                         {"markClipBell", &markClipBell},
                         {"markClipTrill", &markClipTrill},
                         {"actionClip", &actionClip},
                         {"captureClip", &captureClip},
                         {"scatterClipHearts", &scatterClipHearts},
                         {"scatterClipAny", &scatterClipAny},
                         {"scatterClipStars", &scatterClipStars},
                         {"mascotCall", &mascotCall},
                         {"mascotFanfare", &mascotFanfare}};
    for (const auto &[name, clip] : alone)
        slots.push_back({name, {clip, 1}});
    return slots;
}
