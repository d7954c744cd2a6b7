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

// The window of an open dialog. GetWindow fails while there is none.
static struct : IOleWindow {
    HWND window = nullptr;
    STDMETHODIMP QueryInterface(REFIID, void **) override { return E_NOINTERFACE; }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP GetWindow(HWND *out) override { return *out = window, window ? S_OK : E_FAIL; }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    ULONG references = 0;
} dialogWindow;

// The system's own dialog, of which some slots are replaced: it comes up nowhere.
static std::array<void *, 32> realSlots, slots;
static IFileSaveDialog *dialog;
static IFileDialogEvents *events;
static bool hasWindow;
static fs::path chosen;  // cancelled while empty
static std::function<void()> whileOpen;

template <class Function> static void replaceSlot(size_t slot, Function function)
{
    slots[slot] = reinterpret_cast<void *>(+function);
}

static HRESULT makeDialog(REFCLSID id, void **out)
{
    CoInitialize(nullptr);
    EXPECT_TRUE(IsEqualCLSID(id, CLSID_FileSaveDialog));
    const HRESULT result =
        __real___imp_CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&dialog));
    slots = realSlots = **reinterpret_cast<std::array<void *, 32> **>(dialog);
    replaceSlot(0, [](void *self, REFIID wanted, void **found) -> HRESULT {
        if (!IsEqualIID(wanted, IID_IOleWindow))
            return reinterpret_cast<HRESULT (*)(void *, REFIID, void **)>(realSlots[0])(self, wanted, found);
        if (!hasWindow) return E_NOINTERFACE;
        dialogWindow.AddRef();
        *found = &dialogWindow;
        return S_OK;
    });
    replaceSlot(3, [](void *, HWND owner) -> HRESULT {
        recorded.calls.push_back("Show");
        EXPECT_EQ(owner, dialogHostWindow);
        EXPECT_TRUE(dialogShowing);
        whileOpen();
        return chosen.empty() ? HRESULT(0x800704C7) : S_OK;
    });
    replaceSlot(7, [](void *, IFileDialogEvents *sink, DWORD *cookie) -> HRESULT {
        recorded.calls.push_back("Advise");
        events = sink;
        return *cookie = 42, S_OK;
    });
    replaceSlot(8, [](void *, DWORD cookie) -> HRESULT {
        recorded.calls.push_back("Unadvise " + std::to_string(cookie));
        return S_OK;
    });
    replaceSlot(20, [](void *, IShellItem **item) -> HRESULT {
        return SHCreateItemFromParsingName(chosen.c_str(), nullptr, IID_PPV_ARGS(item));
    });
    *reinterpret_cast<void **>(dialog) = slots.data();
    *out = dialog;
    return result;
}

static std::string allCalls()
{
    std::string all;
    for (const std::string &call : recorded.calls)
        all += call + "; ";
    return all;
}

static void fillCanvases(MarkColor color)
{
    HBRUSH brush = CreateSolidBrush(color);
    for (const MonitorSurface &surface : surfaces) {
        const RECT canvas = {0, 0, surface.width, surface.height};
        FillRect(surface.canvasDC, &canvas, brush);
    }
    DeleteObject(brush);
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
            fillCanvases(0x00FF00);  // the child draws on
            PWSTR name = nullptr;
            dialog->GetFileName(&name);
            EXPECT_STREQ(name, L"zubclick_20260102_0304.png");
            CoTaskMemFree(name);
            FILEOPENDIALOGOPTIONS options = 0;
            dialog->GetOptions(&options);
            EXPECT_EQ(options & 0x42, 0x42u);
            RECT host = {};
            GetWindowRect(dialogHostWindow, &host);
            EXPECT_EQ(host.left, -320);
            EXPECT_EQ(host.top, 340);
        };
        EXPECT_EQ(showSaveDialog(), accepted);
        EXPECT_FALSE(dialogShowing);
        EXPECT_EQ(allCalls(),
                  "CoCreateInstance; SetWindowPos window topmost 16; ShowWindow window 8; Advise; Show; "
                  "Unadvise 42; ShowWindow window 0; SetWindowPos w0 topmost 16; SetWindowPos w1 topmost 16; "
                  "ClipCursor -640,0,800,600; EnableWindow w0 1; SetWindowRgn w0; "
                  "SetLayeredWindowAttributes w0 255 2; EnableWindow w1 1; SetWindowRgn w1; "
                  "SetLayeredWindowAttributes w1 255 2; ClipCursor -640,0,800,600; "
                  "AllowSetForegroundWindow -1; SetForegroundWindow w0; ClipCursor -640,0,800,600; ");
        GpBitmap *file = nullptr;
        const GpStatus readable = GdipCreateBitmapFromFile((folder.path / "kept.png").c_str(), &file);
        EXPECT_EQ(readable == Ok, accepted);
        ARGB pixel = 0xFFFF0000;
        if (accepted) GdipBitmapGetPixel(file, 700, 50, &pixel);
        EXPECT_EQ(pixel, 0xFFFF0000u);
        GdipDisposeImage(file);
    }
    HWND host = dialogHostWindow;
    destroyDialogHost();
    EXPECT_FALSE(IsWindow(host));
    EXPECT_EQ(dialogHostWindow, nullptr);
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
        struct Change {
            IFileDialog *sender;
            bool oleWindow;
            HWND window;
            int raised;  // times so far
        } changes[] = {{nullptr, true, fakeWindow(9), 0},
                       {dialog, false, fakeWindow(9), 0},
                       {dialog, true, nullptr, 0},
                       {dialog, true, fakeWindow(9), 1},
                       {dialog, true, fakeWindow(9), 1}};
        for (const Change &change : changes) {
            hasWindow = change.oleWindow;
            dialogWindow.window = change.window;
            EXPECT_EQ(events->OnFolderChange(change.sender), S_OK);
            EXPECT_EQ(countCalls("SetWindowPos w9 topmost 67"), change.raised);
            EXPECT_EQ(countCalls("SetForegroundWindow w9"), change.raised);
        }
        EXPECT_EQ(dialogWindow.references, 0u);
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
    struct Key {
        uint32_t key;
        bool sound;
        const char *failing;
        size_t sounds;
        const char *calls;
    } keys[] = {{0x2C, true, "", 1, "OpenClipboard w0; EmptyClipboard; SetClipboardData 2; CloseClipboard; "},
                {0x2C, false, "OpenClipboard", 0, "OpenClipboard w0; "},
                {0x70, true, "", 1, "CoCreateInstance; "},
                {0x41, true, "", 0, ""}};
    for (const Key &key : keys) {
        Desk desk(oneMonitor);
        fakes.failing = {key.failing};
        Having sound(soundEnabled, key.sound);
        lastSoundTick = 0;
        captureOrExit(key.key, fakeWindow(0));
        EXPECT_EQ(allCalls(), key.calls) << key.key;
        EXPECT_EQ(recorded.sounds.size(), key.sounds) << key.key;
        EXPECT_EQ(lastSoundTick, key.sounds ? fakes.tick : 0u) << key.key;
    }
    Desk desk(oneMonitor);
    captureOrExit(0x73, fakeWindow(0));
    EXPECT_FALSE(hintVisible);
    EXPECT_EQ(recorded.calls.back(), "PostQuitMessage 0");
    EXPECT_TRUE(recorded.sounds.empty());
    destroyDialogHost();
}
