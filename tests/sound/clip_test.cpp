// The recipes themselves are compared sample by sample in reference.py.
#include <gtest/gtest.h>

#include "sound/bank_a.h"
#include "sound/bank_b.h"
#include "sound/generators_a.h"
#include "sound/synthesis.h"

TEST(WaveClip, IsAHeaderAndTheSamples)
{
    const SoundClip clip = buildWaveClip({1, -2});
    EXPECT_EQ(clip,
              SoundClip({'R', 'I', 'F', 'F', 40,  0,   0, 0,    'W',  'A', 'V', 'E',  'f',  'm', 't', ' ', 16,
                         0,   0,   0,   1,   0,   1,   0, 0x22, 0x56, 0,   0,   0x44, 0xAC, 0,   0,   2,   0,
                         16,  0,   'd', 'a', 't', 'a', 4, 0,    0,    0,   1,   0,    0xFE, 0xFF}));
    EXPECT_EQ(buildWaveClip({}).size(), 44u);
    EXPECT_EQ(buildWaveClip({})[4], 36);
    SampleBuffer many(40000);  // its sizes need three bytes
    const SoundClip large = buildWaveClip(many);
    EXPECT_EQ(large[4] | large[5] << 8 | large[6] << 16, 80036);
    EXPECT_EQ(large[40] | large[41] << 8 | large[42] << 16, 80000);
}

TEST(Samples, AreCutOffAtTheLimitAndTruncated)
{
    const struct {
        float y, limit;
        int sample;
    } rows[] = {{0.98f, 0.98f, 32111}, {2.0f, 0.98f, 32111}, {-2.0f, 0.98f, -32111}, {1.0f, 1.0f, 32767},
                {-1.0f, 1.0f, -32767}, {0.5f, 0.98f, 16383}, {-0.5f, 0.98f, -16383}};
    for (const auto &row : rows)
        EXPECT_EQ(toSample(row.y, row.limit), row.sample) << row.y;
    int16_t low = -30000, high = 30000, limited = 30000;
    mixSaturated(low, -0.5f);
    mixSaturated(high, 3.0f);
    mixLimited(limited, 0.5f);
    EXPECT_EQ(low, -32768);
    EXPECT_EQ(high, 32767);
    EXPECT_EQ(limited, 32111);
}

TEST(Normalisers, RoundSaturateAndLeaveSilenceAlone)
{
    for (const auto normalise : {normaliseRms, normalisePeak}) {
        SampleBuffer none, silence(3);
        normalise(none, 0.5f);
        normalise(silence, 0.5f);
        EXPECT_EQ(silence, SampleBuffer(3));
        SampleBuffer square = {100, -100};  // 0.5 is sample 16383.5, rounded away from zero
        normalise(square, 0.5f);
        EXPECT_EQ(square, SampleBuffer({16384, -16384}));
    }
    SampleBuffer spike(100);
    spike[7] = -20000;
    normaliseRms(spike, 0.5f);
    EXPECT_EQ(spike[7], -32768);
    SampleBuffer loud = {32767, -1};
    normalisePeak(loud, 0.1f);
    EXPECT_EQ(loud, SampleBuffer({3277, 0}));
}

TEST(Banks, HaveToldLengthsAndDrawOnlyTheirOwnNoise)
{
    EXPECT_EQ(genChime(400, 500, 1, 0.1f).size(), 44u + 2 * 22);
    EXPECT_EQ(genChime(400, 500, 62, 0.1f).size(), 44u + 2 * 1367);
    EXPECT_EQ(genStartJingle(4), genStartJingle(1));
    soundRng.seed(1);
    clipRng.seed(2);
    Rng soundAfter = soundRng, clipAfter = clipRng, marks = markRng;
    buildSoundBankA();
    buildSoundBankB();
    // Brush, knocks, hiss, swish, two drums, two ticks, four knocks; then ten lengths, chatter, knocks.
    soundAfter.discard(3087 + 266 + 2425 + 1058 + 2 * 4851 + 2 * 89 + 4 * 78);
    clipAfter.discard(10 + 3 * 5292 + 4 * 89);
    EXPECT_EQ(soundRng, soundAfter);
    EXPECT_EQ(clipRng, clipAfter);
    EXPECT_EQ(markRng, marks);
    ASSERT_EQ(mascotRepertoire.size(), 26u);
    EXPECT_TRUE(std::equal(mascotNotes.begin(), mascotNotes.end(), mascotRepertoire.begin()));
    EXPECT_EQ(noteClips[1], noteClips[10]);
    EXPECT_NE(mascotChatter[0], mascotChatter[1]);
}
