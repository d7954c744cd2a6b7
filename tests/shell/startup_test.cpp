#include "shell/startup.h"

#include <gtest/gtest.h>

#include <sstream>

#include "autodraw/sequencer.h"
#include "clearing/wipes.h"
#include "mascot/walker.h"
#include "menu/menu.h"
#include "shell/lockdown.h"
#include "shell/shift_prompts.h"
#include "shell/shutdown.h"
#include "shell/window_proc.h"
#include "support/fakes.h"

// The calls have to come in this order; others may lie between.
static void expectInOrder(const std::string &calls)
{
    std::istringstream list(calls);
    auto at = recorded.calls.begin();
    for (std::string call; std::getline(list >> std::ws, call, ';');) {
        at = std::find(at, recorded.calls.end(), call);
        ASSERT_NE(at, recorded.calls.end()) << "missing or too early: " << call;
    }
}

TEST(Startup, DoesEverythingBeforeTheFirstMessageInOrder)
{
    const Desk empty({});
    const Having volume(volumeClamp, -1.0f);
    fakes.monitors = twoMonitors;
    fakes.screen = {-640, 0, 1440, 600};
    fakes.foreground = fakeWindow(0);
    fakes.messages.resize(2);
    canvasDirty = true;
    EXPECT_EQ(runApp(nullptr), 0);
    EXPECT_TRUE(fakes.messages.empty());
    expectInOrder(
        "CreateMutex; CoInitialize; CreateWindow 524424 2415919104 0 0 800 600; SetTimer 13 33 w0; "
        "SetWindowRgn w0; SetLayeredWindowAttributes w0 255 2; SetWindowRgn w1; "
        "SetWindowPos w0 topmost 16; SetWindowPos w1 topmost 16; ClipCursor -640,0,800,600; "
        "SetForegroundWindow w0; SetActiveWindow w0; SetFocus w0; ClipCursor -640,0,800,600; "
        "SetTimer 1 1500 w0; SetTimer 10 120000 w0; SetWindowsHook 13 0; SystemParametersInfo 59 251 0; "
        "SetThreadExecutionState 2147483651; SetTimer 11 500 w0; ClipCursor free; Unhook; "
        "SetThreadExecutionState 2147483648; DestroyWindow w0; DestroyWindow w1; ClipCursor free; "
        "CoUninitialize");
    EXPECT_FALSE(canvasDirty || gdiplusToken || keyboardHook || hookTargetWindow || !surfaces.empty());
}

TEST(Startup, EndsAtOnceBesideAnotherInstanceOrWithoutAMonitor)
{
    for (const bool second : {true, false}) {
        const Desk desk({});
        fakes.lastError = second ? ERROR_ALREADY_EXISTS : 0;
        EXPECT_EQ(runApp(nullptr), second ? 0 : 1);
        EXPECT_EQ(recorded.calls.size() == 1, second);
        EXPECT_EQ(countCalls("SetTimer") + countCalls("SetWindowsHook") + int(recorded.sounds.size()), 0);
    }
}

TEST(ShiftPrompts, StayAsTheyAreWhereTheSystemDoesNotTell)
{
    const Desk desk({});
    fakes.failing = {"SystemParametersInfoW"};
    for (const int calls : {0, 3}) {
        silenceShiftPrompts();
        silenceShiftPrompts();
        EXPECT_EQ(countCalls("SystemParametersInfo"), calls);
        restoreShiftPrompts();
        restoreShiftPrompts();
        EXPECT_EQ(countCalls("SystemParametersInfo"), 2 * calls);
        fakes.failing = {};
    }
}

// A desk in the middle of everything.
struct Running : Desk {
    Running() : Desk(twoMonitors)
    {
        shuttingDown = false;
        keyboardHook = HHOOK(1);
        hookTargetWindow = fakeWindow(0);
        menuOpen = wipeRunning = true;
        autoStepsLeft = 5;
    }
};

static const std::string timersEnd =
    "KillTimer 9 w0; KillTimer 11 w0; KillTimer 1 w0; KillTimer 3 w0; KillTimer 5 w0; KillTimer 6 w0; "
    "KillTimer 7 w0; KillTimer 10 w0; KillTimer 9 w0; KillTimer 11 w0; KillTimer 13 w0; KillTimer 12 w0; "
    "KillTimer 8 w0; ";

TEST(WaysOut, ByAltF4RunsOnceAndHidesBeforeItDestroys)
{
    const Running desk;
    for (int i = 0; i < 2; ++i)
        windowProc(fakeWindow(0), WM_SYSKEYDOWN, VK_F4, 1 << 29);
    expectInOrder(timersEnd + "ClipCursor free; Unhook; SetThreadExecutionState 2147483648; ShowWindow w0 0; "
                              "DestroyWindow w0; ShowWindow w1 0; DestroyWindow w1; PostQuitMessage 0");
    EXPECT_EQ(countCalls("PostQuitMessage"), 1);
    EXPECT_FALSE(menuOpen || wipeRunning || autoStepsLeft > 0 || keyboardHook || hookTargetWindow ||
                 !surfaces.empty());
}

TEST(WaysOut, AtTheEndOfTheSessionDestroyWithoutHiding)
{
    const Running desk;
    GdiplusStartupInput input;
    GdiplusStartup(&gdiplusToken, &input, nullptr);
    EXPECT_EQ(windowProc(fakeWindow(0), WM_QUERYENDSESSION, 0, 0), 1);
    expectInOrder(timersEnd);
    EXPECT_FALSE(wipeRunning || autoStepsLeft > 0);
    EXPECT_EQ(windowProc(fakeWindow(0), WM_ENDSESSION, FALSE, 0), 0);
    EXPECT_EQ(countCalls("ClipCursor"), 0);  // the session goes on
    EXPECT_EQ(surfaces.size(), 2u);
    EXPECT_EQ(windowProc(fakeWindow(0), WM_ENDSESSION, TRUE, 0), 0);
    expectInOrder(
        "ClipCursor free; Unhook; DestroyWindow w0; DestroyWindow w1; ClipCursor free; PostQuitMessage 0");
    EXPECT_EQ(countCalls("ShowWindow"), 0);
    EXPECT_FALSE(menuOpen || mascotEnabled || gdiplusToken || shuttingDown || !surfaces.empty());
    EXPECT_EQ(windowProc(fakeWindow(0), WM_QUERYENDSESSION, 0, 0), 1);  // with nothing left, too
}
