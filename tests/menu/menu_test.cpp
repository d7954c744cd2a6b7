#include "menu/menu.h"

#include <gtest/gtest.h>

#include "clearing/actions.h"
#include "settings/language.h"
#include "support/desk.h"
#include "support/recorded.h"

// Opens the menu with chance at that value, 0 to 99.
static void openAt(POINT point, int chance)
{
    Rng chosen(1);
    for (uint32_t seed = 1, drawn = 100; int(drawn) != chance; ++seed) {
        markRng = chosen = Rng(seed);
        drawn = uint32_t(randInt(0, 99));
    }
    markRng = chosen;
    openMenu(point);
}

TEST(OpenMenu, KeepsTheRowOnTheVirtualScreen)
{
    const VirtualScreen wide = {-1000, -50, 3000, 1000};
    const VirtualScreen narrow = {100, 0, 960, 300};  // four pixels too few: the right edge wins
    for (const auto &[screen, point, chance, left, top] : {std::tuple{wide, POINT{500, 400}, 39, 350L, 311L},
                                                           {wide, {500, 400}, 40, 30, 311},
                                                           {wide, {500, 400}, 84, 30, 311},
                                                           {wide, {500, 400}, 85, -290, 311},
                                                           {wide, {-838, 51}, 0, -988, -38},
                                                           {wide, {-837, 52}, 0, -987, -37},
                                                           {wide, {1999, 949}, 99, 1048, 760},
                                                           {wide, {1198, 849}, 0, 1048, 760},
                                                           {narrow, {500, 100}, 0, 108, 12}}) {
        Desk desk(oneMonitor);
        desk.screen = screen;
        openAt(point, chance);
        ASSERT_EQ(menuEntries.size(), 3u);
        for (int i = 0; i < 3; ++i) {
            const RECT expected = {left + i * 320, top, left + i * 320 + 300, top + 178};
            EXPECT_TRUE(EqualRect(&menuEntries[size_t(i)].rect, &expected)) << point.x << " " << i;
        }
    }
}

TEST(OpenMenu, ShowsAtOnceOnTheMonitorsItMeetsAndNeverOnTheCanvas)
{
    Desk desk({{0, 0, 800, 600}, {-640, 100, 0, 580}, {800, 0, 1200, 600}});
    chooseLanguage(L"en");
    openAt({100, 300}, 50);  // from -370 to 570, across two of three
    for (const Told &call : desk.calls)
        EXPECT_EQ(call.canvas, -1) << call.text;
    expectRecorded("menu/opened", desk.text({"Fill", "Draw", "CreateFont "}));
    EXPECT_EQ(leaks(), "");
}

TEST(DropMenu, RepaintsAllWindowsOnce)
{
    Desk desk(twoMonitors);
    openAt({100, 300}, 50);
    desk.calls.clear();
    dropMenu();
    dropMenu();
    drawMenu(surfaces[0].canvasDC, surfaces[0].rect);
    EXPECT_EQ(desk.text(), "InvalidateRect w0 all\nInvalidateRect w1 all\n");
}

TEST(MenuClick, TakesTheMenuAwayBeforeTheActionBegins)
{
    for (const auto &[x, y, action] : {std::array{-370, 211, 3},
                                       {-371, 300, 0},
                                       {-71, 388, 3},
                                       {-70, 300, 0},
                                       {-50, 300, 1},
                                       {250, 300, 0},
                                       {270, 300, 2},
                                       {100, 210, 0},
                                       {100, 389, 0}}) {
        SCOPED_TRACE(testing::Message() << x << "," << y);
        Desk desk(twoMonitors);
        openAt({100, 300}, 50);
        desk.calls.clear();
        menuClick({x, y});
        menuClick({100, 300});  // closed: nothing
        EXPECT_EQ(autoMode, action);
        EXPECT_EQ(desk.text({"Invalid", "UpdateW", "BitBlt"}),
                  "InvalidateRect w0 0 183 598 417\n"
                  "UpdateWindow w0\n"
                  "BitBlt w0 0 183 598 234 c0 0 183 xCC0020\n"
                  "InvalidateRect w1 242 83 640 317\n"
                  "UpdateWindow w1\n"
                  "BitBlt w1 242 83 398 234 c1 242 83 xCC0020\n");
        EXPECT_TRUE(!action || desk.first("SetTimer") > desk.first("BitBlt w1"));
        EXPECT_EQ(desk.count("Draw"), 0);
        EXPECT_EQ(desk.timers.size(), action ? 1u : 0u);
        EXPECT_TRUE(action || desk.sounds.empty());
    }
}
