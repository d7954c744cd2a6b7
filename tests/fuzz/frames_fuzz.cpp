// Damaged pictures through the mascot's loader and painter: frames_fuzz SECONDS SEED FOLDER, where FOLDER has
// good ones in "good". Ends with 2 if one of these cannot be loaded, with 4 if they leave memory behind.
#include <filesystem>
#include <fstream>
#include <random>

#include "mascot/frames.h"
#include "mascot/walker.h"
#include <psapi.h>

namespace fs = std::filesystem;

// Wrong bytes, every third in the head, where sizes and formats stand, or no end.
static void damage(const fs::path &file, std::mt19937 &dice)
{
    const auto size = uint32_t(fs::file_size(file));
    std::fstream bytes(file, std::ios::in | std::ios::out | std::ios::binary);
    for (uint32_t i = dice() % 6; i > 0; --i)
        bytes.seekp(dice() % (i % 3 == 0 ? 60 : size)).put(char(dice()));
    bytes.close();
    if (dice() % 4 == 0) fs::resize_file(file, dice() % size);
}

// Loads and paints it; false if it cannot be loaded. Ends the run if that wrote beside its own memory.
static bool show(const fs::path &file, HDC screen)
{
    unloadMascotFrames();  // the one before
    mainFrame = loadFrameFile(file.wstring()).release();
    GraphicsScope scope(screen);
    drawFrame(scope, {.x = 50, .y = 100, .alpha = 0.5f, .mirrored = true});
    if (!HeapValidate(GetProcessHeap(), 0, nullptr)) std::abort();
    return mainFrame;
}

int main(int, char **arguments)
{
    const GdiplusStartupInput input;
    ULONG_PTR token = 0;
    GdiplusStartup(&token, &input, nullptr);
    HDC screen = CreateCompatibleDC(nullptr);
    SelectObject(screen, CreateBitmap(100, 100, 1, 32, nullptr));
    std::mt19937 dice(uint32_t(std::stoul(arguments[2])));
    const fs::path folder = arguments[3];
    const std::vector<fs::path> good(fs::directory_iterator(folder / "good"), {});
    const ULONGLONG end = GetTickCount64() + 1000 * std::stoull(arguments[1]);
    for (int pictures = 0; GetTickCount64() < end; ++pictures) {
        const fs::path file = folder / std::to_string(pictures);
        fs::copy_file(good[dice() % good.size()], file);
        damage(file, dice);
        show(file, screen);
    }
    // Wine loses some memory with each that it cannot load; the good ones have to leave none.
    PROCESS_MEMORY_COUNTERS before = {}, after = {};
    for (size_t i = 0; i < 20 * good.size(); ++i) {
        if (!show(good[i % good.size()], screen)) return 2;
        K32GetProcessMemoryInfo(GetCurrentProcess(), i < 5 * good.size() ? &before : &after, sizeof before);
    }
    return after.PagefileUsage > before.PagefileUsage + 1024 * 1024 ? 4 : 0;
}
