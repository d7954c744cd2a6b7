// The recipes themselves, and the clips' headers, are compared in reference.py.
#include <gtest/gtest.h>

#include "sound/synthesis.h"

TEST(Samples, SaturateInsteadOfWrappingAndSilenceStays)
{
    SampleBuffer silence(3), spike(100);
    spike[7] = -20000;
    mixSaturated(spike[8], -2.0f);
    mixSaturated(spike[8], -0.5f);
    normaliseRms(silence, 0.5f);
    normaliseRms(spike, 0.5f);
    EXPECT_EQ(silence, SampleBuffer(3));
    EXPECT_EQ(std::pair(spike[7], spike[8]), std::pair(int16_t(-32768), int16_t(-32768)));
}
