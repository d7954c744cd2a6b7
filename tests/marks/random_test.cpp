#include "marks/random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

TEST(RandInt, TakesTheUpperHalfOfOneProduct)
{
    Rng byHand(5489);
    const uint64_t outputs[] = {byHand(), byHand(), byHand(), byHand(), byHand()};
    EXPECT_EQ(outputs[0], 3499211612u);  // the generator's published first output
    markRng.seed(5489);
    EXPECT_EQ(randInt(0, 99), int32_t(outputs[0] * 100 >> 32));
    EXPECT_EQ(randInt(5, 5), 5);  // costs an output all the same
    EXPECT_EQ(randInt(-10, 10), -10 + int32_t(outputs[2] * 21 >> 32));
    const int32_t lowest = std::numeric_limits<int32_t>::min();
    const int32_t highest = std::numeric_limits<int32_t>::max();
    EXPECT_EQ(randInt(lowest, highest), int32_t(uint32_t(outputs[3]) ^ 0x80000000u));
    EXPECT_EQ(drawReal(markRng), float(outputs[4] >> 8) / 16777216.0f);
}

TEST(RandInt, DrawsAgainUnderTheThreshold)
{
    // A span just over half of all values rejects almost every second output.
    const uint32_t count = 0x80000001u;
    for (uint32_t seed = 1; seed <= 20; ++seed) {
        Rng byHand(seed);
        uint64_t product = 0;
        while (uint32_t(product) < 0x7FFFFFFFu)  // what 2 to the power 32 leaves beside count
            product = uint64_t(uint32_t(byHand())) * count;
        markRng.seed(seed);
        EXPECT_EQ(randInt(-1, 0x7FFFFFFF), int32_t(uint32_t(-1) + uint32_t(product >> 32))) << seed;
        EXPECT_EQ(markRng, byHand) << seed;
    }
}

TEST(Colors, TravelWithRedInTheLowByteAndReachGdiPlusWithAlphaOnTop)
{
    markRng.seed(11);
    const MarkColor color = randColor(120, 245);
    markRng.seed(11);
    for (const int shift : {0, 8, 16})
        EXPECT_EQ(color >> shift & 255, uint32_t(randInt(120, 245)));
    EXPECT_EQ(toArgb(0x0050CDFF, 0xE6), 0xE6FFCD50u);
    EXPECT_EQ(keyPalette[1], markColor(255, 205, 80));
    EXPECT_EQ(keyPalette[7], markColor(130, 220, 200));
}
