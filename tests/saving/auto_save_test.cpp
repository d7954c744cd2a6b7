#include "saving/auto_save.h"

#include <gtest/gtest.h>

#include <fstream>

#include "autodraw/sequencer.h"
#include "clearing/wipes.h"
#include "hint/panel.h"
#include "menu/menu.h"
#include "settings/folders.h"
#include "support/fakes.h"

namespace fs = std::filesystem;

static const std::vector<RECT> gappyMonitors = {{0, 0, 300, 200}, {-260, 50, -60, 330}};

static std::vector<std::string> savedNames()
{
    std::vector<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(dataDirectory() / "SavedPictures"))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

static void putFile(const fs::path &path, const char *content = "not a picture")
{
    std::ofstream(path) << content;
}

static time_t localTime(int year, int month, int day, int hour, int minute, int second)
{
    tm parts = {};
    parts.tm_year = year - 1900, parts.tm_mon = month - 1, parts.tm_mday = day;
    parts.tm_hour = hour, parts.tm_min = minute, parts.tm_sec = second, parts.tm_isdst = -1;
    return mktime(&parts);
}

TEST(AutoSave, LeavesAnUnchangedPictureAndOneInTheMakingAlone)
{
    Desk desk(oneMonitor);
    TestFolder folder;
    ensureDataDirectories();
    struct Gate {
        bool dirty;
        int mode, steps;
        bool wipe, saves;
    } gates[] = {{false, 0, 0, false, false}, {true, 3, 0, false, false}, {true, 1, 1, false, false},
                 {true, 2, 0, true, false},   {true, 2, 0, false, true},  {false, 0, 0, false, false}};
    for (const Gate &gate : gates) {
        Having dirty(canvasDirty, gate.dirty);
        Having mode(autoMode, gate.mode);
        Having steps(autoStepsLeft, gate.steps);
        Having wipe(wipeRunning, gate.wipe);
        fs::remove_all(dataDirectory());
        autoSaveTick();  // makes the folders again
        EXPECT_EQ(fs::exists(dataDirectory()), gate.saves) << gate.mode << gate.steps << gate.wipe;
        EXPECT_EQ(canvasDirty, gate.dirty && !gate.saves);
    }
}

TEST(AutoSave, KeepsEveryPixelOfTheCanvasesAndNothingElse)
{
    Desk desk(gappyMonitors);
    TestFolder folder;
    Having color(backgroundColor, MarkColor(0x123456));
    Having menu(menuOpen, true);
    for (const MonitorSurface &surface : surfaces) {
        for (int i = 0; i < surface.width * surface.height; ++i) {
            const MarkColor noise = spareRng() & 0xFFFFFF;
            SetPixel(surface.canvasDC, i % surface.width, i / surface.width, noise);
        }
    }
    canvasDirty = true;
    autoSaveTick();
    const std::vector<std::string> names = savedNames();
    ASSERT_EQ(names.size(), 1u);
    GpBitmap *file = nullptr;
    ASSERT_EQ(GdipCreateBitmapFromFile((dataDirectory() / "SavedPictures" / names[0]).c_str(), &file), Ok);
    int wrong = 0;
    for (int y = 0; y < 330; ++y) {
        for (int x = -260; x < 300; ++x) {
            ARGB saved = 0;
            GdipBitmapGetPixel(file, x + 260, y, &saved);
            const MarkColor drawn = desk.pixel(x, y);
            wrong += saved != toArgb(drawn == CLR_INVALID ? 0x123456 : drawn, 255);
        }
    }
    UINT width = 0;
    UINT height = 0;
    GdipGetImageWidth(file, &width);
    GdipGetImageHeight(file, &height);
    GdipDisposeImage(file);
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(width, 560u);
    EXPECT_EQ(height, 330u);
}

TEST(AutoSave, NamesFilesByLocalTimeAndKeepsTheLastTen)
{
    Desk desk(oneMonitor);
    TestFolder folder;
    ensureDataDirectories();
    const fs::path saved = dataDirectory() / "SavedPictures";
    for (const char *name : {"aaa.txt", "auto-20200101-000000.png", "b.txt", "zzz.png"})
        putFile(saved / name);
    fs::create_directories(saved / "a folder");
    HANDLE held = CreateFileW((saved / "aaa.txt").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                              OPEN_EXISTING, 0, nullptr);
    for (const time_t turn : {localTime(2026, 9, 8, 7, 6, 5), localTime(2028, 2, 28, 23, 59, 59),
                              localTime(2029, 12, 31, 23, 59, 59), localTime(2030, 1, 1, 1, 0, 0)}) {
        for (int second : {0, 1}) {
            fakes.wallSeconds = turn + second;
            canvasDirty = true;
            autoSaveTick();
            EXPECT_FALSE(canvasDirty);
        }
    }
    // Twelve files: the first in order cannot be removed, the second is gone.
    const std::vector<std::string> expected = {"a folder",
                                               "aaa.txt",
                                               "auto-20260908-070605.png",
                                               "auto-20260908-070606.png",
                                               "auto-20280228-235959.png",
                                               "auto-20280229-000000.png",
                                               "auto-20291231-235959.png",
                                               "auto-20300101-000000.png",
                                               "auto-20300101-010000.png",
                                               "auto-20300101-010001.png",
                                               "b.txt",
                                               "zzz.png"};
    EXPECT_EQ(savedNames(), expected);
    CloseHandle(held);
    fakes.wallSeconds += 1;
    canvasDirty = true;
    autoSaveTick();
    const std::vector<std::string> names = savedNames();
    EXPECT_EQ(names.size(), 11u);  // ten files and the folder
    EXPECT_EQ(names[1], "auto-20260908-070606.png");
}

TEST(AutoSave, LosesNothingWhateverIsInTheWay)
{
    Desk desk(oneMonitor);
    TestFolder folder;
    const fs::path saved = dataDirectory() / "SavedPictures";
    fakes.wallSeconds = localTime(2027, 1, 2, 3, 4, 5);
    const fs::path next = saved / "auto-20270102-030405.png";
    struct Obstacle {
        const char *what;
        std::function<void()> raise, clear;
    } obstacles[] = {
        {"a file in place of the folder", [&] { fs::remove_all(saved), putFile(saved); },
         [&] { fs::remove(saved); }},
        {"a file in place of the data folder",
         [&] { fs::remove_all(dataDirectory()), putFile(dataDirectory()); },
         [&] { fs::remove(dataDirectory()); }},
        {"a folder of the picture's name", [&] { fs::create_directory(next); }, [&] { fs::remove(next); }},
        {"no clock", [] { fakes.wallSeconds = -1; },
         [&] { fakes.wallSeconds = localTime(2027, 1, 2, 3, 4, 5); }},
        {"no screen", [] { fakes.screen.width = 0; }, [] { fakes.screen.width = 800; }},
        {"the folder deleted", [&] { fs::remove_all(dataDirectory()); }, nullptr},
        {"a file of the picture's name", [&] { putFile(next); }, nullptr}};
    for (const Obstacle &obstacle : obstacles) {
        ensureDataDirectories();
        for (int i = 10; i < 20; ++i)
            putFile(saved / ("auto-201912" + std::to_string(i) + "-000000.png"));
        obstacle.raise();
        canvasDirty = true;
        autoSaveTick();
        EXPECT_EQ(canvasDirty, obstacle.clear != nullptr) << obstacle.what;
        if (obstacle.clear) {
            const size_t whole = fs::is_directory(saved) ? savedNames().size() - fs::exists(next) : 10u;
            EXPECT_EQ(whole, 10u) << obstacle.what;
            obstacle.clear();
        }
        autoSaveTick();
        EXPECT_FALSE(canvasDirty) << obstacle.what;
        EXPECT_GT(fs::file_size(next), 1000u) << obstacle.what;
        fs::remove(next);
    }
}
