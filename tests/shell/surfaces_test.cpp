#include "shell/base/surfaces.h"

#include <gtest/gtest.h>

#include "support/fakes.h"

TEST(NewBackground, IsRefusedWithin260MillisecondsUnlessForced)
{
    const Desk desk(twoMonitors, 0x123456);
    const std::tuple<DWORD, bool, bool> rows[] = {
        {0, false, true}, {259, false, false}, {259, true, true}, {260, false, true}};
    for (const auto &[since, force, done] : rows) {
        lastClearTick = since ? fakes.tick - since : 0;  // 0 means none yet
        backdropPending = true;
        recorded = {};
        const Rng before = markRng;
        const MarkColor old = desk.pixel(799, 599);
        EXPECT_EQ(newBackground(force), done);
        EXPECT_TRUE((lastClearTick == fakes.tick) == done && backdropPending != done &&
                    (markRng != before) == done);
        EXPECT_EQ(recorded.invalidations.size(), done ? 2u : 0u);
        EXPECT_EQ(countCalls("SetWindowRgn w1") + countCalls("SetLayeredWindowAttributes w1 255 2"),
                  done ? 2 : 0);
        for (const POINT corner : {POINT{0, 0}, {799, 599}, {-640, 100}, {-1, 579}})
            EXPECT_EQ(desk.pixel(corner.x, corner.y), done ? backgroundColor : old);
    }
}

TEST(Backdrop, IsLaidOverTheCanvasesOnceWhenItIsPending)
{
    const Desk desk(twoMonitors, 0x123456);
    MonitorSurface &second = surfaces[1];
    HDC dc = CreateCompatibleDC(second.canvasDC);
    second.backdropBitmap = CreateCompatibleBitmap(second.canvasDC, second.width, second.height);
    HGDIOBJ old = SelectObject(dc, second.backdropBitmap);
    SetPixel(dc, 639, 479, 0x0000FF);
    SelectObject(dc, old);
    DeleteDC(dc);
    for (const bool pending : {false, true}) {
        backdropPending = pending;
        flushBackdrop();
        EXPECT_EQ(desk.pixel(-1, 579), pending ? 0x0000FFu : 0x123456u);
        EXPECT_TRUE(desk.pixel(799, 599) == 0x123456 && !backdropPending);
    }
}

TEST(LaunchMonitor, IsNamedByTheLauncherInOneFormOnly)
{
    const Desk desk(twoMonitors);
    const std::wstring named = L"-640,100,0,580", blanks(49, L' ');
    const std::vector<std::wstring> texts[] = {
        {L"", L"-640,100,0", L"-640;100;0;580", L"-640,,100,0", L"-640,100,-640,580", L"-640,100,0,100",
         L"5,5,90,90", named + L"x", named + L" " + blanks},
        {named, L"-640,100,9,999", named + L" and more", named + blanks}};
    for (const size_t second : {0, 1}) {
        for (const std::wstring &text : texts[second]) {
            SetEnvironmentVariableW(L"ZUB_LAUNCH_MONITOR", text.c_str());
            EXPECT_EQ(launchSurface(), &surfaces[second]) << text;
        }
    }
    SetEnvironmentVariableW(L"ZUB_LAUNCH_MONITOR", nullptr);
    fakes.primaryMonitor = 1;  // the first monitor enumerated need not be the primary one
    EXPECT_EQ(launchSurface(), &surfaces[1]);
    fakes.failing = {"GetMonitorInfoW"};
    RECT rect = {};
    EXPECT_TRUE(launchMonitorRect(rect) && rect.right == GetSystemMetrics(SM_CXSCREEN));
}

TEST(CreateSurface, KeepsARecordEvenWithoutAWindowOrAnArea)
{
    const Desk desk({});
    fakes.monitors = twoMonitors;
    fakes.monitors.push_back({5, 5, 5, 90});
    for (RECT &monitor : fakes.monitors) {
        fakes.failing.clear();
        if (surfaces.empty()) fakes.failing = {"CreateWindowExW"};
        createSurface(nullptr, nullptr, &monitor, 0);
    }
    EXPECT_EQ(recorded.calls.at(0), "CreateWindow 524424 2415919104 0 0 800 600");
    EXPECT_EQ(recorded.calls.at(1), "CreateWindow 524424 2415919104 -640 100 640 480");
    ASSERT_EQ(surfaces.size(), 3u);
    EXPECT_TRUE(!primaryWindow() && surfaces[1].hwnd == fakeWindow(1));
    EXPECT_TRUE(surfaces[0].canvasDC && surfaces[1].canvasBitmap && !surfaces[2].canvasDC);
    newBackground(true);  // and nothing is done to the window that is not there
    EXPECT_EQ(countCalls("InvalidateRect with a null") + countCalls("SetWindowRgn null"), 0);
    for (int i = 0; i < 2; ++i)
        freeSurfaceBuffers(surfaces[0]);
    EXPECT_FALSE(surfaces[0].canvasDC || surfaces[0].canvasBitmap || surfaces[0].windowRegion);
}

TEST(InvalidateVirtualRect, ReachesEachMonitorInItsOwnCoordinates)
{
    const Desk desk(twoMonitors);
    invalidateVirtualRect({-20, 90, 30, 110});
    invalidateVirtualRect({900, 0, 950, 50});
    invalidateMarkRect(surfaces[0], 800, 0, 900, 50);
    invalidateMarkRect(MonitorSurface{}, 0, 0, 50, 50);
    const std::string text = textOfRecord();
    EXPECT_EQ(text.substr(0, text.find("next")), "repaint 0 0 90 30 110\nrepaint 1 620 0 640 10\n");
}
