#include "saving/auto_save.h"

#include <algorithm>
#include <chrono>
#include <cwchar>
#include <string>
#include <vector>

#include "settings/folders.h"
#include "shell/base/files.h"
#include "shell/base/state.h"
#include "shell/base/surfaces.h"

static void copyCanvases(HDC target, const VirtualScreen &screen)
{
    const RECT whole = {0, 0, screen.width, screen.height};
    HBRUSH brush = CreateSolidBrush(backgroundColor);
    FillRect(target, &whole, brush);
    DeleteObject(brush);
    for (const MonitorSurface &surface : surfaces) {
        if (!surface.canvasDC) continue;
        BitBlt(target, surface.rect.left - screen.left, surface.rect.top - screen.top, surface.width,
               surface.height, surface.canvasDC, 0, 0, SRCCOPY);
    }
}

HBITMAP captureCanvases()
{
    const VirtualScreen screen = virtualScreen();
    if (screen.width < 1 || screen.height < 1) return nullptr;
    HDC screenDC = GetDC(nullptr);
    HDC target = CreateCompatibleDC(screenDC);
    HBITMAP bitmap = CreateCompatibleBitmap(screenDC, screen.width, screen.height);
    if (target && bitmap) {
        HGDIOBJ old = SelectObject(target, bitmap);
        copyCanvases(target, screen);
        SelectObject(target, old);
    } else if (bitmap) {
        DeleteObject(bitmap);
        bitmap = nullptr;
    }
    if (target) DeleteDC(target);
    ReleaseDC(nullptr, screenDC);
    return bitmap;
}

int findPngEncoder(CLSID &clsid)
{
    UINT count = 0;
    UINT size = 0;
    GdipGetImageEncodersSize(&count, &size);
    if (size == 0) return -1;
    // Their texts follow the last record, in the same block.
    std::vector<ImageCodecInfo> encoders(size / sizeof(ImageCodecInfo) + 1);
    if (GdipGetImageEncoders(count, size, encoders.data()) != Ok) return -1;
    for (UINT i = 0; i < count; ++i) {
        if (std::wcscmp(encoders[i].MimeType, L"image/png") != 0) continue;
        clsid = encoders[i].Clsid;
        return int(i);
    }
    return -1;
}

OwnedPicture pictureOf(HBITMAP bitmap)
{
    GpBitmap *picture = nullptr;
    GdipCreateBitmapFromHBITMAP(bitmap, nullptr, &picture);
    return OwnedPicture(picture);
}

bool writePng(GpBitmap *picture, const wchar_t *path)
{
    CLSID png = {};
    return findPngEncoder(png) >= 0 && GdipSaveImageToFile(picture, path, &png, nullptr) == Ok;
}

// "auto-20261231-235959.png" in local time, so that ascending order is oldest first. Empty on failure.
static std::wstring pictureName()
{
    const time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    tm local = {};
    if (localtime_s(&local, &now) != 0) return {};
    wchar_t name[32] = {};
    std::wcsftime(name, std::size(name), L"auto-%Y%m%d-%H%M%S.png", &local);
    return name;
}

// Every regular file counts, on purpose: one that somebody put there and that sorts before "auto-" is the
// first to be deleted.
static void keepLastTen(const std::wstring &folder)
{
    std::vector<std::wstring> files = filesIn(folder);
    if (files.size() <= 10) return;
    std::sort(files.begin(), files.end());
    files.resize(files.size() - 10);
    for (const std::wstring &file : files)
        DeleteFileW(file.c_str());
}

void autoSaveTick()
{
    if (!canvasDirty || autoMode == drawAction || autoStepsLeft > 0 || wipeRunning) return;
    HBITMAP canvases = captureCanvases();
    if (!canvases) return;
    const bool haveFolder = ensureDataDirectories();
    const std::wstring name = haveFolder ? pictureName() : std::wstring();
    const OwnedPicture picture = name.empty() ? nullptr : pictureOf(canvases);
    DeleteObject(canvases);
    if (!picture) return;
    const std::wstring folder = inFolder(dataDirectory(), L"SavedPictures");
    const std::wstring file = inFolder(folder, name);
    const bool wasThere = pathExists(file);
    if (!writePng(picture.get(), file.c_str())) {
        // A full disk leaves a fragment at every tick; ten of them would push out the ten whole pictures.
        if (!wasThere) DeleteFileW(file.c_str());
        return;
    }
    keepLastTen(folder);
    canvasDirty = false;
}
