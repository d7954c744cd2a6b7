// Whole plays, from start-up to a way out: all that the program does to the system must stay the same, to the
// last call. The record has a line for each input: the clock, the number of calls and their hash.
#include <gtest/gtest.h>

#include <fstream>

#include "shell/child.h"
#include "shell/startup.h"
#include "support/recorded.h"

namespace fs = std::filesystem;

static auto &lines = *new std::string;
static auto &told =
    *new std::ofstream;  // a desk begins with all variables as before main, but not with these

static void endInput(const std::string &input)
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
    lines += line;
    told << "= " << line << calls << std::flush;
    desk.calls.clear();
}

// The record is the script as well: who adds an input writes it there, "0 s  Space 500", and records anew.
static std::vector<std::string> inputsOf(const std::string &name)
{
    std::ifstream file(ZUBBLY_TESTS "/shell/recorded.txt");
    std::vector<std::string> inputs;
    bool found = false;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("= ")) found = line == "= " + name;
        const size_t begin = line.find(" s  ") + 4;
        const std::string input = line.substr(begin, line.find("  ", begin) - begin);
        const bool given = input != "start-up" && input != "after the loop";
        if (found && !line.starts_with("= ") && given) inputs.push_back(input);
    }
    return inputs;
}

static void play(const std::string &name, const std::vector<RECT> &monitors, const std::string &settings)
{
    Tablet desk;
    wchar_t program[260] = {};
    SYSTEM(GetModuleFileNameW)(nullptr, program, 260);
    const fs::path tests = fs::path(program).parent_path();
    desk.programFile = (tests.parent_path() / "Zubbly.exe").wstring();  // the mascot is there
    desk.monitors = monitors;
    const fs::path data = desk.folder() / "Roaming" / "norvanta" / "Zubworks" / "Zubbly";
    fs::create_directories(data);
    std::ofstream(data / "config.ini") << "[Zubbly]\n" << settings;
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
    if (!told.is_open()) told.open(tests / "story.txt", std::ios::binary);
    lines.clear();
    desk.play = [&] {
        endInput("start-up");
        for (const std::string &input : inputsOf(name)) {
            act(input);
            endInput(input);
        }
    };
    EXPECT_EQ(runApp(nullptr), 0);
    endInput("after the loop");
    EXPECT_EQ(leaks(), "1 CreateCompatibleBitmap, 1 CreateCompatibleDC");  // the composite's, to the end
    EXPECT_EQ(Tablet::held(), 0);
    SCOPED_TRACE("all calls are in " + (tests / "story.txt").string() +
                 "; tools/story COMMIT shows an earlier commit's beside them");
    expectRecorded("shell/" + name, lines);
}

TEST(Play, IsTheSameAsEver)
{
    play("a play until Alt+F4", {{0, 0, 400, 300}, {-200, 50, 0, 250}},
         "VolumeClampPercent=50\nAutoSaveIntervalSeconds=60\n");
    play("a play that the session ends", {{100, 50, 500, 350}}, "BlockSystemShortcuts=0\n");
    play("a play whose loop ends", {{0, 0, 1300, 90}}, "SoundEnabled=0\nShowExitHint=0\n");
}
