// Whole plays, from start-up to a way out: all that the program does to the system must stay the same, to the
// last call. The record has a line for each input: the clock, the number of calls and their hash.
#include <gtest/gtest.h>

#include "shell/child.h"
#include "shell/startup.h"
#include "support/recorded.h"

namespace fs = std::filesystem;

static const fs::path build = ZUBBLY_BUILD;

// "   2.280 s  A 700 5 700                    120 calls  9505A8BE", and all calls go to the story.
static std::string takeCalls(const std::string &input, std::ofstream &story)
{
    Desk &desk = *Desk::current;
    std::string calls = desk.text();
    const std::string folder = desk.folder().string();
    for (size_t at; (at = calls.find(folder)) != std::string::npos;)
        calls.replace(at, folder.size(), "FOLDER");
    uint32_t hash = 2166136261u;
    for (const char letter : calls)
        hash = (hash ^ uint8_t(letter)) * 16777619u;
    char line[160];
    std::snprintf(line, sizeof line, "%8.3f s  %-72s %6zu calls  %08X\n",
                  double(desk.tick - 1'000'000) / 1000.0, input.c_str(), desk.calls.size(), hash);
    story << "= " << line << calls << std::flush;
    desk.calls.clear();
    return line;
}

// The record is the script as well: who adds an input writes it there, "0 s  Space 500", and records anew.
static void play(std::ofstream &story, const std::string &name, const std::vector<RECT> &monitors,
                 const std::string &settings)
{
    Tablet desk;
    desk.programFile = (build / "Zubbly.exe").make_preferred();  // the mascot is there
    desk.monitors = monitors;
    desk.settings(settings);
    // A typeface that is everywhere; no two have the same sizes of texts.
    REPLACE(GdipCreateFontFamilyFromName, [](const WCHAR *, GpFontCollection *fonts, GpFontFamily **family) {
        return SYSTEM(GdipCreateFontFamilyFromName)(L"Tahoma", fonts, family);
    });
    REPLACE(GdipMeasureString, [](GpGraphics *, const WCHAR *, INT length, const GpFont *,
                                  const RectF *layout, const GpStringFormat *, RectF *box, INT *fitted) {
        *box = RectF(layout->X, layout->Y, 7.0f * float(length), 20.0f + float(length % 5));
        if (fitted) *fitted = length;
        return Ok;
    });
    std::string lines;
    desk.play = [&] {
        lines += takeCalls("start-up", story);
        std::istringstream script(recordedText(name));
        for (std::string line; std::getline(script, line);) {
            const size_t begin = line.find(" s  ") + 4;
            const std::string input = line.substr(begin, line.find("  ", begin) - begin);
            if (input == "start-up" || input == "after the loop") continue;
            act(input);
            lines += takeCalls(input, story);
        }
    };
    EXPECT_EQ(runApp(nullptr), 0);
    lines += takeCalls("after the loop", story);
    EXPECT_EQ(leaks(), "1 CreateCompatibleBitmap, 1 CreateCompatibleDC");  // the composite's, to the end
    EXPECT_EQ(Object::held, 0);
    SCOPED_TRACE(
        "all calls are in tests/story.txt; tools/story COMMIT shows an earlier commit's beside them");
    expectRecorded(name, lines);
}

TEST(Play, IsTheSameAsEver)
{
    std::ofstream story(build / "tests/story.txt", std::ios::binary);
    play(story, "shell/a play until Alt+F4", {{0, 0, 400, 300}, {-200, 50, 0, 250}},
         "VolumeClampPercent=50\nAutoSaveIntervalSeconds=60\n");
    play(story, "shell/a play that the session ends", {{100, 50, 500, 350}}, "BlockSystemShortcuts=0\n");
    play(story, "shell/a play whose loop ends", {{0, 0, 1300, 90}}, "SoundEnabled=0\nShowExitHint=0\n");
}
