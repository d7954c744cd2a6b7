#include "menu/menu.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "clearing/wipes.h"
#include "settings/language.h"
#include "support/fakes.h"

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
    markRng = chosen;
    randInt(0, 99);
    for (const MenuEntry &entry : menuEntries)
        EXPECT_EQ(entry.color, pickMenuColor());
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
        const Desk desk(oneMonitor);
        fakes.screen = screen;
        openAt(point, chance);
        ASSERT_EQ(menuEntries.size(), 3u);
        for (int i = 0; i < 3; ++i) {
            const RECT expected = {left + i * 320, top, left + i * 320 + 300, top + 178};
            EXPECT_TRUE(EqualRect(&menuEntries[size_t(i)].rect, &expected)) << point.x << " " << i;
            EXPECT_EQ(menuEntries[size_t(i)].id, i == 0 ? 3 : i);
        }
    }
}

TEST(DrawMenu, ShowsAtOnceOnTheMonitorsItMeetsAndNeverOnTheCanvas)
{
    const Desk desk({{0, 0, 800, 600}, {-640, 100, 0, 580}, {800, 0, 1200, 600}});
    chooseLanguage(L"ja");
    openAt({100, 300}, 50);  // from -370 to 570, across two of three
    for (DrawCall &call : recorded.draws) {
        EXPECT_TRUE(call.dc != surfaces[0].canvasDC && call.dc != surfaces[1].canvasDC);
        if (call.what != "DrawString") continue;
        EXPECT_TRUE(call.numbers[3] == 60 || call.numbers[8] == call.numbers[9]);  // titles are shown whole
        call.numbers.resize(4);  // the rest depends on the typeface
    }
    const std::string text = textOfRecord();
    EXPECT_EQ(hashOf({text.begin(), text.end()}), 2604920529u);  // every shape, colour and box
    EXPECT_EQ(menuEntries[0].title + menuEntries[2].subtitle, labels.doodleTitle + labels.eraserSubtitle);
    EXPECT_EQ(recorded.alive, 0);
    dropMenu();
    dropMenu();  // a closed menu changes nothing
    EXPECT_EQ(recorded.invalidations.size(), 3u);
    recorded.draws.clear();
    drawMenu(surfaces[0].canvasDC, surfaces[0].rect);
    EXPECT_TRUE(recorded.draws.empty());
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
        const Desk desk(twoMonitors);
        autoMode = autoStepsLeft = 0;
        openAt({100, 300}, 50);
        recorded = {};
        menuClick({x, y});
        menuClick({100, 300});  // closed: nothing
        EXPECT_EQ(autoMode, action);
        EXPECT_EQ(recorded.timers.size(), action ? 1u : 0u);
        EXPECT_EQ(recorded.calls[0] + recorded.calls[1], "UpdateWindow w0UpdateWindow w1");
        EXPECT_TRUE(recorded.draws.empty() && (action || recorded.sounds.empty()));
        const RECT right = {0, 183, 598, 417}, left = {242, 83, 640, 317};
        EXPECT_TRUE(EqualRect(&recorded.invalidations[0].rect, &right));
        EXPECT_TRUE(EqualRect(&recorded.invalidations[1].rect, &left));
        stopWipe();
        stopAutoDrawing();
    }
}
