#include "saving/auto_save.h"

#include <gtest/gtest.h>

#include <fstream>
#include <numeric>

#include "autodraw/sequencer.h"
#include "clearing/wipes.h"
#include "settings/folders.h"
#include "support/fakes.h"

namespace fs = std::filesystem;

static fs::path saved(const char *name)
{
    return std::filesystem::path(dataDirectory()) / "SavedPictures" / name;
}

static std::string savedNames()
{
    std::set<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(saved("")))
        names.insert(entry.path().filename().string() + " ");
    return std::accumulate(names.begin(), names.end(), std::string());
}

static bool tickSaves()
{
    canvasDirty = true;
    autoSaveTick();
    return !canvasDirty;
}

static time_t localTime(int year, int month, int day, int hour, int minute, int second)
{
    tm parts = {second, minute, hour, day, month - 1, year - 1900, 0, 0, -1};
    return mktime(&parts);
}

TEST(AutoSave, LeavesAPictureInTheMakingOrUnchangedAlone)
{
    Desk desk(oneMonitor);
    TestFolder folder;
    for (const auto &[action, steps, wipe, saves] :
         {std::tuple(3, 0, false, false), {1, 1, false, false}, {2, 0, true, false}, {2, 0, false, true}}) {
        Having mode(autoMode, action);
        Having left(autoStepsLeft, steps);
        Having running(wipeRunning, wipe);
        EXPECT_EQ(tickSaves(), saves) << action;
        EXPECT_EQ(fs::exists(dataDirectory()), saves) << action;
    }
    fs::remove_all(dataDirectory());
    autoSaveTick();
    EXPECT_FALSE(fs::exists(dataDirectory()));
}

TEST(AutoSave, KeepsEveryPixelOfAllCanvasesAndFillsTheGaps)
{
    Desk desk({{0, 0, 300, 200}, {-260, -50, -60, 230}});
    TestFolder folder;
    Having color(backgroundColor, MarkColor(0x123456));
    for (const MonitorSurface &surface : surfaces) {
        for (int i = 0; i < surface.width * surface.height; ++i)
            SetPixel(surface.canvasDC, i % surface.width, i / surface.width, spareRng() & 0xFFFFFF);
    }
    fakes.wallSeconds = localTime(2027, 1, 2, 3, 4, 5);
    ASSERT_TRUE(tickSaves());
    GpBitmap *file = nullptr;
    GdipCreateBitmapFromFile(saved("auto-20270102-030405.png").c_str(), &file);
    int wrong = 0;
    for (int y = -50; y < 231; ++y) {
        for (int x = -260; x < 301; ++x) {
            ARGB pixel = 0;  // stays outside the picture, which is 560 by 280
            GdipBitmapGetPixel(file, x + 260, y + 50, &pixel);
            const MarkColor drawn = desk.pixel(x, y);
            const ARGB inside = toArgb(drawn == CLR_INVALID ? backgroundColor : drawn, 255);
            wrong += pixel != (x < 300 && y < 230 ? inside : 0);
        }
    }
    GdipDisposeImage(file);
    EXPECT_EQ(wrong, 0);
}

TEST(AutoSave, KeepsTenFilesWhateverTheirNamesAndSkipsTheOneThatStays)
{
    Desk desk(oneMonitor);
    TestFolder folder;
    fs::create_directories(saved("a folder"));
    for (const char *name : {"aaa", "auto-20200101-000000.png", "b", "zzz.png"})
        std::ofstream(saved(name)) << "not a picture";
    auto *held = CreateFileW(saved("aaa").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    for (const time_t turn : {localTime(2026, 9, 8, 7, 6, 5), localTime(2028, 2, 28, 23, 59, 59),
                              localTime(2029, 12, 31, 23, 59, 59), localTime(2030, 1, 1, 12, 0, 0)}) {
        for (fakes.wallSeconds = turn; fakes.wallSeconds <= turn + 1; ++fakes.wallSeconds)
            EXPECT_TRUE(tickSaves());
    }
    EXPECT_EQ(savedNames(), "a folder aaa auto-20260908-070605.png auto-20260908-070606.png "
                            "auto-20280228-235959.png auto-20280229-000000.png auto-20291231-235959.png "
                            "auto-20300101-000000.png auto-20300101-120000.png auto-20300101-120001.png "
                            "b zzz.png ");
    CloseHandle(held);
    EXPECT_TRUE(tickSaves());
    EXPECT_TRUE(savedNames().starts_with("a folder auto-20260908-070606.png auto-20280228-235959.png "));
    ++fakes.wallSeconds;
    EXPECT_TRUE(tickSaves());
    EXPECT_TRUE(savedNames().starts_with("a folder auto-20280228-235959.png "));
}

TEST(AutoSave, LosesNothingWhateverIsInTheWay)
{
    Desk desk(oneMonitor);
    TestFolder folder;
    const time_t now = localTime(2027, 1, 2, 3, 4, 5);
    fakes.wallSeconds = now;
    const fs::path pictures = std::filesystem::path(dataDirectory()) / "SavedPictures";
    const fs::path next = pictures / "auto-20270102-030405.png";
    const auto putFile = [](const fs::path &path) { std::ofstream(path) << "not a picture"; };
    struct Obstacle {
        const char *what;
        std::function<void()> raise, clear;  // no clear: it does not stop the picture
    } obstacles[] = {{"folder is a file", [&] { fs::remove_all(pictures), putFile(pictures); },
                      [&] { fs::remove(pictures); }},
                     {"data folder is a file",
                      [&] { fs::remove_all(dataDirectory()), putFile(dataDirectory()); },
                      [&] { fs::remove(dataDirectory()); }},
                     {"picture is a folder", [&] { fs::create_directory(next); }, [&] { fs::remove(next); }},
                     {"no clock", [] { fakes.wallSeconds = -1; }, [&] { fakes.wallSeconds = now; }},
                     {"no screen", [] { fakes.screen.width = 0; }, [] { fakes.screen.width = 800; }},
                     {"folder is gone", [&] { fs::remove_all(dataDirectory()); }, nullptr},
                     {"file of that name", [&] { putFile(next); }, nullptr}};
    for (const Obstacle &obstacle : obstacles) {
        ensureDataDirectories();
        obstacle.raise();
        EXPECT_EQ(tickSaves(), !obstacle.clear) << obstacle.what;
        if (obstacle.clear) obstacle.clear();
        EXPECT_TRUE(tickSaves()) << obstacle.what;
        EXPECT_GT(fs::file_size(next), 1000u) << obstacle.what;
        fs::remove(next);
    }
}
