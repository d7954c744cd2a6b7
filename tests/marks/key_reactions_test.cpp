#include "marks/key_reactions.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "shell/window_proc.h"
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

// A child's hands: whatever comes in whatever order, the counts keep their ranges and nothing leaks.
TEST(Keys, OfTenThousandRandomMessagesBreakNothing)
{
    const Desk desk({{0, 0, 320, 240}, {-200, 40, 0, 200}});
    std::mt19937 child(1);
    const uint32_t keys[] = {'A',   'A',      'S',      '5',       VK_NUMPAD4, VK_LEFT, VK_DOWN,     VK_TAB,
                             VK_F5, VK_SHIFT, VK_SPACE, VK_RETURN, VK_ESCAPE,  VK_APPS, VK_OEM_COMMA};
    const UINT kinds[] = {WM_KEYDOWN,     WM_KEYUP,     WM_TIMER,       WM_MOUSEMOVE,
                          WM_LBUTTONDOWN, WM_LBUTTONUP, WM_RBUTTONDOWN, WM_RBUTTONUP};
    for (int message = 0; message < 10000; ++message) {
        fakes.passMs(child() % 8 == 0 ? child() % 1500 : child() % 90);
        const HWND window = fakeWindow(int(child() % 2));
        fakes.cursor = {LONG(child() % 520) - 200, LONG(child() % 240)};
        const uint32_t key = keys[child() % std::size(keys)];
        const UINT kind = kinds[child() % std::size(kinds)];
        if (kind == WM_LBUTTONDOWN) fakes.keysDown.insert(VK_LBUTTON);
        if (kind == WM_LBUTTONUP) fakes.keysDown.erase(VK_LBUTTON);
        const auto running = kind == WM_TIMER ? recorded.timers : decltype(recorded.timers)();
        for (const auto &[timer, ms] : running)
            windowProc(timer.first, WM_TIMER, timer.second, 0);
        const LPARAM at = MAKELPARAM(child() % 320, child() % 240);
        if (kind != WM_TIMER)
            windowProc(window, kind, kind < WM_TIMER ? key : 0, kind < WM_TIMER ? child() % 2 << 30 : at);
        ASSERT_TRUE(keyMashCount >= 0 && keyMashCount <= 50 && sameKeyCount >= 0 && sameKeyCount <= 6);
        ASSERT_TRUE(spiralRadius >= 70.0f && spiralRadius <= 420.0f && autoMode >= 0 && autoMode <= 3);
        ASSERT_EQ(recorded.alive, 0) << message;
    }
    EXPECT_EQ(countCalls("InvalidateRect with"), 0);
    resetKeyState(fakeWindow(0));
}
