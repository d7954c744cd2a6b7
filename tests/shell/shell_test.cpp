#include <gtest/gtest.h>

#include "clearing/actions.h"
#include "shell/child.h"
#include "shell/lockdown.h"
#include "shell/window_proc.h"
#include "support/draws.h"
#include "support/recorded.h"

TEST(KeyboardHook, SwallowsWhatLeadsOutAndPostsOurKeys)
{
    std::map<std::string, std::string> table;
    for (const std::string held :
         {"", "AltFlag+", "Alt+", "LeftAlt+", "RightAlt+", "Ctrl+", "Shift+", "Ctrl+Shift+", "Ctrl+Alt+",
          "Windows+", "RightWindows+", "Extended+Alt+", "Released+Alt+"}) {
        std::map<std::string, std::string> fates;
        for (const std::string key :
             {"PrintScreen", "F1", "F2", "F4", "Windows", "RightWindows", "Tab", "Escape"}) {
            Desk desk(oneMonitor);
            REPLACE(PostMessageW, [] { return TRUE; });
            takeLock();
            desk.calls.clear();
            act(held + key);
            const bool passedOn = desk.count("CallNextHookEx") == 2 || !desk.hook;  // the release always is
            fates[passedOn                    ? " passed on"
                  : desk.count("PostMessage") ? " posted"
                                              : " swallowed"] += " " + key;
        }
        std::string line;
        for (const auto &[fate, which] : fates)
            line += (line.empty() ? ":" : ";") + fate + which;
        table[line] += (table[line].empty() ? "with " : ", ") + (held.empty() ? "none" : held);
    }
    std::string text;
    for (const auto &[line, situations] : table)
        text += situations + line + "\n";
    expectRecorded("shell/keys with others held", text);
}

TEST(KeyboardHook, PassesOnWhatCannotBePosted)
{
    Desk desk(oneMonitor);
    takeLock();
    for (const bool works : {false, true, true}) {
        REPLACE(PostMessageW, [works] { return BOOL(works); });
        desk.calls.clear();
        const KBDLLHOOKSTRUCT event = {VK_F1, 0, LLKHF_ALTDOWN, 0, 0};
        EXPECT_EQ(desk.hook(HC_ACTION, WM_SYSKEYDOWN, LPARAM(&event)), works);
    }
}

TEST(Enter, StartsAutoDrawingOrMarksByItsDraw)
{
    const auto enter = [] {
        act("Enter");
        return autoMode == drawAction ? " draws" : autoMode == scatterAction ? " scatters" : "";
    };
    EXPECT_EQ(chosen(84, {}, enter),
              "0..39: 0..4 0..99 6..14 72..98 draws\n40..84: 0..4 x2 82..118 scatters\n");
}

TEST(SaveTimer, WaitsForTheEndOfAPressAndOfADrag)
{
    Desk desk(oneMonitor);
    canvasDirty = true;
    for (bool *held : {&leftButtonDown, &dragMoved, &shuttingDown}) {  // the last one does not matter
        *held = true;
        desk.send(primaryWindow(), WM_TIMER, 10);
        EXPECT_EQ(canvasDirty, held != &shuttingDown);
        *held = false;
    }
}

TEST(Lockdown, HoldsTheCursorOnTheMonitorsIfTheSystemDoesNotReportTheirBounds)
{
    Desk desk(twoMonitors);
    for (const auto &[width, height] : {std::pair{0, 700}, {1600, 0}}) {
        desk.screen = VirtualScreen{-700, -10, width, height};
        desk.calls.clear();
        confineCursor();
        EXPECT_EQ(desk.text(), "ClipCursor -640 0 800 600\n");
    }
}

TEST(LaunchMonitor, IsNamedByTheLauncherInOneFormOnly)
{
    Desk desk(twoMonitors);
    const std::wstring named = L"-640,100,0,580", blanks(49, L' ');
    for (const auto &[text, index] : {std::pair{named, 1},
                                      {named + blanks, 1},
                                      {named + L" " + blanks, 0},
                                      {L"-640,100,9,999", 1},
                                      {L"5,5,90,90", 0},
                                      {named + L"x", 0}}) {
        desk.environment[L"ZUB_LAUNCH_MONITOR"] = text;
        EXPECT_EQ(launchSurface(), &surfaces[size_t(index)]) << std::string(text.begin(), text.end());
    }
    desk.environment.clear();
    desk.primaryMonitor = 1;  // the first monitor enumerated need not be the primary one
    EXPECT_EQ(launchSurface(), &surfaces[1]);
    const Failing unknown("GetMonitorInfoW");
    RECT rect = {};
    EXPECT_TRUE(launchMonitorRect(rect));
    EXPECT_TRUE(rect.left == 0 && rect.right == 640 && rect.bottom == 480);  // the primary one's size
}

TEST(CreateSurface, HasTheSizeOfItsClientAreaAndARecordInAnyCase)
{
    Desk desk({});
    DeskWindow::frame = 16;
    RECT monitors[] = {{0, 0, 800, 600}, {-640, 100, 0, 580}, {5, 5, 5, 90}, {0, 0, 16, 90}, {0, 0, 40, 30}};
    for (size_t i = 0; i < 5; ++i) {
        const Failing fails(i == 0 ? "CreateWindowExW" : i == 4 ? "CreateCompatibleBitmap" : "OpenClipboard");
        createSurface(nullptr, nullptr, &monitors[i], 0);
    }
    std::string sizes;
    for (const MonitorSurface &surface : surfaces)
        sizes += std::to_string(surface.width) + " " + std::to_string(surface.height) +
                 (surface.hwnd ? " window" : "") + (surface.canvasDC ? " canvas" : "") + "\n";
    EXPECT_EQ(sizes,
              "800 600 canvas\n624 464 window canvas\n0 85 window\n16 90 window canvas\n24 14 window\n");
    newBackground(true);  // the desk refuses what is done to a null window
    for (MonitorSurface &surface : surfaces)
        for (int twice = 0; twice < 2; ++twice)
            freeSurfaceBuffers(surface);
    EXPECT_EQ(leaks(), "");
}
