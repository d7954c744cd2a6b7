#include <gtest/gtest.h>

#include "marks/bursts.h"
#include "marks/cursor_pen.h"
#include "marks/key_reactions.h"
#include "marks/notes.h"
#include "marks/stamps.h"
#include "marks/strokes.h"
#include "sound/bank_a.h"
#include "support/desk.h"
#include "support/draws.h"
#include "support/recorded.h"

using Draw = void (*)(POINT);
using Mark = std::pair<std::string, Draw>;
static const Mark stamps[] = {{"face", stampFace},        {"sun", stampSun},
                              {"rainbow", stampRainbow},  {"house", stampHouse},
                              {"balloon", stampBalloon},  {"tree", stampTree},
                              {"cat", stampCat},          {"blush face", stampBlushFace},
                              {"car", stampCar},          {"train", stampTrain},
                              {"rocket", stampRocket},    {"fish", stampFish},
                              {"big face", stampBigFace}, {"tap", tapMark}};
static const Mark strokes[] = {
    {"blob", [](POINT at) { paintBlob(at, 30, 40, 0xFF); }},
    {"note", [](POINT at) { drawMusicNote(at, 1, 51, -1); }},
    {"notes", [](POINT at) { drawMusicNote(at, 2, 51, 6); }},
    {"small star", [](POINT at) { starOnSurface(surfaces[0], at, 18, 0); }},
    {"dot", [](POINT at) { paintSegments({at, at}, 0xFF, 10, 30); }},
    {"far lines", [](POINT at) { paintSegments({at, {600, 300}, {-220, 9}, {600, 300}}, 0xFF, 30, 10); }},
    {"farther line", [](POINT) { paintSegments({{-221, 9}, {229, 9}}, 0xFF, 30, 10); }},
    {"place with room", [](POINT) { tapMark(randomPointOnLaunch(295)); }},
    {"place at the edge", [](POINT) { tapMark(randomPointOnLaunch(23)); }},
    {"place without", [](POINT) { tapMark(randomPointOnLaunch(296)); }},
    {"place in a narrow one", [](POINT) { tapMark(randomPointOn({.rect = {0, 0, 600, 800}}, 296)); }},
    {"auto stroke", [](POINT at) { brushStroke(at, {-1, 300}, 24, 3); }},
    {"long auto stroke", [](POINT) { brushStroke({32, 32}, {767, 567}, 3, 24); }},
    {"auto tap", [](POINT) { tapMark({41, 42}); }},
    {"auto blob", [](POINT) { paintBlob({51, 52}, 30, 40, 0xFF); }},
    {"auto arc", [](POINT) { paintArc({51, 49}, 40, 30, 0xFF); }}};

// With how far outside the monitor its point may lie to the left, right, above and below.
TEST(Marks, FollowFromTheirDraws)
{
    std::string text;
    std::vector marks(std::begin(stamps), std::end(stamps));
    marks.insert(marks.end(), std::begin(strokes), std::end(strokes));
    for (const auto &[name, draw] : marks) {
        Desk desk(oneMonitor);
        Draws draws(0.0);
        autoMode = name.find("auto") == std::string::npos ? noAction : drawAction;
        draw({400, 300});
        text += name + ": " + draws.take(0, 16) + (canvasDirty ? "; a change" : "");
        text += joined({"Fill", "DrawL", "DrawA", "DrawEllipse c", "Inv"}) + "; reach";
        for (const auto &[x, y] : {POINT{-1, 0}, POINT{1, 0}, POINT{0, -1}, POINT{0, 1}}) {
            int reach = 0;
            for (int step = 1024; step > 0; step /= 2) {
                desk.calls.clear();
                draw({400 + x * (400 + reach + step), 300 + y * (300 + reach + step)});
                if (desk.count("Fill") + desk.count("Draw") > 0) reach += step;
            }
            text += " " + std::to_string(reach);
        }
        text += "\n";
    }
    expectRecorded("marks/marks", text);
}

TEST(Bursts, AreChosenByTheirWeights)
{
    std::string text;
    const auto add = [&text](const std::string &name, int last, const std::vector<int> &forced, Draw draw) {
        text += "- " + name + "\n" + chosen(last, forced, [draw] {
                    rainbowCooldown = 0;
                    return draw({400, 300}), "";
                });
    };
    add("rare bursts", 40, {}, burst);
    add("bursts", 99, {35}, burst);
    add("popped shapes", 99, {}, popShape);
    add("Space", 99, {}, [](POINT) { spaceBurst(); });
    add("rainbow", 99, {}, [](POINT) { chooseStrokeStyle(); });
    expectRecorded("marks/chosen", text);
}

TEST(Keys, CountMashesAndRepeatsAndStepTheSpiralByTheirTimes)
{
    Desk desk(oneMonitor);
    std::string text;
    for (const DWORD ms : {0, 499, 1, 38, 1, 520, 521, 900, 500, 901, 499}) {
        desk.moveClocks(ms);
        const bool mashed = updateKeyMash();
        const int count = countSameKey('A', false);
        stepSpiral(primaryWindow());
        text += std::to_string(ms) + " ms: mash of " + std::to_string(keyMashCount) +
                (mashed ? ", mashed" : "") + ", press " + std::to_string(count) + " of the key, held " +
                std::to_string(countSameKey('A', true)) + ", radius " + std::to_string(int(spiralRadius)) +
                "\n";
    }
    for (int step = 0; step < 60; ++step) {
        desk.moveClocks(40);
        stepSpiral(primaryWindow());
    }
    text += "sixty steps later: radius " + std::to_string(int(spiralRadius)) + "\n";
    resetKeyState(primaryWindow());
    stepSpiral(primaryWindow());  // at once
    expectRecorded("marks/keys", text + "reset: radius " + std::to_string(int(spiralRadius)) + "\n");
}

TEST(CursorPen, EndsARunAndKeepsTheStyleOfTheLastPress)
{
    Desk desk(oneMonitor);
    rainbowStroke = false;
    autoMode = drawAction;
    penKey(VK_UP);
    EXPECT_FALSE(rainbowStroke);
    EXPECT_EQ(autoMode, noAction);
    std::ranges::fill(penClips, SoundClip(44));
    for (const int ms : {35, 1}) {
        desk.calls.clear();
        desk.moveClocks(DWORD(ms));
        penKey(VK_UP);
        EXPECT_EQ(desk.count("PlaySound"), ms == 1);
    }
    desk.screen = VirtualScreen{penDotPoint.x, penDotPoint.y, 1, 57};  // no room for a step up
    penKey(VK_LEFT);
    desk.calls.clear();
    penKey(VK_LEFT);
    EXPECT_EQ(desk.text(), "");
}
