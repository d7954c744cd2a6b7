#include "marks/key_reactions.h"

#include <gtest/gtest.h>

#include "support/fakes.h"

TEST(KeyPlacement, IsEachKeysOwnSpotAroundTheMiddle)
{
    const RECT usual = {-640, 100, 160, 700}, small = {0, 0, 300, 200}, tiny = {0, 0, 50, 50};
    const std::tuple<RECT, uint32_t, int, int> rows[] = {{usual, 0, -158, 417},   {usual, 65, -217, 495},
                                                         {usual, 255, -355, 372}, {small, 65, 116, 115},
                                                         {small, 255, 98, 152},   {tiny, 65, 0, 40}};
    for (const auto &[monitor, key, x, y] : rows) {
        const Desk desk({monitor});
        const POINT point = keyPlacement(key);
        EXPECT_TRUE(point.x == x && point.y == y) << point.x << "," << point.y;
        EXPECT_TRUE(sameStream(markRng, Rng(7)));
    }
}

TEST(KeyMash, RisesWithin520MillisecondsAndDecaysByTwoPastThem)
{
    const Desk desk(oneMonitor);
    const std::tuple<int, DWORD, int> rows[] = {{0, 520, 1}, {1, 520, 2}, {50, 0, 50},   {0, 521, 1},
                                                {3, 521, 1}, {4, 521, 2}, {50, 9000, 48}};
    for (const auto &[before, ms, after] : rows) {
        keyMashCount = before;
        lastMashTime = fakes.steady;
        fakes.passMs(ms);
        EXPECT_EQ(updateKeyMash(), after >= 2) << before << " after " << ms;
        EXPECT_EQ(keyMashCount, after) << before << " after " << ms;
        EXPECT_EQ(lastMashTime, fakes.steady);
    }
}

TEST(SameKey, ClimbsAtMostOneStepInHalfASecond)
{
    const Desk desk(oneMonitor);
    resetKeyState(fakeWindow(0));
    // Milliseconds since the press before, key, the count then.
    const std::tuple<DWORD, uint32_t, int> presses[] = {
        {0, 'A', 1},   {499, 'A', 1}, {1, 'A', 2},   {900, 'A', 3}, {901, 'A', 1},
        {500, 'A', 2}, {499, 'A', 2}, {499, 'A', 3}, {600, 'A', 4}, {600, 'A', 5},
        {600, 'A', 6}, {600, 'A', 6}, {10, 'B', 1},  {10, 'A', 1}};
    for (const auto &[ms, key, count] : presses) {
        fakes.passMs(ms);
        EXPECT_EQ(countSameKey(key, false), count) << ms;
        const int64_t counted = lastKeyTime;
        EXPECT_EQ(countSameKey(key, true), count);  // a repeat counts nothing
        EXPECT_EQ(countSameKey(key + 1, true), 1);
        EXPECT_TRUE(lastKeyTime == counted && lastKeyCode == key);
    }
}
