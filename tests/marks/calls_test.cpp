// What each mark draws, call by call, on a known stream. The record in calls.txt was checked against a second
// reckoning of every picture from its description. With ZUBBLY_WRITE_CALLS=FILE a fresh one is appended
// there.
#include <cstdlib>
#include <fstream>

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "marks/bursts.h"
#include "marks/key_reactions.h"
#include "marks/notes.h"
#include "marks/stamps.h"
#include "marks/strokes.h"
#include "support/fakes.h"

static const std::string known =
#include "marks/calls.txt"
    ;

class Marks : public testing::Test {
  protected:
    std::string all;
    const Having<int> nothingRuns{autoMode, 0}, anyShape{scatterShape, 0};
    const Having<bool> plain{rainbowStroke, false};
    const Having<MarkColor> color{strokeColor, 0x3264C8};

    void TearDown() override
    {
        if (const char *file = std::getenv("ZUBBLY_WRITE_CALLS")) {
            std::ofstream(file, std::ios::binary | std::ios::app) << all;
        }
    }
    void expect(const std::string &text)
    {
        EXPECT_NE(known.find(text), std::string::npos) << text;
        EXPECT_EQ(recorded.alive, 0) << text;
        all += text;
    }
    template <class Draw> void show(const std::string &name, const std::vector<RECT> &monitors, Draw draw)
    {
        const Desk desk(monitors);
        draw();
        expect("= " + name + "\n" + textOfRecord());
    }
};

static const std::pair<std::string, void (*)(POINT)> stamps[] = {
    {"face", stampFace},       {"sun", stampSun},
    {"rainbow", stampRainbow}, {"house", stampHouse},
    {"balloon", stampBalloon}, {"tree", stampTree},
    {"cat", stampCat},         {"blush face", stampBlushFace},
    {"car", stampCar},         {"train", stampTrain},
    {"rocket", stampRocket},   {"fish", stampFish},
    {"big face", stampBigFace}};

TEST_F(Marks, DrawCallByCallWhatTheyAlwaysDid)
{
    for (const auto &[name, stamp] : stamps)
        show(name, twoMonitors, [stamp = stamp] { stamp({10, 301}); });
    for (const int k : {0, 1, 2}) {
        const std::string number = std::to_string(k);
        show("note " + number, twoMonitors, [k] { drawMusicNote({20, 300}, k, 0x4080C0, 3 * k + 1); });
        const Having chosen(scatterShape, k);
        show("scattered " + number, twoMonitors, [] { scatterMarks(false); });
    }
    show("stick figure", oneMonitor, [] { stampStickFigure({401, 303}); });
    show("curve", twoMonitors, [] { bezierStroke({1, 300}, {50, 80}, {-60, 500}, {90, 333}); });
    show("wobbly line", oneMonitor, [] { wobblyStroke({100, 200}, {420, 350}); });
    show("short line", oneMonitor, [] { wobblyStroke({100, 200}, {102, 203}); });
    show("spiral", oneMonitor, [] { spiralStroke({400, 300}); });
    show("parade", oneMonitor, [] { catParade({400, 300}); });
    show("rays", oneMonitor, [] { stampRayBurst({400, 300}); });
    for (const uint32_t seed : {7u, 8u, 9u, 12u})
        show("popped " + std::to_string(seed), twoMonitors, [seed] {
            markRng.seed(seed);
            popShape(seed == 9 ? POINT{900, 20} : POINT{-300, 300});
        });
    for (uint32_t key = 65; key < 78; ++key)  // every class, at many levels
        show("key " + std::to_string(key), twoMonitors, [key] { keyReaction(key, int(1 + key * 5 % 7)); });
    const std::pair<int, int> mashes[] = {{0, 0}, {8, 3}, {18, 6}, {50, 6}};
    for (const auto &[mash, presses] : mashes)
        show("spiral of notes " + std::to_string(mash), oneMonitor, [mash = mash, presses = presses] {
            fakes.cursor = {431, 287};
            const Having values(keyMashCount, mash);
            const Having same(sameKeyCount, presses);
            const Having key(lastKeyCode, 65u);
            const Having valid(spiralCentreValid, true);
            const Having centre(spiralCentre, POINT{400, 300});
            const Having radius(spiralRadius, mash == 50 ? 416.0f : 100.0f);
            const Having angle(spiralAngle, 0.5f);
            noteSpiral();
        });
}

// One line for each value that the choosing draw can have: how many calls, the first, the stream after.
TEST_F(Marks, OfBurstsAreChosenByTheirDraws)
{
    const auto tell = [&](const std::string &name, void (*draw)(), auto wanted) {
        uint32_t seed = 0;
        for (bool found = false; !found; seed += !found) {
            markRng.seed(seed);
            found = wanted();
        }
        const Desk desk(oneMonitor);
        markRng.seed(seed);
        draw();
        const uint32_t next = uint32_t(markRng());
        expect(name + " " + std::to_string(seed) + ": " + std::to_string(recorded.draws.size()) + " " +
               textOf(recorded.draws.at(0)) + " next " + std::to_string(next) + "\n");
    };
    const auto burstHere = [] { burst({200, 300}); };
    for (const int draw : {0, 17, 18, 34, 35})
        tell("rare " + std::to_string(draw), burstHere, [draw] { return randInt(0, 999) == draw; });
    for (int draw = 0; draw < 100; ++draw) {
        const std::string number = std::to_string(draw);
        tell("burst " + number, burstHere,
             [draw] { return randInt(0, 999) >= 35 && randInt(0, 99) == draw; });
        tell("space " + number, spaceBurst, [draw] { return randInt(0, 99) == draw; });
    }
}

// How far from the middle of a monitor of 800 by 600 a stamp still draws on it: left, right, up, down.
TEST_F(Marks, OfStampsReachAsFarAsTheirMargins)
{
    for (const auto &[name, stamp] : stamps) {
        std::string text = "reach of " + name;
        for (const POINT way : {POINT{-1, 0}, POINT{1, 0}, POINT{0, -1}, POINT{0, 1}}) {
            int drawn = 0;
            for (int step = 4096; step > 0; step /= 2) {
                const Desk desk(oneMonitor);
                stamp({400 + way.x * (drawn + step), 300 + way.y * (drawn + step)});
                if (!recorded.draws.empty()) drawn += step;
            }
            text += " " + std::to_string(drawn);
        }
        expect(text + "\n");
    }
}
