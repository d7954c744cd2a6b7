#include "shell/startup.h"

#include <gtest/gtest.h>

#include <sstream>

#include "autodraw/sequencer.h"
#include "clearing/wipes.h"
#include "mascot/walker.h"
#include "menu/menu.h"
#include "shell/lockdown.h"
#include "shell/ease_of_access.h"
#include "shell/volume.h"
#include "shell/shutdown.h"
#include "shell/window_proc.h"
#include "support/fakes.h"

// The calls have to come in this order; others may lie between.
static void expectInOrder(const std::string &calls)
{
    std::istringstream list(calls);
    auto at = recorded.calls.begin();
    for (std::string call; std::getline(list >> std::ws, call, ';');) {
        at = std::find(at, recorded.calls.end(), call);
        ASSERT_NE(at, recorded.calls.end()) << "missing or too early: " << call;
    }
}

TEST(Startup, DoesEverythingBeforeTheFirstMessageInOrder)
{
    const Desk empty({});
    const Having volume(volumeClamp, -1.0f);
    fakes.monitors = twoMonitors;
    fakes.screen = {-640, 0, 1440, 600};
    fakes.foreground = fakeWindow(0);
    fakes.messages.resize(2);
    canvasDirty = true;
    EXPECT_EQ(runApp(nullptr), 0);
    EXPECT_TRUE(fakes.messages.empty());
    expectInOrder(
        "CreateMutex; CoInitialize; CreateWindow 524424 2415919104 0 0 800 600; SetTimer 13 33 w0; "
        "SetWindowRgn w0; SetLayeredWindowAttributes w0 255 2; SetWindowRgn w1; "
        "SetWindowPos w0 topmost 16; SetWindowPos w1 topmost 16; ClipCursor -640,0,800,600; "
        "SetForegroundWindow w0; SetActiveWindow w0; SetFocus w0; ClipCursor -640,0,800,600; "
        "SetTimer 1 1500 w0; SetTimer 10 120000 w0; SetWindowsHook 13 0; SystemParametersInfo 59 251 0; "
        "SetThreadExecutionState 2147483651; SetTimer 11 500 w0; ClipCursor free; Unhook; "
        "SetThreadExecutionState 2147483648; DestroyWindow w0; DestroyWindow w1; ClipCursor free; "
        "CoUninitialize");
    EXPECT_FALSE(canvasDirty || gdiplusToken || keyboardHook || hookTargetWindow || !surfaces.empty());
}

TEST(Startup, EndsAtOnceBesideAnotherInstanceOrWithoutAMonitor)
{
    for (const bool second : {true, false}) {
        const Desk desk({});
        fakes.lastError = second ? ERROR_ALREADY_EXISTS : 0;
        EXPECT_EQ(runApp(nullptr), second ? 0 : 1);
        EXPECT_EQ(recorded.calls.size() == 1, second);
        EXPECT_EQ(countCalls("SetTimer") + countCalls("SetWindowsHook") + int(recorded.sounds.size()), 0);
    }
}

TEST(EaseOfAccess, StaysAsItIsWhereTheSystemReportsNothing)
{
    const Desk desk({});
    fakes.failing = {"SystemParametersInfoW"};
    for (const int calls : {0, 5}) {
        silenceEaseOfAccess();
        silenceEaseOfAccess();
        EXPECT_EQ(countCalls("SystemParametersInfo"), calls);
        restoreEaseOfAccess();
        restoreEaseOfAccess();
        EXPECT_EQ(countCalls("SystemParametersInfo"), 2 * calls);
        fakes.failing = {};
    }
}

static HRESULT say(const char *what, HWND window, int value)
{
    const auto place = (intptr_t(window) - firstFakeWindow) / 2;
    recorded.calls.push_back(what + std::to_string(place) + " " + std::to_string(value));
    return S_OK;
}
template <class Interface> struct FakeObject : Interface {
    HRESULT WINAPI QueryInterface(REFIID, void **) override { return E_NOINTERFACE; }
    ULONG WINAPI AddRef() override { return ++recorded.alive; }
    ULONG WINAPI Release() override { return --recorded.alive; }
};
struct FakeStore : FakeObject<IPropertyStore> {
    HWND window = nullptr;
    HRESULT WINAPI GetCount(DWORD *) override { return E_NOTIMPL; }
    HRESULT WINAPI GetAt(DWORD, PROPERTYKEY *) override { return E_NOTIMPL; }
    HRESULT WINAPI GetValue(REFPROPERTYKEY, PROPVARIANT *) override { return E_NOTIMPL; }
    HRESULT WINAPI SetValue(REFPROPERTYKEY key, REFPROPVARIANT value) override
    {
        EXPECT_TRUE(key.fmtid.Data1 == 0x32CE38B2 && key.pid == 2 && (value.vt == VT_EMPTY || value.boolVal));
        return say("EdgeSwipes w", window, value.vt);
    }
    HRESULT WINAPI Commit() override { return E_NOTIMPL; }
};
struct FakeTaskbar : FakeObject<ITaskbarList2> {
    HRESULT WINAPI HrInit() override { return S_OK; }
    HRESULT WINAPI AddTab(HWND) override { return E_NOTIMPL; }
    HRESULT WINAPI DeleteTab(HWND) override { return E_NOTIMPL; }
    HRESULT WINAPI ActivateTab(HWND) override { return E_NOTIMPL; }
    HRESULT WINAPI SetActiveAlt(HWND) override { return E_NOTIMPL; }
    HRESULT WINAPI MarkFullscreenWindow(HWND window, WINBOOL full) override
    {
        return say("Full w", window, full);
    }
};

// What a tablet can do that Wine cannot.
static void makeTablet()
{
    static FakeStore store;
    static FakeTaskbar taskbar;
    HRESULT(WINAPI *const open)
    (HWND, REFIID, void **) = [](HWND window, REFIID, void **object) {
        store.window = window;
        store.AddRef();
        return *object = &store, S_OK;
    };
    BOOL(WINAPI *const get)(int *) = [](int *preference) { return *preference = 9, TRUE; };
    BOOL(WINAPI *const set)
    (int) = [](int preference) { return say("Rotation ", fakeWindow(0), preference), TRUE; };
    fakes.functions = {{"SHGetPropertyStoreForWindow", reinterpret_cast<void *>(open)},
                       {"GetDisplayAutoRotationPreferences", reinterpret_cast<void *>(get)},
                       {"SetDisplayAutoRotationPreferences", reinterpret_cast<void *>(set)}};
    fakes.makeObject = [](REFCLSID id, void **object) {
        if (id != CLSID_TaskbarList) return REGDB_E_CLASSNOTREG;
        taskbar.AddRef();
        return *object = static_cast<ITaskbarList2 *>(&taskbar), S_OK;
    };
}

TEST(Lock, IsUndoneOnEveryWayOutWhileTheWindowsExist)
{
    const std::function<void()> waysOut[] = {[] { windowProc(fakeWindow(0), WM_SYSKEYDOWN, VK_F4, 1 << 29); },
                                             [] { windowProc(fakeWindow(0), WM_ENDSESSION, TRUE, 0); },
                                             [] {}};  // the loop ends by itself
    for (const auto &leave : waysOut) {
        const Desk empty({});
        shuttingDown = false;
        fakes.monitors = twoMonitors;
        makeTablet();
        fakes.play = leave;
        EXPECT_EQ(runApp(nullptr), 0);
        expectInOrder(
            "SetWindowsHook 13 0; SystemParametersInfo 59 251 0; SystemParametersInfo 53 251 0; "
            "SystemParametersInfo 51 251 0; SystemParametersInfo 55 251 0; SystemParametersInfo 67 4347 0; "
            "EdgeSwipes w0 11; EdgeSwipes w1 11; Rotation 0 1; Full w0 1; Full w1 1; ClipCursor free; "
            "Unhook; "
            "SystemParametersInfo 59 255 0; SystemParametersInfo 53 255 0; SystemParametersInfo 51 255 0; "
            "SystemParametersInfo 55 255 0; SystemParametersInfo 67 4351 0; EdgeSwipes w0 0; EdgeSwipes w1 "
            "0; "
            "Rotation 0 9; Full w0 0; Full w1 0; DestroyWindow w0; DestroyWindow w1");
        EXPECT_EQ(countCalls("SystemParametersInfo") + countCalls("EdgeSwipes") + countCalls("Rotation") +
                      countCalls("Full"),
                  10 + 4 + 2 + 4);
        EXPECT_EQ(recorded.alive, 0);
    }
}

TEST(Lock, HoldsTheOrientationFoundAndNothingIfThePlayIsOpen)
{
    const std::tuple<LONG, DWORD, const char *> rows[] = {{800, DMDO_DEFAULT, "Rotation 0 1"},
                                                          {400, DMDO_90, "Rotation 0 2"},
                                                          {800, DMDO_180, "Rotation 0 4"},
                                                          {400, DMDO_270, "Rotation 0 8"}};
    for (const auto &[width, orientation, call] : rows) {
        for (const bool locks : {true, false}) {
            const Having open(blockShortcuts, locks);
            const Desk desk({{0, 0, width, 600}});
            makeTablet();
            fakes.orientation = orientation;
            takeLock();
            takeLock();
            EXPECT_EQ(countCalls(call), locks) << call;
            releaseLock();
            EXPECT_EQ(countCalls("Rotation 0 9"), locks);
            EXPECT_TRUE(locks ||
                        countCalls("SystemParameters") + countCalls("Edge") + countCalls("Full") == 0);
        }
    }
}

// A desk in the middle of everything.
struct Running : Desk {
    Running() : Desk(twoMonitors)
    {
        shuttingDown = false;
        keyboardHook = HHOOK(1);
        hookTargetWindow = fakeWindow(0);
        menuOpen = wipeRunning = true;
        autoStepsLeft = 5;
    }
};

static const std::string timersEnd =
    "KillTimer 9 w0; KillTimer 11 w0; KillTimer 1 w0; KillTimer 3 w0; KillTimer 5 w0; KillTimer 6 w0; "
    "KillTimer 7 w0; KillTimer 10 w0; KillTimer 9 w0; KillTimer 11 w0; KillTimer 13 w0; KillTimer 12 w0; "
    "KillTimer 8 w0; ";

TEST(WaysOut, ByAltF4RunsOnceAndHidesBeforeItDestroys)
{
    const Running desk;
    for (int i = 0; i < 2; ++i)
        windowProc(fakeWindow(0), WM_SYSKEYDOWN, VK_F4, 1 << 29);
    expectInOrder(timersEnd + "ClipCursor free; Unhook; SetThreadExecutionState 2147483648; ShowWindow w0 0; "
                              "DestroyWindow w0; ShowWindow w1 0; DestroyWindow w1; PostQuitMessage 0");
    EXPECT_EQ(countCalls("PostQuitMessage"), 1);
    EXPECT_FALSE(menuOpen || wipeRunning || autoStepsLeft > 0 || keyboardHook || hookTargetWindow ||
                 !surfaces.empty());
}

TEST(WaysOut, AtTheEndOfTheSessionDestroyWithoutHiding)
{
    const Running desk;
    GdiplusStartupInput input;
    GdiplusStartup(&gdiplusToken, &input, nullptr);
    EXPECT_EQ(windowProc(fakeWindow(0), WM_QUERYENDSESSION, 0, 0), 1);
    expectInOrder(timersEnd);
    EXPECT_FALSE(wipeRunning || autoStepsLeft > 0);
    EXPECT_EQ(windowProc(fakeWindow(0), WM_ENDSESSION, FALSE, 0), 0);
    EXPECT_EQ(countCalls("ClipCursor"), 0);  // the session goes on
    EXPECT_EQ(surfaces.size(), 2u);
    EXPECT_EQ(windowProc(fakeWindow(0), WM_ENDSESSION, TRUE, 0), 0);
    expectInOrder(
        "ClipCursor free; Unhook; DestroyWindow w0; DestroyWindow w1; ClipCursor free; PostQuitMessage 0");
    EXPECT_EQ(countCalls("ShowWindow"), 0);
    EXPECT_FALSE(menuOpen || mascotEnabled || gdiplusToken || shuttingDown || !surfaces.empty());
    EXPECT_EQ(windowProc(fakeWindow(0), WM_QUERYENDSESSION, 0, 0), 1);  // with nothing left, too
}
