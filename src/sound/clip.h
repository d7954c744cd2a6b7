#pragma once
// A clip is a whole RIFF/WAVE image in memory, for the system's player reads nothing else.
#include <cstddef>
#include <cstdint>
#include <vector>

inline constexpr int sampleRate = 22050;       // samples per second; every clip is mono, 16 bits
inline constexpr size_t clipHeaderBytes = 44;  // a clip with fewer bytes counts as absent

using SoundClip = std::vector<uint8_t>;
using SampleBuffer = std::vector<int16_t>;

// The header and a copy of the samples.
SoundClip buildWaveClip(const SampleBuffer &samples);

inline bool isPlayable(const SoundClip &clip)
{
    return clip.size() >= clipHeaderBytes;
}
