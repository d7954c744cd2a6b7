// What each mark draws, call by call, on a known stream. calls.txt was checked against a second
// reckoning of every picture from its description; ZUBBLY_WRITE_CALLS=1 writes it anew.
#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>

#include <gtest/gtest.h>

#include "marks/bursts.h"
#include "marks/key_reactions.h"
#include "marks/notes.h"
#include "marks/stamps.h"
#include "marks/strokes.h"
#include "support/fakes.h"

struct Scene {
    std::string name;
    std::vector<RECT> monitors;
    std::function<void()> draw;
};

static std::vector<Scene> allScenes()
{
    std::vector<Scene> scenes;
    const std::pair<const char *, void (*)(POINT)> stamps[] = {
        {"face", stampFace},       {"sun", stampSun},
        {"rainbow", stampRainbow}, {"house", stampHouse},
        {"balloon", stampBalloon}, {"tree", stampTree},
        {"cat", stampCat},         {"blush face", stampBlushFace},
        {"car", stampCar},         {"train", stampTrain},
        {"rocket", stampRocket},   {"fish", stampFish},
        {"big face", stampBigFace}};
    for (const auto &[name, stamp] : stamps)
        scenes.push_back({name, twoMonitors, [stamp = stamp] { stamp({10, 301}); }});
    for (int kind = 0; kind < 3; ++kind)
        scenes.push_back({"note " + std::to_string(kind), twoMonitors, [kind] {
                              drawMusicNote({20, 300}, kind, 0x4080C0, 3 * kind + 1);
                          }});
    for (int shape = 0; shape < 3; ++shape)
        scenes.push_back({"scattered " + std::to_string(shape), twoMonitors, [shape] {
                              const Having chosen(scatterShape, shape);
                              scatterMarks(false);
                          }});
    scenes.push_back({"stick figure", oneMonitor, [] { stampStickFigure({401, 303}); }});
    scenes.push_back({"curve", twoMonitors, [] { bezierStroke({1, 300}, {50, 80}, {-60, 500}, {90, 333}); }});
    scenes.push_back({"wobbly line", oneMonitor, [] { wobblyStroke({100, 200}, {420, 350}); }});
    scenes.push_back({"short line", oneMonitor, [] { wobblyStroke({100, 200}, {102, 203}); }});
    scenes.push_back({"spiral", oneMonitor, [] { spiralStroke({400, 300}); }});
    scenes.push_back({"parade", oneMonitor, [] { catParade({400, 300}); }});
    scenes.push_back({"rays", oneMonitor, [] { stampRayBurst({400, 300}); }});
    for (const uint32_t seed : {7u, 8u, 9u, 12u})
        scenes.push_back({"popped " + std::to_string(seed), twoMonitors, [seed] {
                              markRng.seed(seed);
                              popShape(seed == 9 ? POINT{900, 20} : POINT{-300, 300});
                          }});
    for (uint32_t key = 65; key < 78; ++key)  // every class, at many levels
        scenes.push_back(
            {"key " + std::to_string(key), twoMonitors, [key] { keyReaction(key, int(1 + key * 5 % 7)); }});
    for (const int presses : {0, 6})
        scenes.push_back({"spiral of notes " + std::to_string(presses), oneMonitor, [presses] {
                              fakes.cursor = {431, 287};
                              const Having same(sameKeyCount, presses);
                              const Having mash(keyMashCount, 3 * presses);
                              const Having key(lastKeyCode, 65u);
                              const Having valid(spiralCentreValid, true);
                              const Having centre(spiralCentre, POINT{400, 300});
                              const Having radius(spiralRadius, 100.0f);
                              const Having angle(spiralAngle, 0.5f);
                              noteSpiral();
                          }});
    return scenes;
}

TEST(Marks, DrawCallByCallWhatTheyAlwaysDid)
{
    const std::string folder = std::string("Z:") + __FILE__;
    const std::string path = folder.substr(0, folder.rfind('/')) + "/calls.txt";
    std::ifstream file(path);
    std::stringstream known;
    known << file.rdbuf();
    std::string all;
    for (const Scene &scene : allScenes()) {
        const Desk desk(scene.monitors);
        const Having plain(rainbowStroke, false);
        const Having color(strokeColor, MarkColor(0x3264C8));
        scene.draw();
        const std::string text = "= " + scene.name + "\n" + textOfRecord();
        EXPECT_NE(known.str().find(text), std::string::npos) << text;
        EXPECT_EQ(recorded.alive, 0) << scene.name;
        all += text;
    }
    if (std::getenv("ZUBBLY_WRITE_CALLS")) std::ofstream(path, std::ios::binary) << all;
}
