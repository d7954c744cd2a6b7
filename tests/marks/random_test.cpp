#include "marks/random.h"

#include <gtest/gtest.h>

// One output of the standard generator for this seed, taken by hand.
static uint32_t nth(uint32_t seed, int n)
{
    std::mt19937 generator(seed);
    generator.discard(uint32_t(n - 1));
    return uint32_t(generator());
}

TEST(RandInt, TakesTheUpperHalfOfOneProduct)
{
    markRng.seed(5489);
    EXPECT_EQ(nth(5489, 1), 3499211612u);  // the generator's published first output
    EXPECT_EQ(randInt(0, 99), int32_t(uint64_t(3499211612u) * 100 >> 32));
    EXPECT_EQ(randInt(5, 5), 5);  // costs an output all the same
    EXPECT_EQ(randInt(-10, 10), -10 + int32_t(uint64_t(nth(5489, 3)) * 21 >> 32));
    const int32_t lowest = std::numeric_limits<int32_t>::min();
    const int32_t highest = std::numeric_limits<int32_t>::max();
    EXPECT_EQ(randInt(lowest, highest), int32_t(nth(5489, 4) ^ 0x80000000u));
}

TEST(RandInt, DrawsAgainUnderTheThreshold)
{
    // A span just over half of all values rejects almost every second output.
    const int32_t lo = -1;
    const uint32_t count = 0x80000001u;
    const uint32_t threshold = (0u - count) % count;
    for (uint32_t seed = 1; seed <= 20; ++seed) {
        Rng byHand(seed);
        uint64_t product = uint64_t(uint32_t(byHand())) * count;
        while (uint32_t(product) < threshold)
            product = uint64_t(uint32_t(byHand())) * count;
        markRng.seed(seed);
        EXPECT_EQ(randInt(lo, 0x7FFFFFFF), int32_t(uint32_t(lo) + uint32_t(product >> 32))) << seed;
        EXPECT_EQ(markRng, byHand) << seed;
    }
}

TEST(RandInt, ReachesBothEndsEvenly)
{
    markRng.seed(1);
    std::array<int, 7> seen = {};
    for (int i = 0; i < 7000; ++i)
        ++seen[size_t(randInt(-3, 3) + 3)];
    for (int count : seen)
        EXPECT_NEAR(count, 1000, 150);
}

TEST(Streams, StayApart)
{
    soundRng.seed(3);
    clipRng.seed(4);
    const Rng clipBefore = clipRng;
    markRng.seed(2);
    const Rng markBefore = markRng;
    soundRand(0, 9);
    EXPECT_EQ(markRng, markBefore);
    EXPECT_EQ(clipRng, clipBefore);
    EXPECT_EQ(drawReal(soundRng), float(nth(3, 2) >> 8) / 16777216.0f);
}

TEST(Colors, TravelWithRedInTheLowByteAndReachGdiPlusWithAlphaOnTop)
{
    markRng.seed(11);
    const MarkColor color = randColor(120, 245);
    markRng.seed(11);
    const int red = randInt(120, 245);
    const int green = randInt(120, 245);
    const int blue = randInt(120, 245);
    EXPECT_EQ(color, uint32_t(red | green << 8 | blue << 16));
    EXPECT_EQ(toArgb(0x0050CDFF, 0xE6), 0xE6FFCD50u);
    EXPECT_EQ(keyPalette[1], markColor(255, 205, 80));
    EXPECT_EQ(keyPalette[7], markColor(130, 220, 200));
    EXPECT_EQ(keyPalette[9], markColor(170, 200, 255));
}

TEST(BackgroundColor, IsNeverBothBrightAndGaudyUnlessItRanOutOfTries)
{
    int white = 0, cream = 0, dusty = 0, softened = 0;
    for (uint32_t seed = 0; seed < 4000; ++seed) {
        markRng.seed(seed);
        const MarkColor color = pickBackgroundColor();
        const Rng after = markRng;
        markRng.seed(seed);
        const int rare = randInt(0, 19);
        if (rare <= 3) {
            white += color == 0xFFFFFF;
            cream += color == 0xEBF8FC;
            dusty += color == 0xDABEAC;
        } else {
            int tries = 0;
            int r, g, b;
            MarkColor tried;
            bool accepted = false;
            do {
                tried = randColor(120, 245);
                r = int(tried & 255), g = int(tried >> 8 & 255), b = int(tried >> 16);
                const int brightest = std::max(r, std::max(g, b));
                const int spread = brightest - std::min(r, std::min(g, b));
                accepted = tries < 5 && (brightest < 230 || spread < 48);
            } while (!accepted && ++tries < 6);
            if (accepted) {
                EXPECT_EQ(color, tried) << seed;
            } else {
                ++softened;
                const float grey = float((r + g + b) / 3) * 0.32f;
                EXPECT_EQ(color & 255, uint32_t(std::max(120, int(float(r) * 0.68f + grey)))) << seed;
                EXPECT_EQ(color >> 16, uint32_t(std::max(120, int(float(b) * 0.68f + grey)))) << seed;
            }
        }
        EXPECT_EQ(after, markRng) << seed;  // the same draws and no more
    }
    EXPECT_NEAR(white, 400, 60);
    EXPECT_NEAR(cream, 200, 45);
    EXPECT_NEAR(dusty, 200, 45);
    EXPECT_GT(softened, 0);
}

TEST(MenuColor, LiftsOneChannelToAtMost220)
{
    for (uint32_t seed = 0; seed < 300; ++seed) {
        markRng.seed(seed);
        const MarkColor color = pickMenuColor();
        markRng.seed(seed);
        std::array<int, 3> channels;
        for (int &channel : channels)
            channel = randInt(35, 165);
        const int pick = randInt(0, 2);
        const int lift = randInt(40, 85);
        channels[size_t(pick)] = std::min(channels[size_t(pick)] + lift, 220);
        EXPECT_EQ(color, markColor(channels[0], channels[1], channels[2])) << seed;
    }
}
