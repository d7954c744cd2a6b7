#include "sound/synthesis.h"

#include <cstdlib>

// Rounds halves away from zero like lroundf, which is as slow as a sine. The sum is exact in double
// precision.
static void amplify(SampleBuffer &samples, float gain)
{
    for (int16_t &sample : samples) {
        const float y = std::clamp(float(sample) * gain, -32768.0f, 32767.0f);
        sample = int16_t(double(y) + (y < 0.0f ? -0.5 : 0.5));
    }
}

void normaliseRms(SampleBuffer &samples, float target)
{
    if (samples.empty()) return;
    double squares = 0.0;
    for (const int16_t sample : samples) {
        const double value = sample / 32767.0;
        squares += value * value;
    }
    const float rms = float(std::sqrt(squares / double(samples.size())));
    if (!(rms > 1e-6f)) return;
    amplify(samples, target / rms);
}

void normalisePeak(SampleBuffer &samples, float target)
{
    int peak = 1;
    for (const int16_t sample : samples)
        peak = std::max(peak, std::abs(int(sample)));
    amplify(samples, target * fullScale / float(peak));
}
