#include <gtest/gtest.h>

#include <fstream>
#include <numeric>

#include "menu/menu.h"
#include "saving/auto_save.h"
#include "saving/capture.h"
#include "saving/save_dialog.h"
#include "settings/folders.h"
#include "shell/base/files.h"
#include "sound/bank_a.h"
#include "support/objects.h"
#include "support/recorded.h"

namespace fs = std::filesystem;

// The files there are after a save at 03:04:05 on January 2, 2027; those there were are no pictures.
using Names = std::vector<const char *>;
static std::string saving(const Names &files, int mode = 0, int steps = 0, bool wipe = false)
{
    Desk desk(oneMonitor);
    tm local = {5, 4, 3, 2, 0, 127, 0, 0, -1};
    desk.wallSeconds = mktime(&local);
    const fs::path folder = fs::path(dataDirectory()) / "SavedPictures";
    if (!files.empty()) fs::create_directories(folder / "a folder");
    for (const char *name : files)
        std::ofstream(folder / name) << "no picture";
    std::tie(autoMode, autoStepsLeft, wipeRunning, canvasDirty) = std::tuple(mode, steps, wipe, true);
    autoSaveTick();
    EXPECT_EQ(leaks(), "");
    std::set<std::string> names;
    for (const fs::path file : filesIn(folder.wstring()))
        names.insert(file.filename().string() + (fs::file_size(file) > 1000 ? " (picture) " : " "));
    return std::accumulate(names.begin(), names.end(), std::string(canvasDirty ? "waits " : ""));
}

TEST(AutoSave, WaitsForThePictureLosesNothingAndKeepsTheLastTenFiles)
{
    const std::string next = "auto-20270102-030405.png", done = next + " (picture) ";
    EXPECT_EQ(saving({}, 2), done);
    EXPECT_EQ(saving({}, 3), "waits ");
    EXPECT_EQ(saving({}, 1, 1), "waits ");
    EXPECT_EQ(saving({}, 0, 0, true), "waits ");
    EXPECT_EQ(saving({"a", "auto-20200101-000000.png", "b", "c", "d", "e", "f", "g", "h", "i", "z"}),
              done + "b c d e f g h i z ");
    for (const char *call :
         {"GetSystemMetrics", "CreateCompatibleDC", "CreateCompatibleBitmap", "CreateDirectoryW",
          "GdipCreateBitmapFromHBITMAP", "GdipGetImageEncodersSize", "GdipGetImageEncoders"}) {
        const Failing failing(call);
        EXPECT_EQ(saving({}), "waits ") << call;
    }
    REPLACE(GdipSaveImageToFile, [](GpImage *, const WCHAR *path) {
        std::ofstream(fs::path(path)) << "the disk is full";
        return GenericError;
    });
    EXPECT_EQ(saving({}), "waits ") << "a fragment would count as one of the ten";
    EXPECT_EQ(saving({next.c_str()}), "waits " + next + " ");
}

static Object dialog, item;
static IFileDialogEvents *events;
static HWND dialogWindow;  // null while it has none
static HRESULT answered;   // what a grown-up does with it

// Some calls are recorded with what they receive.
static void isGiven(const void *text)
{
    Desk::current->calls.back().text += " " + fs::path(static_cast<const wchar_t *>(text)).string();
}
static int64_t answerOfDialog(int place, void **first, void **second, void **, void **)
{
    if (place == 3) {
        isGiven(Desk::current->find(HWND(first))->className.c_str());
        events->OnFolderChange(nullptr);
        for (const HWND window : {HWND(), primaryWindow(), primaryWindow()}) {
            dialogWindow = window;
            events->OnFolderChange(reinterpret_cast<IFileDialog *>(&dialog));
        }
        return dialogShowing ? answered : E_UNEXPECTED;
    }
    if (place == 4) isGiven(second[1]);
    if (place == 7) {
        events = reinterpret_cast<IFileDialogEvents *>(first);
        events->AddRef();
        *reinterpret_cast<DWORD *>(second) = 42;
    }
    if (place == 8 || place == 9) isGiven(std::to_wstring(LOWORD(first)).c_str());
    if (place == 10) *reinterpret_cast<DWORD *>(first) = 0x800;
    if (place == 15 || place == 22) isGiven(first);
    return place == 0 ? give(item, second) : place == 20 ? give(item, first) : S_OK;
}

TEST(SaveDialog, SavesTheMomentOfTheKeyAndPutsTheSurfacesBack)
{
    Desk desk(twoMonitors);
    dialog = {objectMethods, "dialog", 0, answerOfDialog};
    item = {objectMethods, "item", 0, [](int place, void **window, void **path, void **, void **) {
                if (place == 3) *window = dialogWindow;
                if (place == 5) *path = std::wcscpy(static_cast<wchar_t *>(CoTaskMemAlloc(100)), L"kept.png");
                return int64_t(place == 3 && !dialogWindow ? E_FAIL : S_OK);
            }};
    desk.makeObject = [](REFCLSID, void **out) { return HRESULT(give(dialog, out)); };
    desk.cursor = {-100, 200};
    REPLACE(GdipSaveImageToFile, [](GpImage *, const WCHAR *path) {
        isGiven(path);
        return Ok;
    });
    openMenu({400, 300});
    desk.calls.clear();
    EXPECT_TRUE(showSaveDialog());
    expectRecorded("saving/dialog",
                   desk.text({"dialog", "CreateW", "SetWindowP", "ShowW", "BitBlt", "FillRect ",
                              "FillPolygon", "Enable", "Allow", "SetFore", "SaveImage"}));
    EXPECT_EQ(events->Release(), 0u);
    answered = HRESULT_FROM_WIN32(ERROR_CANCELLED);
    EXPECT_FALSE(showSaveDialog());
    EXPECT_EQ(desk.count("SaveImage"), 1);
    EXPECT_EQ(dialog.references + item.references, 0);
    EXPECT_EQ(leaks(), "");
}

TEST(Capture, IsHeardEvenWhenItFails)
{
    std::string table;  // without a size the system would give its own bitmap
    for (const std::string failing : {"LoadIconW", "SetClipboardData", "OpenClipboard", "GetSystemMetrics"}) {
        Desk desk(twoMonitors);
        captureClip = SoundClip(44);
        const Failing fails(failing.c_str());
        captureOrExit(VK_SNAPSHOT, primaryWindow());
        const std::string done = desk.text({"BitBlt", "Open", "Empty", "SetC", "Close", "DeleteO", "Play"});
        table += (failing == "LoadIconW" ? "all is well" : failing + " fails") + "\n" + done;
    }
    expectRecorded("saving/PrintScreen", table);
}
