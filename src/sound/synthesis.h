#pragma once
// What the recipes of both banks share. Everything is in single precision, and regrouping the terms of a
// recipe changes the sound.
#include <algorithm>
#include <cmath>

#include "marks/angles.h"
#include "marks/random.h"
#include "sound/clip.h"

inline constexpr float fullScale = 32767.0f;

constexpr size_t sampleCount(int ms)
{
    return size_t(ms * sampleRate / 1000);
}

// A sine with its phase computed from the time. A vibrato in hz bends the whole phase so far and so grows
// with t; an Oscillator would sound different.
inline float sine(float hz, float t)
{
    return std::sin(tau * hz * t);
}
inline float decay(float rate, float t)
{
    return std::exp(-rate * t);
}
// A linear attack of 1 / rate seconds.
inline float rise(float rate, float t)
{
    return std::min(rate * t, 1.0f);
}

// Keeps its phase when the frequency changes. The phase is stepped before it is read and never wrapped.
struct Oscillator {
    float phase = 0.0f;
    float step(float hz)
    {
        phase += hz * tau / sampleRate;
        return phase;
    }
};

// From -1 up to but not including 1. Takes one output of the stream.
inline float whiteNoise(Rng &stream)
{
    return 2.0f * drawReal(stream) - 1.0f;
}

// y as a sample, limited to plus and minus limit.
inline int16_t toSample(float y, float limit)
{
    return int16_t(std::clamp(y, -limit, limit) * fullScale);
}

// Adds a note to the sample; the sum saturates at the range of a sample.
inline void mixSaturated(int16_t &sample, float y)
{
    sample = int16_t(std::clamp(sample + toSample(y, 1.0f), -32768, 32767));
}

// Adds a hit to the sample; the sum is limited to 0.98.
inline void mixLimited(int16_t &sample, float y)
{
    sample = toSample(y + float(sample) / fullScale, 0.98f);
}

// Computes count samples of a recipe, which is a function of the time in seconds.
template <class Recipe> SampleBuffer render(size_t count, float limit, Recipe recipe)
{
    SampleBuffer samples(count);
    for (size_t n = 0; n < count; ++n)
        samples[n] = toSample(recipe(float(n) / sampleRate), limit);
    return samples;
}

// Scales the root mean square to target, where 1 is full scale. Silence stays.
void normaliseRms(SampleBuffer &samples, float target);

// Scales the largest sample to target, where 1 is full scale. Silence stays.
void normalisePeak(SampleBuffer &samples, float target);
