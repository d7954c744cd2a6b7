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

static IFileDialogEvents *events;
static HWND dialogWindow;  // null while it has none
static HRESULT answered;   // what a grown-up does with it

// Some calls are recorded with what they receive.
static void isGiven(const std::wstring &text)
{
    Desk::current->calls.back().text += " " + fs::path(text).string();
}
static HRESULT itemAnswer(Object &, int place, const Call &call)
{
    if (place == 3) *call.get<HWND *>(1) = dialogWindow;
    if (place == 5) *call.get<PWSTR *>(2) = taskString(L"kept.png");
    return place == 3 && !dialogWindow ? E_FAIL : S_OK;
}
static Object item = {objectMethods, "item", itemAnswer};
static HRESULT dialogAnswer(Object &self, int place, const Call &call)
{
    if (place == 3) {
        isGiven(Desk::current->find(call.get<HWND>(1))->className);
        events->OnFolderChange(nullptr);
        for (const HWND window : {HWND(), primaryWindow(), primaryWindow()}) {
            dialogWindow = window;
            events->OnFolderChange(reinterpret_cast<IFileDialog *>(&self));
        }
        return dialogShowing ? answered : E_UNEXPECTED;
    }
    if (place == 4) isGiven(call.get<const COMDLG_FILTERSPEC *>(2)->pszSpec);
    if (place == 7) {
        events = call.get<IFileDialogEvents *>(1);
        events->AddRef();
        *call.get<DWORD *>(2) = 42;
    }
    if (place == 8 || place == 9) isGiven(std::to_wstring(call.get<DWORD>(1)));
    if (place == 10) *call.get<DWORD *>(1) = 0x800;
    if (place == 15 || place == 22) isGiven(call.get<const wchar_t *>(1));
    if (place == 0) return give(item, call.get<void **>(2));
    return place == 20 ? give(item, call.get<void **>(1)) : S_OK;
}
static Object dialog = {objectMethods, "dialog", dialogAnswer};

TEST(SaveDialog, SavesTheMomentOfTheKeyAndPutsTheSurfacesBack)
{
    Desk desk(twoMonitors);
    desk.makeObject = [](REFCLSID, void **out) { return give(dialog, out); };
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
    EXPECT_EQ(Object::held, 0);
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
