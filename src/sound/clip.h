#pragma once
// A clip is a whole RIFF/WAVE image in memory, the only form that the system's player reads.
#include <cstddef>
#include <cstdint>
#include <vector>

inline constexpr int sampleRate = 22050;       // samples per second; every clip is mono with 16 bits
inline constexpr size_t clipHeaderBytes = 44;  // a clip with fewer bytes counts as absent

using SoundClip = std::vector<uint8_t>;
using SampleBuffer = std::vector<int16_t>;

// A clip with a copy of the samples.
SoundClip buildWaveClip(const SampleBuffer &samples);

inline bool isPlayable(const SoundClip &clip)
{
    return clip.size() >= clipHeaderBytes;
}
