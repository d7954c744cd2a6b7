#include "shell/surfaces.h"

#include <gtest/gtest.h>

#include "support/fakes.h"

TEST(NewBackground, IsRefusedWithin260MillisecondsUnlessForced)
{
    const Desk desk(twoMonitors, 0x123456);
    Having tick(lastClearTick, DWORD(0));
    EXPECT_TRUE(newBackground(false));  // 0 means none yet
    const MarkColor first = backgroundColor;
    const int regions = countCalls("SetWindowRgn");
    for (const MonitorSurface &surface : surfaces)
        SetPixel(surface.canvasDC, 9, 9, 0x0000FF);
    fakes.passMs(259);
    const Rng before = markRng;
    EXPECT_FALSE(newBackground(false));
    EXPECT_EQ(backgroundColor, first);
    EXPECT_EQ(markRng, before);
    EXPECT_EQ(countCalls("SetWindowRgn"), regions);
    EXPECT_EQ(desk.pixel(9, 9), 0x0000FFu);
    EXPECT_TRUE(newBackground(true));
    fakes.tick = lastClearTick + 260;
    backdropPending = true;
    EXPECT_TRUE(newBackground(false));
    EXPECT_FALSE(backdropPending);
    for (const MonitorSurface &surface : surfaces) {
        EXPECT_EQ(GetPixel(surface.canvasDC, 9, 9), backgroundColor);
        EXPECT_EQ(GetPixel(surface.canvasDC, surface.width - 1, surface.height - 1), backgroundColor);
        EXPECT_TRUE(surface.windowRegion);
    }
    EXPECT_TRUE(recorded.invalidations.back().whole);
    EXPECT_EQ(countCalls("SetLayeredWindowAttributes w1 255 2"), 3);
    EXPECT_FALSE(canvasDirty);
}

TEST(LaunchMonitor, IsNamedByTheLauncherInOneFormOnly)
{
    const Desk desk(twoMonitors);
    struct Row {
        const wchar_t *text;
        bool counts;
    };
    const std::wstring blanks(59, L' ');
    for (const Row &row :
         {Row{L"-640,100,0,580", true}, Row{L"-640,100,9,999", true}, Row{L"-640,100,0,580 and more", true},
          Row{L"-640,100,0,580x", false}, Row{L"-640,100,-640,580", false}, Row{L"-640,100,0,100", false},
          Row{L"-640,100,0", false}, Row{L"-640;100;0;580", false}, Row{L"", false},
          Row{L"-640,,100,0", false}}) {
        SetEnvironmentVariableW(L"ZUB_LAUNCH_MONITOR", row.text);
        RECT rect = {};
        EXPECT_TRUE(launchMonitorRect(rect));
        EXPECT_EQ(rect.left, row.counts ? -640 : 0) << row.text;
        EXPECT_EQ(launchSurface(), &surfaces[row.counts ? 1 : 0]) << row.text;
    }
    for (const size_t length : {63, 64}) {
        const std::wstring text = std::wstring(L"-640,100,0,580") + std::wstring(length - 14, L' ');
        SetEnvironmentVariableW(L"ZUB_LAUNCH_MONITOR", text.c_str());
        EXPECT_EQ(launchSurface(), &surfaces[length == 63 ? 1 : 0]) << length;
    }
    SetEnvironmentVariableW(L"ZUB_LAUNCH_MONITOR", L"5,5,90,90");  // no monitor begins there
    EXPECT_EQ(launchSurface(), &surfaces[0]);
    SetEnvironmentVariableW(L"ZUB_LAUNCH_MONITOR", nullptr);
    fakes.primaryMonitor = 1;  // the first monitor enumerated need not be the primary one
    EXPECT_EQ(launchSurface(), &surfaces[1]);
    fakes.failing = {"GetMonitorInfoW"};
    RECT rect = {};
    EXPECT_TRUE(launchMonitorRect(rect));
    EXPECT_EQ(rect.right, GetSystemMetrics(SM_CXSCREEN));
}

TEST(CreateSurface, KeepsARecordEvenWithoutAWindow)
{
    const Desk desk({});
    fakes.monitors = twoMonitors;
    fakes.failing = {"CreateWindowExW"};
    EnumDisplayMonitors(nullptr, nullptr, createSurface, 0);
    fakes.failing = {};
    surfaces.pop_back();
    RECT second = twoMonitors[1];
    createSurface(nullptr, nullptr, &second, 0);
    EXPECT_EQ(recorded.calls.at(0), "CreateWindow 524424 2415919104 0 0 800 600");
    EXPECT_EQ(recorded.calls.at(2), "CreateWindow 524424 2415919104 -640 100 640 480");
    ASSERT_EQ(surfaces.size(), 2u);
    EXPECT_EQ(primaryWindow(), nullptr);
    EXPECT_EQ(surfaces[1].hwnd, fakeWindow(1));
    EXPECT_EQ(surfaces[1].width, 640);
    EXPECT_TRUE(surfaces[0].canvasDC && surfaces[0].canvasBitmap);
    EXPECT_TRUE(newBackground(true));  // and nothing is done to the window that is not there
    EXPECT_EQ(countCalls("InvalidateRect with a null"), 0);
    EXPECT_EQ(countCalls("SetWindowRgn null"), 0);
    RECT empty = {5, 5, 5, 90};
    fakes.monitors.push_back(empty);
    createSurface(nullptr, nullptr, &empty, 0);
    EXPECT_FALSE(surfaces[2].canvasDC);
    freeSurfaceBuffers(surfaces[0]);
    EXPECT_FALSE(surfaces[0].canvasDC || surfaces[0].canvasBitmap || surfaces[0].windowRegion);
    freeSurfaceBuffers(surfaces[0]);
}

TEST(InvalidateVirtualRect, ReachesEachMonitorInItsOwnCoordinates)
{
    const Desk desk(twoMonitors);
    invalidateVirtualRect({-20, 90, 30, 110});
    ASSERT_EQ(recorded.invalidations.size(), 2u);
    const RECT right = {0, 90, 30, 110};
    const RECT left = {620, 0, 640, 10};
    EXPECT_TRUE(EqualRect(&recorded.invalidations[0].rect, &right));
    EXPECT_TRUE(EqualRect(&recorded.invalidations[1].rect, &left));
    invalidateVirtualRect({900, 0, 950, 50});
    invalidateMarkRect(surfaces[0], 800, 0, 900, 50);
    invalidateMarkRect(MonitorSurface{}, 0, 0, 50, 50);
    EXPECT_EQ(recorded.invalidations.size(), 2u);
}
