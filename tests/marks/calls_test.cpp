// What each mark draws, call by call, on a known stream. The record in calls.txt was checked against a second
// reckoning of every picture from its description. With ZUBBLY_WRITE_CALLS=FILE a fresh one is appended
// there.
#include <cstdlib>
#include <fstream>
#include <span>

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "marks/bursts.h"
#include "marks/cursor_pen.h"
#include "marks/key_reactions.h"
#include "marks/notes.h"
#include "marks/stamps.h"
#include "marks/strokes.h"
#include "sound/playback.h"
#include "support/fakes.h"

static const std::string known =
#include "marks/calls.txt"
    ;

struct CalmDesk : Desk {
    using Desk::Desk;
    const Having<int> nothingRuns{autoMode, 0}, anyShape{scatterShape, 0};
    const Having<bool> plain{rainbowStroke, false};
    const Having<MarkColor> color{strokeColor, 0x3264C8};
};

static void expect(const std::string &text)
{
    EXPECT_NE(known.find(text), std::string::npos) << text;
    EXPECT_EQ(recorded.alive, 0) << text;
    if (const char *file = std::getenv("ZUBBLY_WRITE_CALLS"))
        std::ofstream(file, std::ios::binary | std::ios::app) << text;
}

static void show(const std::string &name, const std::vector<RECT> &monitors,
                 const std::function<void()> &draw)
{
    const CalmDesk desk(monitors);
    draw();
    expect("= " + name + "\n" + textOfRecord());
}

static constexpr POINT middle = {400, 300};

// With some traits reckoned by hand: that number of that call is so many times the mark's first draw (a key's
// fixed size), and so much more.
static const struct {
    std::string name;
    void (*draw)(POINT);
    int low, high;
    size_t calls, call, number;  // 0 calls: it varies
    float times, plus;
    uint32_t color;  // of that call; 0: a drawn one
} marks[] = {
    {"face", stampFace, 48, 92, 4, 0, 2, 2, 0, 0},
    {"sun", stampSun, 36, 72, 0, 0, 2, 2, 0, 0},
    {"rainbow", stampRainbow, 12, 20, 5, 2, 0, -2, 390, 0xEBFFDC46},
    {"house", stampHouse, 100, 200, 6, 3, 2, 1, 0, 0xDA322D37},
    {"balloon", stampBalloon, 35, 70, 4, 1, 0, -1, 400, 0xC8282834},
    {"tree", stampTree, 14, 28, 4, 1, 2, 1, 0, 0xC837322D},
    {"cat", stampCat, 38, 72, 9, 1, 3, 2, 0, 0xD72D2A30},
    {"blush face", stampBlushFace, 44, 80, 7, 1, 1, -1, 300, 0xDC302A32},
    {"car", stampCar, 110, 180, 6, 1, 2, 1, 0, 0xD72D2A32},
    {"train", stampTrain, 70, 110, 9, 0, 3, 0.72f, 0, 0},
    {"rocket", stampRocket, 36, 58, 12, 2, 2, 1, 0, 0xD82D2D34},
    {"fish", stampFish, 120, 210, 8, 1, 2, 0.72f, 0, 0xD62D2A32},
    {"big face", stampBigFace, 130, 210, 6, 0, 2, 2.32f, 0, 0},
    {"tap", tapMark, 0, 0, 1, 0, 0, 0, 0, 0},
    {"blob", [](POINT at) { paintBlob(at, 30, 40, 0xFF); }, 0, 0, 2, 0, 2, 0, 60, 0xE4FF0000},
    {"brush", [](POINT at) { brushStroke(at, middle, 92, 14); }, 0, 0, 1, 0, 3, 0, 300, 0xEBC86432},
    {"note", [](POINT at) { drawMusicNote(at, 0, 51, -1); }, 28, 54, 4, 0, 2, 0.88f, 0, 0xEC330000},
    {"flag", [](POINT at) { drawMusicNote(at, 1, 51, 3); }, 28, 54, 5, 1, 3, -1.85f, 277.8f, 0xEC330000},
    {"pair", [](POINT at) { drawMusicNote(at, 2, 51, 9); }, 28, 54, 7, 2, 2, 0.88f, 21.12f, 0xEC330000},
    {"star", [](POINT) { keyReaction(65, 0); }, 81, 81, 2, 0, 1, -1, 395, 0xE6FFA078},
    {"larger star", [](POINT) { keyReaction(65, 4); }, 99, 99, 2, 0, 1, -1, 395, 0xE6FFA078},
    {"diamond", [](POINT) { keyReaction(67, 1); }, 75, 75, 2, 0, 2, 1, 271, 0xE682DCC8},
    {"largest diamond", [](POINT) { keyReaction(67, 7); }, 105, 105, 0, 0, 2, 1, 271, 0},
    {"cloud", [](POINT) { keyReaction(68, 1); }, 92, 92, 4, 0, 2, 1, 0, 0xDCF096D2},
    {"flower", [](POINT) { keyReaction(69, 1); }, 69, 69, 8, 0, 2, 0.56f, 0, 0xDCAAC8FF}};

TEST(Marks, GrowWithTheirFirstDraw)
{
    for (const auto &mark : marks) {
        for (uint32_t seed = 0; seed < 4; ++seed) {
            const CalmDesk desk(oneMonitor);
            markRng.seed(seed);
            mark.draw(middle);
            markRng.seed(seed);
            const float drawn = float(randInt(mark.low, mark.high));
            EXPECT_TRUE(!mark.calls || recorded.draws.size() == mark.calls) << mark.name;
            const DrawCall &call = recorded.draws.at(mark.call);
            EXPECT_TRUE(!mark.color || call.argb == mark.color) << mark.name;
            if (mark.times == 0 && mark.plus == 0) continue;  // a dot's size is no first draw
            EXPECT_NEAR(call.numbers.at(mark.number), mark.times * drawn + mark.plus, 0.01f) << mark.name;
        }
    }
}

TEST(Marks, DrawCallByCallWhatTheyAlwaysDid)
{
    for (const auto &mark : marks)
        show(mark.name, twoMonitors, [&] { mark.draw({10, 301}); });
    for (const int shape : {0, 1, 2})
        show("scattered " + std::to_string(shape), twoMonitors, [shape] {
            scatterShape = shape;
            scatterMarks(false);
        });
    show("stick figure", oneMonitor, [] { stampStickFigure({401, 303}); });
    show("curve", twoMonitors, [] { bezierStroke({1, 300}, {50, 80}, {-60, 500}, {90, 333}); });
    show("wobbly line", oneMonitor, [] { wobblyStroke({100, 200}, {420, 350}); });
    show("short line", oneMonitor, [] { wobblyStroke({100, 200}, {102, 203}); });
    show("spiral", oneMonitor, [] { spiralStroke(middle); });
    show("parade", oneMonitor, [] { catParade(middle); });
    show("rays", oneMonitor, [] { stampRayBurst(middle); });
    show("arc", twoMonitors, [] { paintArc({300, 200}, 40, 25, 0x00FF00); });
    show("segments", twoMonitors, [] {  // each on the monitor that holds its middle
        paintSegments({{-300, 300}, {-200, 320}, {-100, 300}, {300, 310}, {350, 300}}, 0x0000FF, 30, 10);
    });
    show("auto-drawing", twoMonitors, [] {
        autoMode = 3;
        for (int x = 4; x < 800; x += 28)  // it swells with its length
            brushStroke({x, 300}, {700, 571 - x % 8}, 3, x % 170);
        for (const int past : {0, 1}) {  // past its margin a mark jumps inside
            tapMark({42 - past, 300});
            paintBlob({52 - past, 300}, 30, 40, 0x0000FF);
            paintArc({300, 50 - past}, 30, 40, 0x0000FF);
        }
    });
    show("small stars", oneMonitor, [] {  // their inner vertices keep a distance
        for (int size = 10; size < 26; ++size)
            starOnSurface(surfaces[0], middle, size, 0x0000FF);
    });
    show("rainbow stroke", twoMonitors, [] {
        rainbowStroke = true;
        for (const int y : {0, 100, 200})
            brushStroke({0, y}, {-50, 20}, y, 20);
    });
    for (const int key : {VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN, VK_NUMPAD4, VK_NUMPAD8, VK_NUMPAD6, VK_NUMPAD2})
        show("pen key " + std::to_string(key), {{0, 0, 150, 160}}, [key] {
            penDotVisible = false;
            for (int step = 0; step < 5; ++step)  // one of them wraps
                penKey(uint32_t(key));
        });
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
            resetKeyState(nullptr);
            keyMashCount = mash;
            sameKeyCount = presses;
            lastKeyCode = 65;
            for (const POINT cursor : {middle, POINT{465, 241}, POINT{465, 241}}) {
                fakes.cursor = cursor;  // the centre lags behind it
                if (mash == 50) spiralRadius = 416.0f;
                noteSpiral();
            }
            EXPECT_TRUE(spiralCentre.x == 419 && spiralCentre.y == 283);
            EXPECT_EQ(spiralRadius, mash == 50 ? 420.0f : 91.0f);
        });
    resetKeyState(nullptr);
}

// One line a seed: how many calls, the first, the stream after. The rare ones are sought further.
TEST(Marks, OfBurstsAreChosenByTheirDraws)
{
    for (uint32_t seed = 0; seed < 12000; ++seed) {
        Rng ahead(seed);
        if (drawInt(ahead, 0, 999) > 40 && seed >= 1500) continue;
        const CalmDesk desk(oneMonitor);
        const Having last(lastSoundTick, fakes.tick - std::array{179u, 180u, 199u, 200u}[seed % 4]);
        markRng.seed(seed);
        seed % 3 || seed >= 1500 ? burst({200, 300}) : spaceBurst();
        const std::string sound = lastSoundTick == fakes.tick ? " sounds " : " ";
        const std::string calls = std::to_string(recorded.draws.size()) + " " + recorded.draws.at(0).what;
        expect("burst " + std::to_string(seed) + sound + calls + " " + std::to_string(markRng()) + "\n");
    }
}

// How far from the middle of a monitor of 800 by 600 a mark still draws on it: left, right, up, down.
TEST(Marks, ReachAsFarAsTheirMargins)
{
    for (const auto &mark : std::span(marks).first(19)) {  // keys have places of their own
        std::string text = "reach of " + mark.name;
        for (const POINT way : {POINT{-1, 0}, POINT{1, 0}, POINT{0, -1}, POINT{0, 1}}) {
            int drawn = 0;
            for (int step = 4096; step > 0; step /= 2) {
                const CalmDesk desk(oneMonitor);
                mark.draw({400 + way.x * (drawn + step), 300 + way.y * (drawn + step)});
                if (!recorded.draws.empty()) drawn += step;
            }
            text += " " + std::to_string(drawn);
        }
        expect(text + "\n");
    }
}

TEST(Colors, OfBackgroundsAndMenusFollowTheirDraws)
{
    std::string text = "colours";
    for (uint32_t seed = 0; seed < 1200; ++seed) {
        markRng.seed(seed);
        char part[32];
        const MarkColor background = pickBackgroundColor();
        std::snprintf(part, sizeof part, "%s%06X %06X", seed % 8 ? ", " : "\n", background, pickMenuColor());
        text += part;
    }
    expect(text + "\n");
}

TEST(StrokeStyle, LeavesAtLeastFourPlainPressesBetweenRainbows)
{
    const CalmDesk desk(oneMonitor);
    const Having cooldown(rainbowCooldown, 0);
    std::string text = "rainbows";
    int pause = 4;
    for (int press = 0; press < 2000; ++press) {
        chooseStrokeStyle();
        EXPECT_TRUE(!rainbowStroke || pause >= 4) << press;
        if (rainbowStroke) text += " " + std::to_string(press) + " " + std::to_string(strokeColor);
        pause = rainbowStroke ? 0 : pause + 1;
    }
    expect(text + "\n");
}
