// The recipes themselves, and the clips' headers, are compared in reference.py.
#include <gtest/gtest.h>

#include "sound/synthesis.h"

TEST(Samples, AreCutOffAtTheLimitTruncatedAndMixedWithoutWrapping)
{
    const std::tuple<float, float, int> rows[] = {{2.0f, 0.98f, 32111}, {-2.0f, 0.98f, -32111},
                                                  {1.0f, 1.0f, 32767},  {-1.5f, 1.0f, -32767},
                                                  {0.5f, 0.98f, 16383}, {-0.5f, 0.98f, -16383}};
    for (const auto &[y, limit, sample] : rows)
        EXPECT_EQ(toSample(y, limit), sample) << y;
    int16_t low = -30000, high = 30000, limited = 30000;
    mixSaturated(low, -0.5f);
    mixSaturated(high, 3.0f);
    mixLimited(limited, 0.5f);
    EXPECT_TRUE(low == -32768 && high == 32767 && limited == 32111);
}

TEST(Normalisers, RoundSaturateAndLeaveSilenceAlone)
{
    for (const auto normalise : {normaliseRms, normalisePeak}) {
        SampleBuffer none, silence(3), square = {100, -100};
        for (SampleBuffer *samples : {&none, &silence, &square})
            normalise(*samples, 0.5f);
        EXPECT_EQ(silence, SampleBuffer(3));
        EXPECT_EQ(square, SampleBuffer({16384, -16384}));  // 16383.5, rounded away from zero
    }
    SampleBuffer spike(100);
    spike[7] = -20000;
    normaliseRms(spike, 0.5f);
    EXPECT_EQ(spike[7], -32768);
}
