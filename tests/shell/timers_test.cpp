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
    for (const int64_t age : {520'000'000, 520'000'001}) {
        const Desk desk(oneMonitor);
        lastMashTime = fakes.steady - age;
        keyMashCount = 3;
        for (const int left : {2, 1, 0, 0}) {
            recorded = {};
            onTimer(fakeWindow(0), 6);
            const bool fades = age == 520'000'000 && left > 0;
            EXPECT_EQ(keyMashCount, fades ? left : 0);
            EXPECT_EQ(recorded.timers.size(), fades ? 1u : 0u);
            EXPECT_EQ(recorded.calls[0], "KillTimer 6 w0");
        }
    }
}

TEST(Timers, WindTheSpiralWhileBothButtonsAreHeldAndSaveOnlyBetweenStrokes)
{
    for (int state = 0; state < 8; ++state) {
        const Desk desk(oneMonitor);
        const TestFolder folder;
        leftButtonDown = state & 1;
        dragMoved = state & 2;
        menuOpen = canvasDirty = state & 4;
        if (leftButtonDown) fakes.keysDown.insert(VK_LBUTTON);
        if (dragMoved) fakes.keysDown.insert(VK_RBUTTON);
        onTimer(fakeWindow(0), 10);
        EXPECT_EQ(std::filesystem::exists(folder.path / "norvanta"), state == 4);
        onTimer(fakeWindow(0), 7);
        EXPECT_EQ(countCalls("KillTimer 7 w0"), state != 3);
        EXPECT_EQ(countCalls("SetTimer 6 210 w0"), state == 3);
    }
}

TEST(Timers, BringTheHintAfterEightIdleSecondsAndTakeItAwayAgain)
{
    // Idle and still barred for so many milliseconds, the window that ticks, and whether it comes.
    const std::tuple<DWORD, DWORD, int, bool> rows[] = {
        {8000, 0, 0, true}, {7999, 0, 0, false}, {8000, 1, 0, false}, {8000, 0, 1, false}};
    for (const auto &[idle, barred, ticking, comes] : rows) {
        const Desk desk(twoMonitors);
        const Having window(idleHintWindow, fakeWindow(0));
        idleHintWidth = 800, idleHintHeight = 600;
        lastInputTick = fakes.tick - idle;
        hintNotBefore = fakes.tick + barred;
        onTimer(fakeWindow(ticking), 11);
        onTimer(fakeWindow(ticking), 11);  // nothing while it shows
        EXPECT_EQ(countCalls("SetTimer 9 10000 w0"), comes);
        noteChildInput();
        EXPECT_EQ(lastInputTick != fakes.tick, comes);  // the idle clock stands still then
        onTimer(fakeWindow(1), 9);
        EXPECT_EQ(hintVisible, comes);
        onTimer(fakeWindow(0), 9);
        EXPECT_FALSE(hintVisible);
    }
}

TEST(Timers, BringTheHintWeeksAfterItWasLastBarred)
{
    const Desk desk(oneMonitor);
    const Having window(idleHintWindow, fakeWindow(0));
    const Having barred(hintNotBefore, fakes.tick);
    idleHintWidth = 800, idleHintHeight = 600;
    lastInputTick = fakes.tick;
    onTimer(fakeWindow(0), 11);  // nothing: a child plays, and goes on for 28 days
    fakes.tick += 0x90000000;
    lastInputTick = fakes.tick - 8000;
    onTimer(fakeWindow(0), 11);
    EXPECT_TRUE(hintVisible);
    discardHintPanel(fakeWindow(0));
}
