// How long a tick of auto-save holds the child up at 3840 by 2160, split into its parts.
#include <chrono>
#include <cstdio>
#include <filesystem>

#include "marks/bursts.h"
#include "saving/auto_save.h"
#include "shell/surfaces.h"

// The picture's size is the virtual screen's, so the bench tells one.
static int WINAPI bigScreen(int index)
{
    return index == SM_CXVIRTUALSCREEN ? 3840 : index == SM_CYVIRTUALSCREEN ? 2160 : 0;
}
extern "C" {
int(WINAPI *__imp_GetSystemMetrics)(int) = bigScreen;
}

static double milliseconds(auto work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

static void measure(const char *what)
{
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "zubbly-bench.png";
    double copy = 0;
    double wrap = 0;
    double encode = 0;
    for (int i = 0; i < 5; ++i) {
        HBITMAP canvases = nullptr;
        OwnedPicture picture;
        copy += milliseconds([&] { canvases = captureCanvases(); }) / 5;
        wrap += milliseconds([&] { picture = pictureOf(canvases); }) / 5;
        encode += milliseconds([&] { writePng(picture.get(), file.c_str()); }) / 5;
        DeleteObject(canvases);
    }
    std::printf("%-12s copy %4.0f ms, as a GDI+ picture %4.0f ms, encode and write %5.0f ms, %ju bytes\n",
                what, copy, wrap, encode, std::uintmax_t(std::filesystem::file_size(file)));
    std::filesystem::remove(file);
}

extern "C" int wmain(int, wchar_t **)
{
    GdiplusStartupInput input;
    ULONG_PTR token = 0;
    GdiplusStartup(&token, &input, nullptr);
    RECT monitor = {0, 0, 3840, 2160};
    createSurface(nullptr, nullptr, &monitor, 0);
    newBackground(true);
    measure("empty");
    for (int i = 0; i < 100; ++i)
        scatterMarks(false);
    measure("a full hour");
    return 0;
}
