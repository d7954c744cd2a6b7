#include "marks/key_reactions.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "shell/window_proc.h"
#include "support/fakes.h"

TEST(KeyPlacement, IsEachKeysOwnSpotAroundTheMiddle)
{
    for (const RECT &monitor : {RECT{-640, 100, 160, 700}, RECT{0, 0, 300, 200}, RECT{0, 0, 50, 50}}) {
        const Desk desk({monitor});
        const uint32_t width = std::max<uint32_t>(surfaces[0].width / 3, 120);
        const uint32_t height = std::max<uint32_t>(surfaces[0].height / 3, 120);
        for (uint32_t key = 0; key < 256; ++key) {
            const uint32_t hash = 0x9E3779B1u - key * 1640531535u;
            const POINT point = keyPlacement(key);
            EXPECT_TRUE(PtInRect(&monitor, point)) << key;
            if (monitor.right == 50) continue;  // smaller than its box
            EXPECT_EQ(point.x, (monitor.left + monitor.right) / 2 + int(hash % width) - int(width / 2));
            EXPECT_EQ(point.y,
                      (monitor.top + monitor.bottom) / 2 + int(hash / 97 % height) - int(height / 2));
        }
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

TEST(NoteSpiral, LagsBehindTheCursorAndStopsShortOfIt)
{
    const Desk desk(oneMonitor);
    resetKeyState(fakeWindow(0));
    fakes.cursor = {400, 300};
    noteSpiral();
    fakes.cursor = {465, 241};
    for (const POINT centre : {POINT{410, 291}, POINT{419, 283}, POINT{426, 276}}) {
        noteSpiral();
        EXPECT_TRUE(spiralCentre.x == centre.x && spiralCentre.y == centre.y) << spiralCentre.x;
    }
    for (int step = 0; step < 60; ++step)
        noteSpiral();
    EXPECT_TRUE(spiralCentre.x == 460 && spiralCentre.y == 246 && spiralRadius == 420.0f);
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
