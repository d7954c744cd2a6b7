#include "shell/timers.h"

#include <gtest/gtest.h>

#include <tuple>

#include "hint/idle.h"
#include "hint/panel.h"
#include "marks/key_reactions.h"
#include "menu/menu.h"
#include "shell/window_proc.h"
#include "support/fakes.h"

TEST(Timers, LetAMashFadeByOneStepATickAsLongAsItIsRecent)
{
    const int64_t limit = 520'000'000, never = -1;
    const std::tuple<int, int64_t, int> rows[] = {{3, limit, 2}, {3, limit + 1, 0}, {2, 0, 1},
                                                  {1, limit, 0}, {0, 0, 0},         {3, never, 0}};
    for (const auto &[count, age, left] : rows) {
        const Desk desk(oneMonitor);
        keyMashCount = count;
        spiralCentreValid = true;
        lastMashTime = age == never ? noTime : fakes.steady - age;
        onTimer(fakeWindow(0), 6);
        EXPECT_EQ(keyMashCount, left);
        EXPECT_EQ(spiralCentreValid, left > 0);
        EXPECT_EQ(recorded.timers.size(), left > 0 ? 1u : 0u);
        EXPECT_EQ(firstCall("KillTimer 6 w0"), 0);
    }
}

TEST(Timers, WindTheSpiralWhileBothButtonsAreHeldAndSaveOnlyBetweenStrokes)
{
    for (int state = 0; state < 8; ++state) {
        const Desk desk(oneMonitor);
        const TestFolder folder;
        const Having menu(menuOpen, (state & 4) != 0);
        const Having pressed(leftButtonDown, (state & 1) != 0);
        const Having moved(dragMoved, (state & 2) != 0);
        canvasDirty = (state & 4) != 0;
        if (state & 1) fakes.keysDown.insert(VK_LBUTTON);
        if (state & 2) fakes.keysDown.insert(VK_RBUTTON);
        onTimer(fakeWindow(0), 10);
        EXPECT_EQ(std::filesystem::exists(folder.path / "norvanta"), state == 4);
        onTimer(fakeWindow(0), 7);
        EXPECT_EQ(countCalls("KillTimer 7 w0"), state != 3);
        EXPECT_EQ(countCalls("SetTimer 6 210 w0"), state == 3);
    }
}

TEST(Timers, BringTheHintAfterEightIdleSecondsAndTakeItAwayAgain)
{
    // Idle and still barred for so many milliseconds, visible, the window that ticks, and whether it comes.
    using Row = std::tuple<DWORD, DWORD, bool, int, bool>;
    const Row rows[] = {{8000, 0, false, 0, true},
                        {7999, 0, false, 0, false},
                        {8000, 1, false, 0, false},
                        {8000, 0, false, 1, false},
                        {8000, 0, true, 0, false}};
    for (const auto &[idle, barred, visible, ticking, comes] : rows) {
        const Desk desk(twoMonitors);
        const Having window(idleHintWindow, fakeWindow(0));
        idleHintWidth = 800, idleHintHeight = 600;
        hintVisible = visible;
        hintOwnerWindow = fakeWindow(0);
        lastInputTick = fakes.tick - idle;
        hintNotBefore = fakes.tick + barred;
        onTimer(fakeWindow(ticking), 11);
        EXPECT_EQ(countCalls("SetTimer 9 10000 w0"), comes);
        EXPECT_EQ(hintVisible, comes || visible);
        onTimer(fakeWindow(1), 9);
        EXPECT_EQ(hintVisible, comes || visible);
        onTimer(fakeWindow(0), 9);
        EXPECT_FALSE(hintVisible);
    }
}
