#include "shell/base/surfaces.h"

#include <gtest/gtest.h>

#include "support/desk.h"

TEST(NewBackground, IsRefusedWithin260MillisecondsUnlessForced)
{
    for (const auto &[since, force, done] :
         {std::tuple{0u, false, true}, {259u, false, false}, {259u, true, true}, {260u, false, true}}) {
        SCOPED_TRACE(testing::Message() << since << " ms, forced: " << force);
        Desk desk(twoMonitors, 0x123456);
        lastClearTick = since ? desk.tick - since : 0;  // 0 means none yet
        backdropPending = true;
        const Rng before = markRng;
        EXPECT_EQ(newBackground(force), done);
        EXPECT_EQ(lastClearTick == desk.tick, done);
        EXPECT_EQ(backdropPending, !done);
        EXPECT_EQ(sameStream(markRng, before), !done);
        EXPECT_EQ(desk.text({"Invalidate"}), done ? "InvalidateRect w0 all\nInvalidateRect w1 all\n" : "");
        for (const POINT corner : {POINT{0, 0}, {799, 599}, {-640, 100}, {-1, 579}})
            EXPECT_EQ(desk.pixel(corner.x, corner.y), done ? backgroundColor : 0x123456u);
    }
}

TEST(Backdrop, IsLaidOverTheCanvasesOnceWhenItIsPending)
{
    Desk desk(twoMonitors, 0x123456);
    MonitorSurface &second = surfaces[1];
    HDC dc = CreateCompatibleDC(second.canvasDC);
    second.backdropBitmap = CreateCompatibleBitmap(second.canvasDC, second.width, second.height);
    HGDIOBJ old = SelectObject(dc, second.backdropBitmap);
    SetPixel(dc, 639, 479, 0x0000FF);
    SelectObject(dc, old);
    DeleteDC(dc);
    for (const bool pending : {false, true, false}) {
        if (pending) backdropPending = true;
        desk.calls.clear();
        flushBackdrop();
        EXPECT_EQ(desk.text({"BitBlt"}), pending ? "BitBlt c1 0 0 640 480 elsewhere 0 0 xCC0020\n" : "");
        EXPECT_FALSE(backdropPending);
    }
    EXPECT_EQ(desk.pixel(-1, 579), 0x0000FFu);
    EXPECT_EQ(desk.pixel(799, 599), 0x123456u);
}

TEST(LaunchMonitor, IsNamedByTheLauncherInOneFormOnly)
{
    Desk desk(twoMonitors);
    const std::wstring named = L"-640,100,0,580", blanks(49, L' ');
    const std::vector<std::wstring> texts[] = {
        {L"", L"-640,100,0", L"-640;100;0;580", L"-640,,100,0", L"-640,100,-640,580", L"-640,100,0,100",
         L"5,5,90,90", named + L"x", named + L" " + blanks},
        {named, L"-640,100,9,999", named + L" and more", named + blanks}};
    for (const size_t second : {0, 1}) {
        for (const std::wstring &text : texts[second]) {
            desk.environment[L"ZUB_LAUNCH_MONITOR"] = text;
            EXPECT_EQ(launchSurface(), &surfaces[second]) << std::string(text.begin(), text.end());
        }
    }
    desk.environment.clear();
    desk.primaryMonitor = 1;  // the first monitor enumerated need not be the primary one
    EXPECT_EQ(launchSurface(), &surfaces[1]);
    const Failing unknown("GetMonitorInfoW");
    RECT rect = {};
    EXPECT_TRUE(launchMonitorRect(rect));
    EXPECT_EQ(rect.right, 640);  // the primary one's size at the origin
    EXPECT_EQ(rect.bottom, 480);
}

TEST(CreateSurface, HasTheSizeOfItsClientAreaAndARecordInAnyCase)
{
    Desk desk({});
    desk.frame = 16;
    RECT monitors[] = {{0, 0, 800, 600}, {-640, 100, 0, 580}, {5, 5, 5, 90}};
    {
        const Failing none("CreateWindowExW");
        createSurface(nullptr, nullptr, &monitors[0], 0);
    }
    createSurface(nullptr, nullptr, &monitors[1], 0);
    createSurface(nullptr, nullptr, &monitors[2], 0);
    EXPECT_EQ(desk.text({"CreateWindow"}),
              "CreateWindowEx x80088 \"ZubblyWindow\" x90000000 -640 100 640 480 null\n"
              "CreateWindowEx x80088 \"ZubblyWindow\" x90000000 5 5 0 85 null\n");
    ASSERT_EQ(surfaces.size(), 3u);
    for (const auto &[index, width, height, canvas] :
         {std::tuple{0, 800, 600, true}, {1, 624, 464, true}, {2, 0, 85, false}}) {
        const MonitorSurface &surface = surfaces[size_t(index)];
        EXPECT_EQ(surface.hwnd != nullptr, index > 0);
        EXPECT_EQ(surface.width, width) << index;
        EXPECT_EQ(surface.height, height) << index;
        EXPECT_EQ(surface.canvasDC && surface.canvasBitmap, canvas) << index;
    }
    newBackground(true);  // the desk refuses what is done to a null window
    EXPECT_EQ(desk.count("SetWindowRgn null"), 0);
    for (MonitorSurface &surface : surfaces)
        for (int twice = 0; twice < 2; ++twice)
            freeSurfaceBuffers(surface);
    EXPECT_EQ(leaks(), "");
}

TEST(InvalidateRects, ReachEachMonitorInItsOwnCoordinates)
{
    Desk desk(twoMonitors);
    invalidateVirtualRect({-20, 90, 30, 110});
    invalidateVirtualRect({900, 0, 950, 50});
    invalidateMarkRect(surfaces[0], -5, -6, 20, 30);
    invalidateMarkRect(surfaces[0], 790, 590, 900, 700);
    invalidateMarkRect(surfaces[0], 800, 0, 900, 50);
    invalidateMarkRect(MonitorSurface{}, 0, 0, 50, 50);
    EXPECT_EQ(desk.text(), "InvalidateRect w0 0 90 30 110\nInvalidateRect w1 620 0 640 10\n"
                           "InvalidateRect w0 0 0 20 30\nInvalidateRect w0 790 590 800 600\n");
}
