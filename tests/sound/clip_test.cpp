// The recipes themselves, and the clips' headers, are compared in reference.py.
#include <gtest/gtest.h>

#include "sound/synthesis.h"

TEST(Samples, AreTruncatedAndMixedWithoutWrapping)
{
    int16_t low = -30000, high = 30000, limited = 30000;
    mixSaturated(low, -0.5f);
    mixSaturated(high, 3.0f);
    mixLimited(limited, 0.5f);
    EXPECT_EQ((std::array{toSample(-2.0f, 0.98f), toSample(2.0f, 1.0f), toSample(-0.5f, 0.98f), low, high,
                          limited}),
              (std::array<int16_t, 6>{-32111, 32767, -16383, -32768, 32767, 32111}));
}

TEST(Normalisers, RoundSaturateAndLeaveSilenceAlone)
{
    for (const auto normalise : {normaliseRms, normalisePeak}) {
        SampleBuffer none, silence(3), square = {100, -100}, spike(100);
        spike[7] = -20000;
        for (SampleBuffer *samples : {&none, &silence, &square, &spike})
            normalise(*samples, 0.5f);
        EXPECT_EQ(silence, SampleBuffer(3));
        EXPECT_EQ(square, SampleBuffer({16384, -16384}));  // 16383.5, rounded away from zero
        EXPECT_EQ(spike[7], normalise == normaliseRms ? -32768 : -16384);
    }
}
