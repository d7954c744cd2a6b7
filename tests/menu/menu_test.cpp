#include "menu/menu.h"

#include <gtest/gtest.h>

#include "settings/language.h"
#include "support/draws.h"
#include "support/desk.h"
#include "support/recorded.h"

TEST(OpenMenu, KeepsTheRowOnTheVirtualScreen)
{
    const std::array<int, 6> rows[] = {{3000, 500, 400, 39, 350, 311}, {3000, 500, 400, 40, 30, 311},
                                       {3000, 500, 400, 84, 30, 311},  {3000, 500, 400, 85, -290, 311},
                                       {3000, -839, 50, 0, -988, -38}, {3000, 1199, 850, 0, 1048, 760},
                                       {960, -500, 100, 0, -992, 11}};  // too narrow: the right edge wins
    for (const auto &[width, x, y, chance, left, top] : rows) {
        Desk desk(oneMonitor);
        desk.screen = VirtualScreen{-1000, -50, width, 1000};
        Draws draws(0.5, {chance});
        openMenu({x, y});
        EXPECT_TRUE(draws.take().starts_with("0..99"));
        EXPECT_TRUE(menuEntries[0].rect.left == left && menuEntries[0].rect.top == top) << x << " " << chance;
    }
}

TEST(Menu, IsDrawnWhereItMeetsAMonitorAndGoneBeforeItsActionBegins)
{
    // A point, and the action that a click there begins.
    const std::array<int, 3> clicks[] = {{-370, 211, 3}, {-371, 300, 0}, {-71, 388, 3}, {-70, 300, 0},
                                         {-50, 300, 1},  {249, 300, 1},  {270, 300, 2}, {100, 389, 0}};
    for (const auto &[x, y, action] : clicks) {
        Desk desk({{0, 0, 580, 600}, {-640, 100, 0, 580}, {580, 0, 1200, 600}});  // the last meets no button
        chooseLanguage(L"en");
        const Draws draws(0.5);
        openMenu({100, 300});  // from -370 to 570
        const std::string all = desk.text({"Fill", "Draw", "CreateFont "});
        const std::string drawn = all.substr(0, all.find("CreateFont", all.find(" w1 ")));
        EXPECT_EQ(desk.count("FillPath w2"), 0);
        EXPECT_EQ(leaks(), "");
        desk.calls.clear();
        menuClick({x, y});
        menuClick({100, 300});  // closed: nothing
        expectRecorded("menu/opened and clicked",
                       drawn + desk.text({"Invalid", "UpdateW", "BitBlt", "FillP"}));
        const std::string order = desk.text({"BitBlt w1", "SetTimer"});
        EXPECT_EQ(order.starts_with("BitBlt") && order.find("\nSetTimer") < order.size(), action > 0);
        EXPECT_EQ(autoMode, action) << x << "," << y;
    }
}
