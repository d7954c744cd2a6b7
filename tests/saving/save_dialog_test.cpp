#include "saving/save_dialog.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>

#include "hint/panel.h"
#include "saving/capture.h"
#include "shell/shutdown.h"
#include "sound/bank_a.h"
#include "sound/playback.h"
#include "support/fakes.h"

namespace fs = std::filesystem;

extern "C" decltype(&CoCreateInstance) __real___imp_CoCreateInstance;

static HWND dialogWindow;  // of the open dialog; null while it has none
static struct : IOleWindow {
    STDMETHODIMP QueryInterface(REFIID, void **) override { return E_NOINTERFACE; }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP GetWindow(HWND *out) override { return *out = dialogWindow, dialogWindow ? S_OK : E_FAIL; }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    ULONG references = 0;
} oleWindow;

// The system's own dialog, of which some slots are replaced: it comes up nowhere.
static std::array<void *, 32> realSlots, slots;
static IFileSaveDialog *dialog;
static HWND dialogOwner;
static IFileDialogEvents *events;
static bool hasOleWindow;
static fs::path chosen;  // cancelled while empty
static std::function<void()> whileOpen;

static void replaceSlot(size_t slot, auto function)
{
    slots[slot] = reinterpret_cast<void *>(+function);
}

static HRESULT makeDialog(REFCLSID id, void **out)
{
    CoInitialize(nullptr);
    __real___imp_CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&dialog));
    slots = realSlots = **reinterpret_cast<std::array<void *, 32> **>(dialog);
    replaceSlot(0, [](void *self, REFIID wanted, void **found) -> HRESULT {
        if (!IsEqualIID(wanted, IID_IOleWindow))
            return reinterpret_cast<HRESULT (*)(void *, REFIID, void **)>(realSlots[0])(self, wanted, found);
        if (!hasOleWindow) return E_NOINTERFACE;
        oleWindow.AddRef();
        return *found = &oleWindow, S_OK;
    });
    replaceSlot(3, [](void *, HWND owner) -> HRESULT {
        wchar_t ownerClass[32] = {};
        GetClassNameW(dialogOwner = owner, ownerClass, 32);
        recorded.calls.push_back(
            dialogShowing && ownerClass == std::wstring(L"ZubblyDialogHost") ? "Show" : "Show wrongly");
        whileOpen();
        return chosen.empty() ? HRESULT(0x800704C7) : S_OK;
    });
    replaceSlot(7, [](void *, IFileDialogEvents *sink, DWORD *cookie) -> HRESULT {
        recorded.calls.push_back("Advise");
        return events = sink, *cookie = 42, S_OK;
    });
    replaceSlot(8, [](void *, DWORD cookie) -> HRESULT {
        return recorded.calls.push_back("Unadvise " + std::to_string(cookie)), S_OK;
    });
    replaceSlot(20, [](void *, IShellItem **item) -> HRESULT {
        return SHCreateItemFromParsingName(chosen.c_str(), nullptr, IID_PPV_ARGS(item));
    });
    *reinterpret_cast<void **>(dialog) = slots.data();
    return *out = dialog, S_OK;
}

static std::string allCalls()
{
    std::string all;
    for (const std::string &call : recorded.calls)
        all += call + "; ";
    return all;
}

TEST(SaveDialog, SavesTheMomentOfTheKeyAndPutsTheSurfacesBack)
{
    for (const bool accepted : {false, true}) {
        Desk desk(twoMonitors, 0x0000FF);
        TestFolder folder;
        fakes.makeObject = makeDialog;
        fakes.cursor = {-100, 200};
        fakes.localTime = {2026, 1, 0, 2, 3, 4, 5, 6};
        fakes.foreground = fakeWindow(1);
        chosen = accepted ? folder.path / "kept.png" : fs::path();
        std::ofstream(folder.path / "kept.png") << "an older file";
        whileOpen = [&] {
            SetPixel(surfaces[0].canvasDC, 700, 50, 0x00FF00);  // the child draws on
            PWSTR name = nullptr;
            dialog->GetFileName(&name);
            EXPECT_STREQ(name, L"zubclick_20260102_0304.png");
            CoTaskMemFree(name);
            FILEOPENDIALOGOPTIONS options = 0;
            dialog->GetOptions(&options);
            EXPECT_EQ(options & 0x42, 0x42u);
            RECT host = {};
            GetWindowRect(dialogOwner, &host);
            EXPECT_EQ(host.left, -320);
            EXPECT_EQ(host.top, 340);
        };
        EXPECT_EQ(showSaveDialog(), accepted);
        EXPECT_EQ(allCalls(),
                  "CoCreateInstance; SetWindowPos window topmost 16; ShowWindow window 8; Advise; Show; "
                  "Unadvise 42; ShowWindow window 0; SetWindowPos w0 topmost 16; SetWindowPos w1 topmost 16; "
                  "ClipCursor -640,0,800,600; EnableWindow w0 1; SetWindowRgn w0; "
                  "SetLayeredWindowAttributes w0 255 2; EnableWindow w1 1; SetWindowRgn w1; "
                  "SetLayeredWindowAttributes w1 255 2; ClipCursor -640,0,800,600; "
                  "AllowSetForegroundWindow -1; SetForegroundWindow w0; ClipCursor -640,0,800,600; ");
        GpBitmap *file = nullptr;
        ARGB pixel = 1;  // stays while the file is no picture
        GdipCreateBitmapFromFile((folder.path / "kept.png").c_str(), &file);
        GdipBitmapGetPixel(file, 640 + 700, 50, &pixel);
        GdipDisposeImage(file);
        EXPECT_EQ(pixel, accepted ? 0xFFFF0000 : 1u);
    }
    EXPECT_FALSE(dialogShowing);
    destroyDialogHost();
}

TEST(SaveDialog, RaisesTheDialogOnceAndAnswersEverySlot)
{
    Desk desk(oneMonitor);
    fakes.makeObject = makeDialog;
    chosen.clear();
    whileOpen = [] {
        void *found = nullptr;
        EXPECT_EQ(events->QueryInterface(IID_IUnknown, nullptr), HRESULT(0x80004003));
        for (const IID &id : {IID_IUnknown, IID_IFileDialogEvents}) {
            EXPECT_EQ(events->QueryInterface(id, &found), S_OK);
            EXPECT_EQ(found, events);
        }
        EXPECT_EQ(events->QueryInterface(IID_IFileDialog, &found), HRESULT(0x80004002));
        EXPECT_EQ(found, nullptr);
        EXPECT_EQ(events->AddRef(), 4u);  // the program's own and two by the queries
        EXPECT_EQ(events->Release(), 3u);
        EXPECT_EQ(events->Release(), 2u);  // one is kept beyond the dialog
        EXPECT_EQ(events->OnFileOk(nullptr) | events->OnFolderChanging(nullptr, nullptr) |
                      events->OnSelectionChange(nullptr) |
                      events->OnShareViolation(nullptr, nullptr, nullptr) | events->OnTypeChange(nullptr) |
                      events->OnOverwrite(nullptr, nullptr, nullptr),
                  S_OK);
        const auto change = [](IFileDialog *sender, bool ole, HWND window, int raisedSoFar) {
            hasOleWindow = ole;
            dialogWindow = window;
            EXPECT_EQ(events->OnFolderChange(sender), S_OK);
            EXPECT_EQ(countCalls("SetWindowPos w9 topmost 67"), raisedSoFar);
            EXPECT_EQ(countCalls("SetForegroundWindow w9"), raisedSoFar);
        };
        change(nullptr, true, fakeWindow(9), 0);
        change(dialog, false, fakeWindow(9), 0);
        change(dialog, true, nullptr, 0);
        change(dialog, true, fakeWindow(9), 1);
        change(dialog, true, fakeWindow(9), 1);
        EXPECT_EQ(oleWindow.references, 0u);
    };
    showSaveDialog();
    EXPECT_EQ(events->Release(), 0u);
    destroyDialogHost();
}

TEST(Capture, IsHeardEvenWhenItFailsAndLeavingIsNot)
{
    Having clip(captureClip, SoundClip(100));
    Having quitting(shuttingDown, false);
    Having hint(hintVisible, true);
    for (const auto &[key, sound, failing, calls] :
         {std::tuple(0x2Cu, true, "",
                     "OpenClipboard w0; EmptyClipboard; SetClipboardData 2; CloseClipboard; "),
          {0x2Cu, false, "OpenClipboard", "OpenClipboard w0; "},
          {0x70u, true, "", "CoCreateInstance; "},
          {0x41u, false, "", ""}}) {
        Desk desk(oneMonitor);
        fakes.failing = {failing};
        Having enabled(soundEnabled, sound);
        lastSoundTick = 0;
        captureOrExit(key, fakeWindow(0));
        EXPECT_EQ(allCalls(), calls) << key;
        EXPECT_EQ(recorded.sounds.size(), size_t(sound)) << key;
        EXPECT_EQ(lastSoundTick, sound ? fakes.tick : 0u) << key;
    }
    Desk desk(oneMonitor);
    captureOrExit(0x73, fakeWindow(0));
    EXPECT_FALSE(hintVisible);
    EXPECT_EQ(recorded.calls.back(), "PostQuitMessage 0");
    EXPECT_TRUE(recorded.sounds.empty());
    destroyDialogHost();
}

// The clipboard must not get the bitmap that the system has for no size.
TEST(Capture, HandsOverNoPictureOfAScreenWithoutSize)
{
    for (const POINT &size : {POINT{0, 600}, {800, 0}}) {
        Desk desk(oneMonitor);
        fakes.screen = {0, 0, size.x, size.y};
        lastSoundTick = 0;
        captureOrExit(0x2C, fakeWindow(0));
        EXPECT_EQ(allCalls(), "");
        EXPECT_EQ(lastSoundTick, fakes.tick);
    }
}
