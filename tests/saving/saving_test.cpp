#include <gtest/gtest.h>

#include <fstream>
#include <numeric>

#include "menu/menu.h"
#include "saving/auto_save.h"
#include "saving/capture.h"
#include "saving/save_dialog.h"
#include "settings/folders.h"
#include "shell/base/files.h"
#include "shell/tablet.h"
#include "sound/bank_a.h"
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
    EXPECT_EQ(saving({"auto-20200101-000000.png", "b", "c", "d", "e", "f", "g", "h", "i", "z"}),
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

// The dialog of a whole play, with what it receives.
static HRESULT answer(Object &self, int place, const Call &call)
{
    const auto isGiven = [](const std::wstring &text) {
        Desk::current->calls.back().text += " " + fs::path(text).string();
    };
    if (place == 3) isGiven(Desk::current->find(call.get<HWND>(1))->className);
    if (place == 4) isGiven(call.get<const COMDLG_FILTERSPEC *>(2)->pszSpec);
    if (place == 7) *call.get<DWORD *>(2) = 42;
    if (place == 8 || place == 9) isGiven(std::to_wstring(call.get<DWORD>(1)));
    if (place == 10) *call.get<DWORD *>(1) = 0x800;
    if (place == 15 || place == 22) isGiven(call.get<const wchar_t *>(1));
    return dialogAnswer(self, place, call);
}

TEST(SaveDialog, SavesTheMomentOfTheKeyAndPutsTheSurfacesBack)
{
    Desk desk(twoMonitors);
    dialog.answer = answer;
    desk.makeObject = [](REFCLSID, void **out) { return give(dialog, out); };
    desk.cursor = {-100, 200};
    Tablet::whileSaving = [] {
        listener->AddRef();
        listener->OnFolderChange(nullptr);
        for (const auto window :
             {+[](Object &, int, const Call &) -> HRESULT { return E_FAIL; }, itemAnswer, itemAnswer}) {
            item.answer = window;
            listener->OnFolderChange(reinterpret_cast<IFileDialog *>(&dialog));
        }
        EXPECT_TRUE(dialogShowing);
    };
    openMenu({400, 300});
    desk.calls.clear();
    EXPECT_TRUE(showSaveDialog());
    expectRecorded("saving/dialog",
                   desk.text({"dialog", "CreateW", "SetWindowP", "ShowW", "BitBlt", "FillRect ",
                              "FillPolygon", "Enable", "Allow", "SetFore", "SaveImage"}));
    EXPECT_EQ(listener->Release(), 0u);
    Tablet::refusal = HRESULT_FROM_WIN32(ERROR_CANCELLED);
    EXPECT_FALSE(showSaveDialog());
    EXPECT_EQ(desk.count("SaveImage"), 1);
    EXPECT_EQ(Object::held, 0);
    EXPECT_EQ(leaks(), "");
}

TEST(Capture, IsHeardAndLosesNothingIfItFails)
{
    for (const std::string failing : {"SetClipboardData", "OpenClipboard", "GetSystemMetrics"}) {
        Desk desk(twoMonitors);
        captureClip = SoundClip(44);
        const Failing fails(failing.c_str());
        captureOrExit(VK_SNAPSHOT, primaryWindow());
        EXPECT_EQ(desk.count("PlaySound"), 1) << failing;
        EXPECT_EQ(desk.count("EmptyClipboard"), failing == "SetClipboardData") << failing;
        EXPECT_EQ(leaks(), "") << failing;
    }
}
