// How long a tick of auto-save holds the child up at 3840 by 2160, split into its parts.
#include <cstdio>
#include <filesystem>
#include <string>

#include "desk.h"
#include "figures.h"
#include "marks/bursts.h"
#include "saving/auto_save.h"

static void measure(const char *what)
{
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "zubbly-bench.png";
    double copy = 0;
    double wrap = 0;
    double encode = 0;
    for (int i = 0; i < 5; ++i) {
        HBITMAP canvases = nullptr;
        OwnedPicture picture;
        copy += millisecondsOf([&] { canvases = captureCanvases(); }) / 5;
        wrap += millisecondsOf([&] { picture = pictureOf(canvases); }) / 5;
        encode += millisecondsOf([&] { writePng(picture.get(), file.c_str()); }) / 5;
        DeleteObject(canvases);
    }
    std::printf("%-12s copy %4.0f ms, as a GDI+ picture %4.0f ms, encode and write %5.0f ms, %ju bytes\n",
                what, copy, wrap, encode, std::uintmax_t(std::filesystem::file_size(file)));
    std::filesystem::remove(file);
    tellCost((std::string("A save at 3840x2160, ") + what + "; floor: encoding and writing alone").c_str(),
             copy + wrap + encode, encode, "200 ms");
}

extern "C" int wmain(int, wchar_t **)
{
    openDesk(3840, 2160);
    measure("empty");
    for (int i = 0; i < 100; ++i)
        scatterMarks(false);
    measure("a full hour");
    return 0;
}
