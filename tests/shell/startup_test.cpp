#include "shell/startup.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "clearing/wipes.h"
#include "menu/menu.h"
#include "mascot/walker.h"
#include "shell/lockdown.h"
#include "shell/shift_prompts.h"
#include "shell/shutdown.h"
#include "shell/window_proc.h"
#include "support/fakes.h"

// What stands between two calls has to come in this order; others may lie between.
static void expectInOrder(const std::vector<const char *> &starts)
{
    size_t at = 0;
    for (const char *start : starts) {
        while (at < recorded.calls.size() && !recorded.calls[at].starts_with(start))
            ++at;
        EXPECT_LT(at, recorded.calls.size()) << "missing or too early: " << start;
    }
}

// A run on two monitors that handles the messages and falls out of the loop.
static int runWith(std::vector<MSG> messages)
{
    const Desk empty({});
    fakes.monitors = twoMonitors;
    fakes.screen = {-640, 0, 1440, 600};
    fakes.foreground = fakeWindow(0);
    fakes.messages = std::move(messages);
    return runApp(nullptr);
}

TEST(Startup, DoesEverythingBeforeTheFirstMessageInOrder)
{
    Having volume(volumeClamp, -1.0f);
    canvasDirty = true;
    EXPECT_EQ(runWith({}), 0);
    expectInOrder({"CreateMutex",
                   "CoInitialize",
                   "CreateWindow 524424",
                   "CreateWindow 524424",
                   "SetTimer 13 33 w0",
                   "SetWindowRgn w0",
                   "SetLayeredWindowAttributes w0 255 2",
                   "SetWindowRgn w1",
                   "SetWindowPos w0 topmost 16",
                   "SetWindowPos w1 topmost 16",
                   "ClipCursor -640,0,800,600",
                   "SetForegroundWindow w0",
                   "SetActiveWindow w0",
                   "SetFocus w0",
                   "ClipCursor -640,0,800,600",
                   "SetTimer 1 1500 w0",
                   "SetTimer 10 120000 w0",
                   "SetWindowsHook 13 0",
                   "SetTimer 11 500 w0",
                   "ClipCursor free",
                   "Unhook",
                   "DestroyWindow w0",
                   "DestroyWindow w1",
                   "ClipCursor free",
                   "CoUninitialize"});
    EXPECT_FALSE(canvasDirty);
    EXPECT_TRUE(surfaces.empty());
    EXPECT_EQ(gdiplusToken, 0u);
    EXPECT_EQ(keyboardHook, nullptr);
    EXPECT_EQ(hookTargetWindow, nullptr);
}

TEST(ShiftPrompts, StayAsTheyAreWhereTheSystemDoesNotTell)
{
    const Desk desk({});
    restoreShiftPrompts();
    fakes.failing = {"SystemParametersInfoW"};
    silenceShiftPrompts();
    restoreShiftPrompts();
    EXPECT_EQ(countCalls("SystemParametersInfo"), 0);
    fakes.failing = {};
    silenceShiftPrompts();
    silenceShiftPrompts();
    EXPECT_EQ(countCalls("SystemParametersInfo"), 3);
    restoreShiftPrompts();
    restoreShiftPrompts();
    EXPECT_EQ(countCalls("SystemParametersInfo"), 6);
}

TEST(Startup, OfASecondInstanceDoesNothing)
{
    const Desk desk({});
    fakes.lastError = ERROR_ALREADY_EXISTS;
    EXPECT_EQ(runApp(nullptr), 0);
    EXPECT_EQ(recorded.calls, (std::vector<std::string>{"CreateMutex"}));
    EXPECT_TRUE(recorded.sounds.empty());
}

TEST(Startup, WithoutAMonitorEndsWithOne)
{
    const Desk desk({});
    EXPECT_EQ(runApp(nullptr), 1);
    EXPECT_EQ(countCalls("SetTimer"), 0);
    EXPECT_EQ(countCalls("SetWindowsHook"), 0);
}

static MSG messageTo(int window, UINT message, WPARAM wParam, LPARAM lParam = 0)
{
    MSG result = {};
    result.hwnd = fakeWindow(window);
    result.message = message;
    result.wParam = wParam;
    result.lParam = lParam;
    return result;
}

TEST(WaysOut, ByAltF4RunsOnceAndHidesBeforeItDestroys)
{
    const Desk desk(twoMonitors);
    keyboardHook = HHOOK(1);
    hookTargetWindow = fakeWindow(0);
    menuOpen = true;
    wipeRunning = true;
    autoStepsLeft = 5;
    windowProc(fakeWindow(0), WM_APP + 1, VK_F4, 0);
    expectInOrder({"KillTimer 9 w0",   "KillTimer 11 w0", "KillTimer 1 w0",   "KillTimer 3 w0",
                   "KillTimer 5 w0",   "KillTimer 6 w0",  "KillTimer 7 w0",   "KillTimer 10 w0",
                   "KillTimer 9 w0",   "KillTimer 11 w0", "KillTimer 13 w0",  "KillTimer 12 w0",
                   "KillTimer 8 w0",   "ClipCursor free", "Unhook",           "ShowWindow w0 0",
                   "DestroyWindow w0", "ShowWindow w1 0", "DestroyWindow w1", "PostQuitMessage 0"});
    EXPECT_FALSE(menuOpen || wipeRunning || autoStepsLeft > 0);
    EXPECT_TRUE(shuttingDown && surfaces.empty());
    EXPECT_EQ(keyboardHook, nullptr);
    windowProc(fakeWindow(0), WM_SYSKEYDOWN, VK_F4, 1 << 29);
    EXPECT_EQ(countCalls("PostQuitMessage"), 1);
}

TEST(WaysOut, AtTheEndOfTheSessionDestroyWithoutHiding)
{
    const Desk desk(twoMonitors);
    keyboardHook = HHOOK(1);
    hookTargetWindow = fakeWindow(0);
    menuOpen = true;
    autoStepsLeft = 5;
    GdiplusStartupInput input;
    GdiplusStartup(&gdiplusToken, &input, nullptr);
    EXPECT_EQ(windowProc(fakeWindow(0), WM_QUERYENDSESSION, 0, 0), 1);
    EXPECT_EQ(countCalls("KillTimer 10"), 1);
    EXPECT_EQ(countCalls("ClipCursor"), 0);  // the session may yet go on
    recorded.calls.clear();
    EXPECT_EQ(windowProc(fakeWindow(0), WM_ENDSESSION, FALSE, 0), 0);
    EXPECT_TRUE(recorded.calls.empty());
    EXPECT_EQ(surfaces.size(), 2u);
    EXPECT_EQ(windowProc(fakeWindow(0), WM_ENDSESSION, TRUE, 0), 0);
    expectInOrder({"ClipCursor free", "Unhook", "DestroyWindow w0", "DestroyWindow w1", "ClipCursor free",
                   "PostQuitMessage 0"});
    EXPECT_EQ(countCalls("ShowWindow"), 0);
    EXPECT_FALSE(menuOpen || mascotEnabled || autoStepsLeft > 0 || shuttingDown);
    EXPECT_EQ(gdiplusToken, 0u);
    EXPECT_EQ(windowProc(fakeWindow(0), WM_QUERYENDSESSION, 0, 0), 1);  // with nothing left, too
}

TEST(Startup, DispatchesItsMessagesUntilTheLoopEnds)
{
    runWith({messageTo(0, WM_NULL, 0), messageTo(1, WM_NULL, 0)});
    EXPECT_TRUE(fakes.messages.empty());
}
