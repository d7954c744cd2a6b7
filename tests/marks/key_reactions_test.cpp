#include "marks/key_reactions.h"

#include <gtest/gtest.h>

#include "marks/cursor_pen.h"
#include "marks/strokes.h"
#include "sound/playback.h"
#include "support/desk.h"
#include "support/draws.h"
#include "support/recorded.h"

TEST(KeyPlacement, IsEachKeysOwnSpotAroundTheMiddle)
{
    const RECT usual = {-640, 100, 160, 700}, small = {0, 0, 300, 200}, tiny = {0, 0, 50, 50};
    const std::tuple<RECT, uint32_t, int, int> rows[] = {{usual, 0, -158, 417},   {usual, 65, -217, 495},
                                                         {usual, 255, -355, 372}, {small, 65, 116, 115},
                                                         {small, 255, 98, 152},   {tiny, 65, 0, 40}};
    for (const auto &[monitor, key, x, y] : rows) {
        Desk desk({monitor});
        const POINT point = keyPlacement(key);
        EXPECT_TRUE(point.x == x && point.y == y) << point.x << "," << point.y;
    }
}

TEST(KeyReaction, IsAShapeOrStampThatGrowsWithThePresses)
{
    std::string text;
    const auto tell = [&](uint32_t key, int repeat, const std::vector<int> &first = {}) {
        const std::string all = drawn([&] { keyReaction(key, repeat); }, 0.0, first);
        const std::string calls = all.substr(all.find('\n') + 3);
        text += std::to_string(key) + " x" + std::to_string(repeat) + ": " + all.substr(0, all.find('\n')) +
                "; " + calls.substr(0, calls.find(';')) + "\n";
    };
    for (uint32_t key = 65; key < 78; ++key)
        tell(key, 1);
    for (const int repeat : {0, 2, 3, 4, 5, 6, 7})
        tell(67, repeat);
    for (const int chance : {27, 28})  // of scattered marks at the highest level
        tell(67, 6, {0, 0, 18, 0, 0, 18, chance});
    expectRecorded("marks/keys", text);
    for (const int past : {0, 1}) {  // twice its size of 81 pixels away from the next monitor
        Desk desk({{0, 0, 200, 200}});
        const int left = keyPlacement(65).x + 2 * 81 + past;
        RECT next = {left, 0, left + 100, 200};
        createSurface(nullptr, nullptr, &next, 0);
        keyReaction(65, 1);
        EXPECT_EQ(desk.count("FillPolygonI c1"), 1 - past) << past;
    }
}

TEST(KeyMash, RisesWithin520MillisecondsAndDecaysByTwoPastThem)
{
    Desk desk(oneMonitor);
    for (const auto &[before, ms, after] :
         {std::tuple(0, 520, 1), {1, 520, 2}, {50, 0, 50}, {0, 521, 1}, {3, 521, 1}, {4, 521, 2}}) {
        keyMashCount = before;
        lastMashTime = desk.steady;
        desk.moveClocks(DWORD(ms));
        EXPECT_EQ(updateKeyMash(), after >= 2) << before << " after " << ms;
        EXPECT_EQ(keyMashCount, after) << before << " after " << ms;
    }
}

TEST(SameKey, ClimbsAtMostOneStepInHalfASecond)
{
    Desk desk(oneMonitor);
    // Milliseconds since the press before, key, the count then.
    const std::tuple<DWORD, uint32_t, int> presses[] = {
        {0, 'A', 1},   {499, 'A', 1}, {1, 'A', 2},   {900, 'A', 3}, {901, 'A', 1},
        {500, 'A', 2}, {499, 'A', 2}, {499, 'A', 3}, {600, 'A', 4}, {600, 'A', 5},
        {600, 'A', 6}, {600, 'A', 6}, {10, 'B', 1},  {10, 'A', 1}};
    for (const auto &[ms, key, count] : presses) {
        desk.moveClocks(ms);
        EXPECT_EQ(countSameKey(key, false), count) << ms;
        EXPECT_TRUE(countSameKey(key, true) == count && countSameKey(key + 1, true) == 1) << "held";
    }
}

TEST(MashSpiral, LeavesMoreNotesTheLongerItLasts)
{
    for (const auto &[mash, presses, notes, scatterBelow] :
         {std::tuple(0, 0, 3, 68), {7, 2, 3, 72}, {8, 2, 4, 72}, {8, 3, 5, 74}, {50, 6, 10, 80}}) {
        for (const int chance : {scatterBelow - 1, scatterBelow}) {
            Desk desk(oneMonitor);
            desk.cursor = {400, 300};
            Draws draws(0.0);
            for (int i = 0; i < notes; ++i)
                draws.forced.insert(draws.forced.end(), {0, 0, 28});
            draws.forced.push_back(chance);
            keyMashCount = mash;
            sameKeyCount = presses;
            noteSpiral();
            EXPECT_EQ(desk.count("FillEllipse"), notes) << mash;
            EXPECT_EQ(desk.count("FillPolygonI"), chance < scatterBelow) << mash << " " << chance;
        }
    }
}

TEST(MashSpiral, WidensAroundACentreThatLagsBehindTheCursor)
{
    Desk desk(oneMonitor);
    Draws draws(0.5, {}, 0.3);
    std::string text;
    for (const auto &[x, presses] : {std::pair(400, 4), {465, 5}, {465, 6}}) {
        desk.cursor = {x, 700 - x};
        lastKeyCode = 'A';
        sameKeyCount = presses;
        if (presses == 6) spiralRadius = 416.0f;
        desk.calls.clear();
        noteSpiral();
        text += "around " + std::to_string(spiralCentre.x) + " " + std::to_string(spiralCentre.y) +
                ", radius " + std::to_string(int(spiralRadius)) + ": " + draws.take() +
                joined({"FillEllipse"}) + "\n";
    }
    expectRecorded("marks/spiral of notes", text);
    stepSpiral(primaryWindow());
    resetKeyState(primaryWindow());
    EXPECT_TRUE(!spiralCentreValid && spiralRadius == 70 && spiralAngle == 0 && sameKeyCount == 0);
    for (const auto &[ms, steps] : {std::pair(1, 1), {39, 1}, {1, 2}}) {
        desk.moveClocks(DWORD(ms));
        stepSpiral(primaryWindow());
        EXPECT_EQ(spiralRadius, 70 + 7 * steps);
        EXPECT_EQ((desk.timers[{primaryWindow(), 6}].period), 210u);
    }
}

TEST(CursorPen, StepsBy56PixelsAndIsHeardWhereItWraps)
{
    std::string text;
    for (const auto &[key, x, y] : {std::tuple(VK_LEFT, 96, 9),
                                    {VK_NUMPAD4, 0, 9},
                                    {VK_UP, 9, 57},
                                    {VK_NUMPAD8, 9, 0},
                                    {VK_RIGHT, 742, 9},
                                    {VK_NUMPAD6, 799, 9},
                                    {VK_DOWN, 9, 540},
                                    {VK_NUMPAD2, 9, 599},
                                    {VK_NUMPAD5, 96, 9}}) {
        for (const int presses : {1, 2}) {
            bool heard = false;
            const std::string said = drawn(
                [&, key = key, x = x, y = y] {
                    penDotVisible = true;
                    penDotPoint = {x, y};
                    autoMode = 3;
                    for (int i = 0; i < presses; ++i) {
                        lastSoundTick = 0;
                        Desk::current->calls.clear();
                        penKey(uint32_t(key));
                    }
                    heard = lastSoundTick != 0;
                    EXPECT_TRUE(!rainbowStroke && autoMode == (key == VK_NUMPAD5 ? 3 : 0)) << key;
                },
                0.0);
            text += std::to_string(key) + " x" + std::to_string(presses) + (heard ? ", heard: " : ": ") +
                    said.substr(said.find('\n') + 1);
        }
    }
    expectRecorded("marks/pen keys", text);
    for (const DWORD ms : {35u, 36u}) {
        Desk busy(oneMonitor);
        lastPenStepTick = busy.tick - ms;
        penKey(VK_LEFT);
        EXPECT_EQ(lastPenStepTick == busy.tick, ms == 36);
    }
    Desk desk({{0, 0, 1, 40}});
    autoMode = 3;
    penKey(VK_LEFT);  // no room for any step: it only shows
    EXPECT_TRUE(penDotVisible && penDotPoint.x == 0 && penDotPoint.y == 20 && autoMode == 3);
    EXPECT_EQ(desk.text(), "");
}
