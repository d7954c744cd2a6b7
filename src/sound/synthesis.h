#pragma once
// What the recipes of both banks share. Every step is in single precision, and a recipe's terms stand in
// the order in which they are multiplied and added: regrouping them changes the sound.
#include <algorithm>
#include <cmath>

#include "marks/random.h"
#include "sound/clip.h"

inline constexpr float tau = 6.2831855f;
inline constexpr float pi = 3.1415927f;
inline constexpr float samplesPerSecond = 22050.0f;
inline constexpr float fullScale = 32767.0f;

constexpr size_t sampleCount(int ms)
{
    return size_t(ms * sampleRate / 1000);
}

// A sine whose phase follows straight from the time: a vibrato in hz bends the phase already run, and so
// grows with t. An Oscillator would sound different.
inline float sine(float hz, float t)
{
    return std::sin(tau * hz * t);
}
inline float decay(float rate, float t)
{
    return std::exp(-rate * t);
}
// A straight attack that ends at 1 / rate seconds.
inline float rise(float rate, float t)
{
    return std::min(rate * t, 1.0f);
}

// Keeps its phase when the frequency moves. The phase is stepped before it is read and never wrapped.
struct Oscillator {
    float phase = 0.0f;
    float step(float hz)
    {
        phase += hz * tau / samplesPerSecond;
        return phase;
    }
};

// From -1 up to but not including 1; one output of the stream.
inline float whiteNoise(Rng &stream)
{
    return 2.0f * drawReal(stream) - 1.0f;
}

// The sample of y, which is cut off at plus and minus limit.
inline int16_t toSample(float y, float limit)
{
    return int16_t(std::clamp(y, -limit, limit) * fullScale);
}

// Adds a note to what the buffer holds; a sum beyond the range of a sample stays at its end.
inline void mixSaturated(int16_t &sample, float y)
{
    sample = int16_t(std::clamp(sample + toSample(y, 1.0f), -32768, 32767));
}

// Adds a hit to what the buffer holds; the sum is cut off at 0.98.
inline void mixLimited(int16_t &sample, float y)
{
    sample = toSample(y + float(sample) / fullScale, 0.98f);
}

// Computes count samples of a recipe, a function of the time in seconds.
template <class Recipe> SampleBuffer render(size_t count, float limit, Recipe recipe)
{
    SampleBuffer samples(count);
    for (size_t n = 0; n < count; ++n)
        samples[n] = toSample(recipe(float(n) / samplesPerSecond), limit);
    return samples;
}

// Brings the root mean square to target, in which 1 is full scale. Silence stays as it is.
void normaliseRms(SampleBuffer &samples, float target);

// Brings the largest sample to target, in which 1 is full scale. Silence stays as it is.
void normalisePeak(SampleBuffer &samples, float target);
