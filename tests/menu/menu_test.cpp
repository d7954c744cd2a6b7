#include "menu/menu.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "clearing/wipes.h"
#include "settings/language.h"
#include "support/fakes.h"

// Opens the menu so that chance puts the given button (0 to 2) under the point.
static void openAt(POINT point, int button)
{
    Rng chosen(1);
    for (uint32_t seed = 1, drawn = 3; int(drawn) != button; ++seed) {
        markRng = chosen = Rng(seed);
        const int chance = randInt(0, 99);
        drawn = chance < 40 ? 0 : chance < 85 ? 1 : 2;
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
    struct Row {
        VirtualScreen screen;
        POINT point;
        LONG lefts[3], top;  // by the button under the point
    };
    const VirtualScreen wide = {-1000, -50, 3000, 1000};
    const VirtualScreen narrow = {100, 0, 960, 300};  // four pixels too few: the right edge wins
    for (const auto &[screen, point, lefts, top] : {Row{wide, {500, 400}, {350, 30, -290}, 311},
                                                    {wide, {-838, 51}, {-988, -988, -988}, -38},
                                                    {wide, {-837, 52}, {-987, -988, -988}, -37},
                                                    {wide, {1999, 949}, {1048, 1048, 1048}, 760},
                                                    {wide, {1198, 849}, {1048, 728, 408}, 760},
                                                    {narrow, {500, 100}, {108, 108, 108}, 12}}) {
        for (int i = 0; i < 9; ++i) {
            const Desk desk(oneMonitor);
            fakes.screen = screen;
            openAt(point, i / 3);
            ASSERT_EQ(menuEntries.size(), 3u);
            const auto &[rect, id, title, subtitle, color] = menuEntries[size_t(i % 3)];
            const LONG left = lefts[i / 3] + i % 3 * 320;
            EXPECT_EQ(id, (std::array{3, 1, 2}[size_t(i % 3)]));
            EXPECT_EQ((std::array{rect.left, rect.top, rect.right, rect.bottom}),
                      (std::array{left, top, left + 300, top + 178}));
        }
    }
}

TEST(DrawMenu, ShowsAtOnceOnTheMonitorsItMeetsAndNeverOnTheCanvas)
{
    const Desk desk({{0, 0, 800, 600}, {-640, 100, 0, 580}, {800, 0, 1200, 600}});
    chooseLanguage(L"ja");
    openAt({100, 300}, 1);  // from -370 to 570, across two of three
    std::vector<std::vector<float>> texts, paths;
    for (const DrawCall &call : recorded.draws) {
        EXPECT_TRUE(call.dc != surfaces[0].canvasDC && call.dc != surfaces[1].canvasDC);
        if (call.what == "DrawString") texts.push_back(call.numbers);
        if (call.what == "FillPath") paths.push_back(call.numbers);
    }
    ASSERT_EQ(paths.size(), 10u);  // backdrop, three buttons and a small heart, twice
    ASSERT_EQ(texts.size(), 12u);
    paths[5].resize(6);
    EXPECT_EQ(paths[5], (std::vector<float>{246, 87, 48, 48, 180, 90}));  // on the second monitor
    EXPECT_EQ(texts[2][0] * 1000 + texts[2][1], -50.0f * 1000 + 265);
    EXPECT_EQ(texts[11][0] * 1000 + texts[11][1], 910.0f * 1000 + 223);
    for (size_t i = 0; i < 12; i += 2)
        EXPECT_EQ(texts[i][8], texts[i][9]);  // titles are shown whole
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
                                       {-71, 388, 3},
                                       {-70, 300, 0},
                                       {-51, 300, 0},
                                       {-50, 300, 1},
                                       {249, 300, 1},
                                       {250, 300, 0},
                                       {269, 300, 0},
                                       {270, 300, 2},
                                       {569, 388, 2},
                                       {570, 300, 0},
                                       {-371, 300, 0},
                                       {100, 210, 0},
                                       {100, 389, 0}}) {
        SCOPED_TRACE(testing::Message() << x << "," << y);
        const Desk desk(twoMonitors);
        autoMode = autoStepsLeft = 0;
        openAt({100, 300}, 1);
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
