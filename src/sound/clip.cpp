#include "sound/clip.h"

#include <cstring>

static void put16(SoundClip &clip, size_t offset, size_t value)
{
    clip[offset] = uint8_t(value);
    clip[offset + 1] = uint8_t(value >> 8);
}

static void put32(SoundClip &clip, size_t offset, size_t value)
{
    put16(clip, offset, value);
    put16(clip, offset + 2, value >> 16);
}

SoundClip buildWaveClip(const SampleBuffer &samples)
{
    const size_t sampleBytes = 2 * samples.size();
    SoundClip clip(clipHeaderBytes + sampleBytes);
    std::memcpy(clip.data(), "RIFF", 4);
    put32(clip, 4, sampleBytes + 36);
    std::memcpy(clip.data() + 8, "WAVEfmt ", 8);
    put32(clip, 16, 16);              // bytes of the format chunk
    put16(clip, 20, 1);               // integer PCM
    put16(clip, 22, 1);               // channels
    put32(clip, 24, sampleRate);      // samples per second
    put32(clip, 28, sampleRate * 2);  // bytes per second
    put16(clip, 32, 2);               // bytes per sample
    put16(clip, 34, 16);              // bits per sample
    std::memcpy(clip.data() + 36, "data", 4);
    put32(clip, 40, sampleBytes);
    if (sampleBytes > 0) std::memcpy(clip.data() + clipHeaderBytes, samples.data(), sampleBytes);
    return clip;
}
