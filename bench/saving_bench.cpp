// Measures how long saving and capturing block the play at 3840 by 2160: each part of an auto-save,
// PrintScreen and Alt+F1, beside the system calls that each cannot do without. bench/saving.sh provides a
// screen of that size.
#include <cstdio>
#include <filesystem>
#include <string>

#include "desk.h"
#include "figures.h"
#include "marks/bursts.h"
#include "saving/auto_save.h"
#include "saving/capture.h"

static const int rounds = 7;

// Mean times of a part and of its bare calls, in milliseconds. They take turns, so that other work on the
// machine affects both alike.
struct Part {
    double own = 0;
    double bare = 0;

    void measure(auto work, auto bareCalls)
    {
        own += millisecondsOf(work) / rounds;
        bare += millisecondsOf(bareCalls) / rounds;
    }
    void print(const std::string &what) const
    {
        std::printf("%-70s %6.1f ms, bare %6.1f ms\n", what.c_str(), own, bare);
        printCost((what + "; floor: its bare calls").c_str(), own, bare, "");
    }
};

static HBITMAP bareCopy(HDC source, bool filled)
{
    HDC screen = GetDC(nullptr);
    HDC target = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, 3840, 2160);
    HGDIOBJ old = SelectObject(target, bitmap);
    if (filled) {
        const RECT whole = {0, 0, 3840, 2160};
        HBRUSH brush = CreateSolidBrush(backgroundColor);
        FillRect(target, &whole, brush);
        DeleteObject(brush);
    }
    BitBlt(target, 0, 0, 3840, 2160, source ? source : screen, 0, 0, SRCCOPY);
    SelectObject(target, old);
    DeleteDC(target);
    ReleaseDC(nullptr, screen);
    return bitmap;
}

static void measureSave(const char *what)
{
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "zubbly-bench.png";
    const CLSID png = {0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
    Part capture;
    Part conversion;
    Part encoding;
    for (int i = 0; i < rounds; ++i) {
        HBITMAP canvases = nullptr;
        HBITMAP bareCanvases = nullptr;
        capture.measure([&] { canvases = captureCanvases(); },
                        [&] { bareCanvases = bareCopy(surfaces.front().canvasDC, true); });
        DeleteObject(bareCanvases);
        OwnedPicture picture;
        GpBitmap *barePicture = nullptr;
        conversion.measure([&] { picture = pictureOf(canvases); },
                           [&] { GdipCreateBitmapFromHBITMAP(canvases, nullptr, &barePicture); });
        GdipDisposeImage(barePicture);
        encoding.measure([&] { writePng(picture.get(), file.c_str()); },
                         [&] { GdipSaveImageToFile(picture.get(), file.c_str(), &png, nullptr); });
        DeleteObject(canvases);
    }
    std::printf("%s: %ju bytes\n", what, std::uintmax_t(std::filesystem::file_size(file)));
    std::filesystem::remove(file);
    const std::string picture = std::string(" at 3840x2160, ") + what;
    capture.print("Capture of a save" + picture);
    conversion.print("Its conversion for GDI+" + picture);
    encoding.print("Encoding and writing it" + picture);
    printCost(("A save as a whole" + picture).c_str(), capture.own + conversion.own + encoding.own,
              capture.bare + conversion.bare + encoding.bare, "200 ms");
}

static void measureKeys()
{
    HWND window =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    // The dialog is the system's own: what counts is the time until it is asked for.
    REPLACE(CoCreateInstance, [] { return E_FAIL; });
    Part printScreen;
    Part saveKey;
    for (int i = 0; i < rounds; ++i) {
        printScreen.measure([&] { captureOrExit(VK_SNAPSHOT, window); },
                            [&] {
                                HBITMAP copy = bareCopy(nullptr, false);
                                OpenClipboard(window);
                                EmptyClipboard();
                                SetClipboardData(CF_BITMAP, copy);
                                CloseClipboard();
                            });
        saveKey.measure([&] { captureOrExit(VK_F1, window); },
                        [] { DeleteObject(bareCopy(surfaces.front().canvasDC, true)); });
    }
    printScreen.print("PrintScreen at 3840x2160");
    saveKey.print("Alt+F1 until its dialog at 3840x2160");
    DestroyWindow(window);
}

extern "C" int wmain(int, wchar_t **)
{
    openDesk(3840, 2160);
    soundEnabled = false;
    measureSave("empty");
    for (int i = 0; i < 100; ++i)
        scatterMarks(false);
    measureSave("a full hour");
    measureKeys();
    return 0;
}
