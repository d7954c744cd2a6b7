#include "clearing/wipes.h"

#include <gtest/gtest.h>

#include "clearing/actions.h"
#include "support/desk.h"
#include "support/draws.h"
#include "support/recorded.h"

TEST(Wipe, FollowsFromItsDraws)
{
    // Whether it reveals (below 4), its style, size and corner.
    const std::vector<int> wipes[] = {{4, 0, 0, 0}, {4, 1, 0, 0}, {4, 2, 0, 0}, {4, 3, 0, 0}, {4, 4, 0, 1},
                                      {4, 4, 0, 2}, {4, 5, 0, 0}, {3, 0, 0, 0}, {3, 0, 2, 0}, {3, 1, 0, 0}};
    std::string text;
    for (const std::vector<int> &drawn : wipes) {
        Desk desk({{0, 0, 100, 1300}, {100, 0, 295, 50}});
        Draws draws(0.3, drawn, 0.618);
        autoStepsLeft = 1;
        startWipe();
        text += "- " + draws.take() + joined({""}) + "\n";
        for (int tick = 1; wipeRunning; ++tick) {
            desk.calls.clear();
            wipeTick();
            std::string said = draws.take(0, 6);
            said += joined({"FillR", "FillEllipse c1", "DrawEllipse c1", "Inv", "Kill", "Play"});
            if (tick == 1 || tick == 30 || !wipeRunning) text += std::to_string(tick) + ": " + said + "\n";
        }
        desk.calls.clear();
        wipeTick();  // was posted before the end
        stopWipe();
        EXPECT_EQ(desk.text(), "");
    }
    expectRecorded("clearing/wipes", text);
    EXPECT_TRUE(chosen(99, {}, [] { return startWipe(), ""; }).starts_with("0..3: 0..1 "));
}
