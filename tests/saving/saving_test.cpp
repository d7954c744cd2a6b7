#include <gtest/gtest.h>

#include <ctime>
#include <fstream>
#include <numeric>

#include "hint/panel.h"
#include "menu/menu.h"
#include "saving/auto_save.h"
#include "saving/capture.h"
#include "saving/save_dialog.h"
#include "settings/folders.h"
#include "sound/bank_a.h"
#include "sound/playback.h"
#include "support/objects.h"
#include "support/recorded.h"

namespace fs = std::filesystem;

static fs::path saved(const std::string &name)
{
    return fs::path(dataDirectory()) / "SavedPictures" / name;
}

static bool tickSaves()
{
    canvasDirty = true;
    return autoSaveTick(), !canvasDirty;
}

static time_t localTime(int year, int month, int day, int hour, int minute, int second)
{
    tm parts = {second, minute, hour, day, month - 1, year - 1900, 0, 0, -1};
    return mktime(&parts);
}

// Its pixels, row by row; none if it is no picture.
static std::vector<ARGB> pixelsIn(const fs::path &file, UINT &width)
{
    std::vector<ARGB> pixels;
    GpBitmap *picture = nullptr;
    UINT height = width = 0;
    GdipCreateBitmapFromFile(file.c_str(), &picture);
    GdipGetImageWidth(picture, &width);
    GdipGetImageHeight(picture, &height);
    for (UINT i = 0; i < width * height; ++i)
        GdipBitmapGetPixel(picture, int(i % width), int(i / width), &pixels.emplace_back());
    GdipDisposeImage(picture);
    return pixels;
}

TEST(AutoSave, KeepsEveryPixelOfAllCanvasesAndFillsTheGaps)
{
    Desk desk({{0, 0, 300, 200}, {-260, -50, -60, 230}});
    backgroundColor = 0x123456;
    for (const MonitorSurface &surface : surfaces)
        for (int i = 0; i < surface.width * surface.height; ++i)
            SetPixel(surface.canvasDC, i % surface.width, i / surface.width, spareRng() & 0xFFFFFF);
    desk.wallSeconds = localTime(2027, 1, 2, 3, 4, 5);
    ASSERT_TRUE(tickSaves());
    EXPECT_EQ(leaks(), "");
    UINT width = 0;
    const std::vector<ARGB> pixels = pixelsIn(saved("auto-20270102-030405.png"), width);
    ASSERT_TRUE(width == 560 && pixels.size() == 560 * 280) << width;
    int wrong = 0;
    for (int i = 0; i < 560 * 280; ++i) {
        const MarkColor drawn = desk.pixel(i % 560 - 260, i / 560 - 50);
        wrong += pixels[size_t(i)] != toArgb(drawn == CLR_INVALID ? backgroundColor : drawn, 255);
    }
    EXPECT_EQ(wrong, 0) << "pixels";
}

TEST(AutoSave, KeepsTheLastTenFilesWhateverTheirNames)
{
    Desk desk(oneMonitor);
    fs::create_directories(saved("a folder"));
    for (const char *name : {"aaa", "auto-20200101-000000.png", "b", "zzz.png"})
        std::ofstream(saved(name)) << "not a picture";
    const HANDLE held =
        CreateFileW(saved("aaa").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    const auto saveAt = [&](time_t now) {
        desk.wallSeconds = now;
        EXPECT_TRUE(tickSaves());
    };
    for (const time_t turn : {localTime(2026, 9, 8, 7, 6, 5), localTime(2028, 2, 28, 23, 59, 59),
                              localTime(2029, 12, 31, 23, 59, 59), localTime(2030, 1, 1, 12, 0, 0)}) {
        saveAt(turn);
        saveAt(turn + 1);
    }
    const auto names = [] {
        std::set<std::string> all;
        for (const fs::directory_entry &entry : fs::directory_iterator(saved("")))
            all.insert(entry.path().filename().string() + "\n");
        return std::accumulate(all.begin(), all.end(), std::string());
    };
    const std::string kept = "auto-20260908-070605.png\nauto-20260908-070606.png\nauto-20280228-235959.png\n"
                             "auto-20280229-000000.png\nauto-20291231-235959.png\nauto-20300101-000000.png\n"
                             "auto-20300101-120000.png\nauto-20300101-120001.png\nb\nzzz.png\n";
    EXPECT_EQ(names(), "a folder\naaa\n" + kept);  // aaa should go, but is in use
    CloseHandle(held);
    saveAt(localTime(2030, 1, 1, 12, 0, 1));
    EXPECT_EQ(names(), "a folder\n" + kept);
}

TEST(AutoSave, WaitsForThePictureAndLosesNothingWhateverIsInTheWay)
{
    Desk desk(oneMonitor);
    const time_t now = localTime(2027, 1, 2, 3, 4, 5);
    const fs::path pictures = saved("").parent_path(), next = saved("auto-20270102-030405.png");
    const auto putFile = [](const fs::path &path) {
        fs::remove_all(path);
        std::ofstream(path) << "not a picture";
    };
    const std::tuple<const char *, bool, std::function<void()>> rows[] = {
        {"the toy draws", false, [] { autoMode = 3; }},
        {"it scatters", false, [] { autoMode = autoStepsLeft = 1; }},
        {"it wipes", false, [] { wipeRunning = true; }},
        {"it wiped", true, [] { autoMode = 2; }},
        {"folder is a file", false, [&] { putFile(pictures); }},
        {"data folder is a file", false, [&] { putFile(dataDirectory()); }},
        {"picture is a folder", false, [&] { fs::create_directory(next); }},
        {"folder is gone", true, [&] { fs::remove_all(dataDirectory()); }},
        {"file of that name", true, [&] { putFile(next); }},
        {"no clock", false, [&] { desk.wallSeconds = -1; }},
        {"no screen", false, [&] { desk.screen = VirtualScreen{0, 0, 0, 600}; }}};
    for (const auto &[what, saves, raise] : rows) {
        fs::remove_all(dataDirectory());
        ensureDataDirectories();
        autoMode = autoStepsLeft = 0;
        wipeRunning = false;
        desk.wallSeconds = now;
        canvasDirty = true;
        raise();
        autoSaveTick();
        EXPECT_EQ(canvasDirty, !saves) << what;
        EXPECT_EQ(fs::is_regular_file(next) && fs::file_size(next) > 1000, saves) << what;
        EXPECT_EQ(leaks(), "") << what;
    }
    desk.screen.reset();
    desk.wallSeconds = now;
    canvasDirty = false;
    autoSaveTick();
    EXPECT_FALSE(fs::exists(next)) << "nothing changed";
    for (const char *call : {"CreateCompatibleDC", "CreateCompatibleBitmap", "GdipCreateBitmapFromHBITMAP",
                             "GdipGetImageEncodersSize", "GdipGetImageEncoders"}) {
        const Failing failing(call);
        EXPECT_FALSE(tickSaves()) << call;
        EXPECT_EQ(leaks(), "") << call;
        EXPECT_FALSE(fs::exists(next)) << call;
    }
    REPLACE(GdipSaveImageToFile, [](GpImage *, const WCHAR *path) {
        std::ofstream(fs::path(path)) << "the disk is full";
        return GenericError;
    });
    for (const bool wasThere : {false, true}) {
        if (wasThere) putFile(next);
        EXPECT_FALSE(tickSaves());
        EXPECT_EQ(fs::exists(next), wasThere) << "a stump would count as one of the ten";
    }
}

// --- The save dialog. The arguments of its methods are recorded on a line of their own, indented.
static void tell(const std::string &what)
{
    Desk::current->calls.push_back({"  " + what, what, {}});
}

static std::string plain(const void *text)
{
    return fs::path(static_cast<const wchar_t *>(text)).filename().string();
}

static Object dialog, oleWindow, item;
static IFileDialogEvents *events;
static fs::path chosen;    // cancelled while empty
static HWND dialogWindow;  // null while it has none
static std::function<void()> whileOpen;

static int64_t answerOfDialog(int place, void **first, void **second, void **, void **)
{
    const auto number = std::to_string(uint32_t(intptr_t(first)));
    switch (place) {
    case 0: return give(oleWindow, second);
    case 3:
        tell(dialogShowing ? "over " : "shown wrongly over ");
        Desk::current->calls.back().text += plain(Desk::current->find(HWND(first))->className.c_str());
        whileOpen();
        return chosen.empty() ? int64_t(0x800704C7) : S_OK;
    case 4: tell(number + " " + plain(second[0]) + " " + plain(second[1])); break;
    case 7:
        events = reinterpret_cast<IFileDialogEvents *>(first);
        *reinterpret_cast<DWORD *>(second) = 42;
        break;
    case 8:
    case 9: tell(number); break;
    case 10: *reinterpret_cast<DWORD *>(first) = 0x800; break;
    case 12: {
        PWSTR path = nullptr;
        reinterpret_cast<IShellItem *>(first)->GetDisplayName(SIGDN_FILESYSPATH, &path);
        tell(plain(path));
        CoTaskMemFree(path);
        break;
    }
    case 15:
    case 22: tell(plain(first)); break;
    case 20: return give(item, first);
    }
    return S_OK;
}

static HRESULT makeDialog(REFCLSID, void **out)
{
    dialog = {objectMethods, "dialog", 0, answerOfDialog};
    oleWindow = {objectMethods, "window", 0, [](int, void **window, void **, void **, void **) -> int64_t {
                     *window = dialogWindow;
                     return dialogWindow ? S_OK : E_FAIL;
                 }};
    item = {objectMethods, "result", 0, [](int, void **kind, void **path, void **, void **) -> int64_t {
                tell(std::to_string(uint32_t(intptr_t(kind))));
                const size_t bytes = (chosen.native().size() + 1) * sizeof(wchar_t);
                *path = std::memcpy(CoTaskMemAlloc(bytes), chosen.c_str(), bytes);
                return S_OK;
            }};
    return HRESULT(give(dialog, out));
}

TEST(SaveDialog, SavesTheMomentOfTheKeyAndPutsTheSurfacesBack)
{
    Desk desk(twoMonitors, 0x0000FF);
    CoInitialize(nullptr);  // for the folder of the dialog
    desk.makeObject = makeDialog;
    desk.cursor = {-100, 200};
    desk.localTime = {2026, 1, 0, 2, 3, 4, 5, 6};
    whileOpen = [] { SetPixel(surfaces[0].canvasDC, 700, 50, 0x00FF00); };  // the child draws on
    const fs::path file = desk.folder() / "kept.png";
    UINT width = 0;
    for (const bool accepted : {true, false}) {
        SetPixel(surfaces[0].canvasDC, 700, 50, 0x0000FF);
        chosen = accepted ? file : fs::path();
        std::ofstream(file) << "an older file";
        desk.calls.clear();
        EXPECT_EQ(showSaveDialog(), accepted);
        std::string told =
            desk.text({"  ", "dialog", "result", "CreateWindow", "SetWindow", "ShowWindow", "BitBlt w",
                       "Enable", "SetLayered", "Clip", "Allow", "SetFore", "SaveImage"});
        if (accepted) expectRecorded("saving/dialog accepted", told);
        EXPECT_EQ(desk.count("result"), accepted) << told;
        EXPECT_EQ(desk.count("CreateWindow"), accepted) << "the host is made once";
        EXPECT_EQ(desk.count("EnableWindow w"), 2);
        const std::vector<ARGB> pixels = pixelsIn(file, width);
        ASSERT_EQ(pixels.size(), accepted ? 1440u * 600u : 0u);
        EXPECT_TRUE(!accepted || pixels[1440 * 50 + 640 + 700] == 0xFFFF0000) << "drawn after the key";
        EXPECT_EQ(dialog.references + item.references, 0);
        EXPECT_EQ(leaks(), "");
    }
    openMenu({400, 300});
    desk.calls.clear();
    restoreSurfaces();
    EXPECT_GT(desk.first("DrawString w0"), desk.first("BitBlt w0")) << "the menu goes above the picture";
    destroyDialogHost();
    EXPECT_EQ(desk.count("DestroyWindow w2"), 1);
}

TEST(SaveDialog, RaisesTheDialogOnceAndAnswersEverySlot)
{
    Desk desk(oneMonitor);
    desk.makeObject = makeDialog;
    chosen.clear();
    whileOpen = [&] {
        void *found = nullptr;
        EXPECT_EQ(events->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
        EXPECT_EQ(events->QueryInterface(IID_IFileDialog, &found), E_NOINTERFACE);
        EXPECT_EQ(events->QueryInterface(IID_IFileDialogEvents, &found), S_OK);
        EXPECT_EQ(found, events);
        EXPECT_EQ(events->OnFileOk(nullptr) | events->OnFolderChanging(nullptr, nullptr) |
                      events->OnSelectionChange(nullptr) |
                      events->OnShareViolation(nullptr, nullptr, nullptr) | events->OnTypeChange(nullptr) |
                      events->OnOverwrite(nullptr, nullptr, nullptr),
                  S_OK);
        for (const auto &[sender, window, raised] :
             {std::tuple<void *, HWND, int>(nullptr, primaryWindow(), 0),
              {&dialog, nullptr, 0},
              {&dialog, primaryWindow(), 1},
              {&dialog, primaryWindow(), 1}}) {
            dialogWindow = window;
            EXPECT_EQ(events->OnFolderChange(static_cast<IFileDialog *>(sender)), S_OK);
            EXPECT_EQ(desk.count("SetWindowPos w0 topmost 0 0 0 0 x43"), raised);
            EXPECT_EQ(desk.count("SetForegroundWindow w0"), raised);
        }
        EXPECT_EQ(oleWindow.references, 0);
    };
    showSaveDialog();
    EXPECT_EQ(events->Release(), 0u) << "only the query's was left";
}

TEST(Capture, IsHeardEvenWhenItFailsAndLeavingIsNot)
{
    const std::string copy = "BitBlt elsewhere 0 0 1440 600 elsewhere -640 0 xCC0020\n";
    const std::string copied =
        copy + "OpenClipboard w0\nEmptyClipboard\nSetClipboardData 2\nCloseClipboard\n";
    for (const auto &[key, sound, failing, calls] :
         {std::tuple(VK_SNAPSHOT, true, "", copied),
          {VK_SNAPSHOT, true, "SetClipboardData",
           copy + "OpenClipboard w0\nEmptyClipboard\nCloseClipboard\n"},
          {VK_SNAPSHOT, false, "OpenClipboard", copy},
          {VK_SNAPSHOT, true, "CreateCompatibleBitmap", ""},
          {VK_SNAPSHOT, true, "GetSystemMetrics", ""},  // no size: the system would give its own bitmap
          {VK_F1, true, "CoCreateInstance",
           "CreateWindowEx x88 \"ZubblyDialogHost\" x80000000 0 0 1 1 null\n"},
          {VK_F1, true, "CreateWindowExW", ""},
          {'A', false, "", ""}}) {
        SCOPED_TRACE(testing::Message() << key << " while this fails: " << failing);
        Desk desk(twoMonitors);
        captureClip = SoundClip(44);
        soundEnabled = sound;
        std::optional<Failing> fails;
        if (*failing) fails.emplace(failing);
        captureOrExit(uint32_t(key), primaryWindow());
        EXPECT_EQ(desk.text({"BitBlt elsewhere 0 0 1440", "OpenClip", "EmptyClip", "SetClip", "CloseClip",
                             "CreateWindow"}),
                  calls);
        EXPECT_EQ(desk.text({"PlaySound"}), sound ? "PlaySound captureClip 0 23\n" : "");
        EXPECT_EQ(lastSoundTick, sound ? desk.tick : 0u);
        EXPECT_EQ(leaks(), "");
    }
    Desk desk(oneMonitor);
    hintVisible = true;
    captureOrExit(VK_F4, primaryWindow());
    EXPECT_FALSE(hintVisible);
    EXPECT_EQ(desk.count("PostQuitMessage 0"), 1);
    EXPECT_TRUE(desk.sounds.empty());
}
