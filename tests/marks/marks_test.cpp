// What each mark draws: the ranges of its draws, and the calls that follow from them.
#include <gtest/gtest.h>

#include "marks/bursts.h"
#include "marks/notes.h"
#include "marks/stamps.h"
#include "marks/strokes.h"
#include "sound/playback.h"
#include "support/desk.h"
#include "support/draws.h"
#include "support/recorded.h"

using Mark = std::function<void(POINT)>;
static constexpr POINT middle = {400, 300};

static const std::pair<std::string, Mark> marks[] = {
    {"face", stampFace},
    {"sun", stampSun},
    {"rainbow", stampRainbow},
    {"house", stampHouse},
    {"balloon", stampBalloon},
    {"tree", stampTree},
    {"cat", stampCat},
    {"blush face", stampBlushFace},
    {"car", stampCar},
    {"train", stampTrain},
    {"rocket", stampRocket},
    {"fish", stampFish},
    {"big face", stampBigFace},
    {"tap", tapMark},
    {"brush", [](POINT at) { brushStroke(at, {410, 330}, 92, 14); }},
    {"blob", [](POINT at) { paintBlob(at, 30, 40, 0xFF); }},
    {"arc", [](POINT at) { paintArc(at, 40, 25, 0xFF00); }},
    {"curve", [](POINT at) { bezierStroke(at, {50, 80}, {-60, 500}, {90, 333}); }},
    {"note", [](POINT at) { drawMusicNote(at, 0, 51, -1); }},
    {"note with a flag", [](POINT at) { drawMusicNote(at, 1, 51, 3); }},
    {"two notes", [](POINT at) { drawMusicNote(at, 2, 51, 9); }}};

// How far outside a monitor a mark's point may lie to the left, right, above and below.
static std::string reachOf(Desk &desk, const Mark &draw)
{
    std::string text;
    for (const POINT way : {POINT{-1, 0}, POINT{1, 0}, POINT{0, -1}, POINT{0, 1}}) {
        int reach = 0;
        for (int step = 4096; step > 0; step /= 2) {
            desk.calls.clear();
            draw({400 + way.x * (400 + reach + step), 300 + way.y * (300 + reach + step)});
            if (desk.count("Fill") + desk.count("Draw") > 0) reach += step;
        }
        text += reach == 8191 ? "any " : std::to_string(reach) + " ";
    }
    return text;
}

TEST(Marks, FollowFromTheirDraws)
{
    std::string text;
    for (const auto &[name, draw] : marks) {
        text += "- " + name + ": " + drawn([&] { draw(middle); }, 1.0);
        size_t first = 0;
        for (const auto &monitors : {oneMonitor, {{0, 0, 800, 600}, {0, 0, 800, 600}}}) {
            Desk desk(monitors);
            Draws draws(1.0);
            rainbowStroke = false;
            draw(middle);
            EXPECT_EQ(desk.text({"SetSmoothingMode c0"}), "SetSmoothingMode c0 4\n") << name;
            if (surfaces.size() == 2) {
                text += "own draws of a monitor: " + draws.take(first) + "\n";
            } else {
                first = draws.ranges.size();
                text += "reach " + reachOf(desk, draw) + "; ";
            }
        }
    }
    expectRecorded("marks/the largest", text);
}

// The first call of the smallest ones that is no larger than can be seen.
TEST(Marks, KeepTheirFinePartsVisibleWhereTheyAreSmall)
{
    const std::tuple<Mark, const char *> rows[] = {
        {stampCat, "FillEllipse c0 FFFF7896 394 297.04 12 12"},
        {stampCar, "FillEllipse c0 F028282D 355.20 286 28 28"},
        {[](POINT at) { drawMusicNote(at, 0, 0xFF, 0); }, "DrawLine c0 ECFF0000 wide 3.00"},
        {[](POINT at) { drawMusicNote(at, 0, 0xFF, 0); }, "DrawLine c0 DCFFFFFF wide 2.00"},
        {[](POINT at) { starOnSurface(surfaces[0], at, 18, 0); }, "0 400 282 403 296 "},
        {[](POINT at) { starOnSurface(surfaces[0], at, 19, 0); }, "0 400 281 404 295 "}};
    for (const auto &[draw, part] : rows) {
        const std::string calls = drawn([&draw = draw] { draw(middle); }, 0.0);
        EXPECT_NE(calls.find(part), std::string::npos) << part << "\n" << calls;
    }
}

static std::string chosenMark(int last, const std::vector<int> &forced, const std::function<void()> &draw)
{
    return chosen(last, forced, [&] {
        lastSoundTick = 0;
        draw();
        const std::string calls = Desk::current->text({"Fill", "Draw"});
        return ", " + calls.substr(0, calls.find('\n')) + (lastSoundTick ? ", heard" : "");
    });
}

TEST(Bursts, AreChosenByTheirWeights)
{
    const auto any = [] { burst(middle); };
    const auto pop = [] { popShape(middle); };
    const auto star = [] { scatterShape = 1, scatterMarks(false); };
    const auto style = [] { rainbowCooldown = 0, chooseStrokeStyle(), brushStroke(middle, middle, 1, 2); };
    expectRecorded("marks/chosen",
                   "- one in a thousand\n" + chosenMark(999, {}, any) + "- else\n" +
                       chosenMark(99, {35}, any) + "- plain shape\n" + chosenMark(3, {35, 54}, any) +
                       "- popped shape\n" + chosenMark(99, {}, pop) + chosenMark(99, {0}, pop) + "- Space\n" +
                       chosenMark(99, {}, spaceBurst) + "- size of a scattered star\n" +
                       chosenMark(13, {400, 300}, star) + "- rainbow\n" + chosenMark(99, {}, style));
}

TEST(Bursts, ThatAreRareSoundUnlessSomethingJustDid)
{
    for (const auto &[rare, ms, heard] :
         {std::tuple(0, 199, false), {0, 200, true}, {18, 179, false}, {18, 180, true}}) {
        for (const bool sound : {true, false}) {
            Desk desk(oneMonitor);
            Draws draws(0.0, {rare});
            soundEnabled = sound;
            lastSoundTick = desk.tick - DWORD(ms);
            burst(middle);
            EXPECT_EQ(lastSoundTick == desk.tick, heard && sound) << rare << " after " << ms;
        }
    }
}

TEST(Marks, OfManyStrokesFollowFromTheirDraws)
{
    const std::tuple<std::string, Mark, double> rows[] = {
        {"stick figure", stampStickFigure, 0.7},
        {"spiral", spiralStroke, 0.4},
        {"wobbly line", [](POINT at) { wobblyStroke({100, 200}, at); }, 0.4},
        {"line of 3 pixels", [](POINT at) { wobblyStroke(at, {at.x + 3, at.y}); }, 0.4},
        {"line of 4 pixels", [](POINT at) { wobblyStroke(at, {at.x + 4, at.y}); }, 0.4},
        {"rays", stampRayBurst, 0.5},
        {"parade", catParade, 0.1},
        {"scattered mark", [](POINT) { scatterMarks(false); }, 0.9},
        {"scattered heart", [](POINT) { scatterShape = 2, scatterMarks(false); }, 0.5},
        {"big star of Space", [](POINT) { spaceBurst(); }, 0.8},
        {"popped star", popShape, 0.5},
        {"popped square without room", [](POINT) { popShape({87, 600}); }, 0.6},
        {"auto-drawing", [](POINT at) { autoMode = 3, brushStroke(at, {-1, 300}, 24, 3); }, 0.5},
        {"long auto-drawing", [](POINT) { autoMode = 3, brushStroke({32, 32}, {767, 567}, 3, 24); }, 0.0},
        {"auto-drawn tap", [](POINT) { autoMode = 3, tapMark({41, 42}); }, 0.5},
        {"auto-drawn blob", [](POINT) { autoMode = 3, paintBlob({51, 52}, 30, 40, 0xFF); }, 0.5},
        {"auto-drawn arc", [](POINT) { autoMode = 3, paintArc({51, 49}, 40, 30, 0xFF); }, 0.5},
        {"segments", [](POINT at) { paintSegments({{-9, 9}, {1, 9}, at, {5, 590}}, 0xFF, 30, 10); }, 0.5}};
    std::string text;
    for (const auto &[name, draw, share] : rows)
        text += "- " + name + ": " + drawn([&draw = draw] { draw(middle); }, share);
    expectRecorded("marks/of many strokes", text);
}

TEST(Strokes, OfNoSurfaceInReachAreAChangeButForSegments)
{
    for (const std::vector<RECT> &monitors : {oneMonitor, {}}) {
        Desk desk(monitors);
        EXPECT_FALSE(paintSegments({{5, 5}}, 0, 1, 2) || paintSegments({{5000, 5}, {5010, 5}}, 0, 1, 2));
        EXPECT_FALSE(canvasDirty);
        tapMark({1001, 300});
        EXPECT_TRUE(canvasDirty && sameStream(markRng, Rng(7)));
        for (rainbowCooldown = 1; rainbowCooldown > 0;)
            chooseStrokeStyle();
        EXPECT_FALSE(rainbowStroke);
    }
}

TEST(Points, AreDrawnInsideAMarginOrElseTakeTheMiddle)
{
    Desk desk({{-640, 100, 0, 580}});
    Draws draws(0.5);
    for (const auto &[margin, ranges] :
         {std::pair(235, "-405..-236 335..344"), {236, ""}, {23, "-616..-25 124..555"}}) {
        const POINT point = randomPointOnLaunch(margin);
        EXPECT_EQ(draws.take(), ranges) << margin;
        EXPECT_TRUE(point.x == -320 && point.y == 340) << point.x << "," << point.y;
    }
    for (const auto &[x, y, inside, held] : {std::tuple(-600, 140, true, true),
                                             {-601, 140, false, true},
                                             {-600, 139, false, true},
                                             {-41, 539, true, true},
                                             {-40, 539, false, true},
                                             {-41, 540, false, true},
                                             {-648, 300, false, true},
                                             {-649, 300, false, false},
                                             {7, 300, false, true},
                                             {8, 300, false, false},
                                             {-9, 92, false, true},
                                             {-9, 91, false, false},
                                             {-9, 587, false, true},
                                             {-9, 588, false, false}}) {
        POINT point = {x, y};
        EXPECT_EQ(surfaceHolding(point) != nullptr, held) << x << "," << y;
        keepInside(point, 40);
        EXPECT_EQ(draws.take(), inside ? "" : "-600..-41 140..539") << x << "," << y;
    }
}
