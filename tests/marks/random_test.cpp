#include "marks/random.h"

#include <gtest/gtest.h>

TEST(RandInt, IsTheUpperHalfOfAProductOrDrawnAgain)
{
    // Seed, bounds, value, and how many outputs of the stream it takes.
    const std::array<int, 5> rows[] = {{5489, -10, 10, 7, 1},
                                       {5489, INT32_MIN, INT32_MAX, 1351727964, 1},
                                       {8, -1, INT32_MAX, 514192563, 4},
                                       {137, 0, 6700416, 3391389, 2}};
    for (const auto &[seed, lo, hi, value, outputs] : rows) {
        markRng.seed(unsigned(seed));
        Rng replay = markRng;
        EXPECT_EQ(randInt(lo, hi), value) << seed;
        replay.discard(unsigned(outputs));
        EXPECT_EQ(drawReal(markRng), float(replay() >> 8) / 16777216.0f) << seed;
    }
}

TEST(Colors, OfBackgroundsAndMenusAreTheirStreams)
{
    const std::array<MarkColor, 3> rows[] = {
        {7, 0xFFFFFF, 0x4CDC40},   {43, 0xEBF8FC, 0x307292},  {11, 0xDABEAC, 0x7A552B},
        {5, 0xE0E57E, 0xD9523E},   {209, 0xC6EBDF, 0xA6509D}, {213, 0xA6B5D2, 0x608494},
        {743, 0xBFEEC2, 0x2E4199}, {319, 0x98CBAE, 0x6226B9}, {2427, 0xAD8E80, 0xA48FC1}};
    for (const auto &[seed, background, menu] : rows) {
        markRng.seed(seed);
        EXPECT_EQ(pickBackgroundColor(), background) << seed;
        EXPECT_EQ(pickMenuColor(), menu) << seed;
    }
    EXPECT_EQ(toArgb(markColor(255, 205, 80), 0xE6), 0xE6FFCD50u);
}
