#include "shell/timers.h"

#include <gtest/gtest.h>

#include "hint/idle.h"
#include "hint/panel.h"
#include "marks/key_reactions.h"
#include "menu/menu.h"
#include "shell/window_proc.h"
#include "support/desk.h"

TEST(Timers, LetAMashFadeByOneStepATickAsLongAsItIsRecent)
{
    for (const int64_t age : {520'000'000, 520'000'001}) {
        Desk desk(oneMonitor);
        lastMashTime = desk.steady - age;
        keyMashCount = 3;
        for (const int left : {2, 1, 0, 0}) {
            desk.calls.clear();
            onTimer(windowHandle(0), 6);
            const bool fades = age == 520'000'000 && left > 0;
            EXPECT_EQ(keyMashCount, fades ? left : 0) << age;
            EXPECT_EQ(desk.count("SetTimer w0 6 210"), fades) << age;
            EXPECT_EQ(desk.first("KillTimer w0 6"), 0);
        }
    }
}

TEST(Timers, SaveOnlyWhatChangedAndOnlyBetweenStrokes)
{
    for (const auto &[dirty, pressed, moved, saves] : {std::array{true, false, false, true},
                                                       {false, false, false, false},
                                                       {true, true, false, false},
                                                       {true, false, true, false}}) {
        Desk desk(oneMonitor);
        canvasDirty = dirty;
        leftButtonDown = pressed;
        dragMoved = moved;
        onTimer(windowHandle(0), 10);
        EXPECT_EQ(desk.count("GdipSaveImageToFile") + desk.count("SaveImageToFile"), saves);
        EXPECT_EQ(canvasDirty, dirty && !saves);
    }
}

TEST(Timers, WindTheSpiralWhileBothButtonsAreHeldOutsideTheMenu)
{
    for (const auto &[left, right, menu, winds] : {std::array{true, true, false, true},
                                                   {true, false, false, false},
                                                   {false, true, false, false},
                                                   {true, true, true, false}}) {
        Desk desk(oneMonitor);
        if (left) desk.hold(VK_LBUTTON);
        if (right) desk.hold(VK_RBUTTON);
        menuOpen = menu;
        onTimer(windowHandle(0), 7);
        EXPECT_EQ(desk.count("KillTimer w0 7"), !winds);
        EXPECT_EQ(desk.count("SetTimer w0 6 210"), winds);
        EXPECT_EQ(keyMashCount, winds);
    }
}

TEST(Timers, BringTheHintAfterEightIdleSecondsAndTakeItAwayAgain)
{
    // Idle, and barred for so many more milliseconds, the window that ticks, and whether it comes.
    for (const auto &[idle, barred, ticking, comes] : {std::tuple{8000u, 0u, 0, true},
                                                       {7999u, 0u, 0, false},
                                                       {8000u, 1u, 0, false},
                                                       {8000u, 0u, 1, false},
                                                       {8000u, 0x90000000u, 0, true}}) {  // 28 days ago
        SCOPED_TRACE(testing::Message() << idle << " " << barred << " " << ticking);
        Desk desk(twoMonitors);
        armIdleHint(surfaces[0]);
        hintNotBefore = desk.tick + (barred == 1);
        if (barred > 1) onTimer(windowHandle(0), 11);  // a child plays
        desk.tick += barred > 1 ? barred : 0;
        lastInputTick = desk.tick - idle;
        onTimer(windowHandle(ticking), 11);
        onTimer(windowHandle(ticking), 11);  // nothing while it shows
        EXPECT_EQ(desk.count("SetTimer w0 9 10000"), comes);
        desk.tick += 5;
        noteChildInput();
        EXPECT_EQ(lastInputTick == desk.tick, !comes);  // the idle clock stands still while it shows
        onTimer(windowHandle(1), 9);
        EXPECT_EQ(hintVisible, comes);
        onTimer(windowHandle(0), 9);
        EXPECT_FALSE(hintVisible);
    }
}
